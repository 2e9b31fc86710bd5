// general/text/textvec.cpp - character vectors.
#include "general/text/textvec.h"

#include "general/text/textcount.h"

void NX_TextVecA::charAppend(char ch) {
    itemQtyGrow(1);
    char* const end = dataPMod() + itemQty();
    end[-1] = ch;
    end[0] = 0;
}

void NX_TextVecA::operator+=(NX_TextVecA const& other) {
    NX_VecM::dataReplaceAt(itemQty(), 0, other.dataPConst(), other.itemQty());
    strTerminate();
}

void NX_TextVecA::operator+=(NX_CharASub const& view) {
    NX_VecM::dataReplaceAt(itemQty(), 0, view.dataPConst(), view.itemQty());
    strTerminate();
}

void NX_TextVecA::strLower() {
    NxTextLower(dataPMod(), nxTextCount(itemQty()));
}

void NX_TextVecA::strUpper() {
    NxTextUpper(dataPMod(), nxTextCount(itemQty()));
}

char* NX_TextVecA::dataCopy(char* dst, unsigned int size, unsigned int* copied) const {
    return (*this)(0).dataCopy(dst, size, copied);
}

void NX_TextVecA::strTerminate() const {
    char const* const end = NX_VecM::dataPEndConst();
    if (*end != 0) [[unlikely]]
        *const_cast<char*>(end) = 0;
}
