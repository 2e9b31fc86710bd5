// general/module/resstring.h - a string resource as a string.
#pragma once

#include "general/text/stringa.h"

// The text of string resource `id`, loaded through the application at construction; empty when there is none.
class NX_EXPORT NX_ResString : public NX_StringA {
public:
    explicit NX_ResString(int id) { strLoad(id); }
};
