// general/collm/vsearchx.cpp - searching the items of a vector, its greatest and least item, and its order.
#include "general/collm/v1.h"

namespace {

// What dataValid reports: invalid data, without a nearer reason.
constexpr int dataInvalid = 22528;

// The index of an item equal to the key, or NX_NO_INDEX; `insertAt` is where the key belongs. After the
// halving has ended below the key, the place is looked for item by item, which also finds one where the order
// is not quite kept.
unsigned int searchHalving(char const* key, char const* items, unsigned int qty, unsigned int size,
                           NX_VecCompareM cmp, unsigned int& insertAt) {
    insertAt = 0;
    if (qty == 0)
        return NX_NO_INDEX;
    auto const item = [=](unsigned int n) { return items + std::size_t{n} * size; };
    unsigned int low = 0;
    unsigned int high = qty - 1;
    while (low <= high) {
        unsigned int const mid = low + (high - low) / 2;
        int const order = cmp(key, item(mid));
        insertAt = mid;
        if (order == 0)
            return mid;
        if (order > 0) {
            low = mid + 1;
            if (low <= high)
                continue;
            for (insertAt = low; insertAt < qty && cmp(key, item(insertAt)) > 0;)
                ++insertAt;
        } else if (mid != 0) {
            high = mid - 1;
            continue;
        }
        return NX_NO_INDEX;
    }
    return NX_NO_INDEX;
}

unsigned int searchLinear(char const* key, char const* items, unsigned int qty, unsigned int size,
                          NX_VecCompareM cmp) {
    for (unsigned int n = 0; n < qty; ++n, items += size) {
        if (cmp(key, items) == 0)
            return n;
    }
    return NX_NO_INDEX;
}

[[noreturn]] void notSupported() {
    NxAssertFail("general/collm/vsearchx", __LINE__, "0");
}

} // namespace

unsigned int NX_VecM::itemSearch(char const* key, NX_VecCompareM cmp, unsigned int* insertAt) const {
    return searchHalving(key, dataPConst(), itemQty(), itemSize(), cmp, *insertAt);
}

unsigned int NX_VecM::itemSearch(char const* key, NX_VecCompareM cmp, unsigned int pos, unsigned int qty,
                                 unsigned int* insertAt) const {
    return searchHalving(key, itemPConst(pos), qty, itemSize(), cmp, *insertAt);
}

unsigned int NX_VecM::itemSearchSeq(char const* key, NX_VecCompareM cmp) const {
    return searchLinear(key, dataPConst(), itemQty(), itemSize(), cmp);
}

unsigned int NX_VecM::itemSearchSeq(char const* key, NX_VecCompareM cmp, unsigned int pos,
                                    unsigned int qty) const {
    return searchLinear(key, itemPConst(pos), qty, itemSize(), cmp);
}

unsigned int NX_VecM::itemSearch(char const*, NX_VecCompareContextM, void*, unsigned int*) const {
    notSupported();
}

unsigned int NX_VecM::itemSearch(char const*, NX_VecCompareContextM, unsigned int, unsigned int, void*,
                                 unsigned int*) const {
    notSupported();
}

unsigned int NX_VecM::itemSearchSeq(char const*, NX_VecCompareContextM, void*) const {
    notSupported();
}

unsigned int NX_VecM::itemSearchSeq(char const*, NX_VecCompareContextM, unsigned int, unsigned int,
                                    void*) const {
    notSupported();
}

unsigned int NX_VecM::itemMax(NX_VecCompareM cmp, unsigned int pos, unsigned int qty) const {
    return itemExtreme(cmp, pos, qty, 1);
}

unsigned int NX_VecM::itemMin(NX_VecCompareM cmp, unsigned int pos, unsigned int qty) const {
    return itemExtreme(cmp, pos, qty, -1);
}

// The first item of the range that compares with all before it as `sign` says.
unsigned int NX_VecM::itemExtreme(NX_VecCompareM cmp, unsigned int pos, unsigned int qty, int sign) const {
    if (std::uint64_t{pos} + qty > itemQty())
        qty = itemQty() - pos;
    if (qty == 0)
        return NX_NO_INDEX;
    if (qty == 1)
        return pos;
    char const* best = itemPConst(pos);
    char const* item = best;
    for (unsigned int n = 1; n < qty; ++n) {
        item += itemSize();
        int const order = cmp(item, best);
        if (sign > 0 ? order > 0 : order < 0)
            best = item;
    }
    return itemNum(best);
}

int NX_VecM::dataValid(int mode, NX_VecCompareM cmp) const {
    int const strictness = mode & 0x70;
    if (strictness == 0)
        return 0;
    char const* item = dataPConst();
    for (unsigned int n = 1; n < itemQty(); ++n, item += itemSize()) {
        int const order = cmp(item, item + itemSize());
        if (order > 0 || (order == 0 && strictness >= 0x40))
            return dataInvalid;
    }
    return 0;
}
