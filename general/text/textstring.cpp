// general/text/textstring.cpp - strings from plain text.
#include <algorithm>
#include <cstring>

#include "general/text/stringa.h"
#include "general/text/textprim.h"

NX_StringA NxTextStringGet(NX_TextA1PtrConst text) {
    return NxTextStringGet(text, text ? static_cast<int>(std::strlen(text)) : 0);
}

NX_StringA NxTextStringGet(NX_TextA1PtrConst text, int len) {
    unsigned int const qty = text ? static_cast<unsigned int>(std::max(len, 0)) : 0;
    NX_StringA string(qty, qty + 1);
    if (qty)
        std::memcpy(string.dataPMod(), text, qty);
    return string;
}
