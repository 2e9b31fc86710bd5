// general/module/resloose.cpp - bitmap, icon and cursor files as libraries of resources.
//
// Formats: device-independent bitmaps, icons and cursors, as publicly documented. What an image holds is for
// whoever decodes it; here is checked where it lies.
#include <cstring>

#include "general/module/iconfile.h"
#include "general/module/resdesc.h"
#include "general/module/resimage.h"

namespace {

constexpr std::uint32_t fileHeaderSize = 14;
constexpr std::uint32_t coreHeaderSize = 12;
constexpr std::uint32_t infoHeaderSize = 40;
constexpr std::uint32_t compressionBitFields = 3;
constexpr std::uint32_t compressionAlphaFields = 6;

constexpr std::uint32_t hotSpotSize = 4;

// The bytes in front of the pixels: header, colour masks, colour table. 0 when the header is none.
std::uint32_t bitmapHeadSize(NXS_ResBytes dib) {
    if (!dib.has(0, coreHeaderSize))
        return 0;
    std::uint32_t const header = dib.u32(0);
    if (header == coreHeaderSize) {
        std::uint32_t const depth = dib.u16(10);
        return header + (depth <= 8 ? 3u << depth : 0);
    }
    if (header < infoHeaderSize || !dib.has(0, header))
        return 0;
    std::uint32_t const depth = dib.u16(14);
    std::uint32_t const compression = dib.u32(16);
    std::uint32_t colours = dib.u32(32);
    if (colours > 256 || (depth <= 8 && colours > 1u << depth))
        return 0;
    if (colours == 0 && depth <= 8 && depth != 0)
        colours = 1u << depth;
    std::uint32_t masks = 0;
    if (header == infoHeaderSize && compression == compressionBitFields)
        masks = 12;
    else if (header == infoHeaderSize && compression == compressionAlphaFields)
        masks = 16;
    return header + masks + 4 * colours;
}

// 256 does not fit into the one byte of a file.
std::uint32_t sideOf(std::uint32_t side) {
    return side == 0 ? 256 : side;
}

// The planes and depth that an image states itself; one plane and 32 bits for a compressed one.
void imagePlanes(NXS_ResBytes image, std::uint32_t& planes, std::uint32_t& depth) {
    bool const isPlain = image.has(0, infoHeaderSize) && image.u32(0) == infoHeaderSize;
    planes = isPlain ? image.u16(12) : 1;
    depth = isPlain ? image.u16(14) : 32;
}

} // namespace

// In a module the pixels follow their head at once; a gap between the two is closed.
int NXS_ResImage::bmpRead() {
    if (!bytes_.has(0, fileHeaderSize))
        return -1;
    NXS_ResBytes const dib = {bytes_.p + fileHeaderSize, bytes_.size - fileHeaderSize};
    std::uint32_t const head = bitmapHeadSize(dib);
    std::uint32_t const pixelsAt = bytes_.u32(10);
    if (head == 0 || !bytes_.has(pixelsAt, 0) || pixelsAt < fileHeaderSize ||
        pixelsAt - fileHeaderSize < head)
        return -1;
    std::uint32_t const pixels = bytes_.size - pixelsAt;
    unsigned char* const p = static_cast<unsigned char*>(block_);
    std::memmove(p + fileHeaderSize + head, p + pixelsAt, pixels);
    entries_ += NXS_ResEntry{{resTypeBitmap, 0}, {1, 0}, 0, fileHeaderSize, head + pixels};
    return 0;
}

// The images where they stand in the file; a cursor's, with its hot spot in front, and the group in bytes
// added behind.
int NXS_ResImage::icoRead() {
    if (!bytes_.has(0, nxIconHeadSize))
        return -1;
    bool const isCursor = bytes_.u16(2) == 2;
    std::uint32_t const qty = bytes_.u16(4);
    std::uint32_t const imagesAt = nxIconHeadSize + qty * nxIconEntrySizeFile;
    std::uint32_t const fileSize = bytes_.size;
    if (qty == 0 || !bytes_.has(0, imagesAt))
        return -1;
    std::uint32_t left = fileSize - imagesAt; // two images share no byte
    for (std::uint32_t n = 0; n < qty; ++n) {
        std::uint32_t const entry = nxIconHeadSize + n * nxIconEntrySizeFile;
        std::uint32_t const size = bytes_.u32(entry + 8);
        std::uint32_t const at = bytes_.u32(entry + 12);
        if (size == 0 || size > left || at < imagesAt || !bytes_.has(at, size))
            return -1;
        left -= size;
    }
    std::uint32_t const groupSize = nxIconHeadSize + qty * nxIconEntrySizeGroup;
    std::uint32_t const imagesSize = isCursor ? fileSize - imagesAt - left + qty * hotSpotSize : 0;
    NXS_ResPut group(bytesGrow(groupSize + imagesSize));
    NXS_ResPut image(group.to() + groupSize);
    group.bytes(bytes_.p, nxIconHeadSize);
    for (std::uint32_t n = 0; n < qty; ++n) {
        std::uint32_t const entry = nxIconHeadSize + n * nxIconEntrySizeFile;
        std::uint32_t size = bytes_.u32(entry + 8);
        std::uint32_t at = bytes_.u32(entry + 12);
        std::uint32_t planes = 0;
        std::uint32_t depth = 0;
        imagePlanes({bytes_.p + at, size}, planes, depth);
        if (isCursor) {
            unsigned char const* const from = image.to();
            image.bytes(bytes_.p + entry + 4, hotSpotSize);
            image.bytes(bytes_.p + at, size);
            at = static_cast<std::uint32_t>(from - bytes_.p);
            size += hotSpotSize;
            // Width and height have two bytes each here, and the height counts the mask as well.
            group.u16(sideOf(bytes_.u8(entry)));
            group.u16(2 * sideOf(bytes_.u8(entry + 1)));
        } else {
            group.bytes(bytes_.p + entry, 4);
            planes = bytes_.u16(entry + 4) != 0 ? bytes_.u16(entry + 4) : planes;
            depth = bytes_.u16(entry + 6) != 0 ? bytes_.u16(entry + 6) : depth;
        }
        group.u16(planes);
        group.u16(depth);
        group.u32(size);
        group.u16(n + 1);
        std::uint32_t const type = isCursor ? resTypeCursor : resTypeIcon;
        entries_ += NXS_ResEntry{{type, 0}, {n + 1, 0}, 0, at, size};
    }
    std::uint32_t const groupType = isCursor ? resTypeCursorGroup : resTypeIconGroup;
    entries_ += NXS_ResEntry{{groupType, 0}, {1, 0}, 0, fileSize, groupSize};
    return 0;
}
