// general/text/tokenizer.h - hands out the words of a string one by one.
//
// A word is a run of characters none of which is a separator; separators are whole characters, so a trail
// byte is never one. The words are views of the string, which is not owned and must outlive the tokenizer and
// them. Positions are byte offsets. Text behind a zero character inside the string is not reached. Nothing
// fails.
#pragma once

#include "general/text/textvec.h"

class NX_StringA;

class NX_EXPORT NX_TokenizerA {
public:
    explicit NX_TokenizerA(NX_StringA const& text) : string_(&text) {}

    // The next word, or an empty view (start NX_NO_INDEX) when only separators are left; the place is then
    // kept. `separators` is a terminated text; the form without it takes blanks, tabs and line feeds.
    NX_CharASub operator()(char const* separators);
    NX_CharASub operator()();

    // Skips separators and returns the offset where the next word starts, the string's length when there is
    // none.
    unsigned int itemNum(char const* separators);

private:
    // The unread part of the text, terminated; null at its end.
    char const* restP() const;

    unsigned int position_ = 0; // where the next search starts
    NX_StringA const* string_;
};
