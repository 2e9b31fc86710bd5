#include "general/module/prefixcode.h"

#include <algorithm>

namespace {

// `from` and the symbols behind it: values from `value` on, each with as many as the bits added tell apart.
template <class Extra>
constexpr void ranges(NXS_Alphabet& all, unsigned int from, unsigned int qty, unsigned int value,
                      Extra extra) {
    for (unsigned int n = 0; n < qty; ++n) {
        all[from + n].value = static_cast<std::uint16_t>(value);
        all[from + n].extra = static_cast<std::uint8_t>(extra(n));
        value += 1u << extra(n);
    }
}

constexpr void literals(NXS_Alphabet& all, unsigned int qty) {
    for (unsigned int n = 0; n < qty; ++n)
        all[n] = {static_cast<std::uint16_t>(n), nxKindLiteral, 0};
}

constexpr std::uint32_t reversed16(std::uint32_t bits) {
    bits = (bits & 0x5555) << 1 | (bits >> 1 & 0x5555);
    bits = (bits & 0x3333) << 2 | (bits >> 2 & 0x3333);
    bits = (bits & 0x0F0F) << 4 | (bits >> 4 & 0x0F0F);
    return (bits & 0x00FF) << 8 | (bits >> 8 & 0x00FF);
}

} // namespace

constexpr NXS_Alphabet nxLengthAlphabet = [] {
    NXS_Alphabet all{};
    literals(all, 256);
    all[256].extra = nxKindEnd;
    ranges(all, 257, 28, 3, [](unsigned int n) { return n < 8 ? 0 : n / 4 - 1; });
    all[285] = {258, 0, 0};
    return all;
}();

constexpr NXS_Alphabet nxDistanceAlphabet = [] {
    NXS_Alphabet all{};
    ranges(all, 0, 30, 1, [](unsigned int n) { return n < 4 ? 0 : n / 2 - 1; });
    return all;
}();

// Lengths of codes. The first of the three repetitions is of the length before, the others are of 0.
constexpr NXS_Alphabet nxCodeAlphabet = [] {
    NXS_Alphabet all{};
    literals(all, 16);
    all[16] = {3, 2, 0};
    all[17] = {3, 3, 0};
    all[18] = {11, 7, 0};
    return all;
}();

bool NXS_CodeTable::build(NXS_Alphabet const& alphabet, std::uint8_t const* bits, unsigned int qty,
                          unsigned int lookupBits) {
    std::uint32_t counts[codeBitsMax + 1] = {};
    for (unsigned int n = 0; n < qty; ++n)
        ++counts[bits[n]];
    unsigned int const used = qty - counts[0];
    std::uint32_t next[codeBitsMax + 1]; // the place for the next symbol
    std::uint32_t code = 0;
    std::uint32_t place = 0;
    for (unsigned int length = 1; length <= codeBitsMax; ++length) {
        code *= 2;
        next[length] = place;
        places_[length] = place - code;
        place += counts[length];
        code += counts[length];
        ends_[length] = code << (16 - length);
        if (code > 1u << length)
            return false;
    }
    // Codes are left over only where there is one symbol, or none.
    if (code != 1u << codeBitsMax && (used > 1 || used != counts[1]))
        return false;
    for (unsigned int n = 0; n < qty; ++n)
        if (bits[n] != 0)
            symbols_[next[bits[n]]++] = static_cast<std::uint16_t>(n);
    alphabet_ = &alphabet;
    mask_ = (1u << lookupBits) - 1;
    std::fill_n(lookup_, mask_ + 1, NXS_Code());
    for (unsigned int n = 0; n < used; ++n) {
        unsigned int const length = bits[symbols_[n]];
        if (length > lookupBits)
            break;
        NXS_Code found = alphabet[symbols_[n]];
        found.bits = static_cast<std::uint8_t>(length);
        for (std::uint32_t at = reversed16((n - places_[length]) << (16 - length)); at <= mask_;
             at += 1u << length)
            lookup_[at] = found;
    }
    return true;
}

NXS_Code NXS_CodeTable::findLong(std::uint32_t bits) const {
    std::uint32_t const code = reversed16(bits);
    unsigned int length = 1;
    while (length <= codeBitsMax && code >= ends_[length])
        ++length;
    if (length > codeBitsMax)
        return {};
    NXS_Code found = (*alphabet_)[symbols_[places_[length] + (code >> (16 - length))]];
    found.bits = static_cast<std::uint8_t>(length);
    return found;
}
