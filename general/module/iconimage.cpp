#include "general/module/iconimage.h"

#include <algorithm>
#include <bit>

#include "general/module/iconfile.h"
#include "general/module/png.h"
#include "general/module/resimage.h"

int NX_IconImage::imageOpen(unsigned char const* data, unsigned int size, NX_IconType type) {
    *this = NX_IconImage();
    NX_IconImage made;
    if (data == nullptr)
        return errorNumImage;
    if (type == iconTypeCursor) {
        if (size < 4)
            return errorNumImage;
        NXS_ResBytes const bytes{data, size};
        made.hotX_ = static_cast<std::int16_t>(bytes.u16(0));
        made.hotY_ = static_cast<std::int16_t>(bytes.u16(2));
        data += 4;
        size -= 4;
    }
    made.type_ = type;
    made.data_ = data;
    made.size_ = size;
    int error = 0;
    if (NXS_Png::isPng(data, size)) {
        error = made.pngOpen();
    } else {
        error = made.dib_.dibOpen(data, size, dibUseIcon);
        made.width_ = made.dib_.imageWidth();
        made.height_ = made.dib_.imageHeight();
        made.depth_ = made.dib_.imageDepth();
    }
    if (error == 0)
        *this = made;
    return error;
}

int NX_IconImage::pngOpen() {
    NXS_Png png;
    int const error = png.pngOpen(data_, size_);
    width_ = png.imageWidth();
    height_ = png.imageHeight();
    depth_ = png.imageDepth();
    isPng_ = 1;
    return error;
}

int NX_IconImage::imagePixels(NX_Image& image) const {
    if (isPng_ == 0)
        return dib_.imagePixels(image);
    NXS_Png png;
    int const error = png.pngOpen(data_, size_);
    return error != 0 ? error : png.imagePixels(image);
}

NX_ByteVec NX_IconImage::fileData() const {
    NX_IconEntry entry{};
    entry.depth = depth_;
    return nxIconFile(type_, this, &entry, 1);
}

int NX_IconEntryVec::iconRead(unsigned char const* data, unsigned int size, NX_IconType type) {
    collDefault();
    if (data == nullptr || size < nxIconHeadSize)
        return errorNumImage;
    NXS_ResBytes const bytes{data, size};
    unsigned int const qty = bytes.u16(4);
    if (bytes.u16(0) != 0 || bytes.u16(2) != static_cast<unsigned int>(type) || qty == 0 ||
        qty > (size - nxIconHeadSize) / nxIconEntrySizeGroup)
        return errorNumImage;
    for (unsigned int n = 0; n < qty; ++n) {
        unsigned int const at = nxIconHeadSize + n * nxIconEntrySizeGroup;
        NX_IconEntry entry{};
        if (type == iconTypeIcon) {
            entry.width = bytes.u8(at) != 0 ? bytes.u8(at) : 256;
            entry.height = bytes.u8(at + 1) != 0 ? bytes.u8(at + 1) : 256;
            entry.colors = bytes.u8(at + 2);
        } else { // the height counts image and mask, but some makers leave the mask out
            entry.width = bytes.u16(at);
            entry.height = bytes.u16(at + 2);
            entry.height /= entry.height != entry.width ? 2 : 1;
        }
        entry.depth = bytes.u16(at + 6);
        if (entry.depth == 0)
            entry.depth = entry.colors != 0
                              ? std::max(1u, static_cast<std::uint32_t>(std::bit_width(entry.colors - 1)))
                              : 8;
        entry.size = bytes.u32(at + 8);
        entry.id = static_cast<std::int32_t>(bytes.u16(at + 12));
        *this += entry;
    }
    return 0;
}

unsigned int NX_IconEntryVec::iconBest(unsigned int width, unsigned int height, unsigned int depth) const {
    auto const away = [](std::uint32_t a, std::uint32_t b) {
        return std::uint64_t{std::max(a, b)} - std::min(a, b);
    };
    unsigned int best = NX_NO_INDEX;
    std::uint64_t bestSize = 0;
    std::int64_t bestDepth = 0;
    for (unsigned int n = 0; n < itemQty(); ++n) {
        NX_IconEntry const& entry = *itemPConst(n);
        std::uint64_t const size = away(entry.width, width) + away(entry.height, height);
        // Suitable depths rank by themselves, too great ones below all of them and backwards.
        std::int64_t const rank =
            entry.depth <= depth ? std::int64_t{entry.depth} : -std::int64_t{entry.depth};
        if (best == NX_NO_INDEX || size < bestSize || (size == bestSize && rank > bestDepth)) {
            best = n;
            bestSize = size;
            bestDepth = rank;
        }
    }
    return best;
}
