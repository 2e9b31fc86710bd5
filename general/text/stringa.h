// general/text/stringa.h - the 8-bit string: every name, path, message and detail word.
//
// A string is a character vector whose shared block holds the characters followed by a terminating zero,
// which is not counted and is always in place. Copies share one block in constant time; the first write
// through a handle that shares its block makes a private copy. Positions and lengths are in bytes. Searches
// return positions in the string, or NX_NO_INDEX when nothing is found. Text arguments are terminated unless
// a length follows; a null text counts as empty. Text that lies in the string itself may be passed to every
// member. File names have `\` and `/` as separators, an optional drive in front and an optional extension
// after the last dot of the last node; separators are found by character, so a trail byte is never taken for
// one. A separator that has to be supplied is the last one the name uses already, else the system's own.
// Ownership: strings are values; the views they hand out point at the string and must not outlive it.
// Threads: as of NX_VecM: strings that share a block may be read by several threads, copied and dropped by
// one. Failure: only what says so reports to the error manager. Out of memory ends in the heap layer. An
// index out of range is a programming error.
#pragma once

#include <concepts>
#include <cstdarg>
#include <cstdio>
#include <iosfwd>
#include <sstream>

#include "general/collm/v4x.h"
#include "general/text/fileenum.h"
#include "general/text/strstream.h"
#include "general/text/textvec.h"

class NX_FileInfo;
class NX_PersistTextLoad;
class NX_PersistTextSave;
class NX_RegExpA;
class NX_ResLib;
class NX_StringByName;

class NX_EXPORT NX_StringA : public NX_TextVecA {
public:
    // Construction. Without text nothing is allocated.
    NX_StringA() = default;
    NX_StringA(unsigned int qty, unsigned int cap); // `qty` zero characters, room for `cap`
    template <std::same_as<int> N> // two plain numbers are counts, not a character and a count
    NX_StringA(N qty, unsigned int cap) : NX_StringA(static_cast<unsigned int>(qty), cap) {}
    NX_StringA(char const* text);
    NX_StringA(char const* text, unsigned int len);
    NX_StringA(char ch, unsigned int count);
    NX_StringA(NX_CharASub const& view);
    NX_StringA(NX_StringA const& other) = default;
    explicit NX_StringA(std::ostrstream& stream); // the stream's text; the stream can go on being written
    explicit NX_StringA(std::ostringstream& stream);

    // A file name: `text` behind the directory `dir`, one separator between them unless `dir` is empty, a
    // bare drive or ends in one. NX_FileTypeDir also ends the result with a separator.
    NX_StringA(NX_StringA const& dir, char const* text, unsigned int len, NX_FileType type);

    NX_StringA& operator=(NX_StringA const& other) = default;
    NX_StringA& operator=(char const* text);

    NX_StringA& operator+=(char ch) { // amortised constant
        NX_TextVecA::operator+=(ch);
        return *this;
    }
    NX_StringA& operator+=(char const* text);
    NX_StringA& operator+=(NX_StringA const& other);
    NX_StringA& operator+=(NX_CharASub const& view);

    // Access. Indexes must be below the length; itemPExtraConst also takes the length itself, where the zero
    // is. The modifiable forms make the block the string's own first.
    unsigned int strLen() const { return itemQty(); }

    // As in the vector, with the zero behind what is left.
    using NX_TextVecA::itemQty;
    unsigned int itemQty(unsigned int n) { return terminated(NX_TextVecA::itemQty(n)); }
    unsigned int dataDeleteAt(unsigned int pos, unsigned int n) {
        return terminated(NX_TextVecA::dataDeleteAt(pos, n));
    }
    unsigned int itemDeleteAt(unsigned int pos) { return dataDeleteAt(pos, 1); }

    // Sets the length; new characters become `fill`. Returns the length before.
    unsigned int strLen(unsigned int len, char fill);

    char const* dataPConst() const { return textP(); }
    char* dataPMod() {
        char* const p = NX_TextVecA::dataPMod();
        strTerminate();
        return p;
    }
    char const* dataPEndConst() const { return textP() + itemQty(); }
    char* dataPEndMod() { return dataPMod() + itemQty(); }
    char const* itemPConst(unsigned int n) const;
    char* itemPMod(unsigned int n);
    char const& operator[](unsigned int n) const { return *itemPConst(n); }
    char& operator[](unsigned int n) { return *itemPMod(n); }
    char const* itemPExtraConst(unsigned int n) const;
    unsigned int itemNum(char const* p) const { return static_cast<unsigned int>(p - textP()); }

    // Views: from `start` to the end, `len` characters, or the first match of a pattern at or after `start`
    // (start NX_NO_INDEX and length 0 without a match).
    NX_CharASub operator()(unsigned int start) { return {this, start, NX_NO_INDEX}; }
    NX_CharASub operator()(unsigned int start, unsigned int len) { return {this, start, len}; }
    NX_CharASub operator()(unsigned int start) const { return {this, start, NX_NO_INDEX}; }
    NX_CharASub operator()(unsigned int start, unsigned int len) const { return {this, start, len}; }
    NX_CharASub operator()(NX_RegExpA const& pattern, unsigned int start = 0);
    NX_CharASub operator()(NX_RegExpA const& pattern, unsigned int start = 0) const;

    // The first match's position; its length, 0 without a match, goes to `*lenOut`.
    unsigned int itemNum(NX_RegExpA const& pattern, unsigned int start) const;
    unsigned int itemNum(NX_RegExpA const& pattern, unsigned int* lenOut, unsigned int start) const;

    // Searching, by character.
    unsigned int strCharFirst(char ch) const;
    unsigned int strCharFirst(char const* set) const; // the first character that occurs in `set`
    unsigned int strCharFirstXQuote(char ch) const;   // not inside double quotes, not behind a backslash
    unsigned int strCharLast() const;                 // where the last character starts
    unsigned int strCharLast(char ch) const;
    unsigned int strCharLast(char const* set) const;
    unsigned int strStrFirst(char const* text) const;
    unsigned int strFindLast(char const* text) const;

    // The index of this string in a table of `count` terminated texts in the order of `compare`, which gets
    // this string's text and the table's. NX_NO_INDEX when it is not there.
    unsigned int strKeySearch(char const* const* table, unsigned int count,
                              int(NX_FASTCALL* compare)(char const*, char const*)) const;

    // Comparison in the given mode: the sign says how this string lies to `x`; in the wildcard modes `x` is
    // the pattern and 0 a match. nameWildCompare always matches: exactly, or folded when the mode folds.
    int strCompare(char const* x, unsigned int len, NX_CompareType type) const;
    int strCompare(char const* x, NX_CompareType type) const;
    int strCompare(NX_StringA const& x, NX_CompareType type) const;
    int strCompare(NX_CharASub const& x, NX_CompareType type) const;
    int nameCompare(char const* x, unsigned int len, NX_CompareType type) const;
    int nameCompare(char const* x, NX_CompareType type) const;
    int nameCompare(NX_StringA const& x, NX_CompareType type) const;
    int nameCompare(NX_CharASub const& x, NX_CompareType type) const;
    int nameWildCompare(char const* pattern, unsigned int len, NX_CompareType type) const;
    int nameWildCompare(char const* pattern, NX_CompareType type) const;
    int nameWildCompare(NX_StringA const& pattern, NX_CompareType type) const;
    int nameWildCompare(NX_CharASub const& pattern, NX_CompareType type) const;

    // Editing. strReplaceAt replaces `len` characters (fewer when the string ends before); `start` is at most
    // the length.
    NX_StringA& strReplaceAt(unsigned int start, unsigned int len, NX_StringA const& text);
    NX_StringA& strReplaceAt(unsigned int start, unsigned int len, char const* text);
    NX_StringA& strReplaceAt(unsigned int start, unsigned int len, char const* text, unsigned int textLen);
    NX_StringA& strStrip(NX_StripType type);          // removes white space at the ends
    NX_StringA& strXlate(unsigned char const* table); // every byte b becomes table[b]

    // Translation by pairs: each one-byte character found at an even place of `pairs` becomes the one behind
    // it; the first pair for a character counts. Double-byte characters stay.
    NX_StringA& strXlate(char const* pairs);

    // At most bufLen - 1 characters and a zero; the number copied goes to `*lenOut`. Returns `buf`.
    char* strCopy(char* buf, unsigned int bufLen, unsigned int* lenOut) const;

    // Numbers. atoInt and atoLong read a decimal number (0 without one), kept within 32 bits; dataLongGet
    // reads the library's number grammar, or a binary field.
    int atoInt() const;
    long atoLong() const;
    long dataLongGet() const;
    long dataLongGet(unsigned int start, unsigned int len) const;
    long dataLongGet(NX_DataType type) const;
    long dataLongGet(unsigned int start, unsigned int len, NX_DataType type) const;

    // A copy of the whole or of a part, stripped.
    NX_StringA dataStringGet(NX_StripType type) const;
    NX_StringA dataStringGet(unsigned int start, unsigned int len, NX_StripType type) const;

    // Replaces the content by formatted text and returns its length. Conversions d i u o x X c s p % e E f F
    // g G with the flags "-+# 0", a width, a precision and the sizes h l ll L; anything else is copied as it
    // stands. Widths and precisions are cut to 998. The arguments may point into this string.
    int strPrintF(char const* format, ...);
    int strPrintFV(char const* format, va_list args);

    // Replaces every reference %[NAME] (letters, digits, underscores) by the dictionary's value, once, from
    // left to right. A reference to a name the dictionary lacks stays. The form without one uses
    // NxStrVarDict().
    NX_StringA& strVarReplace(NX_StringByName const& dict);
    NX_StringA& strVarReplace();

    // Replaces the content by the string resource `id`, of the application or of `lib`; by nothing when there
    // is none. Returns what the lookup returned: the text's length; -1 or 0 without one.
    int strLoad(int id);
    int strLoad(NX_ResLib lib, int id);

    // Reads one field: up to `delimiter`, which is taken from the stream but not stored, the end of input, or
    // `maxLen` characters; then strips it. With `quoted` non-zero a delimiter inside double quotes belongs to
    // the field. 0; -1 with error 26849 and an empty string when there was nothing to read.
    int strRead(std::istream& in, char delimiter, NX_StripType type, int quoted);
    int strRead(std::istream& in, int maxLen, char delimiter, NX_StripType type, int quoted);
    int strRead(std::FILE* in, char delimiter, NX_StripType type, int quoted);
    int strRead(std::FILE* in, int maxLen, char delimiter, NX_StripType type, int quoted);

    // Reads `len` bytes as they are. 0; -1 with error 26849 when fewer came (the string then holds these).
    int strReadRaw(std::FILE* in, int len);

    // Skips white space and reads up to the next. 0; -1 with error 26849 and an empty string at the end.
    int strTokenRead(std::istream& in);

    // Writes the characters. 0; -1 when the stream did not take them all.
    int strWrite(std::FILE* out) const;

    // File names: questions to the text. 1 or 0.
    int nameIsAbs() const; // begins at a root: a separator, or a drive and a separator
    int nameIsRel() const { return !nameIsAbs(); }
    int nameIsDrive() const; // a letter and a colon, nothing else
    int nameIsDir() const;   // ends in a separator, or is a bare drive
    int nameIsWild() const;  // holds `*` or `?`
    static int nameIsDirSep(char ch) { return ch == '\\' || ch == '/'; }

    // Positions: the last node (of "a/b/" that is b), the body behind the last separator or drive (of "a/b/"
    // the end), the extension's dot or the end of the name. "." and ".." have no extension.
    unsigned int nameNodeLastOff() const;
    unsigned int nameBodyExtOff() const;
    unsigned int nameExtOff() const;
    NX_IntVec nameNodeVec() const; // where each node starts; drive and root are no nodes

    // Parts as views. nameDir keeps its separator (or is a drive); nameExt starts after the dot; nameDirBody
    // ends before the dot; nameNodeLast has no separator.
    NX_CharASub nameDir() const;
    NX_CharASub nameBody() const;
    NX_CharASub nameExt() const;
    NX_CharASub nameBodyExt() const;
    NX_CharASub nameDirBody() const;
    NX_CharASub nameNodeLast() const;

    // The directory part without its separator, which only a root keeps; empty when the name has none.
    NX_StringA nameOfDir() const;

    // Replacing a part. With `sep` non-zero the part's separator (the dot before an extension, the separator
    // behind a directory other than a bare drive) is supplied when a non-empty text lacks it; with 0 the text
    // is taken as it is, so an empty extension takes the dot away and a directory without separator joins the
    // body. A body is always taken as it is: both its separators belong to its neighbours.
    NX_StringA& nameDir(NX_StringA const& text, int sep);
    NX_StringA& nameDir(NX_CharASub const& text, int sep);
    NX_StringA& nameDir(char const* text, int sep);
    NX_StringA& nameDir(char const* text, unsigned int len, int sep);
    NX_StringA& nameBody(NX_StringA const& text, int sep);
    NX_StringA& nameBody(NX_CharASub const& text, int sep);
    NX_StringA& nameBody(char const* text, int sep);
    NX_StringA& nameBody(char const* text, unsigned int len, int sep);
    NX_StringA& nameExt(NX_StringA const& text, int sep);
    NX_StringA& nameExt(NX_CharASub const& text, int sep);
    NX_StringA& nameExt(char const* text, int sep);
    NX_StringA& nameExt(char const* text, unsigned int len, int sep);
    NX_StringA& nameBodyExt(NX_StringA const& text, int sep);
    NX_StringA& nameBodyExt(NX_CharASub const& text, int sep);
    NX_StringA& nameBodyExt(char const* text, int sep);
    NX_StringA& nameBodyExt(char const* text, unsigned int len, int sep);

    // The same for the directory, of which the drive, the root and the first `keep` nodes stay.
    NX_StringA& nameDir(unsigned int keep, NX_StringA const& text, int sep);
    NX_StringA& nameDir(unsigned int keep, NX_CharASub const& text, int sep);
    NX_StringA& nameDir(unsigned int keep, char const* text, int sep);
    NX_StringA& nameDir(unsigned int keep, char const* text, unsigned int len, int sep);

    // Ends a directory's name with a separator, unless it has one, is empty or a bare drive; the second form
    // only when `type` says that the name is a directory's.
    NX_StringA& nameDirSep();
    NX_StringA& nameDirSep(NX_FileNameType type);

    // Shortens a name longer than `maxLen`: whole nodes go, from the middle one outward to either side in
    // turn, one "..." in their place, until the name fits. The last node always stays, even if the name is
    // then too long.
    NX_StringA& nameAbbreviate(unsigned int maxLen);

    // Merges a wildcard pattern (of `patLen` bytes) into body and extension as a copy command does; `fold`
    // non-zero: the search after `*` ignores case.
    NX_StringA& nameWildMergeBodyExt(NX_StringA const& pattern, int fold);
    NX_StringA& nameWildMergeBodyExt(char const* pattern, int fold);
    NX_StringA& nameWildMergeBodyExt(char const* pattern, int patLen, int fold);

    // Increments the last run of digits in place, carrying leftward within it. 1; 0 when all its digits
    // wrapped; -1 when there is none.
    int nameInc();

    // Asks the file system what the name stands for. Records no error.
    NX_FileNameType nameType() const;

    // 1 when the name is an existing directory's, else 0. With `mark` non-zero the name is also ended with a
    // separator, existing or not (nameDirSep).
    int nameIsDir(int mark);

    // Replaces the name by its full path; the second form by the full path of `name`. 0; -1 with the system's
    // error and the name recorded, the string unchanged.
    int nameFull();
    int nameFull(char const* name);

    // Replaces the string by the name of a new temporary file in `dir`: the application's name and a
    // three-digit number that no file there has. Nothing is created. The form without `dir` takes the
    // directory of the environment variable TMP, TEMP or TMPDIR, else the current one. 0; -1 with error 8402
    // when all are taken.
    int nameTmp();
    int nameTmp(NX_StringA const& dir);

    // 1 when the file exists, else 0.
    int nameFind() const;

    // Looks for the file, when the name is relative, in `dir` (one directory or a list like PATH), the
    // directory of the application, the system's two and those of PATH, then, with `here` non-zero, where it
    // stands. A name that is absolute or has a drive is only tested where it stands. With `dirToo` non-zero
    // directories count as well. 1: the string is the full name found; 0: not found, the string is unchanged.
    int nameFind(NX_StringA const& dir, int here);
    int nameFind(NX_StringA const& dir, int here, int dirToo);

    // Takes the string as a wildcard pattern and replaces it by one of the names found: by the first under
    // `compare` (null: the first found), the first found, the newest. The name carries the pattern's
    // directory part; in the first form only with `withDir` non-zero. 1; 0 when nothing matches, the string
    // is unchanged.
    int nameFind(int(NX_FASTCALL* compare)(NX_FileInfo const*, NX_FileInfo const*), NX_FileFindType find,
                 NX_FileAgeType age, int withDir);
    int nameFindFirst(NX_FileFindType find);
    int nameFindNewest(NX_FileFindType find, NX_FileAgeType age);

    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;

protected:
    // The two texts one after the other.
    NX_StringA(char const* text1, unsigned int len1, char const* text2, unsigned int len2);

private:
    unsigned int terminated(unsigned int result) {
        strTerminate();
        return result;
    }

    friend NX_EXPORT NX_StringA operator+(NX_StringA const& a, NX_StringA const& b);
    friend NX_EXPORT NX_StringA operator+(NX_StringA const& a, char const* b);
    friend NX_EXPORT NX_StringA operator+(char const* a, NX_StringA const& b);

    NX_FileNameType nameTypeSys() const;

    // The text with its zero. The vector's own members may leave another byte there; it is written only then,
    // as static and shared blocks are not written for nothing.
    char const* textP() const {
        char const* p = NX_TextVecA::dataPConst();
        if (p[itemQty()] != 0) [[unlikely]]
            const_cast<char*>(p)[itemQty()] = 0;
        return p;
    }

    NX_StringA& partReplace(unsigned int start, unsigned int end, char const* text, unsigned int len,
                            char before, char after);
    NX_StringA& dirReplace(unsigned int start, char const* text, unsigned int len, int sep);
};

NX_EXPORT NX_StringA operator+(NX_StringA const& a, NX_StringA const& b);
NX_EXPORT NX_StringA operator+(NX_StringA const& a, char const* b);
NX_EXPORT NX_StringA operator+(char const* a, NX_StringA const& b);

// The characters; with a field width of the stream, padded. Reading takes one word as the standard string
// does.
NX_EXPORT std::ostream& operator<<(std::ostream& out, NX_StringA const& text);
NX_EXPORT std::istream& operator>>(std::istream& in, NX_StringA& text);

// A string is saved as the character vector it is, and loaded as a string; into a null pointer, loading makes
// it.
inline NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_StringA const& text) {
    return save << static_cast<NX_TextVecA const&>(text);
}
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_StringA& text);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_StringA*& text);

// The library's default dictionary for strVarReplace: one per process, empty until the program fills it.
NX_EXPORT NX_StringByName& NxStrVarDict();
