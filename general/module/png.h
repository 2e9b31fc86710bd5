// Private header. general/module/png.h - a PNG image in memory.
//
// Read are all colour types, with 1, 2, 4, 8 and 16 bits a sample, transparency, and both orders of rows.
// Format: PNG, ISO/IEC 15948. Ownership: the object points into bytes that somebody else keeps. Threads: it
// is a value. Failure: error 22749 is returned, nothing is recorded. Whatever the bytes are, nothing outside
// them is read.
#pragma once

#include <cstdint>

#include "general/module/image.h"
#include "general/module/resimage.h"

class NXS_Png {
public:
    // Whether the bytes are meant to be an image of this kind, good or damaged.
    static bool isPng(unsigned char const* data, std::uint32_t size);

    // Reads and checks the first chunk, and whether there can be room for the pixels in the rest. 0, or an
    // error number; then the object is not to be used.
    int pngOpen(unsigned char const* data, std::uint32_t size);

    std::uint32_t imageWidth() const { return width_; }   // pixels
    std::uint32_t imageHeight() const { return height_; } // pixels
    std::uint32_t imageDepth() const { return depth_; }   // bits a pixel

    // Decodes. 0, or an error number and `image` is unchanged.
    int imagePixels(NX_Image& image) const;

private:
    // Every so many pixels of every so many rows, which stand by themselves, as an image of their own.
    struct Pass {
        std::uint8_t x, y, xStep, yStep;
    };
    // What chunks in front of the pixels tell.
    struct Colors {
        NX_Pixel table[256]; // of images with up to 8 bits a pixel, by their bits
        std::uint32_t tableQty = 0;
        unsigned char key[6] = {}; // the samples of a pixel that is transparent
        bool isKey = false;
    };
    class Chunks;

    Pass const* passBegin() const;
    Pass const* passEnd() const;
    std::uint32_t passWidth(Pass const& pass) const { return steps(width_, pass.x, pass.xStep); }
    std::uint32_t passHeight(Pass const& pass) const { return steps(height_, pass.y, pass.yStep); }
    static std::uint32_t steps(std::uint32_t size, unsigned int first, unsigned int step);
    std::uint64_t rowSize(std::uint32_t width) const; // bytes, without the filter's

    int colorsRead(Colors& colors, Chunks& chunks) const;
    void grayTable(Colors& colors) const;
    int paletteRead(Colors& colors, NXS_ResBytes chunk) const;
    int transparencyRead(Colors& colors, NXS_ResBytes chunk) const;
    int rowsDecode(NX_Image& image, unsigned char* rows, Colors const& colors) const;
    void rowDecode(NX_Pixel* row, std::uint32_t width, unsigned char const* from, Colors const& colors) const;

    bool isColor() const { return (colorType_ & 2) != 0; }
    bool isIndexed() const { return colorType_ == 3; }
    bool isAlpha() const { return (colorType_ & 4) != 0; }

    NXS_ResBytes bytes_;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::uint32_t depth_ = 0;     // bits a pixel
    std::uint32_t bits_ = 0;      // a sample
    std::uint32_t colorType_ = 0; // 1 with a palette, 2 colours, 4 alpha
    std::uint32_t rowsSize_ = 0;  // bytes of all rows with their filters
    bool isInterlaced_ = false;
};
