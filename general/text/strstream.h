// general/text/strstream.h - the standard's character-array streams, without the notice that
// they are old.
#pragma once

#pragma push_macro("__DEPRECATED")
#undef __DEPRECATED
#include <strstream>
#pragma pop_macro("__DEPRECATED")
