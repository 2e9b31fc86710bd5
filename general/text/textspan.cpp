// general/text/textspan.cpp - runs of characters at the start and the end of text.
#include <array>
#include <cstring>

#include "general/text/textprim.h"
#include "general/text/texttable.h"
#include "general/text/textwalk.h"

namespace {

// The characters of a terminated text: a mark for each below 256, a walk through the set for the others.
template <class W>
class CharSet {
public:
    explicit CharSet(NXS_Terminated<W> const& set) : set_(set) {
        for (auto const* p = set.start; set.more(p); p = set.next(p)) {
            unsigned int const c = set.value(p);
            if (c < 256)
                marks_[c] = true;
            else
                hasMore_ = true;
        }
    }

    bool has(unsigned int c) const {
        if (c < 256)
            return marks_[c];
        if (hasMore_)
            for (auto const* p = set_.start; set_.more(p); p = set_.next(p))
                if (set_.value(p) == c)
                    return true;
        return false;
    }

private:
    NXS_Terminated<W> const& set_;
    std::array<bool, 256> marks_ = {};
    bool hasMore_ = false;
};

template <class Text, class IsIn>
int runLen(Text const& text, IsIn const& isIn) {
    auto const* p = text.start;
    while (text.more(p) && isIn(text.value(p)))
        p = text.next(p);
    return static_cast<int>(p - text.start);
}

template <class TextPtr>
auto spanLen(TextPtr set, bool wanted) {
    return [set, wanted](auto const& text) {
        using Walk = typename std::decay_t<decltype(text)>::Walk;
        NXS_Terminated<Walk> const members(text, nxUnits(set));
        CharSet<Walk> const chars(members);
        return runLen(text, [&](unsigned int c) { return chars.has(c) == wanted; });
    };
}

bool isSpace(unsigned int c) {
    return (nxTextClass(c) & NX_TextSpace) != 0;
}

constexpr auto spaceLen = [](auto const& text) { return runLen(text, isSpace); };

constexpr auto spaceNotLen = [](auto const& text) {
    return runLen(text, [](unsigned int c) { return !isSpace(c); });
};

// From the end. A lead byte there, lone or as a trail byte, is no white space.
constexpr auto spaceNotEnd = [](auto const& given) {
    using Walk = typename std::decay_t<decltype(given)>::Walk;
    auto const text = given.counted();
    auto const* p = text.end;
    while (p > text.start && isSpace(p[-1]) && !text.isLead(p[-1]) &&
           nxIsBoundary<Walk>(text, text.start, p - 1))
        --p;
    return static_cast<int>(p - text.start);
};

constexpr auto lastValue = [](auto const& given) {
    using Walk = typename std::decay_t<decltype(given)>::Walk;
    auto const text = given.counted();
    if (text.start == text.end)
        return 0;
    auto const* p = text.end - 1;
    return static_cast<int>(text.value(nxIsBoundary<Walk>(text, text.start, p) ? p : p - 1));
};

} // namespace

int NxTextSpan(NX_TextA1PtrConst text, NX_TextA1PtrConst set) {
    if (nxDbcs().dbcsIsFalse())
        return static_cast<int>(std::strspn(text, set));
    return nxText(text, spanLen(set, true));
}

int NxTextSpan(NX_TextW1PtrConst text, NX_TextW1PtrConst set) {
    return nxText(text, spanLen(set, true));
}

int NxTextSpan(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst set) {
    return nxText(text, len, spanLen(set, true));
}

int NxTextSpan(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst set) {
    return nxText(text, len, spanLen(set, true));
}

int NxTextSpanNot(NX_TextA1PtrConst text, NX_TextA1PtrConst set) {
    if (nxDbcs().dbcsIsFalse())
        return static_cast<int>(std::strcspn(text, set));
    return nxText(text, spanLen(set, false));
}

int NxTextSpanNot(NX_TextW1PtrConst text, NX_TextW1PtrConst set) {
    return nxText(text, spanLen(set, false));
}

int NxTextSpanNot(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst set) {
    return nxText(text, len, spanLen(set, false));
}

int NxTextSpanNot(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst set) {
    return nxText(text, len, spanLen(set, false));
}

int NxTextSpaceLen(NX_TextA1PtrConst text) {
    return nxText(text, spaceLen);
}

int NxTextSpaceLen(NX_TextW1PtrConst text) {
    return nxText(text, spaceLen);
}

int NxTextSpaceLen(NX_TextA1PtrConst text, int len) {
    return nxText(text, len, spaceLen);
}

int NxTextSpaceLen(NX_TextW1PtrConst text, int len) {
    return nxText(text, len, spaceLen);
}

int NxTextSpaceNotLen(NX_TextA1PtrConst text) {
    return nxText(text, spaceNotLen);
}

int NxTextSpaceNotLen(NX_TextW1PtrConst text) {
    return nxText(text, spaceNotLen);
}

int NxTextSpaceNotLen(NX_TextA1PtrConst text, int len) {
    return nxText(text, len, spaceNotLen);
}

int NxTextSpaceNotLen(NX_TextW1PtrConst text, int len) {
    return nxText(text, len, spaceNotLen);
}

int NxTextSpaceNotEnd(NX_TextA1PtrConst text) {
    return nxText(text, spaceNotEnd);
}

int NxTextSpaceNotEnd(NX_TextW1PtrConst text) {
    return nxText(text, spaceNotEnd);
}

int NxTextSpaceNotEnd(NX_TextA1PtrConst text, int len) {
    return nxText(text, len, spaceNotEnd);
}

int NxTextSpaceNotEnd(NX_TextW1PtrConst text, int len) {
    return nxText(text, len, spaceNotEnd);
}

int NxTextLast(NX_TextA1PtrConst text) {
    return text ? nxText(text, lastValue) : 0;
}

int NxTextLast(NX_TextW1PtrConst text) {
    return text ? nxText(text, lastValue) : 0;
}

int NxTextLast(NX_TextA1PtrConst text, int len) {
    return text ? nxText(text, len, lastValue) : 0;
}

int NxTextLast(NX_TextW1PtrConst text, int len) {
    return text ? nxText(text, len, lastValue) : 0;
}

NX_TextA1PtrConst NxTextDbcsEnd(NX_TextA1PtrConst text) {
    return nxText(text, [](auto const& walked) {
        auto const* end = walked.start;
        if (!std::decay_t<decltype(walked)>::Walk::isFixed)
            for (auto const* p = walked.start; walked.more(p); p = walked.next(p))
                if (walked.isLead(*p))
                    end = walked.next(p);
        return nxTextPtr(end);
    });
}
