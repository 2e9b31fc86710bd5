// Private header. general/finfo/copysmall.h - copies a few bytes without a call or a loop.
#pragma once

#include <cstdint>
#include <cstring>

inline constexpr std::uint32_t nxCopySmallMost = 64;

// The first and the last bytes of `size`, as many as a T has; both pieces may overlap.
template <class T>
inline void nxCopyEnds(char* to, char const* from, std::uint32_t size) {
    T first;
    T last;
    std::memcpy(&first, from, sizeof(T));
    std::memcpy(&last, from + size - sizeof(T), sizeof(T));
    std::memcpy(to, &first, sizeof(T));
    std::memcpy(to + size - sizeof(T), &last, sizeof(T));
}

// REQUIRES: 1 <= size <= nxCopySmallMost, and places that do not overlap.
inline void nxCopySmall(char* to, char const* from, std::uint32_t size) {
    using Wide [[gnu::vector_size(16)]] = std::uint64_t;
    if (size > 32)
        nxCopyEnds<Wide>(to + 16, from + 16, size - 32);
    if (size >= 16)
        nxCopyEnds<Wide>(to, from, size);
    else if (size >= 8)
        nxCopyEnds<std::uint64_t>(to, from, size);
    else if (size >= 4)
        nxCopyEnds<std::uint32_t>(to, from, size);
    else if (size >= 2)
        nxCopyEnds<std::uint16_t>(to, from, size);
    else
        *to = *from;
}
