// general/text/textvec.h - vectors of 8-bit characters and views of a part of one.
//
// NX_TextVecA is the storage of every 8-bit text: a copy-on-write vector of char. NX_CharASub names a run of
// characters inside one; it owns nothing and must not outlive the vector.
// Positions and lengths are in bytes; a double-byte character counts two. "Not found" is NX_NO_INDEX.
// Characters are not terminated by contract of the vector, but the slot after the last one always exists, and
// every text operation declared here leaves a zero in it.
// Threads: as of NX_VecM.
// Failure: a bad index is an assertion; nothing here reports through the error manager, files excepted.
#pragma once

#include <iosfwd>

#include "general/collm/v4x.h"
#include "general/text/textcompare.h"
#include "general/text/textprim.h"

class NX_File;
class NX_PersistTextLoad;
class NX_PersistTextSave;
class NX_TextVecA;

// Which ends to free of white space; a bit set.
enum NX_StripType : int { NX_StripNone = 0, NX_StripLead = 0x1, NX_StripTrail = 0x2, NX_StripBoth = 0x3 };

// A view of characters `start` up to `start + length` of a vector. A length reaching past the end of the
// vector ends there (NX_NO_INDEX as length: always to the end); a start at or past the end makes the view
// empty. Copying a view copies its place; assigning to a view replaces the characters it shows and leaves its
// place.
class NX_EXPORT NX_CharASub : public NX_VecSubM {
public:
    // A start of NX_NO_INDEX makes an empty view. A view of a constant vector must only be read.
    NX_CharASub(NX_TextVecA const* vector, unsigned int start, unsigned int length);
    NX_CharASub(NX_CharASub const&) = default;
    ~NX_CharASub() = default;

    // Replace the viewed characters in the vector, which grows or shrinks. The source may be part of the same
    // vector; null counts as empty.
    NX_CharASub& operator=(NX_CharASub const& other);
    NX_CharASub& operator=(NX_TextVecA const& other);
    NX_CharASub& operator=(char const* text);

    NX_TextVecA* collP() const;

    // The number of characters shown now: min(length, vector's count - start), 0 past the end.
    unsigned int itemQty() const;
    // Shrinks the view's part of the vector to n characters; returns the count before. A larger n asks for an
    // impossible insertion and ends in the out-of-memory handling.
    unsigned int itemQty(unsigned int n);
    unsigned int itemQtyGrow(unsigned int n) { return itemQty(itemQty() + n); }
    unsigned int dataSize() const { return itemQty(); }
    using NX_VecSubM::dataSize;

    // The first character, or null for an empty view. The second makes the vector modifiable first.
    char const* dataPConst() const;
    char* dataPMod();
    // Character n of the view; asserts start + n against the vector, not against the view.
    char const* itemPConst(unsigned int n) const { return NX_VecSubM::itemPConst(n); }
    char* itemPMod(unsigned int n) { return NX_VecSubM::itemPMod(n); }

    // Orders the viewed characters against the argument by the rules of NxTextCompare; null counts as empty.
    int strCompare(NX_CharASub const& other, NX_CompareType type) const;
    int strCompare(NX_TextVecA const& other, NX_CompareType type) const;
    int strCompare(char const* text, NX_CompareType type) const;
    int strCompare(char const* text, unsigned int length, NX_CompareType type) const;
    int nameCompare(NX_CharASub const& other, NX_CompareType type) const { return strCompare(other, type); }
    int nameCompare(NX_TextVecA const& other, NX_CompareType type) const { return strCompare(other, type); }
    int nameCompare(char const* text, NX_CompareType type) const { return strCompare(text, type); }
    int nameCompare(char const* text, unsigned int length, NX_CompareType type) const {
        return strCompare(text, length, type);
    }

    // Searches inside the view; the results are indexes in the whole vector, or NX_NO_INDEX. A `set` is a
    // terminated text of characters; XQuote skips what stands between double quotes.
    unsigned int strCharFirst(char ch) const;
    unsigned int strCharFirst(char const* set) const;
    unsigned int strCharFirstXQuote(char ch) const;
    unsigned int strCharLast(char ch) const;
    unsigned int strCharLast(char const* set) const;
    unsigned int strStrFirst(char const* text) const;

    // Narrows the view by the white space at its ends; the vector stays as it is.
    NX_CharASub& strStrip(NX_StripType type);
    // Change the case of the viewed ASCII letters in the vector.
    void strLower();
    void strUpper();

    // Copies at most size - 1 characters to `dst` and terminates them; returns dst. `*copied` (may be null)
    // receives the number of characters copied, also when it is 0; with size 0 nothing is written to dst.
    char* dataCopy(char* dst, unsigned int size, unsigned int* copied) const;
    char* strCopy(char* dst, unsigned int size, unsigned int* copied) const {
        return dataCopy(dst, size, copied);
    }

    // The number that the viewed text holds, or the binary or text field of the given type. 32 bits,
    // sign-extended.
    long dataLongGet() const;
    long dataLongGet(NX_DataType type) const;

    // Generic range operations over the view: file contents into and out of it, sorting, searching. The
    // searches count relative to the view and then subtract its length, as those of every range view do.
    int dataRead(NX_File& file);
    int dataWrite(NX_File& file) const;
    void dataSort(NX_VecCompareM compare) { NX_VecSubM::dataSort(compare); }
    unsigned int itemSearch(char const& key, NX_VecCompareM compare, unsigned int* insertAt) const {
        return NX_VecSubM::itemSearch(&key, compare, insertAt);
    }
    unsigned int itemSearchSeq(char const& key, NX_VecCompareM compare) const {
        return NX_VecSubM::itemSearchSeq(&key, compare);
    }

private:
    char const* textP() const; // never null
    unsigned int indexOf(char const* found) const;
};

// The vector. Beyond what every typed vector has (see NX_VecT), it has case change, views and persistence.
class NX_EXPORT NX_TextVecA : public NX_VecT<char> {
public:
    // Empty; (quantity, capacity); (text, length) with capacity length + 1, no characters when text is null.
    using NX_VecT::NX_VecT;
    NX_TextVecA() = default;
    // Copies the viewed characters.
    NX_TextVecA(NX_CharASub const& view) : NX_VecT(view.dataPConst(), view.itemQty()) {}

    // Append. One character at a time is amortised constant, and a few instructions as a rule.
    void operator+=(char const& ch) {
        if (char* const last = refP()->itemNewQuick(1)) [[likely]] {
            last[0] = ch; // may lie in this block, which has not moved
            last[1] = 0;
        } else {
            charAppend(ch);
        }
    }
    void operator+=(NX_TextVecA const& other);
    void operator+=(NX_CharASub const& view);

    // Views; without a length they reach to the end.
    NX_CharASub operator()(unsigned int start) const { return {this, start, NX_NO_INDEX}; }
    NX_CharASub operator()(unsigned int start, unsigned int length) const { return {this, start, length}; }

    // Change the case of the ASCII letters, in all or in `length` characters from `start`.
    void strLower();
    void strLower(unsigned int start, unsigned int length) { (*this)(start, length).strLower(); }
    void strUpper();
    void strUpper(unsigned int start, unsigned int length) { (*this)(start, length).strUpper(); }

    // Copies at most size - 1 characters to `dst` and terminates them, as NX_CharASub::dataCopy does.
    char* dataCopy(char* dst, unsigned int size, unsigned int* copied) const;

    // Puts a zero behind the last character, so that dataPConst() can be read as a terminated text. Writes
    // only when none is there, so that constant and shared blocks are not touched.
    void strTerminate() const;

    // Writes `title` (unless null) on a line of its own and a hexadecimal dump of the characters, the first
    // of them shown at `address`.
    void dataFlagOut(std::ostream& os, char const* title, int address) const;

    // Persistence of the characters alone; the stream operators below add identity and sharing.
    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;
    NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const override;

private:
    friend class NX_CharASub;
    void charAppend(char ch); // where the block must be copied or grow
};

// Save and load with object identity; blocks shared when saved are shared again when loaded. Loading into a
// null pointer makes the object.
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_TextVecA const& text);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_TextVecA const* text);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_TextVecA& text);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_TextVecA*& text);
