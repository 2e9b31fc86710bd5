// general/module/image.h - pixels of a decoded image.
//
// An image has rows from top to bottom, pixels from left to right, four bytes a pixel. Copies share the
// pixels until one is written. Threads: as of NX_VecT. Failure: a position outside the image is a programming
// error.
#pragma once

#include "general/collm/v4x.h"

// One pixel; not premultiplied. Alpha 0 is transparent, 255 opaque.
struct NX_Pixel {
    unsigned char red;
    unsigned char green;
    unsigned char blue;
    unsigned char alpha;

    friend bool operator==(NX_Pixel const&, NX_Pixel const&) = default;
};
static_assert(sizeof(NX_Pixel) == 4);

class NX_EXPORT NX_PixelVec : public NX_VecT<NX_Pixel> {
public:
    using NX_VecT::NX_VecT;
};

class NX_EXPORT NX_Image {
public:
    NX_Image() = default; // no pixels
    // Black and transparent. REQUIRES: width * height fits in 31 bits.
    NX_Image(unsigned int width, unsigned int height);

    unsigned int imageWidth() const { return width_; }
    unsigned int imageHeight() const { return height_; }

    // REQUIRES: x < imageWidth() and y < imageHeight().
    NX_Pixel const& pixel(unsigned int x, unsigned int y) const;

    // imageWidth() pixels of row `y`, counted from the top. REQUIRES: y < imageHeight().
    NX_Pixel const* rowPConst(unsigned int y) const;
    NX_Pixel* rowPMod(unsigned int y);

    NX_PixelVec const& pixels() const { return pixels_; } // all rows, one behind the other

private:
    NX_PixelVec pixels_;
    unsigned int width_ = 0;
    unsigned int height_ = 0;
};
