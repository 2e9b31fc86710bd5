// general/text/texttable.cpp - the constant character tables.
#include "general/text/texttable.h"

#include <array>

#include "general/text/dbcsinfo.h"
#include "general/text/textprim.h"

namespace {

constexpr void mark(std::array<unsigned char, 260>& table, int first, int last, int type) {
    for (int c = first; c <= last; ++c)
        table[static_cast<std::size_t>(c + 4)] = static_cast<unsigned char>(type);
}

constexpr std::array<unsigned char, 260> typesMake() {
    std::array<unsigned char, 260> table = {0x00, 0x21, 0x20, 0x00};
    mark(table, 0x00, 0x1F, NX_TextControl);
    mark(table, 0x09, 0x0D, NX_TextControl | NX_TextSpace);
    mark(table, ' ', ' ', NX_TextSpace);
    mark(table, '!', '/', NX_TextPunct);
    mark(table, ':', '@', NX_TextPunct);
    mark(table, '[', '`', NX_TextPunct | NX_TextSpecial);
    mark(table, '{', '~', NX_TextPunct | NX_TextSpecial);
    for (char c : {'!', '#', '$', '@'})
        mark(table, c, c, NX_TextPunct | NX_TextSpecial);
    mark(table, '0', '9', NX_TextDigit | NX_TextHexDigit);
    mark(table, 'A', 'F', NX_TextUpperCase | NX_TextHexDigit);
    mark(table, 'G', 'Z', NX_TextUpperCase);
    mark(table, 'a', 'f', NX_TextLowerCase | NX_TextHexDigit);
    mark(table, 'g', 'z', NX_TextLowerCase);
    mark(table, 0x7F, 0x9F, NX_TextSpecial);
    mark(table, 0xA0, 0xA0, NX_TextSpecial | NX_TextSpace);
    mark(table, 0xA1, 0xBF, NX_TextSpecial | NX_TextPunct);
    mark(table, 0xC0, 0xFF, NX_TextSpecial);
    return table;
}

constexpr std::array<unsigned char, 256> lowerMake() {
    std::array<unsigned char, 256> table = {};
    for (unsigned int c = 0; c < 256; ++c)
        table[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    table[0xAD] = 0xAC; // Kept: existing collections are sorted by it.
    return table;
}

constexpr std::array<unsigned char, 55> hexMake() {
    std::array<unsigned char, 55> table = {};
    for (unsigned int c = 0; c < 10; ++c)
        table[c] = static_cast<unsigned char>(c);
    for (unsigned int c = 0; c < 6; ++c)
        table['A' - '0' + c] = table['a' - '0' + c] = static_cast<unsigned char>(10 + c);
    return table;
}

} // namespace

constinit std::array<unsigned char, 260> const nxTextType = typesMake();
constinit std::array<unsigned char, 256> const nxTextLower = lowerMake();

unsigned char const* NxTextTypeP() {
    return nxTextType.data();
}

unsigned char const* NxTextLowerP() {
    return nxTextLower.data();
}

unsigned char const* NxTextHexToBinaryP() {
    static constexpr std::array<unsigned char, 55> table = hexMake();
    return table.data();
}

unsigned char const* NxTextBinaryToHexP() {
    static constexpr unsigned char digits[] = "0123456789abcdef";
    return digits;
}

unsigned char const* NxTextDbcsP() {
    return nxDbcs().dbcsIsLeadP();
}
