// general/text/regexp.cpp - the expression object.
#include "general/text/regexp.h"

#include <cstring>

#include "general/text/regexpcode.h"
#include "general/text/stringa.h"

NX_RegExpA::NX_RegExpA(char const* pattern) {
    compile(pattern);
}

NX_RegExpA::NX_RegExpA(NX_StringA const& pattern) {
    pattern.strTerminate();
    compile(pattern.dataPConst());
}

NX_RegExpA& NX_RegExpA::operator=(char const* pattern) {
    compile(pattern);
    return *this;
}

NX_RegExpA& NX_RegExpA::operator=(NX_StringA const& pattern) {
    pattern.strTerminate();
    compile(pattern.dataPConst());
    return *this;
}

void NX_RegExpA::compile(char const* pattern) {
    itemQty(NXS_REGEXP_UNITS);
    unsigned short* const program = dataPMod();
    std::memset(program, 0, dataSize());
    status_ = nxRegExpCompile(pattern, program);
    start_ = status_ == EXP_Ok ? nxRegExpStart(program) : NXS_RegExpStart{};
}

unsigned int NX_RegExpA::itemNum(NX_StringA const& text, unsigned int* length, unsigned int start) const {
    text.strTerminate();
    unsigned int matchLength = 0;
    unsigned int found = NX_NO_INDEX;
    if (status_ == EXP_Ok && start <= text.itemQty())
        found = nxRegExpFind(dataPConst(), start_, text.dataPConst(), text.itemQty(), start, &matchLength);
    if (length)
        *length = matchLength;
    return found;
}
