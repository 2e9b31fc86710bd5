// general/text/textwild.cpp - makes a new file name from a name and a wildcard pattern.
#include "general/text/textwild.h"

#include <algorithm>
#include <cstring>

#include "general/text/texttable.h"
#include "general/text/textwalk.h"

namespace {

// One merge: the name with the place of work `n_`, the pattern with its place `p_`.
template <class W>
class Merge {
    using Unit = typename W::Unit;

public:
    Merge(NXS_Counted<W> const& name, Unit* start, Unit* limit, NXS_Counted<W> const& pattern, bool fold)
        : name_(name), pattern_(pattern), start_(start), n_(start), limit_(limit), p_(pattern.start),
          fold_(fold) {}

    int run() {
        while (pattern_.more(p_) && n_ < limit_) {
            switch (pattern_.value(p_)) {
            case '.':
                dot();
                break;
            case '?':
                if (name_.more(n_) && !nameIsDot())
                    nameStep();
                ++p_;
                break;
            case '*':
                star();
                break;
            default:
                literal();
            }
        }
        *n_ = 0;
        return static_cast<int>(n_ - start_);
    }

private:
    static std::size_t units(Unit const* from, Unit const* to) { return static_cast<std::size_t>(to - from); }

    std::size_t nameWidth() const { return units(n_, name_.next(n_)); }
    bool nameIsDot() const { return name_.value(n_) == '.'; }
    void nameStep() { n_ += nameWidth(); }

    unsigned int same(unsigned int ch) const { return fold_ ? nxTextFold(ch) : ch; }

    // Deletes up to the next dot and steps over what then stands at the old place of the dot.
    void dot() {
        Unit* const from = n_;
        while (name_.more(n_) && !nameIsDot())
            nameStep();
        if (n_ > from) {
            std::memmove(from, n_, units(n_, name_.end)); // bytes, in wide text too: half of it
            name_.end -= n_ - from;
        }
        if (name_.more(n_))
            nameStep();
        ++p_;
    }

    void star() {
        while (pattern_.more(p_) && (pattern_.value(p_) == '*' || pattern_.value(p_) == '?'))
            ++p_;
        if (!pattern_.more(p_)) {
            n_ = start_ + (name_.end - start_);
            return;
        }
        unsigned int const wanted = same(pattern_.value(p_));
        while (name_.more(n_) && same(name_.value(n_)) != wanted)
            nameStep();
    }

    void literal() {
        std::size_t const width = units(p_, pattern_.next(p_));
        if (name_.more(n_)) {
            if (nameIsDot() && limit_ - name_.end >= 2) {           // inserted before the dot
                std::memmove(n_ + 1, n_, units(n_, name_.end) + 1); // bytes, in wide text too: half of it
                ++name_.end;
            }
            replace(width);
        } else {
            if (units(n_, limit_) >= width)
                write(width);
            n_ += std::min(width, units(n_, limit_));
        }
        p_ += width;
    }

    // Puts the literal in the place of the name's character, of another width only where the buffer has room
    // for it.
    void replace(std::size_t width) {
        std::size_t const old = nameWidth();
        if (width != old) {
            Unit* const tail = n_ + old;
            std::size_t const tailUnits = units(tail, name_.end);
            if (units(tail, limit_) <= width || units(n_, limit_) < width + tailUnits) {
                n_ = tail;
                return;
            }
            std::memmove(n_ + width, tail, tailUnits * sizeof(Unit));
            name_.end = n_ + width + tailUnits;
        }
        write(width);
        n_ += width;
    }

    void write(std::size_t width) { std::memcpy(n_, p_, width * sizeof(Unit)); }

    NXS_Counted<W> name_; // its end moves
    NXS_Counted<W> pattern_;
    Unit* start_;
    Unit* n_;
    Unit* limit_; // the last unit that may hold the zero
    Unit const* p_;
    bool fold_;
};

template <class TextPtr, class TextPtrConst>
int merge(TextPtr name, int nameLen, int nameCap, TextPtrConst pattern, int patLen, int fold) {
    if (nameCap <= 0)
        return 0;
    return nxText(TextPtrConst(name), std::min(nameLen, nameCap - 1), [&](auto const& text) {
        using Text = std::decay_t<decltype(text)>;
        auto* const start = const_cast<typename Text::Unit*>(text.start);
        Text const by(text, nxUnits(pattern), nxUnits(pattern) + nxLen(patLen));
        return Merge<typename Text::Walk>(text, start, start + (nameCap - 1), by, fold != 0).run();
    });
}

} // namespace

int NxTextWildMerge(NX_TextA1Ptr name, int nameLen, int nameCap, NX_TextA1PtrConst pattern, int patLen,
                    int fold) {
    return merge(name, nameLen, nameCap, pattern, patLen, fold);
}

int NxTextWildMerge(NX_TextW1Ptr name, int nameLen, int nameCap, NX_TextW1PtrConst pattern, int patLen,
                    int fold) {
    return merge(name, nameLen, nameCap, pattern, patLen, fold);
}
