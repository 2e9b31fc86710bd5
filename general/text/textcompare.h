// general/text/textcompare.h - the order of two texts: exact, folded, number-aware and by wildcards.
//
// Lengths are in units (bytes, or 16-bit units in wide text), never negative; zeros inside counted text are
// ordinary characters. The sign of a result tells where `a` stands beside `b`. 8-bit text is walked by the
// lead-byte table of NxDbcsInfoP(). Nothing fails, allocates or reports.
#pragma once

#include "general/platform/fwd.h"
#include "general/text/textptr.h"

// How two texts are compared. Every other value compares the lengths alone.
//
// Folding takes A-Z to a-z and 0xAD to 0xAC, one-byte characters (wide units below 256) only; a double-byte
// character sorts by its value after all of them. Numbers are runs of decimal digits, compared by value where
// both texts have one. A text sorts after its own prefixes, decided by the total lengths. Wildcards: `a` is
// the name, `b` the pattern, 0 is a match. `*` stands for any characters, `?` for one; `*` takes in the `*`
// and `?` that follow it, which then ask for nothing. There is no escape and no class of characters.
enum NX_CompareType : int {
    NX_CompareExact = 0,   // bytes as memcmp orders them
    NX_CompareNum = 1,     // by character, numbers by value
    NX_CompareFold = 2,    // by folded character
    NX_CompareFoldNum = 3, // by folded character, numbers by value
    NX_CompareWild = 4,    // wildcards
    NX_CompareWildFold = 6 // wildcards, folded
};

// -1, 0 or 1; where units decide in NX_CompareExact, or digits of equally long numbers in the number modes,
// any value of that sign. A pattern that has reached a `*` and cannot match gives -1; time is at most the
// product of both lengths. Kept for the order of existing data: wide text in NX_CompareExact looks only at
// the first half of the common units before the lengths decide.
NX_EXPORT int NxTextCompare(NX_TextA1PtrConst a, int lenA, NX_TextA1PtrConst b, int lenB,
                            NX_CompareType type);
NX_EXPORT int NxTextCompare(NX_TextW1PtrConst a, int lenA, NX_TextW1PtrConst b, int lenB,
                            NX_CompareType type);

// The same for terminated texts.
NX_EXPORT int NxTextCompare(NX_TextA1PtrConst a, NX_TextA1PtrConst b, NX_CompareType type);
NX_EXPORT int NxTextCompare(NX_TextW1PtrConst a, NX_TextW1PtrConst b, NX_CompareType type);

// NX_CompareFold for terminated texts.
NX_EXPORT int NxTextCompareFold(NX_TextA1PtrConst a, NX_TextA1PtrConst b);
NX_EXPORT int NxTextCompareFold(NX_TextW1PtrConst a, NX_TextW1PtrConst b);

// Difference of the first two folded bytes that differ, or 0; never looks at lead bytes.
NX_EXPORT int NxTextCompareFoldNoDbcs(char const* a, char const* b);
