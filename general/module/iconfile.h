// Private header. general/module/iconfile.h - the layout of icon and cursor files, and of groups in modules.
//
// Format: ICO, the vendor's public documentation.
#pragma once

#include "general/module/iconimage.h"
#include "general/module/resput.h"

// In bytes; what a file and a group begin with is the same.
inline constexpr unsigned int nxIconHeadSize = 6;
inline constexpr unsigned int nxIconEntrySizeFile = 16;
inline constexpr unsigned int nxIconEntrySizeGroup = 14;

// The bytes of a file, from `qty` images, which tell their sizes, and the entries of their group, which tell
// colours and depths. REQUIRES: bytes of all images that fit in 31 bits.
template <class Image>
NX_ByteVec nxIconFile(NX_IconType type, Image const* images, NX_IconEntry const* entries, unsigned int qty) {
    auto const side = [](unsigned int pixels) { return pixels < 256 ? pixels : 0; }; // 0: 256 and more
    unsigned int at = nxIconHeadSize + qty * nxIconEntrySizeFile;                    // of the next image
    unsigned int size = at;
    for (unsigned int n = 0; n < qty; ++n)
        size += images[n].dataSize();
    NX_ByteVec file;
    file.itemQty(size);
    NXS_ResPut put(file.dataPMod());
    put.u16(0);
    put.u16(static_cast<unsigned int>(type));
    put.u16(qty);
    for (unsigned int n = 0; n < qty; ++n) {
        NX_IconEntry const& entry = entries[n];
        Image const& image = images[n];
        put.u8(side(image.imageWidth()));
        put.u8(side(image.imageHeight()));
        put.u8(entry.colors == 0 && entry.depth < 8 ? 1u << entry.depth : entry.colors);
        put.u8(0);
        put.u16(type == iconTypeIcon ? 1 : static_cast<unsigned int>(image.hotX()));
        put.u16(type == iconTypeIcon ? entry.depth : static_cast<unsigned int>(image.hotY()));
        put.u32(image.dataSize());
        put.u32(at);
        at += image.dataSize();
    }
    for (unsigned int n = 0; n < qty; ++n)
        put.bytes(images[n].dataP(), images[n].dataSize());
    return file;
}
