// general/text/textfind.cpp - looking for characters and texts in text.
//
// A character or a text is looked for as the run of units that spells it, at the speed of a plain scan; each
// hit is then asked whether it lies on a character's boundary.
#include <cstring>

#include "general/text/textprim.h"
#include "general/text/textwalk.h"

namespace {

template <class U>
struct Spelling {
    U units[2];
    std::size_t qty; // 0: no character of the text can have the value looked for
};

int charArg(int ch) {
    return ch < 0 ? ch & 0xFF : ch;
}

Spelling<unsigned char> spell(NXS_LeadWalk const& walk, int ch) {
    auto const high = static_cast<unsigned char>(ch >> 8);
    auto const low = static_cast<unsigned char>(ch);
    if (ch < 256)
        return {{low}, walk.isLead(low) ? 0u : 1u};
    return {{high, low}, ch <= 0xFFFF && walk.isLead(high) ? 2u : 0u};
}

template <class U>
Spelling<U> spell(NXS_PlainWalk<U> const&, int ch) {
    return {{static_cast<U>(ch)}, static_cast<U>(ch) == ch ? 1u : 0u};
}

template <class W>
auto first(NXS_Counted<W> const& text, typename W::Unit const* sub, std::size_t qty) {
    auto const* from = text.start;
    for (;;) {
        auto const* hit = nxScan(from, static_cast<std::size_t>(text.end - from), sub, qty);
        if (!hit || nxIsBoundary<W>(text, from, hit))
            return hit;
        from = hit + 1; // the hit was a trail byte
    }
}

// In growing windows, so that a find near the start of a long text does not measure all of it.
template <class W>
typename W::Unit const* first(NXS_Terminated<W> const& text, typename W::Unit const* sub, std::size_t qty) {
    auto const* from = text.start;
    auto const* end = text.start;
    for (std::size_t window = 128;; window *= 2) {
        std::size_t const added = nxScanLen(end, window);
        end += added;
        if (added < window && !nxIsBoundary<W>(text, from, end)) {
            ++end; // a zero that is a trail byte
            continue;
        }
        if (auto const* hit = first(NXS_Counted<W>(text, from, end), sub, qty))
            return hit;
        if (added < window)
            return nullptr;
        if (static_cast<std::size_t>(end - from) >= qty) {
            auto const* next = end - qty + 1;
            from = nxIsBoundary<W>(text, from, next) ? next : next - 1;
        }
    }
}

template <class W>
typename W::Unit const* last(NXS_Counted<W> const& text, typename W::Unit const* sub, std::size_t qty) {
    using Unit = typename W::Unit;
    if (W::isFixed || qty == 0)
        return nxScanLast(text.start, text.qty(), sub, qty);
    if (text.isLead(*sub)) {
        // Hits may lie close together in one run of lead bytes: looking back from each would take quadratic
        // time.
        Unit const* found = nullptr;
        Unit const* from = text.start;
        while (Unit const* hit = first(NXS_Counted<W>(text, from, text.end), sub, qty)) {
            found = hit;
            from = text.next(hit);
        }
        return found;
    }
    std::size_t rest = text.qty();
    while (Unit const* hit = nxScanLast(text.start, rest, sub, qty)) {
        if (nxIsBoundary<W>(text, text.start, hit))
            return hit;
        rest = static_cast<std::size_t>(hit - text.start) + qty - 1;
    }
    return nullptr;
}

// A lone lead byte at the end of counted text, when that is what is looked for; else null.
template <class W>
typename W::Unit const* loneLead(NXS_Counted<W> const& text, int ch) {
    if (W::isFixed || ch < 256 || ch % 256 || text.start == text.end)
        return nullptr;
    auto const* p = text.end - 1;
    return text.isLead(*p) && *p == ch / 256 && nxIsBoundary<W>(text, text.start, p) ? p : nullptr;
}

template <class W>
typename W::Unit const* firstChar(NXS_Counted<W> const& text, int ch) {
    auto const spelling = spell(text, ch);
    auto const* hit = spelling.qty ? first(text, spelling.units, spelling.qty) : nullptr;
    return hit ? hit : loneLead(text, ch);
}

template <class W>
typename W::Unit const* firstChar(NXS_Terminated<W> const& text, int ch) {
    if (ch == 0)
        return text.counted().end;
    auto const spelling = spell(text, ch);
    return spelling.qty ? first(text, spelling.units, spelling.qty) : nullptr;
}

template <class W>
typename W::Unit const* lastChar(NXS_Counted<W> const& text, int ch) {
    if (auto const* lone = loneLead(text, ch))
        return lone;
    auto const spelling = spell(text, ch);
    return spelling.qty ? last(text, spelling.units, spelling.qty) : nullptr;
}

template <class W>
typename W::Unit const* lastChar(NXS_Terminated<W> const& text, int ch) {
    auto const counted = text.counted();
    return ch == 0 ? counted.end : lastChar(counted, ch);
}

auto findFirstChar(int ch) {
    return [ch](auto const& text) { return nxTextPtr(firstChar(text, charArg(ch))); };
}

auto findLastChar(int ch) {
    return [ch](auto const& text) { return nxTextPtr(lastChar(text, charArg(ch))); };
}

template <class TextPtr>
auto findFirstSub(TextPtr sub) {
    return [sub](auto const& text) {
        auto const wanted =
            NXS_Terminated<typename std::decay_t<decltype(text)>::Walk>(text, nxUnits(sub)).counted();
        return nxTextPtr(first(text, wanted.start, wanted.qty()));
    };
}

template <class TextPtr>
auto findLastSub(TextPtr sub) {
    return [sub](auto const& text) {
        auto const wanted =
            NXS_Terminated<typename std::decay_t<decltype(text)>::Walk>(text, nxUnits(sub)).counted();
        return nxTextPtr(last(text.counted(), wanted.start, wanted.qty()));
    };
}

// As findFirstChar, past quoted runs and escaped characters.
auto findXQuote(int ch) {
    return [value = static_cast<unsigned int>(charArg(ch))](auto const& text) {
        auto const* p = text.start;
        auto const none = nxTextPtr(static_cast<decltype(p)>(nullptr));
        while (text.readable(p)) {
            unsigned int c = text.value(p);
            if (c == value)
                return nxTextPtr(p);
            if (!text.more(p))
                return none;
            p = text.next(p);
            if (c == '\\' && text.more(p)) {
                p = text.next(p);
            } else if (c == '"') {
                while (text.more(p) && (c = text.value(p)) != '"') {
                    p = text.next(p);
                    if (c == '\\' && text.more(p))
                        p = text.next(p);
                }
                if (!text.more(p))
                    return none;
                p = text.next(p);
            }
        }
        return none;
    };
}

bool cLibraryServes() {
    return nxDbcs().dbcsIsFalse();
}

NXS_Terminated<NXS_PlainWalk<unsigned char>> plain(NX_TextA1PtrConst text) {
    return {{}, nxUnits(text)};
}

// The character that the C library's routines for wide text would look for.
int wideCharArg(int ch) {
    return cLibraryServes() ? charArg(ch) & 0xFFFF : ch;
}

} // namespace

NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int ch) {
    if (cLibraryServes())
        return std::strchr(text.textP(), ch);
    return nxText(text, findFirstChar(ch));
}

NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int ch) {
    return nxText(text, findFirstChar(wideCharArg(ch)));
}

NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int len, int ch) {
    return nxText(text, len, findFirstChar(ch));
}

NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int len, int ch) {
    return nxText(text, len, findFirstChar(ch));
}

NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int ch) {
    if (cLibraryServes())
        return std::strrchr(text.textP(), ch);
    return nxText(text, findLastChar(ch));
}

NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int ch) {
    return nxText(text, findLastChar(wideCharArg(ch)));
}

NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int len, int ch) {
    return nxText(text, len, findLastChar(ch));
}

NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int len, int ch) {
    return nxText(text, len, findLastChar(ch));
}

NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, NX_TextA1PtrConst sub) {
    return cLibraryServes() ? findFirstSub(sub)(plain(text)) : nxText(text, findFirstSub(sub));
}

NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, NX_TextW1PtrConst sub) {
    return nxText(text, findFirstSub(sub));
}

NX_TextA1PtrConst NxTextFind(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst sub) {
    return nxText(text, len, findFirstSub(sub));
}

NX_TextW1PtrConst NxTextFind(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst sub) {
    return nxText(text, len, findFirstSub(sub));
}

NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, NX_TextA1PtrConst sub) {
    return nxText(text, findLastSub(sub));
}

NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, NX_TextW1PtrConst sub) {
    return nxText(text, findLastSub(sub));
}

NX_TextA1PtrConst NxTextFindLast(NX_TextA1PtrConst text, int len, NX_TextA1PtrConst sub) {
    return nxText(text, len, findLastSub(sub));
}

NX_TextW1PtrConst NxTextFindLast(NX_TextW1PtrConst text, int len, NX_TextW1PtrConst sub) {
    return nxText(text, len, findLastSub(sub));
}

NX_TextA1Ptr NxTextFindAndTerminate(NX_TextA1Ptr text, int ch) {
    auto* found = const_cast<char*>(NxTextFind(text, ch).textP());
    if (found && *found)
        *found = 0;
    return found;
}

NX_TextW1Ptr NxTextFindAndTerminate(NX_TextW1Ptr text, int ch) {
    auto* found = const_cast<unsigned short*>(NxTextFind(text, ch).textP());
    if (found && *found)
        *found = 0;
    return found;
}

NX_TextA1PtrConst NxTextFindXQuote(NX_TextA1PtrConst text, int ch) {
    return nxText(text, findXQuote(ch));
}

NX_TextW1PtrConst NxTextFindXQuote(NX_TextW1PtrConst text, int ch) {
    return nxText(text, findXQuote(ch));
}

NX_TextA1PtrConst NxTextFindXQuote(NX_TextA1PtrConst text, int len, int ch) {
    return nxText(text, len, findXQuote(ch));
}

NX_TextW1PtrConst NxTextFindXQuote(NX_TextW1PtrConst text, int len, int ch) {
    return nxText(text, len, findXQuote(ch));
}
