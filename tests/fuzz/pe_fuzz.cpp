// tests/fuzz/pe_fuzz.cpp - files of resources of every kind: modules, bitmaps, icons, cursors.
#include "tests/fuzz/peread.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, std::size_t size) {
    unsigned int sum = 0;
    long const qty = nxResTouch(data, size, sum);
    // Every resource takes an entry of eight bytes or more, so that lists cannot outgrow their file.
    if (qty < -1 || qty > static_cast<long>(size / 8))
        std::abort();
    return 0;
}
