// general/module/iconimage.h - one image of an icon or cursor, and the list of images that make one up.
//
// An icon is a group: a list of entries, each of which tells size, depth and the id of the resource that
// holds the image. Here are the two decoders; NX_ResIcon (general/module/resicon.h) joins them. Formats: ICO
// and the icon resources, the vendor's public documentation; PNG, ISO/IEC 15948. Ownership: an image points
// into bytes that somebody else keeps; lists are values. Threads: as of values. Failure: an error number is
// returned, nothing is recorded: 22749 damaged, 21060 a bitmap in a coding that is not read (NX_Dib).
// Whatever the bytes are, nothing outside them is read.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"
#include "general/module/bytevec.h"
#include "general/module/dib.h"

enum NX_IconType : int {
    iconTypeIcon = 1,
    iconTypeCursor = 2 // images with a hot spot
};

class NX_EXPORT NX_IconImage {
public:
    NX_IconImage() = default; // no image: all numbers 0

    // From the bytes of an image's resource; those of a cursor begin with its hot spot. 0 or an error number;
    // then the object is without an image. Of a PNG stream the first chunk is checked, and it is damaged when
    // it has more than 2^24 pixels or more bytes in all rows than 1032 for each of its own, which is the most
    // that they can stand for.
    int imageOpen(unsigned char const* data, unsigned int size, NX_IconType type);

    unsigned int imageWidth() const { return width_; }   // pixels
    unsigned int imageHeight() const { return height_; } // pixels
    unsigned int imageDepth() const { return depth_; }   // bits a pixel
    int imageIsPng() const { return isPng_; }            // 1: a PNG stream, else 0
    int hotX() const { return hotX_; }                   // hot spot of a cursor, in pixels from the
    int hotY() const { return hotY_; }                   // upper left corner; it may lie outside

    // Decodes. 0 or an error number, then `image` is unchanged. A bitmap: as NX_Dib::imagePixels does. A PNG
    // stream: all colour types, depths and orders of rows. Of 16 bits a sample the higher eight count; alpha
    // is that of the stream or of its tRNS chunk, else 255; indexes behind the palette are black. It is
    // damaged when a sum is wrong up to the end of the compressed rows, when a chunk that must be known is
    // not, when PLTE or tRNS are where they may not be or have a wrong size, and when a row is missing. What
    // follows the compressed rows, the end mark too, is not looked at; nor is what they have too many of.
    // Besides the image the rows take memory.
    int imagePixels(NX_Image& image) const;

    // The image as it is, a bitmap with mask or a PNG stream, without the hot spot.
    unsigned char const* dataP() const { return data_; }
    unsigned int dataSize() const { return size_; }
    NX_Dib const& imageDib() const { return dib_; } // without a bitmap for a PNG stream

    // The bytes of an icon or cursor file with this image alone. REQUIRES: an image.
    NX_ByteVec fileData() const;

private:
    int pngOpen();

    NX_Dib dib_;
    unsigned char const* data_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::uint32_t depth_ = 0;
    NX_IconType type_ = iconTypeIcon;
    int hotX_ = 0;
    int hotY_ = 0;
    int isPng_ = 0;
};

// One entry of a group, as its maker filled it in; the image itself is what counts.
struct NX_IconEntry {
    std::uint32_t width;  // pixels
    std::uint32_t height; // pixels; of a cursor half of what is filled in, unless that equals the width
    std::uint32_t depth;  // bits a pixel; worked out of the number of colours where only that is given
    std::uint32_t colors; // entries of the colour table; 0: 256 or more, or none
    std::uint32_t size;   // bytes of the image's resource
    std::int32_t id;      // of the image's resource
};

class NX_EXPORT NX_IconEntryVec : public NX_VecT<NX_IconEntry> {
public:
    using NX_VecT::NX_VecT;

    // Fills the list from the bytes of a group. 0, or 22749 and the list is empty. A group has at least one
    // entry; bytes behind the last one are not looked at.
    int iconRead(unsigned char const* data, unsigned int size, NX_IconType type);

    // The entry that suits best: the least difference in size (width and height, added), then the greatest
    // depth up to `depth`, else the least one; the first of several. NX_NO_INDEX in an empty list.
    unsigned int iconBest(unsigned int width, unsigned int height, unsigned int depth) const;
};
