// general/text/stringnum.cpp - numbers and fields in the string.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "general/text/stringa.h"

int NX_StringA::atoInt() const {
    return static_cast<int>(atoLong());
}

long NX_StringA::atoLong() const {
    // The run-time's reading, with one width on every system.
    long long const value = std::strtoll(dataPConst(), nullptr, 10);
    return static_cast<long>(std::clamp<long long>(value, INT32_MIN, INT32_MAX));
}

long NX_StringA::dataLongGet() const {
    return (*this)(0).dataLongGet();
}

long NX_StringA::dataLongGet(unsigned int start, unsigned int len) const {
    return (*this)(start, len).dataLongGet();
}

long NX_StringA::dataLongGet(NX_DataType type) const {
    return (*this)(0).dataLongGet(type);
}

long NX_StringA::dataLongGet(unsigned int start, unsigned int len, NX_DataType type) const {
    return (*this)(start, len).dataLongGet(type);
}

NX_StringA NX_StringA::dataStringGet(NX_StripType type) const {
    NX_StringA copy(*this);
    copy.strStrip(type);
    return copy;
}

NX_StringA NX_StringA::dataStringGet(unsigned int start, unsigned int len, NX_StripType type) const {
    return NX_StringA((*this)(start, len).strStrip(type));
}
