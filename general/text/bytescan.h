// general/text/bytescan.h - Private header. Scanning of plain units, sixteen bytes at a time where the
// processor allows; no lead bytes are looked at. `qty` counts units; positions are null when not found.
#pragma once

#include <cstddef>
#include <cstring>

// First and last `unit` among `qty`.
inline unsigned char const* nxScan(unsigned char const* p, std::size_t qty, unsigned char unit) {
    return qty ? static_cast<unsigned char const*>(std::memchr(p, unit, qty)) : nullptr;
}
unsigned short const* nxScan(unsigned short const* p, std::size_t qty, unsigned short unit);
unsigned char const* nxScanLast(unsigned char const* p, std::size_t qty, unsigned char unit);
unsigned short const* nxScanLast(unsigned short const* p, std::size_t qty, unsigned short unit);

// First and last occurrence of the `subQty` units at `sub`. None: the start, the end.
unsigned char const* nxScan(unsigned char const* p, std::size_t qty, unsigned char const* sub,
                            std::size_t subQty);
unsigned short const* nxScan(unsigned short const* p, std::size_t qty, unsigned short const* sub,
                             std::size_t subQty);
unsigned char const* nxScanLast(unsigned char const* p, std::size_t qty, unsigned char const* sub,
                                std::size_t subQty);
unsigned short const* nxScanLast(unsigned short const* p, std::size_t qty, unsigned short const* sub,
                                 std::size_t subQty);

// Units before the first zero, at most `max`.
inline std::size_t nxScanLen(unsigned char const* p, std::size_t max) {
    void const* zero = std::memchr(p, 0, max);
    return zero ? static_cast<std::size_t>(static_cast<unsigned char const*>(zero) - p) : max;
}
inline std::size_t nxScanLen(unsigned short const* p, std::size_t max) {
    std::size_t n = 0;
    while (n < max && p[n])
        ++n;
    return n;
}

// Units before the terminating zero.
inline std::size_t nxScanLen(unsigned char const* p) {
    return std::strlen(reinterpret_cast<char const*>(p));
}
inline std::size_t nxScanLen(unsigned short const* p) {
    std::size_t n = 0;
    while (p[n])
        ++n;
    return n;
}

// Length of the leading run of bytes below 0x80.
std::size_t nxScanAscii(unsigned char const* p, std::size_t qty);

// Change ASCII letters.
void nxScanUpper(unsigned char* p, std::size_t qty);
void nxScanUpper(unsigned short* p, std::size_t qty);
void nxScanLower(unsigned char* p, std::size_t qty);
void nxScanLower(unsigned short* p, std::size_t qty);

// Index of the first unit that differs between `a` and `b`, as it is and after folding; `qty` when none does.
std::size_t nxScanDiffer(unsigned char const* a, unsigned char const* b, std::size_t qty);
std::size_t nxScanDiffer(unsigned short const* a, unsigned short const* b, std::size_t qty);
std::size_t nxScanDifferFold(unsigned char const* a, unsigned char const* b, std::size_t qty);
std::size_t nxScanDifferFold(unsigned short const* a, unsigned short const* b, std::size_t qty);
