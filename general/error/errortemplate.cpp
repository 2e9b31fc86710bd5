// general/error/errortemplate.cpp - the built-in message templates, and filling a template's placeholders.
#include "general/error/errortemplate.h"

#include <cstring>

#include "general/error/appup.h"
#include "general/error/errorbuf.h"
#include "general/error/errornum.h"
#include "general/text/regexp.h"

namespace {

// By type index; null where a type has no text of its own.
char const* const typeTemplates[] = {
    nullptr,
    nullptr,
    nullptr,
    "%(T): Invalid user input: correct and retry",
    "%(F): Already exists: try correct name",
    "%(F): Locked: try closing in other task",
    "%(F): Access not allowed: try correcting file attributes",
    "%(F): %(L): %(T): %(V): Not found: try correct name",
    nullptr,
    "%(F): No more resources: try exiting other tasks",
    "%(F): %(T): %(X): System error",
    "%(F): Data invalid: replace from backup",
    "%(F): Version incompatible: correct and retry",
    "%(F): %(V): Text invalid: edit and retry",
    "%(F): %(V): Version incompatible: correct and retry",
    "%(T): Invalid usage: correct and retry",
    "Application error: report to supplier",
};
constexpr int typeTemplateQty = sizeof typeTemplates / sizeof typeTemplates[0];

// The value in `words` of the placeholder for `letter`; false when there is none.
bool valueOf(char letter, NX_StringA const& words, NX_StringA& value) {
    char const* text = words.dataPConst();
    unsigned int length = words.strLen();
    if (letter == '0') {
        text = nxAppNameP();
        length = static_cast<unsigned int>(std::strlen(text));
    } else {
        if (letter >= '1' && letter <= '9')
            return false;
        unsigned int const at = nxErrorWordLast(text, length, letter);
        if (at == NX_NO_INDEX)
            return false;
        text += at + 2;
        length -= at + 2;
    }
    unsigned int const end = nxErrorWordEnd(text, length);
    value = NX_StringA(text, end != NX_NO_INDEX ? end : length);
    return true;
}

} // namespace

char const* nxErrorTemplateBuiltIn(int num) {
    if (num == errorNumDiskFull)
        return "Disk full: try deleting unneeded files";
    if (num == errorNumMemFull)
        return "No more memory: try exiting other tasks";
    int const index = (num & 0xF800) >> 11;
    if (index < typeTemplateQty && typeTemplates[index] != nullptr)
        return typeTemplates[index];
    return "%(E): Unknown error";
}

NX_StringA nxErrorTemplateFill(NX_StringA const& text, NX_StringA const& details) {
    static NX_RegExpA const& placeholder = *new NX_RegExpA("%([0-9A-Za-z])");

    NX_StringA filled;
    NX_StringA value;
    unsigned int from = 0;
    for (;;) {
        unsigned int length = 0;
        unsigned int const at = text.itemNum(placeholder, &length, from);
        if (at == NX_NO_INDEX)
            break;
        char const* const p = text.dataPConst();
        filled += NX_StringA(p + from, at - from);
        from = at + length;
        if (valueOf(p[at + 2], details, value))
            filled += value;
        else
            while (p[from] == ':' || p[from] == ' ')
                ++from;
    }
    filled += NX_StringA(text.dataPConst() + from, text.strLen() - from);
    return filled;
}
