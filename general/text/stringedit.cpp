// general/text/stringedit.cpp - replacing, stripping and translating parts of the string.
#include <cstring>

#include "general/text/stringa.h"

NX_StringA& NX_StringA::strReplaceAt(unsigned int start, unsigned int len, char const* text,
                                     unsigned int textLen) {
    if (textLen == 0 && (len == 0 || start == strLen()) && start <= strLen())
        return *this; // nothing to replace: a shared block stays shared
    dataReplaceAt(start, len, text, textLen);
    strTerminate();
    return *this;
}

NX_StringA& NX_StringA::strReplaceAt(unsigned int start, unsigned int len, char const* text) {
    return strReplaceAt(start, len, text, text != nullptr ? static_cast<unsigned int>(std::strlen(text)) : 0);
}

NX_StringA& NX_StringA::strReplaceAt(unsigned int start, unsigned int len, NX_StringA const& text) {
    return strReplaceAt(start, len, text.dataPConst(), text.strLen());
}

NX_StringA& NX_StringA::strStrip(NX_StripType type) {
    NX_CharASub const kept = (*this)(0).strStrip(type);
    unsigned int const start = kept.itemNum();
    unsigned int const end = start + kept.itemQty();
    if (end < strLen())
        dataDeleteAt(end, strLen() - end);
    if (start > 0)
        dataDeleteAt(0, start);
    strTerminate();
    return *this;
}

NX_StringA& NX_StringA::strXlate(unsigned char const* table) {
    if (strLen() == 0)
        return *this;
    char* p = dataPMod();
    for (char* const end = p + strLen(); p < end; ++p)
        *p = static_cast<char>(table[static_cast<unsigned char>(*p)]);
    return *this;
}

NX_StringA& NX_StringA::strXlate(char const* pairs) {
    if (pairs == nullptr || strLen() == 0)
        return *this;
    unsigned char table[256];
    for (unsigned int i = 0; i < 256; ++i)
        table[i] = static_cast<unsigned char>(i);
    // From the last pair to the first, so that the first one for a character counts.
    for (std::size_t i = std::strlen(pairs) / 2; i-- > 0;)
        table[static_cast<unsigned char>(pairs[2 * i])] = static_cast<unsigned char>(pairs[2 * i + 1]);
    unsigned char const* lead = NxTextDbcsP();
    char* p = dataPMod();
    char* const end = p + strLen();
    while (p < end) {
        auto const unit = static_cast<unsigned char>(*p);
        if (lead[unit] != 0) {
            p += 2;
            continue;
        }
        *p++ = static_cast<char>(table[unit]);
    }
    return *this;
}

char* NX_StringA::strCopy(char* buf, unsigned int bufLen, unsigned int* lenOut) const {
    return dataCopy(buf, bufLen, lenOut);
}
