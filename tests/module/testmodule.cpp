#include "general/platform/strings.h"
NX_STRINGS_BEGIN
#include "tests/module/testmodule.str"
NX_STRINGS_END

#if defined(_WIN32)
#define MODULE_EXPORT
#else
#define MODULE_EXPORT __attribute__((visibility("default")))
#endif

extern "C" MODULE_EXPORT int moduleAnswer() {
    return 42;
}
