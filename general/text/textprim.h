// general/text/textprim.h - copying, searching, measuring, changing case and reading numbers in plain text.
//
// Most operations come in four forms: 8-bit and 16-bit, terminated (up to the zero) and counted (a length
// right after the text; zeros inside are ordinary characters). Lengths, offsets and counts are in units:
// bytes in 8-bit text, 16-bit units in wide text. Counts below zero mean zero.
//
// 8-bit text is walked by the lead-byte table of NxDbcsInfoP(): a lead byte and the byte after it are one
// character of value lead * 256 + trail. It belongs to no class (never a space, digit or letter) and keeps
// its case. A lead byte that is the last of a counted text stands alone, with the value lead * 256.
// Terminated text must not end in a lead byte. Wide text has one character a unit. A character to look for is
// such a value; negative ones, from a signed `char`, are taken unsigned. On a single-byte code page the
// terminated forms look for the low byte (the low 16 bits) alone, as strchr does.
//
// The caller owns all text; nothing is allocated except by NxTextDup and NxTextStringGet. Positions are
// returned as pointers into the text, null when not found. Nothing fails or reports; null text is taken only
// where said. Threads: no state but the double-byte information, which must not be changed while others
// handle text.
#pragma once

#include "general/platform/fwd.h"
#include "general/text/textptr.h"

class NX_StringA;

// Type of a field for NxTextLongGet. Any other value reads as 0.
enum NX_DataType : int {
    NX_DataNone = 0,
    NX_DataMsbInt = 1,  // signed binary, most significant byte first
    NX_DataMsbUInt = 2, // unsigned binary, most significant byte first
    NX_DataLsbInt = 4,  // signed binary, least significant byte first
    NX_DataLsbUInt = 5, // unsigned binary, least significant byte first
    NX_DataText = 6,    // a number in text; 7 and 8 read alike
    NX_DataTextLeft = 7,
    NX_DataTextRight = 8
};

// ---- Constant tables. ----

// Bits of the character classes.
enum NX_TextType : int {
    NX_TextControl = 0x01,
    NX_TextDigit = 0x02,
    NX_TextHexDigit = 0x04,
    NX_TextPunct = 0x08,
    NX_TextSpace = 0x10,
    NX_TextUpperCase = 0x20,
    NX_TextLowerCase = 0x40,
    NX_TextSpecial = 0x80,
    NX_TextAlNum = NX_TextDigit | NX_TextUpperCase | NX_TextLowerCase
};

NX_EXPORT unsigned char const* NxTextTypeP();  // 260 classes; that of character c (-4..255) is at c + 4.
NX_EXPORT unsigned char const* NxTextLowerP(); // 256 folded characters: A-Z to a-z, and 0xAD to 0xAC.
NX_EXPORT unsigned char const* NxTextHexToBinaryP(); // 55 values, that of hexadecimal digit c at c - '0'.
NX_EXPORT unsigned char const* NxTextBinaryToHexP(); // "0123456789abcdef"
NX_EXPORT unsigned char const* NxTextDbcsP(); // 256 entries, 1 for a lead byte of the process's code page.

// ---- Copy and fill: by unit, without regard to double-byte characters. ----

// Number of units before the first zero, at most `max`; 0 when `max` is below 1.
NX_EXPORT int NxTextLen(NX_TextA1PtrConst text, int max);
NX_EXPORT int NxTextLen(NX_TextW1PtrConst text, int max);

// Copies up to the zero, at most `size` - 1 units, and always terminates unless `size` is 0. A null `src` is
// empty text. Returns the number of units copied, without the zero.
NX_EXPORT int NxTextCopy(NX_TextA1Ptr dst, NX_TextA1PtrConst src, int size);
NX_EXPORT int NxTextCopy(NX_TextW1Ptr dst, NX_TextW1PtrConst src, int size);

// Copies up to the zero, at most `size` units, and fills the rest of the field with `pad`; no terminator. A
// null `src` is empty text. Returns the number of units copied.
NX_EXPORT int NxTextCopyAndPad(NX_TextA1Ptr dst, NX_TextA1PtrConst src, int size, int pad);
NX_EXPORT int NxTextCopyAndPad(NX_TextW1Ptr dst, NX_TextW1PtrConst src, int size, int pad);

// Writes `pad` from the terminating zero up to `width` units, without a new terminator. Returns the old
// length.
NX_EXPORT int NxTextPad(NX_TextA1Ptr text, int pad, int width);
NX_EXPORT int NxTextPad(NX_TextW1Ptr text, int pad, int width);

// Fill `count` units: with `ch`; with `ch0` at even and `ch1` at odd indexes; with `first`, `first` + 1, ...
// cut to the unit's width. They return `dst`.
NX_EXPORT NX_TextW1Ptr NxTextSet(NX_TextW1Ptr dst, int ch, int count);
NX_EXPORT NX_TextA1Ptr NxTextSet2(NX_TextA1Ptr dst, int ch0, int ch1, int count);
NX_EXPORT NX_TextW1Ptr NxTextSet2(NX_TextW1Ptr dst, int ch0, int ch1, int count);
NX_EXPORT NX_TextA1Ptr NxTextSetSeq(NX_TextA1Ptr dst, int first, int count);
NX_EXPORT NX_TextW1Ptr NxTextSetSeq(NX_TextW1Ptr dst, int first, int count);

// A terminated copy from NxMemStdAlloc, which the caller frees: void* p = text; NxMemHeapFree(&p). The
// counted form copies `len` units and appends `extra` before the zero unless it is -1.
NX_EXPORT NX_TextA1Ptr NxTextDup(NX_TextA1PtrConst src);
NX_EXPORT NX_TextW1Ptr NxTextDup(NX_TextW1PtrConst src);
NX_EXPORT NX_TextA1Ptr NxTextDup(NX_TextA1PtrConst src, int len, int extra);
NX_EXPORT NX_TextW1Ptr NxTextDup(NX_TextW1PtrConst src, int len, int extra);

// ---- Searching. ----

// First and last character `ch`. Looking for 0 in terminated text finds its end.
NX_EXPORT NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int ch);
NX_EXPORT NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int len, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int len, int ch);
NX_EXPORT NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int ch);
NX_EXPORT NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int len, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int len, int ch);

// First and last occurrence of the terminated text `sub` that starts at a character's boundary. An empty
// `sub` is found first at the start and last at the end. Time is that of one pass for short `sub`.
NX_EXPORT NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, NX_TextA1PtrConst sub);
NX_EXPORT NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, NX_TextW1PtrConst sub);
NX_EXPORT NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst sub);
NX_EXPORT NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst sub);
NX_EXPORT NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, NX_TextA1PtrConst sub);
NX_EXPORT NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, NX_TextW1PtrConst sub);
NX_EXPORT NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst sub);
NX_EXPORT NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst sub);

// Finds the first `ch` and overwrites its first unit with a zero.
NX_EXPORT NX_TextA1Ptr NxTextFindAndTerminate(NX_TextA1Ptr text, int ch);
NX_EXPORT NX_TextW1Ptr NxTextFindAndTerminate(NX_TextW1Ptr text, int ch);

// First `ch` that is neither inside double quotes nor escaped by a backslash; inside quotes a backslash keeps
// a quote from closing. The opening quote and an unescaped backslash can themselves be looked for.
NX_EXPORT NX_TextA1PtrConst NxTextFindXQuote(NX_TextA1PtrConst text, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFindXQuote(NX_TextW1PtrConst text, int ch);
NX_EXPORT NX_TextA1PtrConst NxTextFindXQuote(NX_TextA1PtrConst text, int len, int ch);
NX_EXPORT NX_TextW1PtrConst NxTextFindXQuote(NX_TextW1PtrConst text, int len, int ch);

// Length of the leading run of characters that occur (Not: do not occur) in the terminated text `set`. The
// zero is in no set.
NX_EXPORT int NxTextSpan(NX_TextA1PtrConst text, NX_TextA1PtrConst set);
NX_EXPORT int NxTextSpan(NX_TextW1PtrConst text, NX_TextW1PtrConst set);
NX_EXPORT int NxTextSpan(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst set);
NX_EXPORT int NxTextSpan(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst set);
NX_EXPORT int NxTextSpanNot(NX_TextA1PtrConst text, NX_TextA1PtrConst set);
NX_EXPORT int NxTextSpanNot(NX_TextW1PtrConst text, NX_TextW1PtrConst set);
NX_EXPORT int NxTextSpanNot(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst set);
NX_EXPORT int NxTextSpanNot(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst set);

// Length of the leading run of white space; of the leading run without it; of the text without the white
// space at its end.
NX_EXPORT int NxTextSpaceLen(NX_TextA1PtrConst text);
NX_EXPORT int NxTextSpaceLen(NX_TextW1PtrConst text);
NX_EXPORT int NxTextSpaceLen(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextSpaceLen(NX_TextW1PtrConst text, int len);
NX_EXPORT int NxTextSpaceNotLen(NX_TextA1PtrConst text);
NX_EXPORT int NxTextSpaceNotLen(NX_TextW1PtrConst text);
NX_EXPORT int NxTextSpaceNotLen(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextSpaceNotLen(NX_TextW1PtrConst text, int len);
NX_EXPORT int NxTextSpaceNotEnd(NX_TextA1PtrConst text);
NX_EXPORT int NxTextSpaceNotEnd(NX_TextW1PtrConst text);
NX_EXPORT int NxTextSpaceNotEnd(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextSpaceNotEnd(NX_TextW1PtrConst text, int len);

// Value of the last character; 0 for null or empty text.
NX_EXPORT int NxTextLast(NX_TextA1PtrConst text);
NX_EXPORT int NxTextLast(NX_TextW1PtrConst text);
NX_EXPORT int NxTextLast(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextLast(NX_TextW1PtrConst text, int len);

// Just after the last double-byte character; the text's start when there is none.
NX_EXPORT NX_TextA1PtrConst NxTextDbcsEnd(NX_TextA1PtrConst text);

// ---- Case and counters. Only ASCII letters are letters. ----

// Change the case in place and return the text.
NX_EXPORT NX_TextA1Ptr NxTextUpper(NX_TextA1Ptr text);
NX_EXPORT NX_TextW1Ptr NxTextUpper(NX_TextW1Ptr text);
NX_EXPORT NX_TextA1Ptr NxTextUpper(NX_TextA1Ptr text, int len);
NX_EXPORT NX_TextW1Ptr NxTextUpper(NX_TextW1Ptr text, int len);
NX_EXPORT NX_TextA1Ptr NxTextLower(NX_TextA1Ptr text);
NX_EXPORT NX_TextW1Ptr NxTextLower(NX_TextW1Ptr text);
NX_EXPORT NX_TextA1Ptr NxTextLower(NX_TextA1Ptr text, int len);
NX_EXPORT NX_TextW1Ptr NxTextLower(NX_TextW1Ptr text, int len);

// 1 when every character is an upper-case letter, else 0; 1 for empty text.
NX_EXPORT int NxTextIsUpper(NX_TextA1PtrConst text);
NX_EXPORT int NxTextIsUpper(NX_TextW1PtrConst text);
NX_EXPORT int NxTextIsUpper(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextIsUpper(NX_TextW1PtrConst text, int len);

// 1 when no character is a lower-case letter or 256 and above, else 0.
NX_EXPORT int NxTextIsUpperAZ(NX_TextA1PtrConst text);
NX_EXPORT int NxTextIsUpperAZ(NX_TextW1PtrConst text);
NX_EXPORT int NxTextIsUpperAZ(NX_TextA1PtrConst text, int len);
NX_EXPORT int NxTextIsUpperAZ(NX_TextW1PtrConst text, int len);

// Counts the text's end up in place. A run of digits at the end counts as a number of fixed width: 1 when the
// carry was absorbed, 0 when the whole run wrapped to zeros. Otherwise the last letter or digit steps to its
// next code: 0, or 1 when Z or z wrapped to A or a. -1 when there is no letter or digit.
NX_EXPORT int NxTextInc(NX_TextA1Ptr text, int len);
NX_EXPORT int NxTextInc(NX_TextW1Ptr text, int len);

// ---- Numbers and strings. ----

// Reads white space, one sign, then `0x` and hexadecimal digits or decimal digits, up to the first other
// character, whose place goes to `end` unless it is null. Wraps in 32 bits; 0 when there are no digits.
NX_EXPORT long NxTextLongGet(NX_TextA1PtrConst text, char const** end);
NX_EXPORT long NxTextLongGet(NX_TextW1PtrConst text, unsigned short const** end);
NX_EXPORT long NxTextLongGet(NX_TextA1PtrConst text, int len, char const** end);
NX_EXPORT long NxTextLongGet(NX_TextW1PtrConst text, int len, unsigned short const** end);

// Reads a field of `len` units by its type; 32 bits, sign-extended. A binary field longer than 4 bytes gives
// its 4 least significant bytes. Wide text gives its bytes to the binary types.
NX_EXPORT long NxTextLongGet(NX_TextA1PtrConst text, int len, NX_DataType type);
NX_EXPORT long NxTextLongGet(NX_TextW1PtrConst text, int len, NX_DataType type);

// A new string of capacity length + 1 that holds the text; null is empty text. (Wide text has no such form:
// the string is 8-bit.)
NX_EXPORT NX_StringA NxTextStringGet(NX_TextA1PtrConst text);
NX_EXPORT NX_StringA NxTextStringGet(NX_TextA1PtrConst text, int len);
