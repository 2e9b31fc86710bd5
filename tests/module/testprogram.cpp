#include "general/platform/strings.h"
NX_STRINGS_BEGIN
#include "tests/module/testprogram.str"
NX_STRINGS_END
