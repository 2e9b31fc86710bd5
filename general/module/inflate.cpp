#include "general/module/inflate.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "general/module/prefixcode.h"

namespace {

constexpr int bitsForOne = 48; // a length and a distance with all their bits

// The bits that come next, the first one lowest, and the rest of the piece they are from. Bits above the
// counted ones are 0 or those that will stand there.
struct Bits {
    unsigned char const* p = nullptr;
    unsigned char const* end = nullptr;
    std::uint64_t word = 0;
    int have = 0; // below 0: more were taken than there are

    void drop(unsigned int qty) {
        word >>= qty;
        have -= static_cast<int>(qty);
    }
    std::uint32_t take(unsigned int qty) {
        std::uint32_t const value = static_cast<std::uint32_t>(word) & ((1u << qty) - 1);
        drop(qty);
        return value;
    }
    // At least bitsForOne bits. False where the piece may be too short for that.
    bool fill() {
        if (have >= bitsForOne)
            return true;
        if (have < 0 || end - p < 8)
            return false;
        std::uint64_t next = 0;
        for (unsigned int n = 0; n < 8; ++n)
            next |= std::uint64_t{p[n]} << 8 * n;
        word |= next << have;
        int const bytes = (63 - have) / 8;
        p += bytes;
        have += 8 * bytes;
        return true;
    }
};

// The sum of RFC 1950: of all bytes, and of all these sums.
std::uint32_t adler32(unsigned char const* p, std::uint32_t size) {
    constexpr std::uint32_t base = 65521;
    constexpr std::uint32_t most = 5552; // bytes, before a sum outgrows 32 bits
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    while (size != 0) {
        std::uint32_t const part = std::min(size, most);
        for (std::uint32_t n = 0; n < part; ++n) {
            a += p[n];
            b += a;
        }
        a %= base;
        b %= base;
        p += part;
        size -= part;
    }
    return b << 16 | a;
}

// Copies `length` bytes from `distance` bytes before, which may be among those that are made.
void copyBack(unsigned char* to, unsigned char const* end, std::size_t distance, std::size_t length) {
    unsigned char const* from = to - distance;
    if (distance >= 8 && static_cast<std::size_t>(end - to) >= length + 8) {
        for (std::size_t n = 0; n < length; n += 8)
            std::memcpy(to + n, from + n, 8);
        return;
    }
    while (length != 0) { // what is copied doubles what there is to copy from
        std::size_t const part = std::min(distance, length);
        std::memcpy(to, from, part);
        to += part;
        length -= part;
        distance += part;
    }
}

class Inflater {
public:
    Inflater(NXS_InflateSource& source, unsigned char* out, std::uint32_t size)
        : source_(source), out_(out), size_(size), to_(out), end_(out + size) {}

    bool run();

private:
    enum Outcome { outcomeNext, outcomeFull, outcomeDamaged };

    bool isSum();
    void fill();
    bool pieceNext();
    Outcome block(unsigned int type);
    Outcome stored();
    Outcome symbols();
    bool fixedTables();
    bool dynamicTables();

    NXS_InflateSource& source_;
    unsigned char* out_;
    std::uint32_t size_;
    unsigned char* to_;
    unsigned char* end_;
    Bits in_;
    NXS_CodeTable lengths_;
    NXS_CodeTable distances_;
    bool isFixed_ = false; // the tables are the fixed ones
};

bool Inflater::pieceNext() {
    std::uint32_t size = 0;
    if (!source_.pieceNext(in_.p, size))
        return false;
    in_.end = in_.p + size;
    return true;
}

// As many bits as there are, but not more than needed.
void Inflater::fill() {
    if (in_.fill())
        return;
    while (in_.have >= 0 && in_.have < bitsForOne) {
        if (in_.p != in_.end) {
            in_.word |= std::uint64_t{*in_.p++} << in_.have;
            in_.have += 8;
        } else if (!pieceNext()) {
            in_.end = in_.p;
            return;
        }
    }
}

bool Inflater::run() {
    fill();
    std::uint32_t const method = in_.take(8);
    std::uint32_t const flags = in_.take(8);
    if (in_.have < 0 || (method & 15) != 8 || method >> 4 > 7 || (method * 256 + flags) % 31 != 0 ||
        (flags & 0x20) != 0)
        return false;
    for (bool isLast = false; !isLast;) {
        fill();
        isLast = in_.take(1) != 0;
        Outcome const outcome = block(in_.take(2));
        if (outcome != outcomeNext)
            return outcome == outcomeFull;
    }
    return to_ == end_ && isSum();
}

bool Inflater::isSum() {
    in_.drop(static_cast<unsigned int>(in_.have) % 8);
    fill();
    std::uint32_t sum = 0;
    for (int n = 0; n < 4; ++n)
        sum = sum << 8 | in_.take(8);
    return in_.have >= 0 && (!nxSumsCount || sum == adler32(out_, size_));
}

Inflater::Outcome Inflater::block(unsigned int type) {
    switch (in_.have < 0 ? 3 : type) {
    case 0:
        return stored();
    case 1:
        return fixedTables() ? symbols() : outcomeDamaged;
    case 2:
        return dynamicTables() ? symbols() : outcomeDamaged;
    default:
        return outcomeDamaged;
    }
}

Inflater::Outcome Inflater::stored() {
    in_.drop(static_cast<unsigned int>(in_.have) % 8);
    fill();
    std::uint32_t left = in_.take(16);
    if (std::uint32_t const check = in_.take(16); in_.have < 0 || (left ^ check) != 0xFFFF)
        return outcomeDamaged;
    while (left != 0) {
        if (to_ == end_)
            return outcomeFull;
        if (in_.have > 0) {
            *to_++ = static_cast<unsigned char>(in_.take(8));
            --left;
            continue;
        }
        in_.word = 0;
        if (in_.p == in_.end && !pieceNext())
            return outcomeDamaged;
        std::size_t const part = std::min({static_cast<std::size_t>(in_.end - in_.p),
                                           static_cast<std::size_t>(end_ - to_), std::size_t{left}});
        if (part != 0)
            std::memcpy(to_, in_.p, part);
        in_.p += part;
        to_ += part;
        left -= static_cast<std::uint32_t>(part);
    }
    return outcomeNext;
}

bool Inflater::fixedTables() {
    if (isFixed_)
        return true;
    isFixed_ = true;
    std::uint8_t bits[nxSymbolsMax];
    for (unsigned int n = 0; n < nxSymbolsMax; ++n)
        bits[n] = n < 144 ? 8 : n < 256 ? 9 : n < 280 ? 7 : 8;
    std::uint8_t fives[32];
    std::fill_n(fives, 32, std::uint8_t{5});
    return lengths_.build(nxLengthAlphabet, bits, nxSymbolsMax, NXS_CodeTable::lookupBitsMax) &&
           distances_.build(nxDistanceAlphabet, fives, 32, 5);
}

bool Inflater::dynamicTables() {
    static constexpr std::uint8_t order[] = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                             11, 4,  12, 3, 13, 2, 14, 1, 15};
    isFixed_ = false;
    fill();
    unsigned int const lengthQty = in_.take(5) + 257;
    unsigned int const distanceQty = in_.take(5) + 1;
    unsigned int const codeQty = in_.take(4) + 4;
    if (lengthQty > 286 || distanceQty > 30)
        return false;
    std::uint8_t bits[286 + 30] = {};
    for (unsigned int n = 0; n < codeQty; ++n) {
        fill();
        bits[order[n]] = static_cast<std::uint8_t>(in_.take(3));
    }
    NXS_CodeTable& codes = distances_; // its turn comes later
    if (in_.have < 0 || !codes.build(nxCodeAlphabet, bits, 19, 7))
        return false;
    unsigned int const all = lengthQty + distanceQty;
    for (unsigned int at = 0; at < all;) {
        fill();
        NXS_Code const code = codes.find(in_.word);
        in_.drop(code.bits);
        if (code.extra == nxKindLiteral) {
            bits[at++] = static_cast<std::uint8_t>(code.value);
            continue;
        }
        bool const isAgain = code.extra == 2;
        if (code.extra == nxKindBad || (isAgain && at == 0))
            return false;
        unsigned int const repeat = code.value + in_.take(code.extra);
        if (in_.have < 0 || repeat > all - at)
            return false;
        std::fill_n(bits + at, repeat, isAgain ? bits[at - 1] : std::uint8_t{0});
        at += repeat;
    }
    return in_.have >= 0 && bits[256] != 0 &&
           lengths_.build(nxLengthAlphabet, bits, lengthQty, NXS_CodeTable::lookupBitsMax) &&
           distances_.build(nxDistanceAlphabet, bits + lengthQty, distanceQty, 8);
}

// Works on copies, because what is written could be any member for all the compiler knows.
Inflater::Outcome Inflater::symbols() {
    Bits in = in_;
    unsigned char* to = to_;
    Outcome outcome = outcomeDamaged;
    for (;;) {
        if (!in.fill()) {
            in_ = in;
            fill();
            in = in_;
        }
        NXS_Code const code = lengths_.find(in.word);
        in.drop(code.bits);
        if (code.extra == nxKindLiteral) {
            if (in.have < 0 || to == end_) {
                outcome = in.have < 0 ? outcomeDamaged : outcomeFull;
                break;
            }
            *to++ = static_cast<unsigned char>(code.value);
            continue;
        }
        if (code.extra >= nxKindEnd) {
            outcome = code.extra == nxKindEnd && in.have >= 0 ? outcomeNext : outcomeDamaged;
            break;
        }
        std::uint32_t const length = code.value + in.take(code.extra);
        NXS_Code const back = distances_.find(in.word);
        in.drop(back.bits);
        if (back.extra == nxKindBad)
            break;
        std::uint32_t const distance = back.value + in.take(back.extra);
        if (in.have < 0 || distance > static_cast<std::size_t>(to - out_))
            break;
        std::size_t const part = std::min<std::size_t>(length, static_cast<std::size_t>(end_ - to));
        copyBack(to, end_, distance, part);
        to += part;
        if (part != length) {
            outcome = outcomeFull;
            break;
        }
    }
    in_ = in;
    to_ = to;
    return outcome;
}

} // namespace

bool nxInflate(NXS_InflateSource& source, unsigned char* out, std::uint32_t size) {
    return Inflater(source, out, size).run();
}
