// tests/module/restest.h - the files that the tests of resources read: they lie beside the test program.
#pragma once

#include <cstdint>
#include <string>

#include "general/module/resdata.h"
#include "general/module/resdesc.h"

inline NX_StringA nxResTestDir() {
    return NX_ResLib::resLibNameSys(nullptr).nameOfDir();
}

inline std::string nxResTestPath(char const* name) {
    return std::string(nxResTestDir().dataPConst()) + "/" + name;
}

// FNV-1a: tells two resources apart in a list that stands in a source.
inline std::uint32_t nxResTestSum(unsigned char const* p, unsigned int size) {
    std::uint32_t sum = 2166136261u;
    for (unsigned int n = 0; n < size; ++n)
        sum = (sum ^ p[n]) * 16777619u;
    return sum;
}

// One line a resource: type, id, language, size, sum.
inline std::string nxResTestLine(NX_StringA const& type, NX_StringA const& id, int lang,
                                 unsigned char const* p, unsigned int size) {
    NX_StringA line;
    line.strPrintF("%s %s %d %u %08x", type.dataPConst(), id.dataPConst(), lang, size, nxResTestSum(p, size));
    return line.dataPConst();
}
