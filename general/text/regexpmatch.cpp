// general/text/regexpmatch.cpp - running a compiled expression over text.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "general/text/regexpcode.h"

namespace {

// The state of one `*` or `+` of the program during a search.
//
// Trying the rest of the program after a run of its element is hopeless at every position where it failed
// before, and elements move forward in step: a later position in front of them never leads to an earlier one
// behind them. So while one beginning of a match is tried, an operator is reached at positions that never
// grow, and from one beginning to the next at positions that never shrink. Two bounds therefore remember
// everything that has failed: every position is tried once for each operator, and the search takes linear
// time.
struct Repeat {
    unsigned short const* rest; // what follows the element
    unsigned int pos;           // the position after the run that is being tried
    unsigned int low;           // the last one to try
    unsigned int from;          // the beginning of the match to which the fields below belong
    unsigned int floor;         // all positions from here to the end of their run have failed
    unsigned int arrival;       // where the operator was reached last, and where that run ended
    unsigned int end;
    unsigned int highest; // end of the first, highest run
    unsigned int done;    // reached below this, the operator fails: earlier beginnings have tried it all
};

class Matcher {
public:
    Matcher(char const* text, unsigned int textLen)
        : text_(reinterpret_cast<unsigned char const*>(text)), len_(textLen) {}

    // The end of the match of the program at `code` that begins at `from`, or NX_NO_INDEX. To be called with
    // growing `from` only.
    unsigned int match(unsigned short const* code, unsigned int from);

private:
    bool fits(unsigned short const* code, unsigned int pos) const {
        if (pos >= len_)
            return false;
        return *code == NXS_RegExpAny || *code == text_[pos] ||
               (*code == NXS_RegExpClass && nxRegExpClassHas(code, text_[pos]));
    }
    bool advance(unsigned short const*& code, unsigned int& pos) const;
    bool begin(unsigned short const* code, unsigned int pos, unsigned int from);
    unsigned int runEnd(unsigned short const* element, unsigned int pos, Repeat const& repeat) const;
    bool place(Repeat& repeat) const;

    unsigned char const* text_;
    unsigned int len_;
    unsigned int known_ = 0; // repeats_ that are set up
    unsigned int depth_ = 0; // repeats_ in use by the attempt under way
    Repeat repeats_[NXS_REGEXP_UNITS / 2];
};

// Matches elements up to the next `*` or `+` or the end of the program.
bool Matcher::advance(unsigned short const*& code, unsigned int& pos) const {
    for (;;) {
        switch (*code) {
        case NXS_RegExpEndOfProgram:
        case NXS_RegExpStar:
        case NXS_RegExpPlus:
            return true;
        case NXS_RegExpEnd:
            if (pos != len_)
                return false;
            ++code;
            break;
        case NXS_RegExpMaybe:
            ++code;
            pos += fits(code, pos);
            code += nxRegExpSize(code);
            break;
        default:
            if (!fits(code, pos))
                return false;
            ++pos;
            code += nxRegExpSize(code);
        }
    }
}

// The end of the run of `element` from `pos`; a run that meets the one seen last ends with it.
unsigned int Matcher::runEnd(unsigned short const* element, unsigned int pos, Repeat const& repeat) const {
    if (*element == NXS_RegExpAny)
        return len_;
    unsigned int const stop = std::min(repeat.arrival, len_);
    while (pos < stop && fits(element, pos))
        ++pos;
    return pos == repeat.arrival ? repeat.end : pos;
}

// Lowers repeat.pos to the next position at which the rest can begin; false when there is none left.
bool Matcher::place(Repeat& repeat) const {
    if (*repeat.rest > 0xFF)
        return true;
    for (; repeat.pos >= len_ || text_[repeat.pos] != *repeat.rest; --repeat.pos)
        if (repeat.pos == repeat.low)
            return false;
    return true;
}

// The operator at `code` is reached at `pos`: takes the longest run and opens the choice of shorter ones.
bool Matcher::begin(unsigned short const* code, unsigned int pos, unsigned int from) {
    Repeat& repeat = repeats_[depth_];
    unsigned short const* const element = code + 1;
    if (depth_ == known_ || repeat.from != from) {
        repeat.done = depth_ == known_ ? 0 : std::max(repeat.done, repeat.highest + 1);
        known_ = std::max(known_, depth_ + 1);
        repeat.rest = element + nxRegExpSize(element);
        repeat.from = from;
        repeat.floor = NX_NO_INDEX;
        repeat.arrival = NX_NO_INDEX;
        repeat.end = 0;
        repeat.highest = 0;
    }
    if (pos < repeat.done)
        return false;
    repeat.end = runEnd(element, pos, repeat);
    if (repeat.arrival == NX_NO_INDEX)
        repeat.highest = repeat.end;
    repeat.arrival = pos;
    repeat.low = pos + (*code == NXS_RegExpPlus);
    if (repeat.low > repeat.end || repeat.low >= repeat.floor)
        return false;
    repeat.pos = std::min(repeat.end, repeat.floor - 1);
    repeat.floor = repeat.low;
    return place(repeat);
}

unsigned int Matcher::match(unsigned short const* code, unsigned int from) {
    unsigned int pos = from;
    depth_ = 0;
    for (;;) {
        bool possible = advance(code, pos);
        if (possible && *code == NXS_RegExpEndOfProgram)
            return pos;
        if (possible && begin(code, pos, from)) {
            ++depth_;
        } else {
            // One repetition less, of the innermost operator that can spare one.
            possible = false;
            while (depth_ > 0 && !possible) {
                Repeat& repeat = repeats_[depth_ - 1];
                possible = repeat.pos > repeat.low && (--repeat.pos, place(repeat));
                depth_ -= !possible;
            }
            if (!possible)
                return NX_NO_INDEX;
        }
        code = repeats_[depth_ - 1].rest;
        pos = repeats_[depth_ - 1].pos;
    }
}

// 1 when the byte lies in one of the ranges.
template <std::size_t... N>
unsigned char inRanges(unsigned char byte, NXS_RegExpStart::Range const* range, std::index_sequence<N...>) {
    return static_cast<unsigned char>(
        (... | (static_cast<unsigned char>(byte - range[N].low) <= range[N].span)));
}

// The first byte in [at, end) that lies in one of Qty ranges, or `end`. Whole blocks without one are passed
// over; the inner loop has a fixed count so that the compiler makes vector code of it.
template <std::size_t Qty>
unsigned char const* firstInRanges(unsigned char const* at, unsigned char const* end,
                                   NXS_RegExpStart::Range const* range) {
    constexpr auto ranges = std::make_index_sequence<Qty>();
    constexpr int block = 64;
    for (; end - at >= block; at += block) {
        unsigned char any = 0;
        for (int i = 0; i < block; ++i)
            any |= inRanges(at[i], range, ranges);
        if (any != 0)
            break;
    }
    while (at < end && !inRanges(*at, range, ranges))
        ++at;
    return at;
}

// The next position from `pos` on at which a match can begin, or NX_NO_INDEX.
unsigned int nextStart(NXS_RegExpStart const& start, char const* text, unsigned int len, unsigned int pos) {
    if (start.anywhere)
        return pos;
    auto const* const begin = reinterpret_cast<unsigned char const*>(text);
    unsigned char const* at = begin + pos;
    unsigned char const* const end = begin + len;
    if (start.byteQty == 0)
        at = end;
    else if (start.byteQty == 1) {
        void const* const found = at == end ? nullptr : std::memchr(at, start.range[0].low, len - pos);
        at = found ? static_cast<unsigned char const*>(found) : end;
    } else if (start.rangeQty == 1)
        at = firstInRanges<1>(at, end, start.range);
    else if (start.rangeQty == 2)
        at = firstInRanges<2>(at, end, start.range);
    else if (start.rangeQty == 3)
        at = firstInRanges<3>(at, end, start.range);
    else if (start.rangeQty == 4)
        at = firstInRanges<4>(at, end, start.range);
    else
        while (at < end && (start.set[*at / 32] >> (*at % 32) & 1) == 0)
            ++at;
    if (at == end && !start.atEnd)
        return NX_NO_INDEX;
    return static_cast<unsigned int>(at - begin);
}

} // namespace

unsigned int nxRegExpFind(unsigned short const* program, NXS_RegExpStart const& start, char const* text,
                          unsigned int textLen, unsigned int from, unsigned int* length) {
    Matcher matcher(text, textLen);
    bool const anchored = *program == NXS_RegExpBegin;
    for (unsigned int pos = from; pos <= textLen; ++pos) {
        if (!anchored)
            pos = nextStart(start, text, textLen, pos);
        if (pos == NX_NO_INDEX)
            break;
        unsigned int const end = matcher.match(program + anchored, pos);
        if (end != NX_NO_INDEX) {
            *length = end - pos;
            return pos;
        }
        if (anchored)
            break;
    }
    *length = 0;
    return NX_NO_INDEX;
}
