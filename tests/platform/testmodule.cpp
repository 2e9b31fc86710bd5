// A module for the tests to load: two functions and a string resource.
#include "general/platform/strings.h"
NX_STRINGS_BEGIN
#include "tests/platform/module.str"
NX_STRINGS_END

extern "C" int nxTestAnswer() {
    return 42;
}

extern "C" int nxTestSum(int left, int right) {
    return left + right;
}
