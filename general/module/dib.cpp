#include "general/module/dib.h"

#include "general/module/resimage.h"

namespace {

constexpr std::uint32_t codingNone = 0, codingRle8 = 1, codingRle4 = 2, codingFields = 3, codingJpeg = 4,
                        codingPng = 5, codingAlphaFields = 6;

constexpr std::uint64_t pixelsMax = 1u << 26;
constexpr std::uint64_t pixelsMaxRle = 1u << 24;

// A mask is one run of bits, or empty.
bool isRun(std::uint32_t mask) {
    std::uint32_t const low = mask & (0 - mask);
    return ((mask + low) & mask) == 0;
}

} // namespace

int NX_Dib::dibOpen(unsigned char const* data, unsigned int size, NX_DibUse use) {
    *this = NX_Dib();
    data_ = data;
    size_ = size;
    int const error = data == nullptr ? errorNumImage : headerRead(use);
    if (error != 0)
        *this = NX_Dib();
    return error;
}

int NX_Dib::headerRead(NX_DibUse use) {
    NXS_ResBytes const bytes{data_, size_};
    if (size_ < 12)
        return errorNumImage;
    std::uint32_t const headerSize = bytes.u32(0);
    bool const isCore = headerSize == 12;
    if (!isCore && ((headerSize != 40 && headerSize < 52) || headerSize > size_))
        return errorNumImage;
    std::int64_t height = isCore ? std::int64_t{bytes.u16(6)} : static_cast<std::int32_t>(bytes.u32(8));
    std::int64_t const width = isCore ? std::int64_t{bytes.u16(4)} : static_cast<std::int32_t>(bytes.u32(4));
    isTopDown_ = height < 0;
    isIcon_ = use == dibUseIcon;
    height = isTopDown_ ? -height : height;
    height = isIcon_ ? height / 2 : height;
    if (width <= 0 || height <= 0)
        return errorNumImage;
    width_ = static_cast<std::uint32_t>(width);
    height_ = static_cast<std::uint32_t>(height);
    depth_ = bytes.u16(isCore ? 10 : 14);
    compression_ = isCore ? codingNone : bytes.u32(16);
    if (bytes.u16(isCore ? 8 : 12) != 1)
        return errorNumImage; // there is one plane always
    if (compression_ == codingJpeg || compression_ == codingPng)
        return errorNumSystem;
    if (depth_ != 1 && depth_ != 4 && depth_ != 8 && depth_ != 16 && depth_ != 24 && depth_ != 32)
        return errorNumImage;
    tableItem_ = isCore ? 3 : 4;
    if (int const error = masksRead(headerSize); error != 0)
        return error;
    if (int const error = tableRead(headerSize, isCore ? 0 : bytes.u32(32)); error != 0)
        return error;
    return rowsRead(use, isCore ? 0 : bytes.u32(20));
}

int NX_Dib::masksRead(unsigned int headerSize) {
    NXS_ResBytes const bytes{data_, size_};
    tableOff_ = headerSize;
    switch (compression_) {
    case codingNone: {
        static constexpr std::uint32_t rgb555[] = {0x7C00, 0x03E0, 0x001F};
        static constexpr std::uint32_t rgb888[] = {0xFF0000, 0x00FF00, 0x0000FF};
        for (int n = 0; n < 3; ++n)
            masks_[n] = depth_ == 16 ? rgb555[n] : rgb888[n];
        return 0;
    }
    case codingRle8:
    case codingRle4:
        return depth_ == (compression_ == codingRle8 ? 8 : 4) && !isTopDown_ && !isIcon_ ? 0 : errorNumImage;
    case codingFields:
    case codingAlphaFields:
        break;
    default:
        return errorNumImage;
    }
    if (depth_ != 16 && depth_ != 32)
        return errorNumImage;
    // The short header has its masks behind it, the longer ones in themselves.
    unsigned int const qty =
        headerSize >= 56 || (headerSize == 40 && compression_ == codingAlphaFields) ? 4 : 3;
    if (headerSize == 40)
        tableOff_ += 4 * qty;
    if (40 + 4 * qty > size_)
        return errorNumImage;
    std::uint32_t seen = depth_ == 16 ? 0xFFFF0000u : 0;
    for (unsigned int n = 0; n < qty; ++n) {
        masks_[n] = bytes.u32(40 + 4 * n);
        if ((masks_[n] & seen) != 0 || !isRun(masks_[n]))
            return errorNumImage;
        seen |= masks_[n];
    }
    return 0;
}

int NX_Dib::tableRead(unsigned int headerSize, std::uint32_t colorsUsed) {
    std::uint32_t const full = depth_ <= 8 ? 1u << depth_ : 0;
    std::uint32_t const qty = colorsUsed != 0 && headerSize != 12 ? colorsUsed : full;
    if (qty > 256 || (full != 0 && qty > full) || tableOff_ > size_ || qty > (size_ - tableOff_) / tableItem_)
        return errorNumImage;
    bitsOff_ = tableOff_ + qty * tableItem_;
    tableQty_ = full != 0 ? qty : 0;
    return 0;
}

unsigned int NX_Dib::rowSize(unsigned int bits) const {
    return static_cast<unsigned int>((std::uint64_t{width_} * bits + 31) / 32 * 4);
}

int NX_Dib::rowsRead(NX_DibUse use, std::uint32_t sizeGiven) {
    std::uint64_t const room = size_ - bitsOff_;
    std::uint64_t const pixels = std::uint64_t{width_} * height_;
    if (isRle()) {
        bitsSize_ = static_cast<std::uint32_t>(sizeGiven != 0 ? sizeGiven : room);
        return bitsSize_ <= room && pixels <= pixelsMaxRle && pixels <= std::uint64_t{bitsSize_} * 256 + 65536
                   ? 0
                   : errorNumImage;
    }
    // Bounded here, so that no product below can wrap.
    if (pixels > pixelsMax)
        return errorNumImage;
    std::uint64_t const bits = std::uint64_t{rowSize(depth_)} * height_;
    if (bits > room)
        return errorNumImage;
    bitsSize_ = static_cast<std::uint32_t>(bits);
    if (use != dibUseIcon)
        return 0;
    if (std::uint64_t{rowSize(1)} * height_ <= room - bits)
        maskOff_ = bitsOff_ + bitsSize_;
    else if (depth_ != 32)
        return errorNumImage; // only an image with alpha can do without a mask
    return 0;
}

NX_ColorVec NX_Dib::imageColors() const {
    NX_ColorVec colors;
    for (std::uint32_t n = 0; n < tableQty_; ++n) {
        unsigned char const* const item = data_ + tableOff_ + n * tableItem_;
        colors += NX_Color(item[2], item[1], item[0]);
    }
    return colors;
}
