// general/collm/v1hex.cpp - a vector's bytes as hexadecimal text, and back.
#include "general/collm/v1.h"

#include <cstring>

namespace {

// The value of a hexadecimal digit, or -1.
int digitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    char const lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

void NX_VecM::dataHex(char const* sep) {
    if (itemQty() == 0)
        return;
    std::size_t const sepLen = sep == nullptr ? 0 : std::strlen(sep);
    unsigned int const bytes = dataSize();
    std::uint64_t const step = sepLen + 2;
    if (step > 0xFFFFFFFFu || bytes * step - sepLen > 0xFFFFFFFFu - itemSize())
        nxMemExhausted();
    std::size_t const textLen = static_cast<std::size_t>(bytes * step - sepLen);
    itemQty(static_cast<unsigned int>((textLen + itemSize() - 1) / itemSize()));

    char* const p = dataPMod();
    std::memset(p + textLen, 0, dataSize() - textLen);
    // From the end, so that no byte is overwritten before it has been read.
    for (unsigned int n = bytes; n-- > 0;) {
        unsigned char const byte = static_cast<unsigned char>(p[n]);
        char* const to = p + n * static_cast<std::size_t>(step);
        if (n + 1 < bytes && sepLen != 0)
            std::memcpy(to + 2, sep, sepLen);
        to[0] = "0123456789abcdef"[byte >> 4];
        to[1] = "0123456789abcdef"[byte & 0x0F];
    }
}

void NX_VecM::dataBin() {
    char* const p = dataPMod();
    char* to = p;
    char const* const end = p + dataSize();
    for (char const* from = p; from < end; ++from) {
        int const high = digitValue(*from);
        if (high < 0)
            continue;
        int const low = from + 1 < end ? digitValue(from[1]) : -1;
        if (low >= 0)
            ++from;
        *to++ = static_cast<char>(low < 0 ? high : high * 16 + low);
    }
    refP()->itemQtySet(static_cast<unsigned int>(to - p) / itemSize());
}
