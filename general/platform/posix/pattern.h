// general/platform/posix/pattern.h - Private header: the wildcard patterns of file searches.
//
// Letter case of ASCII letters is ignored. `*` is any run of characters, dots included. `?` is one character;
// at a dot or at the end of the name the whole run of `?` matches nothing. A dot before `*` or `?` also
// matches nothing at the end of the name. `*.` at the very end means: without a dot from there on.
#pragma once

#include <cstddef>

#include "general/platform/posix/path.h"

class NX_EXPORT NXS_Pattern {
public:
    // `text` has `length` units, fewer than NX_PATH_GIVEN_MAX; with `starDot` it was written with "*." at its
    // end (and has lost that dot).
    NXS_Pattern(char const* text, std::size_t length, bool starDot);

    bool matches(char const* name) const;

private:
    enum Token : unsigned char { any, one, dot, last, unit, pair };

    struct Item {
        Token token;
        char first;  // unit: upper-case; pair: the lead byte
        char second; // pair: the trail byte
    };

    bool matchesItems(char const* name) const;

    Item items_[NX_PATH_GIVEN_MAX];
    std::size_t itemQty_ = 0;
    bool all_ = false; // matches every name
};
