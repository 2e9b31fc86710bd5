// general/platform/posix/pattern.cpp - matching names against search patterns.
#include "general/platform/posix/pattern.h"

#include <cstring>

#include "general/platform/posix/codepage.h"

namespace {

char upper(char unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - ('a' - 'A')) : unit;
}

bool isPair(char const* at) {
    return nxPlatformUnitsAt(at) == 2;
}

char const* next(char const* at) {
    return at + nxPlatformUnitsAt(at);
}

} // namespace

NXS_Pattern::NXS_Pattern(char const* text, std::size_t length, bool starDot) {
    char const* const end = text + length;
    for (char const* at = text; at != end; at = next(at)) {
        Item& item = items_[itemQty_++];
        item = {unit, upper(*at), 0};
        if (*at == '*') {
            item.token = starDot && at + 1 == end ? last : any;
        } else if (*at == '?') {
            item.token = one;
        } else if (*at == '.' && at + 1 != end && (at[1] == '*' || at[1] == '?')) {
            item.token = dot;
        } else if (isPair(at)) {
            item = {pair, at[0], at[1]};
        }
    }
    all_ = (itemQty_ == 1 && items_[0].token == any) ||
           (itemQty_ == 3 && items_[0].token == any && items_[1].token == dot && items_[2].token == any);
}

bool NXS_Pattern::matches(char const* name) const {
    return all_ || matchesItems(name);
}

// After a failure only the latest `*` can still take more: whatever an earlier one took, the later one can
// take the rest.
bool NXS_Pattern::matchesItems(char const* name) const {
    Item const* item = items_;
    Item const* const end = items_ + itemQty_;
    Item const* starItem = nullptr;
    char const* starName = nullptr;
    for (;;) {
        bool goes = false;
        if (item == end) {
            if (*name == 0) {
                return true;
            }
        } else {
            switch (item->token) {
            case any:
                if (++item == end) {
                    return true;
                }
                starItem = item;
                starName = name;
                goes = true;
                break;
            case last:
                if (std::strchr(name, '.') == nullptr) {
                    return true;
                }
                break;
            case one:
                goes = true;
                if (*name == 0 || *name == '.') {
                    while (item != end && item->token == one) {
                        ++item;
                    }
                } else {
                    name = next(name);
                    ++item;
                }
                break;
            case dot:
                if (*name == 0 || *name == '.') {
                    name += *name == '.' ? 1 : 0;
                    ++item;
                    goes = true;
                }
                break;
            case unit:
                if (*name != 0 && !isPair(name) && upper(*name) == item->first) {
                    ++name;
                    ++item;
                    goes = true;
                }
                break;
            case pair:
                if (isPair(name) && name[0] == item->first && name[1] == item->second) {
                    name += 2;
                    ++item;
                    goes = true;
                }
                break;
            }
        }
        if (!goes) {
            if (starItem == nullptr || *starName == 0) {
                return false;
            }
            starName = next(starName);
            name = starName;
            item = starItem;
        }
    }
}
