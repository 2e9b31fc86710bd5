// general/module/reschar.cpp - 16-bit characters of resources as 8-bit ones.
//
// Facts: Unicode Consortium, mapping table of code page 1252.
#include <algorithm>

#include "general/module/resimage.h"
#include "general/platform/platform.h"

namespace {

constexpr unsigned int westernPage = 1252;

// What 0x80 to 0x9F stand for; five of them stand for themselves.
constexpr std::uint16_t western[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

} // namespace

char nxResChar(std::uint32_t unit) {
    if (unit < 0x80)
        return static_cast<char>(unit);
    if (GetACP() != westernPage)
        return '?';
    if (unit >= 0xA0 && unit <= 0xFF)
        return static_cast<char>(unit);
    auto const* const found = std::find(std::begin(western), std::end(western), unit);
    return found != std::end(western) ? static_cast<char>(0x80 + (found - western)) : '?';
}
