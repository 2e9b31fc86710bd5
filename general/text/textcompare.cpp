// general/text/textcompare.cpp - the comparison engine.
#include "general/text/textcompare.h"

#include <algorithm>
#include <cstring>

#include "general/text/textprim.h"
#include "general/text/texttable.h"
#include "general/text/textwalk.h"

namespace {

int order(std::size_t a, std::size_t b) {
    return a == b ? 0 : a > b ? 1 : -1;
}

template <bool Fold>
unsigned int folded(unsigned int ch) {
    return Fold ? nxTextFold(ch) : ch;
}

// How many units from `pa` and `pb`, both at a character's start, hold equal characters; ends at such a
// start.
template <bool Fold, class U>
std::size_t commonLen(NXS_Counted<NXS_PlainWalk<U>> const& a, U const* pa,
                      NXS_Counted<NXS_PlainWalk<U>> const& b, U const* pb) {
    auto const max = static_cast<std::size_t>(std::min(a.end - pa, b.end - pb));
    return Fold ? nxScanDifferFold(pa, pb, max) : nxScanDiffer(pa, pb, max);
}

template <bool Fold>
std::size_t commonLen(NXS_Counted<NXS_LeadWalk> const& a, unsigned char const* pa,
                      NXS_Counted<NXS_LeadWalk> const& b, unsigned char const* pb) {
    bool const asciiIsPlain = nxDbcs().dbcsLeadKind() == NX_DbcsInfo::LeadHigh;
    auto const max = static_cast<std::size_t>(std::min(a.end - pa, b.end - pb));
    std::size_t n = 0;
    while (n < max) {
        if (Fold && asciiIsPlain) {
            std::size_t const ascii = nxScanAscii(pb + n, nxScanAscii(pa + n, max - n));
            std::size_t const same = nxScanDifferFold(pa + n, pb + n, ascii);
            n += same;
            if (same < ascii || n == max)
                return n;
        }
        std::size_t same = nxScanDiffer(pa + n, pb + n, max - n);
        if (!nxIsBoundary<NXS_LeadWalk>(a, pa + n, pa + n + same))
            --same; // the difference is in a trail byte, or the text ends there
        n += same;
        if (!Fold || n == max || a.isLead(pa[n]) || b.isLead(pb[n]) ||
            nxTextLower[pa[n]] != nxTextLower[pb[n]])
            return n;
        ++n;
    }
    return n;
}

// By character; the total lengths decide when one text runs out.
constexpr auto compareFold = [](auto const& a, auto const& b) {
    auto const* pa = a.start;
    auto const* pb = b.start;
    for (;;) {
        std::size_t const same = commonLen<true>(a, pa, b, pb);
        pa += same;
        pb += same;
        if (!a.more(pa) || !b.more(pb))
            return order(a.qty(), b.qty());
        unsigned int const ca = folded<true>(a.value(pa));
        unsigned int const cb = folded<true>(b.value(pb));
        if (ca != cb)
            return ca > cb ? 1 : -1;
        pa = a.next(pa);
        pb = b.next(pb);
    }
};

bool isDigit(unsigned int ch) {
    return (nxTextClass(ch) & NX_TextDigit) != 0;
}

// Leaves out leading zeros of a number at `p` and returns its end.
template <class Text>
auto numberEnd(Text const& text, typename Text::Unit const*& p) {
    while (text.more(p) && text.value(p) == '0')
        p = text.next(p);
    auto const* end = p;
    while (text.more(end) && isDigit(text.value(end)))
        end = text.next(end);
    return end;
}

template <bool Fold>
constexpr auto compareNum = [](auto const& a, auto const& b) {
    using Walk = typename std::decay_t<decltype(a)>::Walk;
    using Unit = typename Walk::Unit;
    Unit const* pa = a.start;
    Unit const* pb = b.start;
    for (;;) {
        // What is equal is skipped at once, but for the digits at its end: they may belong to numbers that
        // differ.
        Unit const* qa = pa + commonLen<Fold>(a, pa, b, pb);
        while (qa > pa && isDigit(qa[-1]) && !a.isLead(qa[-1]) && nxIsBoundary<Walk>(a, pa, qa - 1))
            --qa;
        pb += qa - pa;
        pa = qa;
        if (!a.more(pa) || !b.more(pb))
            return order(a.qty(), b.qty());
        unsigned int const ca = folded<Fold>(a.value(pa));
        unsigned int const cb = folded<Fold>(b.value(pb));
        if (isDigit(ca) && isDigit(cb)) {
            Unit const* const endA = numberEnd(a, pa);
            Unit const* const endB = numberEnd(b, pb);
            if (endA - pa != endB - pb)
                return endA - pa > endB - pb ? 1 : -1;
            if (int const result = std::memcmp(pa, pb, static_cast<std::size_t>(endA - pa) * sizeof(Unit)))
                return result;
            pa = endA;
            pb = endB;
            continue;
        }
        if (ca != cb)
            return ca > cb ? 1 : -1;
        pa = a.next(pa);
        pb = b.next(pb);
    }
};

// First place from `p` where the name has the character `ch`, already folded; null when there is none.
template <bool Fold, class Text>
typename Text::Unit const* nextChar(Text const& name, typename Text::Unit const* p, unsigned int ch) {
    using Unit = typename Text::Unit;
    if constexpr (!Fold && Text::Walk::isFixed)
        return nxScan(p, static_cast<std::size_t>(name.end - p), static_cast<Unit>(ch));
    for (; name.more(p); p = name.next(p))
        if (folded<Fold>(name.value(p)) == ch)
            return p;
    return nullptr;
}

// Matches the pattern `b` against the name `a`. Of several `*` only the last one met is ever tried again: an
// earlier one, taking in more, could only leave less of the name for the rest of the pattern.
template <bool Fold>
constexpr auto compareWild = [](auto const& a, auto const& b) {
    using Unit = typename std::decay_t<decltype(a)>::Unit;
    Unit const* n = a.start;
    Unit const* p = b.start;
    Unit const* starPattern = nullptr; // what follows the last `*` met
    Unit const* starName = nullptr;    // where it was tried last
    for (;;) {
        unsigned int c = 0;
        if (b.more(p)) {
            c = b.value(p);
            if (c == '*') {
                do
                    p = b.next(p);
                while (b.more(p) && (b.value(p) == '*' || b.value(p) == '?'));
                if (!b.more(p))
                    return 0;
                if constexpr (std::decay_t<decltype(a)>::Walk::isFixed) {
                    // After the last `*` of all, the rest must match the end of the name.
                    if (!nxScan(p, static_cast<std::size_t>(b.end - p), Unit{'*'})) {
                        if (a.end - n < b.end - p)
                            return -1;
                        for (n = a.end - (b.end - p); b.more(p); ++n, ++p)
                            if (*p != '?' && folded<Fold>(*n) != folded<Fold>(*p))
                                return -1;
                        return 0;
                    }
                }
                starPattern = p;
                starName = n = nextChar<Fold>(a, n, folded<Fold>(b.value(p)));
                if (!n)
                    return -1;
                continue;
            }
            if (!a.more(n))
                return -1; // nor does a shorter rest of the name match
            if (c == '?' || folded<Fold>(a.value(n)) == folded<Fold>(c)) {
                n = a.next(n);
                p = b.next(p);
                continue;
            }
        } else if (!a.more(n)) {
            return 0;
        }
        if (!starPattern)
            return !b.more(p) || folded<Fold>(a.value(n)) > folded<Fold>(c) ? 1 : -1;
        p = starPattern;
        starName = n = nextChar<Fold>(a, a.next(starName), folded<Fold>(b.value(p)));
        if (!n)
            return -1;
    }
};

// Wide texts give their number of units as the number of bytes: the order of existing data rests on it.
template <class U>
int compareExact(U const* a, std::size_t lenA, U const* b, std::size_t lenB) {
    std::size_t const bytes = std::min(lenA, lenB);
    int const result = bytes ? std::memcmp(a, b, bytes) : 0;
    return result ? result : order(lenA, lenB);
}

template <class TextPtr>
int compare(TextPtr a, int lenA, TextPtr b, int lenB, NX_CompareType type) {
    auto const both = [=](auto const& routine) {
        return nxText(a, lenA, [&](auto const& textA) {
            using Text = std::decay_t<decltype(textA)>;
            return routine(textA, Text(textA, nxUnits(b), nxUnits(b) + nxLen(lenB)));
        });
    };
    switch (type) {
    case NX_CompareExact:
        return compareExact(nxUnits(a), static_cast<std::size_t>(nxLen(lenA)), nxUnits(b),
                            static_cast<std::size_t>(nxLen(lenB)));
    case NX_CompareNum:
        return both(compareNum<false>);
    case NX_CompareFold:
        return both(compareFold);
    case NX_CompareFoldNum:
        return both(compareNum<true>);
    case NX_CompareWild:
        return both(compareWild<false>);
    case NX_CompareWildFold:
        return both(compareWild<true>);
    default:
        return order(static_cast<std::size_t>(nxLen(lenA)), static_cast<std::size_t>(nxLen(lenB)));
    }
}

template <class TextPtr>
int lenOf(TextPtr text) {
    return static_cast<int>(nxScanLen(nxUnits(text)));
}

} // namespace

int NxTextCompare(NX_TextA1PtrConst a, int lenA, NX_TextA1PtrConst b, int lenB, NX_CompareType type) {
    if (type == NX_CompareFold && nxDbcs().dbcsIsFalse()) { // by byte, whatever the table says
        using Text = NXS_Counted<NXS_PlainWalk<unsigned char>>;
        return compareFold(Text({}, nxUnits(a), nxUnits(a) + nxLen(lenA)),
                           Text({}, nxUnits(b), nxUnits(b) + nxLen(lenB)));
    }
    return compare(a, lenA, b, lenB, type);
}

int NxTextCompare(NX_TextW1PtrConst a, int lenA, NX_TextW1PtrConst b, int lenB, NX_CompareType type) {
    return compare(a, lenA, b, lenB, type);
}

int NxTextCompare(NX_TextA1PtrConst a, NX_TextA1PtrConst b, NX_CompareType type) {
    return NxTextCompare(a, lenOf(a), b, lenOf(b), type);
}

int NxTextCompare(NX_TextW1PtrConst a, NX_TextW1PtrConst b, NX_CompareType type) {
    return NxTextCompare(a, lenOf(a), b, lenOf(b), type);
}

int NxTextCompareFold(NX_TextA1PtrConst a, NX_TextA1PtrConst b) {
    return NxTextCompare(a, b, NX_CompareFold);
}

int NxTextCompareFold(NX_TextW1PtrConst a, NX_TextW1PtrConst b) {
    return NxTextCompare(a, b, NX_CompareFold);
}

int NxTextCompareFoldNoDbcs(char const* a, char const* b) {
    for (;; ++a, ++b) {
        int const ca = nxTextLower[static_cast<unsigned char>(*a)];
        int const cb = nxTextLower[static_cast<unsigned char>(*b)];
        if (ca != cb || ca == 0)
            return ca - cb;
    }
}
