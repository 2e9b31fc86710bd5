// general/text/textcase.cpp - changing and asking the case of text, counting text up.
#include "general/text/textprim.h"
#include "general/text/texttable.h"
#include "general/text/textwalk.h"

namespace {

// Applies `change` to the one-byte characters of the text, as many at a time as stand together.
template <class W, class Change>
void changeChars(NXS_Counted<W> const& text, Change const& change) {
    using Unit = typename W::Unit;
    auto* p = const_cast<Unit*>(text.start);
    if constexpr (W::isFixed) {
        change(p, text.qty());
    } else if (nxDbcs().dbcsLeadKind() == NX_DbcsInfo::LeadLow) {
        for (; p < text.end; p = const_cast<Unit*>(text.next(p)))
            if (!text.isLead(*p))
                change(p, 1);
    } else {
        while (p < text.end) {
            std::size_t const ascii = nxScanAscii(p, static_cast<std::size_t>(text.end - p));
            change(p, ascii);
            p += ascii;
            while (p < text.end && *p >= 0x80)
                p = const_cast<Unit*>(text.next(p));
        }
    }
}

constexpr auto upper = [](auto const& text) {
    changeChars(text.counted(), [](auto* p, std::size_t qty) { nxScanUpper(p, qty); });
};

constexpr auto lower = [](auto const& text) {
    changeChars(text.counted(), [](auto* p, std::size_t qty) { nxScanLower(p, qty); });
};

NXS_Terminated<NXS_PlainWalk<unsigned char>> plain(NX_TextA1PtrConst text) {
    return {{}, nxUnits(text)};
}

template <class IsRight>
auto allAre(IsRight const& isRight) {
    return [isRight](auto const& text) {
        for (auto const* p = text.start; text.more(p); p = text.next(p))
            if (!isRight(text.value(p)))
                return 0;
        return 1;
    };
}

constexpr auto isUpper = [](unsigned int c) { return (nxTextClass(c) & NX_TextUpperCase) != 0; };
constexpr auto isUpperAZ = [](unsigned int c) { return c < 256 && !(nxTextClass(c) & NX_TextLowerCase); };

// Adds one to the digits from `first` to before `end`. 0 when all of them wrapped.
template <class U>
int digitsInc(U* first, U* end) {
    while (end-- > first) {
        if (*end != '9') {
            ++*end;
            return 1;
        }
        *end = '0';
    }
    return 0;
}

constexpr auto inc = [](auto const& text) {
    using Unit = typename std::decay_t<decltype(text)>::Unit;
    Unit* lastAlNum = nullptr;
    Unit* digits = nullptr; // start of the run of digits that reaches up to the place of the walk
    for (auto const* p = text.start; text.more(p); p = text.next(p)) {
        unsigned int const type = nxTextClass(text.value(p));
        if (type & NX_TextAlNum)
            lastAlNum = const_cast<Unit*>(p);
        if (!(type & NX_TextDigit))
            digits = nullptr;
        else if (!digits)
            digits = const_cast<Unit*>(p);
    }
    if (!lastAlNum)
        return -1;
    if (digits)
        return digitsInc(digits, const_cast<Unit*>(text.end));
    if (*lastAlNum == 'Z' || *lastAlNum == 'z') {
        *lastAlNum = static_cast<Unit>(*lastAlNum - 25);
        return 1;
    }
    ++*lastAlNum;
    return 0;
};

} // namespace

NX_TextA1Ptr NxTextUpper(NX_TextA1Ptr text) {
    if (nxDbcs().dbcsIsFalse())
        upper(plain(text));
    else
        nxText(text, upper);
    return text;
}

NX_TextW1Ptr NxTextUpper(NX_TextW1Ptr text) {
    nxText(text, upper);
    return text;
}

NX_TextA1Ptr NxTextUpper(NX_TextA1Ptr text, int len) {
    nxText(text, len, upper);
    return text;
}

NX_TextW1Ptr NxTextUpper(NX_TextW1Ptr text, int len) {
    nxText(text, len, upper);
    return text;
}

NX_TextA1Ptr NxTextLower(NX_TextA1Ptr text) {
    if (nxDbcs().dbcsIsFalse())
        lower(plain(text));
    else
        nxText(text, lower);
    return text;
}

NX_TextW1Ptr NxTextLower(NX_TextW1Ptr text) {
    nxText(text, lower);
    return text;
}

NX_TextA1Ptr NxTextLower(NX_TextA1Ptr text, int len) {
    nxText(text, len, lower);
    return text;
}

NX_TextW1Ptr NxTextLower(NX_TextW1Ptr text, int len) {
    nxText(text, len, lower);
    return text;
}

int NxTextIsUpper(NX_TextA1PtrConst text) {
    return nxText(text, allAre(isUpper));
}

int NxTextIsUpper(NX_TextW1PtrConst text) {
    return nxText(text, allAre(isUpper));
}

int NxTextIsUpper(NX_TextA1PtrConst text, int len) {
    return nxText(text, len, allAre(isUpper));
}

int NxTextIsUpper(NX_TextW1PtrConst text, int len) {
    return nxText(text, len, allAre(isUpper));
}

int NxTextIsUpperAZ(NX_TextA1PtrConst text) {
    return nxText(text, allAre(isUpperAZ));
}

int NxTextIsUpperAZ(NX_TextW1PtrConst text) {
    return nxText(text, allAre(isUpperAZ));
}

int NxTextIsUpperAZ(NX_TextA1PtrConst text, int len) {
    return nxText(text, len, allAre(isUpperAZ));
}

int NxTextIsUpperAZ(NX_TextW1PtrConst text, int len) {
    return nxText(text, len, allAre(isUpperAZ));
}

int NxTextInc(NX_TextA1Ptr text, int len) {
    return nxText(text, len, inc);
}

int NxTextInc(NX_TextW1Ptr text, int len) {
    return nxText(text, len, inc);
}
