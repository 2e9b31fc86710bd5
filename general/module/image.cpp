#include "general/module/image.h"

#include "general/collm/assert.h"
#include "general/collm/mem.h"

namespace {

char const sourceFile[] = "general/module/image";

} // namespace

NX_Image::NX_Image(unsigned int width, unsigned int height) : width_(width), height_(height) {
    if (std::uint64_t{width} * height > 0x7FFFFFFFu)
        nxMemExhausted();
    pixels_.itemQty(width * height);
    pixels_.dataZero();
}

NX_Pixel const& NX_Image::pixel(unsigned int x, unsigned int y) const {
    NX_ASSERT(x < width_, "x < imageWidth()", sourceFile);
    return rowPConst(y)[x];
}

NX_Pixel const* NX_Image::rowPConst(unsigned int y) const {
    NX_ASSERT(y < height_, "y < imageHeight()", sourceFile);
    return pixels_.dataPConst() + std::size_t{y} * width_;
}

NX_Pixel* NX_Image::rowPMod(unsigned int y) {
    NX_ASSERT(y < height_, "y < imageHeight()", sourceFile);
    return pixels_.dataPMod() + std::size_t{y} * width_;
}
