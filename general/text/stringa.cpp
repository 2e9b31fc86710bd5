// general/text/stringa.cpp - construction, assignment, access and views of the string.
#include "general/text/stringa.h"

#include <cstring>

#include "general/text/namewalk.h"
#include "general/text/regexp.h"

namespace {

unsigned int lengthOf(char const* text) {
    return text != nullptr ? static_cast<unsigned int>(std::strlen(text)) : 0;
}

} // namespace

NX_StringA::NX_StringA(unsigned int qty, unsigned int cap) : NX_TextVecA(qty, cap) {
    strTerminate();
}

NX_StringA::NX_StringA(char const* text) : NX_StringA(text, lengthOf(text)) {}

NX_StringA::NX_StringA(char const* text, unsigned int len) : NX_StringA(text, len, nullptr, 0) {}

NX_StringA::NX_StringA(char ch, unsigned int count) {
    strLen(count, ch);
}

NX_StringA::NX_StringA(NX_CharASub const& view) : NX_StringA(view.dataPConst(), view.itemQty()) {}

NX_StringA::NX_StringA(std::ostrstream& stream) {
    if (stream.pcount() <= 0)
        return;
    dataReplace(stream.str(), static_cast<unsigned int>(stream.pcount()));
    stream.freeze(false);
}

NX_StringA::NX_StringA(std::ostringstream& stream) {
    auto const text = stream.view();
    *this = NX_StringA(text.data(), static_cast<unsigned int>(text.size()));
}

NX_StringA::NX_StringA(char const* text1, unsigned int len1, char const* text2, unsigned int len2) {
    len1 = text1 != nullptr ? len1 : 0;
    len2 = text2 != nullptr ? len2 : 0;
    if (len1 >= NX_NO_INDEX - len2)
        nxMemExhausted();
    if (len1 + len2 == 0)
        return;
    // A block that has been written to, as every vector made of items has.
    NX_VecRefM* const block = NX_VecRefM::refAlloc(0x100 | NX_RefFlagDirty, len1 + len2 + 1, 1);
    if (len1 > 0)
        std::memcpy(block->dataPMod(), text1, len1);
    if (len2 > 0)
        std::memcpy(block->dataPMod() + len1, text2, len2);
    block->itemQtySet(len1 + len2);
    refP(block);
}

NX_StringA::NX_StringA(NX_StringA const& dir, char const* text, unsigned int len, NX_FileType type)
    : NX_StringA(dir) {
    nameDirSep();
    if (text != nullptr && len > 0)
        strReplaceAt(strLen(), 0, text, len);
    if (type == NX_FileTypeDir)
        nameDirSep();
}

NX_StringA& NX_StringA::operator=(char const* text) {
    unsigned int const len = lengthOf(text);
    if (len == 0 && !refIsSole())
        collDefault(); // no block of its own is needed
    else
        dataReplace(text, len);
    strTerminate();
    return *this;
}

NX_StringA& NX_StringA::operator+=(char const* text) {
    return strReplaceAt(strLen(), 0, text);
}

NX_StringA& NX_StringA::operator+=(NX_StringA const& other) {
    return strReplaceAt(strLen(), 0, other);
}

NX_StringA& NX_StringA::operator+=(NX_CharASub const& view) {
    return strReplaceAt(strLen(), 0, view.dataPConst(), view.itemQty());
}

NX_StringA operator+(NX_StringA const& a, NX_StringA const& b) {
    return NX_StringA(a.dataPConst(), a.strLen(), b.dataPConst(), b.strLen());
}

NX_StringA operator+(NX_StringA const& a, char const* b) {
    return NX_StringA(a.dataPConst(), a.strLen(), b, lengthOf(b));
}

NX_StringA operator+(char const* a, NX_StringA const& b) {
    return NX_StringA(a, lengthOf(a), b.dataPConst(), b.strLen());
}

unsigned int NX_StringA::strLen(unsigned int len, char fill) {
    unsigned int const before = itemQty(len);
    if (len > before)
        std::memset(dataPMod() + before, fill, len - before);
    strTerminate();
    return before;
}

char const* NX_StringA::itemPConst(unsigned int n) const {
    strTerminate();
    return NX_TextVecA::itemPConst(n);
}

char* NX_StringA::itemPMod(unsigned int n) {
    char* const p = NX_TextVecA::itemPMod(n);
    strTerminate();
    return p;
}

char const* NX_StringA::itemPExtraConst(unsigned int n) const {
    strTerminate();
    return NX_TextVecA::itemPExtraConst(n);
}

unsigned int NX_StringA::itemNum(NX_RegExpA const& pattern, unsigned int start) const {
    return pattern.itemNum(*this, nullptr, start);
}

unsigned int NX_StringA::itemNum(NX_RegExpA const& pattern, unsigned int* lenOut, unsigned int start) const {
    return pattern.itemNum(*this, lenOut, start);
}

NX_CharASub NX_StringA::operator()(NX_RegExpA const& pattern, unsigned int start) {
    unsigned int len = 0;
    unsigned int const found = pattern.itemNum(*this, &len, start);
    return (*this)(found, len);
}

NX_CharASub NX_StringA::operator()(NX_RegExpA const& pattern, unsigned int start) const {
    unsigned int len = 0;
    unsigned int const found = pattern.itemNum(*this, &len, start);
    return (*this)(found, len);
}
