// Private header. general/module/indexrow.h - rows of pixels that are indexes of a table.
#pragma once

#include "general/module/image.h"

// Puts the table's entries for `width` indexes of `depth` bits, of which the first stands highest in its
// byte.
template <unsigned int depth>
void nxIndexRow(NX_Pixel* row, unsigned int width, unsigned char const* from, NX_Pixel const* table) {
    constexpr unsigned int perByte = 8 / depth;
    for (unsigned int x = 0; x < width; ++x)
        row[x] = table[from[x / perByte] >> (8 - depth * (x % perByte + 1)) & ((1u << depth) - 1)];
}

// The function for a depth of 1, 2, 4 or 8.
inline auto nxIndexRowOf(unsigned int depth) {
    return depth == 1   ? nxIndexRow<1>
           : depth == 2 ? nxIndexRow<2>
           : depth == 4 ? nxIndexRow<4>
                        : nxIndexRow<8>;
}
