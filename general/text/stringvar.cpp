// general/text/stringvar.cpp - replacing references of the form %[NAME] by a dictionary's values.
#include "general/text/regexp.h"
#include "general/text/stringa.h"
#include "general/text/stringbyname.h"

NX_StringByName& NxStrVarDict() {
    static NX_StringByName& dict = *new NX_StringByName;
    return dict;
}

NX_StringA& NX_StringA::strVarReplace(NX_StringByName const& dict) {
    static NX_RegExpA const& pattern = *new NX_RegExpA("%\\[[A-Za-z0-9_]+\\]");
    unsigned int len = 0;
    for (unsigned int pos = itemNum(pattern, &len, 0); pos != NX_NO_INDEX;
         pos = itemNum(pattern, &len, pos)) {
        NX_StringA const* value = dict.itemPConst(dataStringGet(pos + 2, len - 3, NX_StripNone));
        if (value == nullptr) {
            pos += len;
            continue;
        }
        // Bytes of its own: the dictionary may hold this very string, and other threads may read it as well.
        NX_StringA const text(value->dataPConst(), value->strLen());
        strReplaceAt(pos, len, text);
        pos += text.strLen();
    }
    return *this;
}

NX_StringA& NX_StringA::strVarReplace() {
    return strVarReplace(NxStrVarDict());
}
