// Private header. general/module/lebytes.h - little-endian numbers in bytes that lie anywhere.
#pragma once

#include <cstdint>

inline std::uint16_t nxU16(unsigned char const* p) {
    return static_cast<std::uint16_t>(p[0] | p[1] << 8);
}

inline std::uint32_t nxU32(unsigned char const* p) {
    return nxU16(p) | std::uint32_t{nxU16(p + 2)} << 16;
}

inline std::int32_t nxS32(unsigned char const* p) {
    return static_cast<std::int32_t>(nxU32(p));
}
