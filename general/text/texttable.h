// general/text/texttable.h - Private header. The constant character tables, for routines that index them.
#pragma once

#include <array>

extern std::array<unsigned char, 260> const nxTextType;  // class of character c at c + 4
extern std::array<unsigned char, 256> const nxTextLower; // folded characters

// Class bits of a character; 0 from 256 up.
inline unsigned int nxTextClass(unsigned int ch) {
    return ch < 256 ? nxTextType[ch + 4] : 0u;
}

// The folded character; itself from 256 up.
inline unsigned int nxTextFold(unsigned int ch) {
    return ch < 256 ? nxTextLower[ch] : ch;
}
