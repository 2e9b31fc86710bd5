// Private header. general/text/regexpcode.h - the form of a compiled expression and the steps that make and
// run it.
//
// A program is a run of 16-bit units: a literal byte is its own value, every other element is 0x8000 plus the
// character it comes from. An operator stands before its element. A class is followed by 16 units of a
// 256-bit set: byte c belongs to it when bit c % 16 of unit c / 16 is set.
#pragma once

#include "general/text/regexp.h"

inline constexpr unsigned int NXS_REGEXP_UNITS = 128;
inline constexpr unsigned int NXS_REGEXP_CLASS_UNITS = 17;

enum NXS_RegExpCode : unsigned short {
    NXS_RegExpEndOfProgram = 0x8000,
    NXS_RegExpEnd = 0x8000 + '$',
    NXS_RegExpStar = 0x8000 + '*',
    NXS_RegExpPlus = 0x8000 + '+',
    NXS_RegExpAny = 0x8000 + '.',
    NXS_RegExpMaybe = 0x8000 + '?',
    NXS_RegExpClass = 0x8000 + '[',
    NXS_RegExpBegin = 0x8000 + '^',
};

// Number of units of the element at `code`.
inline unsigned int nxRegExpSize(unsigned short const* code) {
    return *code == NXS_RegExpClass ? NXS_REGEXP_CLASS_UNITS : 1;
}

inline bool nxRegExpClassHas(unsigned short const* code, unsigned char byte) {
    return (code[1 + byte / 16] >> (byte % 16) & 1) != 0;
}

// Compiles the terminated pattern (null counts as empty) into NXS_REGEXP_UNITS units, all of them zero
// before. After a failure the program is of no use.
NX_RegExpA::EXP_Status nxRegExpCompile(char const* pattern, unsigned short* program);

// The bytes with which a match of the program can begin.
NXS_RegExpStart nxRegExpStart(unsigned short const* program);

// The first match in text[0 .. textLen) that begins at `from` or later: its offset, or NX_NO_INDEX.
unsigned int nxRegExpFind(unsigned short const* program, NXS_RegExpStart const& start, char const* text,
                          unsigned int textLen, unsigned int from, unsigned int* length);
