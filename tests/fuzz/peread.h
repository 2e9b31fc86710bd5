// tests/fuzz/peread.h - reads bytes as a file of resources and touches everything that is found.
#pragma once

#include <algorithm>
#include <cstring>

#include "general/module/resimage.h"

// How many resources the bytes hold; -1 when they are no file of resources. `sum` gets a number that depends
// on every byte of them.
inline long nxResTouch(unsigned char const* p, std::size_t givenSize, unsigned int& sum) {
    auto const size = static_cast<std::uint32_t>(givenSize);
    NXS_ResImage image;
    auto const needed =
        static_cast<std::uint32_t>(NXS_ResImage::sizeNeeded({p, std::min(size, 4096u)}, size));
    if (needed != 0)
        std::memcpy(image.bytesNew(needed), p, needed);
    if (image.imageRead(resLibTypeFile) != 0)
        return image.entries().itemQty() == 0 && image.kind() == resLibTypeNone ? -1 : -2;
    for (unsigned int n = 0; n < image.entries().itemQty(); ++n) {
        NXS_ResEntry const& entry = image.entries()[n];
        unsigned char const* const data = image.dataP(entry);
        for (std::uint32_t i = 0; i < entry.size; ++i)
            sum = sum * 31 + data[i];
        sum += image.text(entry.type).strLen() + image.text(entry.id).strLen();
    }
    char text[256];
    for (unsigned int const id : {0u, 1u, 15u, 100u, 65535u})
        sum += image.textLoad(text, sizeof text, id);
    NX_StringA const name = "NAME";
    sum += image.find({10, {}}, {0, name}, -1) + image.find({0, name}, {1, {}}, 0x409);
    return static_cast<long>(image.entries().itemQty());
}
