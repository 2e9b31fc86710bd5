// general/module/resstring.h - a string resource as a string.
#pragma once

#include "general/module/reslib.h"
#include "general/text/stringa.h"

class NX_EXPORT NX_ResString : public NX_StringA {
public:
    // The text of string resource `id`, loaded through the application at construction; empty when there is
    // none.
    explicit NX_ResString(int id) { strLoad(id); }

    // The same from one library, without an error when there is none.
    NX_ResString(NX_ResLib const& lib, int id) { strLoad(lib, id); }
};
