// general/text/stringfind.cpp - searching in the string and comparing it.
#include <cstring>

#include "general/text/stringa.h"

unsigned int NX_StringA::strCharFirst(char ch) const {
    return (*this)(0).strCharFirst(ch);
}

unsigned int NX_StringA::strCharFirst(char const* set) const {
    return (*this)(0).strCharFirst(set);
}

unsigned int NX_StringA::strCharFirstXQuote(char ch) const {
    return (*this)(0).strCharFirstXQuote(ch);
}

unsigned int NX_StringA::strCharLast() const {
    unsigned int const len = strLen();
    if (len == 0)
        return NX_NO_INDEX;
    return len - (len > 1 && NxTextLast(dataPConst(), static_cast<int>(len)) > 0xFF ? 2 : 1);
}

unsigned int NX_StringA::strCharLast(char ch) const {
    return (*this)(0).strCharLast(ch);
}

unsigned int NX_StringA::strCharLast(char const* set) const {
    return (*this)(0).strCharLast(set);
}

unsigned int NX_StringA::strStrFirst(char const* text) const {
    return (*this)(0).strStrFirst(text);
}

unsigned int NX_StringA::strFindLast(char const* text) const {
    char const* start = dataPConst();
    NX_TextA1PtrConst const found =
        NxTextFindLast(start, static_cast<int>(strLen()), NX_TextA1PtrConst(text != nullptr ? text : ""));
    return found != nullptr ? static_cast<unsigned int>(found - start) : NX_NO_INDEX;
}

unsigned int NX_StringA::strKeySearch(char const* const* table, unsigned int count,
                                      int(NX_FASTCALL* compare)(char const*, char const*)) const {
    char const* key = dataPConst();
    unsigned int low = 0;
    unsigned int high = count;
    while (low < high) {
        unsigned int const middle = low + (high - 1 - low) / 2;
        int const order = compare(key, table[middle]);
        if (order == 0)
            return middle;
        if (order < 0)
            high = middle;
        else
            low = middle + 1;
    }
    return NX_NO_INDEX;
}

int NX_StringA::strCompare(char const* x, unsigned int len, NX_CompareType type) const {
    return NxTextCompare(dataPConst(), static_cast<int>(strLen()), x != nullptr ? x : "",
                         x != nullptr ? static_cast<int>(len) : 0, type);
}

int NX_StringA::strCompare(char const* x, NX_CompareType type) const {
    return strCompare(x, x != nullptr ? static_cast<unsigned int>(std::strlen(x)) : 0, type);
}

int NX_StringA::strCompare(NX_StringA const& x, NX_CompareType type) const {
    return strCompare(x.dataPConst(), x.strLen(), type);
}

int NX_StringA::strCompare(NX_CharASub const& x, NX_CompareType type) const {
    return strCompare(x.dataPConst(), x.itemQty(), type);
}

int NX_StringA::nameCompare(char const* x, unsigned int len, NX_CompareType type) const {
    return strCompare(x, len, type);
}

int NX_StringA::nameCompare(char const* x, NX_CompareType type) const {
    return strCompare(x, type);
}

int NX_StringA::nameCompare(NX_StringA const& x, NX_CompareType type) const {
    return strCompare(x, type);
}

int NX_StringA::nameCompare(NX_CharASub const& x, NX_CompareType type) const {
    return strCompare(x, type);
}

int NX_StringA::nameWildCompare(char const* pattern, unsigned int len, NX_CompareType type) const {
    bool const fold = type == NX_CompareFold || type == NX_CompareFoldNum || type == NX_CompareWildFold;
    return strCompare(pattern, len, fold ? NX_CompareWildFold : NX_CompareWild);
}

int NX_StringA::nameWildCompare(char const* pattern, NX_CompareType type) const {
    return nameWildCompare(pattern, pattern != nullptr ? static_cast<unsigned int>(std::strlen(pattern)) : 0,
                           type);
}

int NX_StringA::nameWildCompare(NX_StringA const& pattern, NX_CompareType type) const {
    return nameWildCompare(pattern.dataPConst(), pattern.strLen(), type);
}

int NX_StringA::nameWildCompare(NX_CharASub const& pattern, NX_CompareType type) const {
    return nameWildCompare(pattern.dataPConst(), pattern.itemQty(), type);
}
