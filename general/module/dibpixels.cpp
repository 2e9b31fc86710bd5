// general/module/dibpixels.cpp - the pixels of a device-independent bitmap.
#include <bit>

#include "general/module/dib.h"
#include "general/module/indexrow.h"
#include "general/module/resimage.h"

namespace {

// One colour of a pixel that holds its colours itself: the bits of a mask, brought to 8.
class Channel {
public:
    // Fewer than 8 bits are repeated, so that the greatest value becomes 255; of more than 8 the highest
    // count.
    explicit Channel(std::uint32_t mask) : mask_(mask) {
        unsigned int const given = static_cast<unsigned int>(std::popcount(mask));
        unsigned int const bits = given < 8 ? given : 8;
        if (given == 0)
            return;
        shift_ = static_cast<unsigned int>(std::countr_zero(mask)) + given - bits;
        for (unsigned int value = 0; value < 1u << bits; ++value) {
            unsigned int wide = 0;
            unsigned int have = 0;
            for (; have < 8; have += bits)
                wide = wide << bits | value;
            values_[value] = static_cast<unsigned char>(wide >> (have - 8));
        }
    }

    unsigned char operator()(std::uint32_t pixel) const { return values_[(pixel & mask_) >> shift_]; }

private:
    std::uint32_t mask_;
    unsigned int shift_ = 0;
    unsigned char values_[256] = {};
};

} // namespace

// Row `y`, counted from the top, of rows that begin at `rowsOff` and have `bits` a pixel.
unsigned char const* NX_Dib::rowP(unsigned int y, unsigned int rowsOff, unsigned int bits) const {
    return data_ + rowsOff + std::size_t{isTopDown_ ? y : height_ - 1 - y} * rowSize(bits);
}

void NX_Dib::indexRows(NX_Image& image, NX_Pixel const* table) const {
    auto const decode = nxIndexRowOf(depth_);
    for (unsigned int y = 0; y < height_; ++y)
        decode(image.rowPMod(y), width_, rowP(y), table);
}

void NX_Dib::colorRows(NX_Image& image) const {
    Channel const red(masks_[0]);
    Channel const green(masks_[1]);
    Channel const blue(masks_[2]);
    Channel const alpha(masks_[3]);
    unsigned char const opaque = masks_[3] == 0 ? 255 : 0;
    for (unsigned int y = 0; y < height_; ++y) {
        NX_Pixel* const row = image.rowPMod(y);
        unsigned char const* const from = rowP(y);
        NXS_ResBytes const bytes{from, rowSize(depth_)};
        if (depth_ == 24) {
            for (unsigned int x = 0; x < width_; ++x)
                row[x] = {from[3 * x + 2], from[3 * x + 1], from[3 * x], 255};
            continue;
        }
        for (unsigned int x = 0; x < width_; ++x) {
            std::uint32_t const pixel = depth_ == 16 ? bytes.u16(2 * x) : bytes.u32(4 * x);
            row[x] = {red(pixel), green(pixel), blue(pixel),
                      static_cast<unsigned char>(alpha(pixel) | opaque)};
        }
    }
}

void NX_Dib::maskApply(NX_Image& image) const {
    if (depth_ == 32 && compression_ == 0) {
        bool any = false;
        for (std::size_t n = 0; n < std::size_t{width_} * height_ && !any; ++n)
            any = data_[bitsOff_ + 4 * n + 3] != 0;
        for (unsigned int y = 0; any && y < height_; ++y) {
            NX_Pixel* const row = image.rowPMod(y);
            unsigned char const* const from = rowP(y);
            for (unsigned int x = 0; x < width_; ++x)
                row[x].alpha = from[4 * x + 3];
        }
        if (any)
            return;
    }
    if (maskOff_ == 0 || masks_[3] != 0)
        return;
    for (unsigned int y = 0; y < height_; ++y) {
        NX_Pixel* const row = image.rowPMod(y);
        unsigned char const* const mask = rowP(y, maskOff_, 1);
        for (unsigned int x = 0; x < width_; ++x)
            if ((mask[x / 8] >> (7 - x % 8) & 1) != 0)
                row[x].alpha = 0;
    }
}

int NX_Dib::imagePixels(NX_Image& image) const {
    if (data_ == nullptr)
        return errorNumImage;
    NX_Pixel table[256];
    for (std::uint32_t n = 0; n < 256; ++n) {
        table[n] = {0, 0, 0, 255};
        if (n < tableQty_) {
            unsigned char const* const item = data_ + tableOff_ + n * tableItem_;
            table[n] = {item[2], item[1], item[0], 255};
        }
    }
    NX_Image made(width_, height_);
    if (isRle()) {
        if (int const error = rleDecode(made, table); error != 0)
            return error;
    } else if (depth_ <= 8) {
        indexRows(made, table);
    } else {
        colorRows(made);
    }
    if (isIcon_)
        maskApply(made);
    image = made;
    return 0;
}
