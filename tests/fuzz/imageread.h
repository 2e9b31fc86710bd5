// tests/fuzz/imageread.h - every decoder of resource contents, fed with one input.
#pragma once

#include "general/module/iconimage.h"
#include "general/module/menuitem.h"
#include "general/module/resdesc.h"
#include "general/module/resimage.h"

#include <cstring>

// Looks at every pixel. False when the image is not as large as was said, or left behind by a failure.
template <class Decoder>
bool nxPixelsTouch(Decoder const& decoder, unsigned int& sum) {
    NX_Image image;
    bool const isGood = decoder.imagePixels(image) == 0;
    for (unsigned int n = 0; n < image.pixels().itemQty(); ++n)
        sum = sum * 31 + image.pixels()[n].red + image.pixels()[n].alpha;
    unsigned int const width = isGood ? decoder.imageWidth() : 0;
    unsigned int const height = isGood ? decoder.imageHeight() : 0;
    return image.imageWidth() == width && image.imageHeight() == height &&
           image.pixels().itemQty() == width * height;
}

// Each item at most one level below the one before, and below popups only.
inline bool nxMenuTouch(NX_MenuItemVec const& items, unsigned int& sum) {
    for (unsigned int n = 0; n < items.itemQty(); ++n) {
        unsigned int const limit =
            n == 0 ? 0 : items[n - 1].itemDepth() + (items[n - 1].itemIsPopup() ? 1u : 0u);
        if (items[n].itemDepth() > limit)
            return false;
        sum += items[n].itemText().strLen() + items[n].itemType();
    }
    return true;
}

// Decodes the bytes as a resource of a type. False when a decoder contradicts itself.
inline bool nxResourceTouch(int type, unsigned char const* data, unsigned int size, unsigned int& sum) {
    NX_IconType const kind = type == resTypeIcon || type == resTypeIconGroup ? iconTypeIcon : iconTypeCursor;
    switch (type) {
    case resTypeBitmap: {
        NX_Dib dib;
        return dib.dibOpen(data, size) != 0 || (dib.dataOffBits() <= size && nxPixelsTouch(dib, sum));
    }
    case resTypeIcon:
    case resTypeCursor: {
        NX_IconImage image;
        return image.imageOpen(data, size, kind) != 0 || nxPixelsTouch(image, sum);
    }
    case resTypeIconGroup:
    case resTypeCursorGroup: {
        NX_IconEntryVec entries;
        int const error = entries.iconRead(data, size, kind);
        return (entries.iconBest(32, 32, 8) < entries.itemQty()) == (error == 0);
    }
    case resTypeMenu: {
        NX_MenuItemVec items;
        return (items.menuRead(data, size) == 0) == (items.itemQty() != 0) && nxMenuTouch(items, sum);
    }
    default: {
        NX_AccelVec entries;
        return (entries.accelRead(data, size) == 0) == (entries.itemQty() != 0) &&
               entries.itemQty() <= size / 8;
    }
    }
}

// The first byte, modulo 16, is the type; 0 means a loose file. False when something contradicts itself;
// memory errors are the sanitizers' to find.
inline bool nxInputTouch(unsigned char const* data, std::size_t size, unsigned int& sum) {
    auto const bytes = static_cast<unsigned int>(size - 1);
    if (size < 2 || data[0] % 16 != 0)
        return size < 2 || nxResourceTouch(data[0] % 16, data + 1, bytes, sum);
    NXS_ResImage file;
    std::memcpy(file.bytesNew(bytes), data + 1, bytes);
    bool isGood = true;
    if (file.imageRead(resLibTypeFile) == 0) {
        for (NXS_ResEntry const* e = file.entries().dataPConst(); e != file.entries().itemPEndConst(); ++e)
            isGood =
                isGood && nxResourceTouch(static_cast<int>(e->type.number), file.dataP(*e), e->size, sum);
    }
    return isGood;
}
