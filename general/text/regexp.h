// general/text/regexp.h - small regular expressions over 8-bit text.
//
// Literals, `.` (any byte), classes `[a-z]` and `[^a-z]`, the anchors `^` (first in the pattern) and `$`
// (last), and the operators `*`, `+` and `?` on the single element before them; everything else, parentheses
// and `|` too, stands for itself. Escapes: \b \e \f \n \r \s \t in either case, \x with up to 2 hexadecimal
// digits, \^c control characters, \ with 1 to 3 octal digits; any other character after a backslash is that
// character.
//
// Matching is by bytes, case-sensitive, leftmost and greedy; `?` never gives back what it took. Its time is
// linear in the text for every pattern, it allocates nothing and needs a fixed amount of stack. Ownership: an
// expression is a value; copies share the compiled program. Offsets and lengths are in bytes. Threads: one
// compiled expression may be used by several threads at once. Failure: a bad pattern leaves a status and an
// expression that matches nothing; nothing is reported elsewhere.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"

class NX_StringA;

// Where a match can begin: the bytes it can start with, worked out once for a program so that the search
// passes over the rest of the text at memory speed.
struct NXS_RegExpStart {
    // A run of byte values `low` .. `low + span`.
    struct Range {
        unsigned char low;
        unsigned char span;
    };
    static constexpr unsigned int rangeMax = 4;

    std::uint32_t set[8];  // the bytes as a bit set
    Range range[rangeMax]; // the same as ranges, when they are few
    unsigned int rangeQty; // 0 when more than rangeMax would be needed
    unsigned int byteQty;  // number of bytes in the set
    bool anywhere;         // the program can match without taking a byte
    bool atEnd;            // it can do so at the end of the text only
};

// The compiled program, 128 units (see regexpcode.h), is the vector's contents.
// The program is changed by assignment only: which bytes can begin a match is worked out once for each
// program.
class NX_EXPORT NX_RegExpA : public NX_UShortVec {
public:
    enum EXP_Status : int {
        EXP_Ok = 0,
        EXP_Syntax = 1,   // bad pattern, or nothing compiled
        EXP_Overflow = 2, // the pattern does not fit the program
    };

    NX_RegExpA() = default; // EXP_Syntax
    NX_RegExpA(char const* pattern);
    NX_RegExpA(NX_StringA const& pattern);
    NX_RegExpA(NX_RegExpA const&) = default;
    NX_RegExpA& operator=(NX_RegExpA const&) = default;

    // Compile another pattern into the same object; null counts as empty, which is EXP_Syntax.
    NX_RegExpA& operator=(char const* pattern);
    NX_RegExpA& operator=(NX_StringA const& pattern);

    int expIsOk() const { return status_ == EXP_Ok; }
    EXP_Status expStatus() const { return status_; }

    // The offset in `text` of the first match at or after offset `start`, with its length in `*length` (may
    // be null). NX_NO_INDEX and length 0 when there is none, when `start` is beyond the text or after a
    // failed compilation. `^` matches at `start`. The text is terminated (NX_TextVecA::strTerminate).
    unsigned int itemNum(NX_StringA const& text, unsigned int* length, unsigned int start) const;

private:
    void compile(char const* pattern);

    EXP_Status status_ = EXP_Syntax;
    NXS_RegExpStart start_{};
};
