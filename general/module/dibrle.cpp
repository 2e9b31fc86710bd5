// general/module/dibrle.cpp - run-length coded bitmaps.
//
// The data is a row of codes. A count and a value: the value's pixels, count times (with 4 bits a pixel its
// two halves in turn). Zero and a number: 0 the next row, 1 the end, 2 a step of the two bytes that follow
// (right, up); from 3 on as many pixels follow as they are, padded to an even number of bytes.
#include <algorithm>

#include "general/module/dib.h"

namespace {

class Cursor {
public:
    Cursor(NX_Image& image, NX_Pixel const* table) : image_(image), table_(table) {}

    bool isOut() const { return row_ >= image_.imageHeight(); }
    bool isFull() const { return row_ + 1 >= image_.imageHeight() && x_ >= image_.imageWidth(); }
    void nextRow() {
        x_ = 0;
        ++row_;
    }
    bool step(unsigned int right, unsigned int up) {
        x_ += right;
        row_ += up;
        return x_ <= image_.imageWidth() && row_ < image_.imageHeight();
    }

    // `qty` pixels whose indexes `index` tells; those past the end of the row are dropped.
    template <class Index>
    void put(unsigned int qty, Index index) {
        NX_Pixel* const row = image_.rowPMod(image_.imageHeight() - 1 - row_);
        for (unsigned int n = 0; n < qty && x_ < image_.imageWidth(); ++n)
            row[x_++] = table_[index(n)];
    }

private:
    NX_Image& image_;
    NX_Pixel const* table_;
    unsigned int x_ = 0;
    unsigned int row_ = 0; // from the bottom
};

} // namespace

int NX_Dib::rleDecode(NX_Image& image, NX_Pixel const* table) const {
    unsigned char const* p = data_ + bitsOff_;
    unsigned char const* const end = p + bitsSize_;
    bool const isNibbles = depth_ == 4;
    auto const nibble = [](unsigned char byte, unsigned int n) {
        return static_cast<unsigned int>(n % 2 == 0 ? byte >> 4 : byte & 15);
    };
    for (unsigned int y = 0; y < height_; ++y)
        std::fill_n(image.rowPMod(y), width_, table[0]);
    Cursor cursor(image, table);
    while (end - p >= 2) {
        unsigned int const count = p[0];
        unsigned char const value = p[1];
        p += 2;
        if (count == 0 && value == 1)
            return 0;
        if (cursor.isOut())
            return errorNumImage;
        if (count > 0) {
            cursor.put(count, [&](unsigned int n) { return isNibbles ? nibble(value, n) : value; });
        } else if (value == 0) {
            cursor.nextRow();
        } else if (value == 2) {
            if (end - p < 2 || !cursor.step(p[0], p[1]))
                return errorNumImage;
            p += 2;
        } else {
            unsigned int const bytes = isNibbles ? (value + 1u) / 2 : value;
            unsigned int const padded = (bytes + 1) / 2 * 2;
            if (static_cast<unsigned int>(end - p) < padded)
                return errorNumImage;
            cursor.put(value, [&](unsigned int n) { return isNibbles ? nibble(p[n / 2], n) : p[n]; });
            p += padded;
        }
    }
    // Without an end mark the image must be complete.
    return p == end && (cursor.isOut() || cursor.isFull()) ? 0 : errorNumImage;
}
