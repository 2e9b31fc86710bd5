// tests/fuzz/image_fuzz.cpp - contents of resources: bitmaps, images, groups, menus, accelerators, loose
// files.
#include "tests/fuzz/imageread.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, std::size_t size) {
    unsigned int sum = 0;
    if (!nxInputTouch(data, size, sum))
        std::abort();
    return 0;
}
