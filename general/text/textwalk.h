// general/text/textwalk.h - Private header. One way to walk all forms of text.
//
// A routine is written once over a Text: terminated or counted, plain or with lead bytes. nxText picks the
// Text that a public form's arguments mean and hands it to the routine. Positions are `Unit const*`,
// unsigned.
#pragma once

#include <cstddef>

#include "general/text/bytescan.h"
#include "general/text/dbcsinfo.h"
#include "general/text/textptr.h"

// How units make characters: each unit one...
template <class U>
struct NXS_PlainWalk {
    using Unit = U;
    static constexpr bool isFixed = true;
    static constexpr bool isLead(Unit) { return false; }
};

// ...or a lead byte and the byte after it one.
struct NXS_LeadWalk {
    using Unit = unsigned char;
    static constexpr bool isFixed = false;
    unsigned char const* table;
    bool isLead(Unit unit) const { return table[unit] != 0; }
};

// Does a character start at `p`? `from` is where one is known to start, at or before `p`. Lead bytes pair up
// from the last byte that is none, so an even number of them stands before a character's start.
template <class Walk>
bool nxIsBoundary(Walk const& walk, typename Walk::Unit const* from, typename Walk::Unit const* p) {
    if constexpr (Walk::isFixed)
        return true;
    auto const* lead = p;
    while (lead > from && walk.isLead(lead[-1]))
        --lead;
    return (p - lead) % 2 == 0;
}

// Text of known length. A lone lead byte at the end has the value lead * 256 and the width 1.
template <class W>
struct NXS_Counted : W {
    using Unit = typename W::Unit;
    using Walk = W;
    Unit const* start;
    Unit const* end;

    NXS_Counted(W const& walk, Unit const* first, Unit const* last) : W(walk), start(first), end(last) {}
    std::size_t qty() const { return static_cast<std::size_t>(end - start); }
    bool more(Unit const* p) const { return p < end; }     // is there a character at `p`?
    bool readable(Unit const* p) const { return p < end; } // may it be read? (the terminator may)
    unsigned int value(Unit const* p) const {
        if (!this->isLead(*p))
            return *p;
        return *p * 256u + (end - p > 1 ? p[1] : 0u);
    }
    Unit const* next(Unit const* p) const { return p + (this->isLead(*p) && end - p > 1 ? 2 : 1); }
    NXS_Counted counted() const { return *this; }
};

// Text up to the first character of value 0.
template <class W>
struct NXS_Terminated : W {
    using Unit = typename W::Unit;
    using Walk = W;
    Unit const* start;

    NXS_Terminated(W const& walk, Unit const* first) : W(walk), start(first) {}
    bool more(Unit const* p) const { return value(p) != 0; }
    bool readable(Unit const*) const { return true; }
    unsigned int value(Unit const* p) const { return this->isLead(*p) ? *p * 256u + p[1] : *p; }
    Unit const* next(Unit const* p) const { return p + (this->isLead(*p) ? 2 : 1); }
    NXS_Counted<W> counted() const {
        Unit const* end = start + nxScanLen(start);
        while (!nxIsBoundary<W>(*this, start, end)) // a zero that is a trail byte
            end += 1 + nxScanLen(end + 1);
        return {*this, start, end};
    }
};

inline unsigned char const* nxUnits(NX_TextA1PtrConst text) {
    return reinterpret_cast<unsigned char const*>(text.textP());
}
inline unsigned short const* nxUnits(NX_TextW1PtrConst text) {
    return text;
}

inline NX_TextA1PtrConst nxTextPtr(unsigned char const* p) {
    return reinterpret_cast<char const*>(p);
}
inline NX_TextW1PtrConst nxTextPtr(unsigned short const* p) {
    return p;
}

inline std::ptrdiff_t nxLen(int len) {
    return len > 0 ? len : 0;
}

template <class F>
auto nxText(NX_TextA1PtrConst text, F const& routine) {
    NX_DbcsInfo const& info = nxDbcs();
    if (info.dbcsLeadKind() == NX_DbcsInfo::LeadNone)
        return routine(NXS_Terminated(NXS_PlainWalk<unsigned char>(), nxUnits(text)));
    return routine(NXS_Terminated(NXS_LeadWalk{info.dbcsIsLeadP()}, nxUnits(text)));
}

template <class F>
auto nxText(NX_TextA1PtrConst text, int len, F const& routine) {
    NX_DbcsInfo const& info = nxDbcs();
    auto const* p = nxUnits(text);
    if (info.dbcsLeadKind() == NX_DbcsInfo::LeadNone)
        return routine(NXS_Counted(NXS_PlainWalk<unsigned char>(), p, p + nxLen(len)));
    return routine(NXS_Counted(NXS_LeadWalk{info.dbcsIsLeadP()}, p, p + nxLen(len)));
}

template <class F>
auto nxText(NX_TextW1PtrConst text, F const& routine) {
    return routine(NXS_Terminated(NXS_PlainWalk<unsigned short>(), nxUnits(text)));
}

template <class F>
auto nxText(NX_TextW1PtrConst text, int len, F const& routine) {
    auto const* p = nxUnits(text);
    return routine(NXS_Counted(NXS_PlainWalk<unsigned short>(), p, p + nxLen(len)));
}
