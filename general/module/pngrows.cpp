// general/module/pngrows.cpp - the pixels of a PNG image: filters, samples and places of rows.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "general/error/errornum.h"
#include "general/module/indexrow.h"
#include "general/module/png.h"

namespace {

// What was taken from each byte: nothing, the byte of the pixel to the left (Sub), of the one above (Up), the
// mean of both (Average), or the one of left, above and corner that is nearest to left + above - corner
// (Paeth). Outside all are 0.
enum Filter : unsigned char { filterNone, filterLeft, filterAbove, filterMean, filterNearest, filterQty };
constexpr unsigned int filterHalf = filterQty; // what the mean is in the first row

void add(unsigned char& byte, int value) {
    byte = static_cast<unsigned char>(byte + value);
}

int nearest(int left, int above, int corner) {
    int const toLeft = std::abs(above - corner);
    int const toAbove = std::abs(left - corner);
    int const toCorner = std::abs(left + above - 2 * corner);
    int const other = toAbove <= toCorner ? above : corner;
    return toLeft <= toAbove && toLeft <= toCorner ? left : other;
}

template <unsigned int step, class Guess>
void addGuess(unsigned char* row, unsigned char const* above, std::size_t size, Guess guess) {
    for (std::size_t n = 0; n < step; ++n)
        add(row[n], guess(0, above[n], 0));
    for (std::size_t n = step; n < size; ++n)
        add(row[n], guess(row[n - step], above[n], above[n - step]));
}

// Undoes the filter of a row of `size` bytes, at least `step`, which is a pixel.
template <unsigned int step>
void unfilter(unsigned int filter, unsigned char* row, unsigned char const* above, std::size_t size) {
    switch (filter) {
    case filterLeft:
        for (std::size_t n = step; n < size; ++n)
            add(row[n], row[n - step]);
        break;
    case filterHalf:
        for (std::size_t n = step; n < size; ++n)
            add(row[n], row[n - step] / 2);
        break;
    case filterAbove:
        for (std::size_t n = 0; n < size; ++n)
            add(row[n], above[n]);
        break;
    case filterMean:
        addGuess<step>(row, above, size, [](int left, int up, int) { return (left + up) / 2; });
        break;
    case filterNearest:
        addGuess<step>(row, above, size, nearest);
        break;
    default:
        break;
    }
}

auto unfilterOf(std::uint32_t depth) {
    switch (depth) {
    case 16:
        return unfilter<2>;
    case 24:
        return unfilter<3>;
    case 32:
        return unfilter<4>;
    case 48:
        return unfilter<6>;
    case 64:
        return unfilter<8>;
    default:
        return unfilter<1>;
    }
}

} // namespace

int NXS_Png::rowsDecode(NX_Image& image, unsigned char* rows, Colors const& colors) const {
    static constexpr unsigned char filtersFirst[] = {filterNone, filterLeft, filterNone, filterHalf,
                                                     filterLeft};
    auto const undo = unfilterOf(depth_);
    NX_PixelVec line;
    line.itemQty(isInterlaced_ ? (width_ + 1) / 2 : 0); // the last pass needs none
    for (Pass const* pass = passBegin(); pass != passEnd(); ++pass) {
        std::uint32_t const width = passWidth(*pass);
        std::uint32_t const height = width != 0 ? passHeight(*pass) : 0;
        auto const size = static_cast<std::size_t>(rowSize(width));
        for (std::uint32_t y = 0; y < height; ++y) {
            unsigned int const filter = *rows++;
            if (filter >= filterQty)
                return errorNumImage;
            if (y == 0)
                undo(filtersFirst[filter], rows, rows, size); // looks at none above
            else
                undo(filter, rows, rows - 1 - size, size);
            NX_Pixel* const to = image.rowPMod(pass->y + y * pass->yStep);
            if (pass->xStep == 1) {
                rowDecode(to, width, rows, colors);
            } else {
                NX_Pixel* const from = line.dataPMod();
                rowDecode(from, width, rows, colors);
                for (std::uint32_t x = 0; x < width; ++x)
                    to[pass->x + x * pass->xStep] = from[x];
            }
            rows += size;
        }
    }
    return 0;
}

// Of a sample of 16 bits the higher eight count.
void NXS_Png::rowDecode(NX_Pixel* row, std::uint32_t width, unsigned char const* from,
                        Colors const& colors) const {
    if (depth_ <= 8) {
        nxIndexRowOf(depth_)(row, width, from, colors.table);
        return;
    }
    if (depth_ == 32 && bits_ == 8) {
        std::memcpy(row, from, std::size_t{width} * sizeof(NX_Pixel));
        return;
    }
    std::size_t const sample = bits_ / 8;
    std::size_t const step = depth_ / 8;
    std::size_t const green = isColor() ? sample : 0;
    for (std::uint32_t x = 0; x < width; ++x, from += step) {
        unsigned char const alpha = isAlpha() ? from[step - sample] : 255;
        row[x] = {from[0], from[green], from[2 * green], alpha};
        if (colors.isKey && std::memcmp(from, colors.key, step) == 0)
            row[x].alpha = 0;
    }
}
