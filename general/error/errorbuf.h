// general/error/errorbuf.h - the text of an error manager's buffer: words, separated by single blanks.
//
// For the error manager; nothing else uses it. A blank inside double quotes or behind a backslash does not
// end a word. Lengths and positions are in bytes. It has no lock.
#pragma once

#include <cstdint>

#include "general/text/stringa.h"

// The words lie in a string of about twice the capacity and wander through it, so that forgetting the oldest
// is only a step forward and the text is moved back to the start once in a long while.
class NX_EXPORT NXS_ErrorBuf : private NX_StringA {
public:
    NXS_ErrorBuf() = default;
    explicit NXS_ErrorBuf(unsigned int capacity) : NX_StringA(0u, capacity), cap(capacity) {}

    // Appends letter=text (the text alone when `letter` is 0) and forgets the oldest words so that all fits
    // the capacity, which is at least 128. A text longer than the capacity keeps its last words; one without
    // a blank, or one beside a last word that cannot go, is appended whole and the capacity grows to hold it.
    // `text` must not lie in this buffer. An empty text appends nothing. Allocates nothing while there is
    // room.
    void wordAppend(char letter, char const* text, unsigned int length);
    void wordsForget(); // empties the buffer; the capacity stays

    char const* wordsP() const { return dataPConst() + from; } // terminated
    unsigned int wordsLen() const { return itemQty() - from; }

    NX_StringA
    wordsNewest(unsigned int maxLength) const; // the newest whole words that fit, see NX_ErrorMan::errorBuf
    NX_StringA wordsOfLastError() const;       // from the last "E=" to the end; empty without one

private:
    void roomMake();

    std::uint32_t from = 0; // where the words begin
    std::uint32_t cap = 0;
};

// Where the first word of `text` ends: its first blank, or NX_NO_INDEX.
unsigned int nxErrorWordEnd(char const* text, unsigned int length);

// Where `letter` and "=" stand last in `text`, or NX_NO_INDEX.
unsigned int nxErrorWordLast(char const* text, unsigned int length, char letter);

// Writes the low 32 bits of `value` at `to` in `radix` (2 to 36, else 10), lower case, signed in radix 10
// only. Returns the end; at most nxErrorDigitsMax characters, no terminator.
inline constexpr unsigned int nxErrorDigitsMax = 33;
char* nxErrorDigits(char* to, long value, int radix);
