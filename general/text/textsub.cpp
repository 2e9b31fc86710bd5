// general/text/textsub.cpp - views of a part of a character vector.
#include <algorithm>
#include <cstring>

#include "general/text/textcount.h"
#include "general/text/textvec.h"

namespace {

unsigned int lengthOf(char const* text) {
    return text ? static_cast<unsigned int>(std::strlen(text)) : 0;
}

} // namespace

NX_CharASub::NX_CharASub(NX_TextVecA const* vector, unsigned int start, unsigned int length)
    : NX_VecSubM(vector, start, length) {}

NX_TextVecA* NX_CharASub::collP() const {
    return static_cast<NX_TextVecA*>(NX_VecSubM::collP());
}

unsigned int NX_CharASub::itemQty() const {
    unsigned int const qty = collP()->itemQty();
    return itemNum() < qty ? std::min(qty - itemNum(), subQtyMax()) : 0;
}

unsigned int NX_CharASub::itemQty(unsigned int n) {
    unsigned int const qty = itemQty();
    if (n < qty) {
        collP()->dataDeleteAt(itemNum() + n, qty - n);
        collP()->strTerminate();
    } else if (n > qty) {
        collP()->dataCreateAt(itemNum() + qty, qty - n); // wraps: no view grows this way
    }
    return qty;
}

NX_CharASub& NX_CharASub::operator=(NX_CharASub const& other) {
    collP()->dataReplaceAt(itemNum(), itemQty(), other.dataPConst(), other.itemQty());
    collP()->strTerminate();
    return *this;
}

NX_CharASub& NX_CharASub::operator=(NX_TextVecA const& other) {
    collP()->dataReplaceAt(itemNum(), itemQty(), other.dataPConst(), other.itemQty());
    collP()->strTerminate();
    return *this;
}

NX_CharASub& NX_CharASub::operator=(char const* text) {
    collP()->dataReplaceAt(itemNum(), itemQty(), text, lengthOf(text));
    collP()->strTerminate();
    return *this;
}

char const* NX_CharASub::dataPConst() const {
    return itemQty() == 0 ? nullptr : collP()->itemPConst(itemNum());
}

char* NX_CharASub::dataPMod() {
    return itemQty() == 0 ? nullptr : collP()->itemPMod(itemNum());
}

char const* NX_CharASub::textP() const {
    return itemQty() == 0 ? "" : collP()->dataPConst() + itemNum();
}

unsigned int NX_CharASub::indexOf(char const* found) const {
    return found ? itemNum() + static_cast<unsigned int>(found - textP()) : NX_NO_INDEX;
}

int NX_CharASub::strCompare(char const* text, unsigned int textLength, NX_CompareType type) const {
    if (!text)
        textLength = 0;
    return NxTextCompare(textP(), nxTextCount(itemQty()), text ? text : "", nxTextCount(textLength), type);
}

int NX_CharASub::strCompare(NX_CharASub const& other, NX_CompareType type) const {
    return strCompare(other.textP(), other.itemQty(), type);
}

int NX_CharASub::strCompare(NX_TextVecA const& other, NX_CompareType type) const {
    return strCompare(other.dataPConst(), other.itemQty(), type);
}

int NX_CharASub::strCompare(char const* text, NX_CompareType type) const {
    return strCompare(text, lengthOf(text), type);
}

unsigned int NX_CharASub::strCharFirst(char ch) const {
    return indexOf(NxTextFind(textP(), nxTextCount(itemQty()), static_cast<unsigned char>(ch)));
}

unsigned int NX_CharASub::strCharFirst(char const* set) const {
    int const qty = nxTextCount(itemQty());
    int const before = NxTextSpanNot(textP(), qty, set);
    return before < qty ? itemNum() + static_cast<unsigned int>(before) : NX_NO_INDEX;
}

unsigned int NX_CharASub::strCharFirstXQuote(char ch) const {
    return indexOf(NxTextFindXQuote(textP(), nxTextCount(itemQty()), static_cast<unsigned char>(ch)));
}

unsigned int NX_CharASub::strCharLast(char ch) const {
    return indexOf(NxTextFindLast(textP(), nxTextCount(itemQty()), static_cast<unsigned char>(ch)));
}

unsigned int NX_CharASub::strCharLast(char const* set) const {
    char const* const text = textP();
    int const qty = nxTextCount(itemQty());
    unsigned int found = NX_NO_INDEX;
    // Runs outside and inside the set take turns; the last run inside ends with the character looked for,
    // whose start a walk through that run tells.
    for (int pos = 0; (pos += NxTextSpanNot(text + pos, qty - pos, set)) < qty;) {
        int const end = pos + NxTextSpan(text + pos, qty - pos, set);
        for (int at = pos; at < end; at += NxTextDbcsP()[static_cast<unsigned char>(text[at])] + 1)
            found = itemNum() + static_cast<unsigned int>(at);
        pos = end;
    }
    return found;
}

unsigned int NX_CharASub::strStrFirst(char const* text) const {
    if (itemQty() == 0)
        return NX_NO_INDEX;
    return indexOf(NxTextFind(textP(), nxTextCount(itemQty()), NX_TextA1PtrConst(text ? text : "")));
}

NX_CharASub& NX_CharASub::strStrip(NX_StripType type) {
    if (type & NX_StripLead) {
        auto const spaces = static_cast<unsigned int>(NxTextSpaceLen(textP(), nxTextCount(itemQty())));
        subMove(itemNum() + spaces, subQtyMax() == NX_NO_INDEX ? NX_NO_INDEX : subQtyMax() - spaces);
    }
    if (type & NX_StripTrail)
        subMove(itemNum(), static_cast<unsigned int>(NxTextSpaceNotEnd(textP(), nxTextCount(itemQty()))));
    return *this;
}

void NX_CharASub::strLower() {
    if (char* const text = dataPMod())
        NxTextLower(text, nxTextCount(itemQty()));
}

void NX_CharASub::strUpper() {
    if (char* const text = dataPMod())
        NxTextUpper(text, nxTextCount(itemQty()));
}

char* NX_CharASub::dataCopy(char* dst, unsigned int size, unsigned int* copied) const {
    unsigned int const qty = dst && size > 0 ? std::min(itemQty(), size - 1) : 0;
    if (dst && size > 0) {
        std::memcpy(dst, textP(), qty);
        dst[qty] = 0;
    }
    if (copied)
        *copied = qty;
    return dst;
}

long NX_CharASub::dataLongGet() const {
    return NxTextLongGet(textP(), nxTextCount(itemQty()), nullptr);
}

long NX_CharASub::dataLongGet(NX_DataType type) const {
    return NxTextLongGet(textP(), nxTextCount(itemQty()), type);
}
