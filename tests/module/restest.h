// tests/module/restest.h - the files that the tests of resources read: they lie beside the test program.
#pragma once

#include <string>

#include "general/module/resdata.h"
#include "general/module/resdesc.h"

inline std::string nxResTestPath(char const* name) {
    return std::string(NX_ResLib::resLibNameSys(nullptr).nameOfDir().dataPConst()) + "/" + name;
}
