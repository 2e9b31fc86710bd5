// general/module/dibpixels.cpp - the pixels of a device-independent bitmap.
#include <bit>

#include "general/module/dib.h"
#include "general/module/resimage.h"

namespace {

// One colour of a pixel that holds its colours itself: the bits of a mask, brought to 8.
class Channel {
public:
    explicit Channel(std::uint32_t mask)
        : mask_(mask), shift_(mask == 0 ? 0 : static_cast<unsigned int>(std::countr_zero(mask))),
          bits_(static_cast<unsigned int>(std::popcount(mask))) {}

    // Fewer than 8 bits are repeated, so that the greatest value becomes 255; of more than 8 the highest
    // count.
    unsigned char operator()(std::uint32_t pixel) const {
        std::uint32_t const value = (pixel & mask_) >> shift_;
        if (bits_ >= 8)
            return static_cast<unsigned char>(value >> (bits_ - 8));
        if (bits_ == 0)
            return 0;
        std::uint32_t wide = 0;
        unsigned int have = 0;
        for (; have < 8; have += bits_)
            wide = wide << bits_ | value;
        return static_cast<unsigned char>(wide >> (have - 8));
    }

private:
    std::uint32_t mask_;
    unsigned int shift_;
    unsigned int bits_;
};

} // namespace

// Row `y` of the image, counted from the top.
unsigned char const* NX_Dib::rowP(unsigned int y) const {
    return data_ + bitsOff_ + std::size_t{isTopDown_ ? y : height_ - 1 - y} * rowSize(depth_);
}

void NX_Dib::rowDecode(NX_Pixel* row, unsigned char const* from, NX_Pixel const* table) const {
    if (depth_ <= 8) {
        unsigned int const perByte = 8 / depth_;
        unsigned int const low = (1u << depth_) - 1;
        for (unsigned int x = 0; x < width_; ++x) {
            unsigned int const shift = 8 - depth_ * (x % perByte + 1);
            row[x] = table[from[x / perByte] >> shift & low];
        }
        return;
    }
    if (depth_ == 24) {
        for (unsigned int x = 0; x < width_; ++x)
            row[x] = {from[3 * x + 2], from[3 * x + 1], from[3 * x], 255};
        return;
    }
    Channel const red(masks_[0]);
    Channel const green(masks_[1]);
    Channel const blue(masks_[2]);
    Channel const alpha(masks_[3]);
    NXS_ResBytes const bytes{from, rowSize(depth_)};
    for (unsigned int x = 0; x < width_; ++x) {
        std::uint32_t const pixel = depth_ == 16 ? bytes.u16(2 * x) : bytes.u32(4 * x);
        row[x] = {red(pixel), green(pixel), blue(pixel),
                  masks_[3] != 0 ? alpha(pixel) : static_cast<unsigned char>(255)};
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
        unsigned char const* const mask =
            data_ + maskOff_ + std::size_t{isTopDown_ ? y : height_ - 1 - y} * rowSize(1);
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
    } else {
        for (unsigned int y = 0; y < height_; ++y)
            rowDecode(made.rowPMod(y), rowP(y), table);
    }
    if (isIcon_)
        maskApply(made);
    image = made;
    return 0;
}
