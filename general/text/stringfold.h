// general/text/stringfold.h - strings that say by their type how they order as keys of a dictionary.
//
// Both are NX_StringA in every respect; see general/text/stringbyname.h for what the type selects.
#pragma once

#include "general/text/stringa.h"

// A key compared with its case folded.
class NX_EXPORT NX_StringFold : public NX_StringA {
public:
    using NX_StringA::NX_StringA;
    using NX_StringA::operator=;
    NX_StringFold() = default;
    NX_StringFold(NX_StringA const& text) : NX_StringA(text) {}
};

// A key compared with its case folded and its numbers by value.
class NX_EXPORT NX_StringFoldNum : public NX_StringA {
public:
    using NX_StringA::NX_StringA;
    using NX_StringA::operator=;
    NX_StringFoldNum() = default;
    NX_StringFoldNum(NX_StringA const& text) : NX_StringA(text) {}
};
