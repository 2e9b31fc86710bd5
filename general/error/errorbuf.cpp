// general/error/errorbuf.cpp - appending and dropping words of an error manager's buffer.
#include "general/error/errorbuf.h"

#include <array>
#include <cstring>

#include "general/text/textprim.h"

namespace {

constexpr unsigned int capacityMin = 128;

// What ends a word or makes the search for its end more than a search for a blank: quotes, escapes, lead
// bytes.
constexpr std::array<bool, 256> stops = [] {
    std::array<bool, 256> table{};
    for (unsigned int unit = 0; unit < table.size(); ++unit)
        table[unit] = unit == ' ' || unit == '"' || unit == '\\' || unit >= 0x80;
    return table;
}();

} // namespace

unsigned int nxErrorWordEnd(char const* text, unsigned int length) {
    unsigned int i = 0;
    while (i < length && !stops[static_cast<unsigned char>(text[i])])
        ++i;
    if (i == length || text[i] == ' ')
        return i < length ? i : NX_NO_INDEX;
    // Whole characters lie before `i`, so the general search may start there.
    char const* const found = NxTextFindXQuote(text + i, static_cast<int>(length - i), ' ');
    return found != nullptr ? static_cast<unsigned int>(found - text) : NX_NO_INDEX;
}

unsigned int nxErrorWordLast(char const* text, unsigned int length, char letter) {
    for (unsigned int i = length; i-- > 1;)
        if (text[i] == '=' && text[i - 1] == letter)
            return i - 1;
    return NX_NO_INDEX;
}

char* nxErrorDigits(char* to, long value, int radix) {
    if (radix < 2 || radix > 36)
        radix = 10;
    auto rest = static_cast<std::uint32_t>(value);
    if (radix == 10 && static_cast<std::int32_t>(rest) < 0) {
        *to++ = '-';
        rest = 0u - rest;
    }
    char digits[32];
    char* first = digits + sizeof digits;
    if (radix == 10) { // by itself, so that the divisor is known
        do
            *--first = static_cast<char>('0' + rest % 10u);
        while ((rest /= 10u) != 0);
    } else {
        auto const divisor = static_cast<std::uint32_t>(radix);
        do
            *--first = "0123456789abcdefghijklmnopqrstuvwxyz"[rest % divisor];
        while ((rest /= divisor) != 0);
    }
    auto const count = static_cast<std::size_t>(digits + sizeof digits - first);
    std::memcpy(to, first, count);
    return to + count;
}

void NXS_ErrorBuf::wordAppend(char letter, char const* text, unsigned int length) {
    if (cap < capacityMin)
        cap = capacityMin;
    if (length == 0)
        return;

    while (cap < length) {
        unsigned int const end = nxErrorWordEnd(text, length);
        if (end == NX_NO_INDEX)
            break;
        text += end + 1;
        length -= end + 1;
    }

    // What must be free besides the text: blank, letter, "=" and terminator.
    std::uint64_t const needed = std::uint64_t{length} + 4;
    while (wordsLen() != 0 && cap - wordsLen() < needed) {
        unsigned int const end = nxErrorWordEnd(wordsP(), wordsLen());
        if (end == NX_NO_INDEX)
            break;
        from += end + 1;
    }

    std::uint64_t const added = std::uint64_t{length} + (wordsLen() != 0 ? 1u : 0u) + (letter != 0 ? 2u : 0u);
    if (wordsLen() + added >= cap) {
        if (wordsLen() + added >= NX_NO_INDEX)
            nxMemExhausted();
        cap = static_cast<std::uint32_t>(wordsLen() + added + 1);
    }
    if (itemQty() + added >= itemQtyCap())
        roomMake();
    char* to = dataPMod() + itemQty();
    if (wordsLen() != 0)
        *to++ = ' ';
    if (letter != 0) {
        *to++ = letter;
        *to++ = '=';
    }
    std::memcpy(to, text, length);
    to[length] = 0;
    refP()->itemQtySet(itemQty() + static_cast<unsigned int>(added));
}

// Moves the words to the start of a string with room for the capacity twice over, where that can be had.
void NXS_ErrorBuf::roomMake() {
    unsigned int const room = cap < 0x40000000u ? 2 * cap : cap;
    if (itemQtyCap() < room)
        itemQtyCap(room - 1); // a spare place comes with it
    char* const p = dataPMod();
    unsigned int const qty = wordsLen();
    std::memmove(p, p + from, qty);
    p[qty] = 0;
    refP()->itemQtySet(qty);
    from = 0;
}

void NXS_ErrorBuf::wordsForget() {
    from = itemQty();
}

NX_StringA NXS_ErrorBuf::wordsNewest(unsigned int maxLength) const {
    char const* text = wordsP();
    unsigned int qty = wordsLen();
    while (qty > maxLength) {
        unsigned int const end = nxErrorWordEnd(text, qty);
        unsigned int const gone = end != NX_NO_INDEX ? end + 1 : qty - maxLength;
        text += gone;
        qty -= gone;
    }
    return NX_StringA(text, qty);
}

NX_StringA NXS_ErrorBuf::wordsOfLastError() const {
    unsigned int const at = nxErrorWordLast(wordsP(), wordsLen(), 'E');
    return at != NX_NO_INDEX ? NX_StringA(wordsP() + at, wordsLen() - at) : NX_StringA();
}
