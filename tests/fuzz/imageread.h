// tests/fuzz/imageread.h - every decoder of resource contents, fed with one input.
#pragma once

#include "general/module/iconimage.h"
#include "general/module/menuitem.h"
#include "general/module/resdesc.h"
#include "general/module/resimage.h"

#include <cstring>

// What an input is read as, by its first byte modulo their number.
enum class NXS_TouchKind { bitmap, icon, cursor, iconGroup, cursorGroup, menu, accel, file, qty };

// Looks at every pixel. False when the image is not as large as was said.
inline bool nxImageTouch(NX_Image const& image, unsigned int width, unsigned int height, unsigned int& sum) {
    for (unsigned int n = 0; n < image.pixels().itemQty(); ++n)
        sum = sum * 31 + image.pixels()[n].red + image.pixels()[n].alpha;
    return image.imageWidth() == width && image.imageHeight() == height &&
           image.pixels().itemQty() == width * height;
}

template <class Decoder>
bool nxPixelsTouch(Decoder const& decoder, unsigned int& sum) {
    NX_Image image;
    int const error = decoder.imagePixels(image);
    return error != 0 ? image.pixels().itemQty() == 0
                      : nxImageTouch(image, decoder.imageWidth(), decoder.imageHeight(), sum);
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
inline bool nxResourceTouch(NXS_TouchKind kind, unsigned char const* data, unsigned int size,
                            unsigned int& sum) {
    switch (kind) {
    case NXS_TouchKind::bitmap: {
        NX_Dib dib;
        return dib.dibOpen(data, size) != 0
                   ? dib.imageWidth() == 0
                   : dib.dataOffBits() <= size && dib.imageColors().itemQty() <= 256 &&
                         nxPixelsTouch(dib, sum);
    }
    case NXS_TouchKind::icon:
    case NXS_TouchKind::cursor: {
        NX_IconImage image;
        return image.imageOpen(data, size, kind == NXS_TouchKind::icon ? iconTypeIcon : iconTypeCursor) !=
                   0 ||
               nxPixelsTouch(image, sum);
    }
    case NXS_TouchKind::iconGroup:
    case NXS_TouchKind::cursorGroup: {
        NX_IconEntryVec entries;
        entries.iconRead(data, size, kind == NXS_TouchKind::iconGroup ? iconTypeIcon : iconTypeCursor);
        unsigned int const best = entries.iconBest(32, 32, 8);
        return entries.itemQty() == 0 ? best == NX_NO_INDEX : best < entries.itemQty();
    }
    case NXS_TouchKind::menu: {
        NX_MenuItemVec items;
        return items.menuRead(data, size) != 0 ? items.itemQty() == 0 : nxMenuTouch(items, sum);
    }
    default: {
        NX_AccelVec entries;
        return entries.accelRead(data, size) != 0 || entries.itemQty() * 8 <= size;
    }
    }
}

inline NXS_TouchKind nxTouchKind(std::uint32_t type) {
    switch (type) {
    case resTypeBitmap:
        return NXS_TouchKind::bitmap;
    case resTypeIcon:
        return NXS_TouchKind::icon;
    case resTypeCursor:
        return NXS_TouchKind::cursor;
    case resTypeIconGroup:
        return NXS_TouchKind::iconGroup;
    case resTypeCursorGroup:
        return NXS_TouchKind::cursorGroup;
    case resTypeMenu:
        return NXS_TouchKind::menu;
    default:
        return NXS_TouchKind::accel;
    }
}

// False when something contradicts itself; memory errors are the sanitizers' to find.
inline bool nxInputTouch(unsigned char const* data, std::size_t size, unsigned int& sum) {
    if (size == 0)
        return true;
    auto const kind = static_cast<NXS_TouchKind>(data[0] % static_cast<unsigned int>(NXS_TouchKind::qty));
    auto const bytes = static_cast<unsigned int>(size - 1);
    if (kind != NXS_TouchKind::file)
        return nxResourceTouch(kind, data + 1, bytes, sum);
    NXS_ResImage file;
    if (bytes != 0)
        std::memcpy(file.bytesNew(bytes), data + 1, bytes);
    if (file.imageRead(resLibTypeFile) != 0)
        return true;
    for (unsigned int n = 0; n < file.entries().itemQty(); ++n) {
        NXS_ResEntry const& entry = file.entries()[n];
        if (!nxResourceTouch(nxTouchKind(entry.type.number), file.dataP(entry), entry.size, sum))
            return false;
    }
    return true;
}
