// tests/module/restest.h - the files that the tests of resources read, beside the test program, and what is
// found in them.
#pragma once

#include "general/error/errorman.h"
#include "general/module/resdata.h"
#include "general/module/resdesc.h"
#include "tests/support/support.h"

inline std::string nxResTestPath(char const* name) {
    return std::string(NX_ResLib::resLibNameSys(nullptr).nameOfDir().dataPConst()) + "/" + name;
}

inline std::string nxResTestFile(char const* name) {
    return nxFileContent(nxResTestPath(name).c_str());
}

inline std::string nxText(NX_ResData const& data) {
    return {data.dataP(), data.dataP() + data.dataSize()};
}

// Whether the error recorded is this one, with this detail.
inline bool nxErrorTells(int number, char const* detail) {
    return NxErrorNum() == number && NxErrorBuf().strStrFirst(detail) != NX_NO_INDEX;
}
