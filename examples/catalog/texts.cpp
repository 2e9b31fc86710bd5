#include "general/platform/strings.h"
NX_STRINGS_BEGIN
#include "examples/catalog/catalog.str"
NX_STRINGS_END
