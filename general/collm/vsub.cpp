// general/collm/vsub.cpp - replacing, resizing, searching and sorting through ranges, and deleting through
// cursors.
#include "general/collm/vsub.h"

NX_VecSubM& NX_VecSubM::operator=(NX_VecM const& other) {
    dataReplace(other.dataPConst(), other.itemQty());
    return *this;
}

NX_VecSubM& NX_VecSubM::operator=(NX_VecSubM const& other) {
    dataReplace(other.dataPConst(), other.itemQty());
    return *this;
}

unsigned int NX_VecSubM::itemQty(unsigned int n) {
    unsigned int const qty = itemQty();
    if (n < qty)
        coll->dataDeleteAt(itemFirst + n, qty - n);
    else if (n > qty)
        coll->dataCreateAt(itemFirst + qty, qty - n); // wraps: more items than any block can hold
    return qty;
}

// The vector's results count from the view's first item already; the view's own steps down come on top of
// that.
unsigned int NX_VecSubM::itemSearch(char const* key, NX_VecCompareM cmp, unsigned int* insertAt) const {
    unsigned int const qty = itemQty();
    unsigned int const found = coll->itemSearch(key, cmp, itemFirst, qty, insertAt);
    *insertAt -= itemFirst;
    return found == NX_NO_INDEX ? NX_NO_INDEX : found - qty;
}

unsigned int NX_VecSubM::itemSearch(char const* key, NX_VecCompareContextM cmp, void* context,
                                    unsigned int* insertAt) const {
    unsigned int const qty = itemQty();
    unsigned int const found = coll->itemSearch(key, cmp, itemFirst, qty, context, insertAt);
    *insertAt -= itemFirst;
    return found == NX_NO_INDEX ? NX_NO_INDEX : found - qty;
}

unsigned int NX_VecSubM::itemSearchSeq(char const* key, NX_VecCompareM cmp) const {
    unsigned int const qty = itemQty();
    unsigned int const found = coll->itemSearchSeq(key, cmp, itemFirst, qty);
    return found == NX_NO_INDEX ? NX_NO_INDEX : found - qty;
}

unsigned int NX_VecSubM::itemSearchSeq(char const* key, NX_VecCompareContextM cmp, void* context) const {
    unsigned int const qty = itemQty();
    unsigned int const found = coll->itemSearchSeq(key, cmp, itemFirst, qty, context);
    return found == NX_NO_INDEX ? NX_NO_INDEX : found - qty;
}

void NX_VecSubM::dataSort(NX_VecCompareM cmp) {
    coll->dataSort(cmp, itemFirst, itemQty());
}

void NX_VecSubM::dataSort(NX_VecCompareContextM cmp, void* context) {
    coll->dataSort(cmp, itemFirst, itemQty(), context);
}

void NX_VecPtrM::itemDelete() {
    if (!itemIsAvail())
        return;
    coll->dataDeleteAt(itemNow, 1);
    --itemNow;
    --itemEnd;
}

void NX_VecPtrM::itemDeleteAt(unsigned int n) {
    if (itemNow >= n)
        --itemNow;
    --itemEnd;
    coll->dataDeleteAt(n, 1);
}
