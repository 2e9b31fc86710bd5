// Private header. general/module/inflate.h - decoding of a zlib stream that lies in several pieces.
//
// Formats: zlib, RFC 1950; deflate, RFC 1951. Works on the stack; nothing is allocated, nothing recorded.
// Whatever the bytes are, nothing outside the pieces is read and nothing outside the room is written; the
// time is bounded by a small multiple of both. Threads: calls share nothing.
#pragma once

#include <cstdint>

// Programs that feed readers with made-up input are built with sums that always fit, as they would guess
// none.
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
inline constexpr bool nxSumsCount = false;
#else
inline constexpr bool nxSumsCount = true;
#endif

// Where a stream lies.
class NXS_InflateSource {
public:
    // The next piece, which may be empty and stays valid until the end of the decoding. False: there is none.
    virtual bool pieceNext(unsigned char const*& data, std::uint32_t& size) = 0;

protected:
    ~NXS_InflateSource() = default;
};

// Fills the `size` bytes at `out` from the stream. True, or false for a stream that is damaged, ends early or
// is too short; then `out` holds anything. Of a stream that is longer the rest is not decoded, and its sum,
// which covers the rest, is not checked.
bool nxInflate(NXS_InflateSource& source, unsigned char* out, std::uint32_t size);
