// general/module/dib.h - device-independent bitmaps in memory: header, colour table, pixel rows.
//
// This is the form of a bitmap resource (the header of a bitmap file does not belong to it) and, with a mask
// behind the rows, of an image of an icon or cursor. Read are the core header (12 bytes) and those of 40 and
// of 52 and more bytes; 1, 4, 8, 16, 24 and 32 bits a pixel; rows from the bottom up or from the top down;
// run-length coding of 4 and 8 bits; colour masks. Format: BMP, the vendor's public documentation. Ownership:
// the object points into bytes that somebody else keeps. Threads: it is a value. Failure: an error number is
// returned, nothing is recorded: 22749 damaged, 21060 a coding that is not read (a PNG or JPEG stream
// behind the header; an icon's image that is a PNG stream itself is read by NX_IconImage). Whatever the bytes
// are, nothing outside them is read.
#pragma once

#include <cstdint>

#include "general/error/errornum.h"
#include "general/module/color.h"
#include "general/module/image.h"

// Where the bytes come from.
enum NX_DibUse : int {
    dibUseBitmap = 0, // a bitmap
    dibUseIcon = 1,   // an image of an icon or cursor: the height counts image and mask together
};

class NX_EXPORT NX_Dib {
public:
    NX_Dib() = default; // no bitmap: all numbers 0

    // Reads and checks the header, the colour table's place and the room for the rows. 0 or an error number;
    // then the object is without a bitmap. An image is damaged when its rows are not all there or when it has
    // more than 2^26 pixels; a run-length coded one when it has more than 2^24, or more than 65536 and 256
    // for each byte of its rows. So pixels never take more than 1 KiB for a byte of data and 256 KiB more.
    int dibOpen(unsigned char const* data, unsigned int size, NX_DibUse use = dibUseBitmap);

    unsigned int imageWidth() const { return width_; }   // pixels
    unsigned int imageHeight() const { return height_; } // pixels, without the mask
    unsigned int imageDepth() const { return depth_; }   // bits a pixel
    int imageIsTopDown() const { return isTopDown_; }    // 1 or 0
    int imageIsPacked() const { return isRle(); }        // run-length coded: 1 or 0

    // The colour table; empty when the pixels hold their colours themselves.
    NX_ColorVec imageColors() const;

    // Decodes. 0 or an error number, then `image` is unchanged.
    // Alpha is 255, unless the header has an alpha mask. In an icon alpha is 0 where the mask is set; a pixel
    // there that is not black inverts what lies behind it, and keeps its colour for the caller to see. An
    // icon of 32 bits a pixel with any alpha byte set takes alpha from these bytes.
    // Indexes behind the colour table are black. Run-length coded: what runs past the end of a row is cut,
    // pixels that are skipped have index 0; the data is damaged when it leaves the image, ends inside a code
    // or ends without an end mark before the last row is full.
    int imagePixels(NX_Image& image) const;

    unsigned char const* dataP() const { return data_; } // the bytes given, beginning with the header
    unsigned int dataSize() const { return size_; }
    unsigned int dataOffBits() const { return bitsOff_; } // where the rows begin, in bytes from the header

private:
    int headerRead(NX_DibUse use);
    int masksRead(unsigned int headerSize);
    int tableRead(unsigned int headerSize, std::uint32_t colorsUsed);
    int rowsRead(NX_DibUse use, std::uint32_t sizeGiven);
    int isRle() const { return compression_ == 1 || compression_ == 2; }
    unsigned int rowSize(unsigned int bits) const; // bytes, padded to 4
    unsigned char const* rowP(unsigned int y, unsigned int rowsOff, unsigned int bits) const;
    unsigned char const* rowP(unsigned int y) const { return rowP(y, bitsOff_, depth_); }
    void indexRows(NX_Image& image, NX_Pixel const* table) const;
    void colorRows(NX_Image& image) const;
    void maskApply(NX_Image& image) const;
    int rleDecode(NX_Image& image, NX_Pixel const* table) const;

    unsigned char const* data_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::uint32_t depth_ = 0;
    std::uint32_t compression_ = 0;
    std::uint32_t masks_[4] = {}; // red, green, blue, alpha
    std::uint32_t tableOff_ = 0;
    std::uint32_t tableQty_ = 0;
    std::uint32_t tableItem_ = 4; // bytes of one entry
    std::uint32_t bitsOff_ = 0;
    std::uint32_t bitsSize_ = 0;
    std::uint32_t maskOff_ = 0; // of an icon's mask; 0: none
    int isTopDown_ = 0;
    int isIcon_ = 0;
};
