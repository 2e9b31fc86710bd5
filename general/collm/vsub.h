// general/collm/vsub.h - ranges and cursors over a vector: a view of a run of items, and two kinds of
// walkers.
//
// None of them owns anything: they hold a plain pointer to the vector object, which must outlive them. A
// view's item count is worked out afresh at every use, so it follows the vector; a cursor's end is fixed when
// it is made. Failure: bad indexes assert "item_num < itemQty()" in "general/collm/v1.h"; cursors outside
// their walk return null.
#pragma once

#include "general/collm/v1.h"

// A run of items: `length` items from `first` on, or as many of them as the vector has. A first item past the
// vector's end makes the difference wrap: the count is then `length`, and every access asserts.
class NX_EXPORT NX_VecSubM {
public:
    unsigned int itemNum() const { return itemFirst; }
    unsigned int subOff() const { return coll->itemOff(itemFirst); } // byte offset in the item area
    unsigned int itemQty() const {
        unsigned int const present = coll->itemQty() - itemFirst;
        return present < itemQtyMax ? present : itemQtyMax;
    }
    unsigned int itemSize() const { return coll->itemSize(); }
    unsigned int dataSize() const { return dataSize(itemQty()); }
    unsigned int dataSize(unsigned int n) const { return coll->dataSize(n); }
    unsigned int itemOff(unsigned int n) const { return coll->itemOff(itemFirst + n); }
    // Shrinks the run to its first `n` items and returns the count before. Growing asks the vector for the
    // negative difference taken as a count, which no memory can hold: the process ends.
    unsigned int itemQty(unsigned int n);
    unsigned int itemQtyGrow(unsigned int n) { return itemQty(itemQty() + n); }

protected:
    friend class NX_VecPtrConstM;
    friend class NX_VecPtrM;

    // A first item of NX_NO_INDEX makes an empty view; a length of NX_NO_INDEX reaches to the vector's end.
    NX_VecSubM(NX_VecM const* viewed, unsigned int firstItem, unsigned int itemQtyWanted)
        : itemFirst(firstItem), itemQtyMax(firstItem == NX_NO_INDEX ? 0 : itemQtyWanted),
          coll(const_cast<NX_VecM*>(viewed)) {}
    NX_VecSubM(NX_VecSubM const&) = default;
    ~NX_VecSubM() = default;
    // Assigning replaces the viewed items by the other's; the view's own fields stay.
    NX_VecSubM& operator=(NX_VecM const& other);
    NX_VecSubM& operator=(NX_VecSubM const& other);

    unsigned int subQtyMax() const { return itemQtyMax; }   // the length asked for
    void subMove(unsigned int first, unsigned int qtyMax) { // looks at another run of the same vector
        itemFirst = first;
        itemQtyMax = qtyMax;
    }

    NX_VecM* collP() const { return coll; }
    char const* dataPConst() const {
        return itemQty() == 0 ? nullptr : coll->itemPConst(itemFirst);
    } // null when empty
    char* dataPMod() { return itemQty() == 0 ? nullptr : coll->itemPMod(itemFirst); }
    char const* itemPConst(unsigned int n) const {
        return coll->itemPConst(itemFirst + n);
    } // checked by the vector
    char* itemPMod(unsigned int n) { return coll->itemPMod(itemFirst + n); }
    char* dataCopy(char* dest, unsigned int destQty, unsigned int* copied) const {
        return coll->dataCopyAt(dest, destQty, itemFirst, itemQty(), copied);
    }
    unsigned int dataReplace(char const* items, unsigned int qty) {
        return coll->dataReplaceAt(itemFirst, itemQty(), items, qty);
    }

    // The vector's range forms. Results of the searches are then counted down: *insertAt by the view's first
    // item, an index found by the view's item count, both without regard to its sign.
    unsigned int itemSearch(char const* key, NX_VecCompareM cmp, unsigned int* insertAt) const;
    unsigned int itemSearch(char const* key, NX_VecCompareContextM cmp, void* context,
                            unsigned int* insertAt) const;
    unsigned int itemSearchSeq(char const* key, NX_VecCompareM cmp) const;
    unsigned int itemSearchSeq(char const* key, NX_VecCompareContextM cmp, void* context) const;
    void dataSort(NX_VecCompareM cmp);
    void dataSort(NX_VecCompareContextM cmp, void* context);

private:
    std::uint32_t itemFirst;
    std::uint32_t itemQtyMax;
    NX_VecM* coll;
};

// Walks the items of a vector or of a view, reading. while (p.itemIsAvail()) { ... p.itemPConst() ...; ++p; }
class NX_EXPORT NX_VecPtrConstM {
public:
    explicit NX_VecPtrConstM(NX_VecM const& walked)
        : coll(&walked), itemNow(0), itemBegin(0), itemEnd(walked.itemQty()) {}
    explicit NX_VecPtrConstM(NX_VecSubM const& view)
        : coll(view.coll), itemNow(view.itemFirst), itemBegin(view.itemFirst),
          itemEnd(view.itemFirst + view.itemQty()) {}

    int itemIsAvail() const { return itemBegin <= itemNow && itemNow < itemEnd; }
    unsigned int itemNum() const { return itemNow - itemBegin; } // counted from the start of the walk
    void itemNum(unsigned int n) { itemNow = itemBegin + n; }
    unsigned int itemQtyUntilEnd() const { return itemIsAvail() ? itemEnd - itemNow : 0; }
    void operator++() { itemNext(); }
    void operator--() { itemPrev(); }
    NX_VecM const* collP() const { return coll; }
    // The current item; null when none is available.
    char const* itemPConst() const { return itemIsAvail() ? coll->itemPConst(itemNow) : nullptr; }

protected:
    void itemNext() { ++itemNow; } // no check of bounds
    void itemPrev() { --itemNow; }

private:
    NX_VecM const* coll;
    std::uint32_t itemNow;
    std::uint32_t itemBegin;
    std::uint32_t itemEnd;
};

// Walks the items of a vector or of a view and may change and delete them. Items deleted otherwise than
// through the cursor, and items inserted, put it out of step.
class NX_EXPORT NX_VecPtrM {
public:
    explicit NX_VecPtrM(NX_VecM& walked)
        : coll(&walked), itemNow(0), itemBegin(0), itemEnd(walked.itemQty()) {}
    explicit NX_VecPtrM(NX_VecSubM const& view)
        : coll(view.coll), itemNow(view.itemFirst), itemBegin(view.itemFirst),
          itemEnd(view.itemFirst + view.itemQty()) {}

    int itemIsAvail() const { return itemBegin <= itemNow && itemNow < itemEnd; }
    unsigned int itemNum() const { return itemNow - itemBegin; }
    void itemNum(unsigned int n) { itemNow = itemBegin + n; }
    unsigned int itemQtyUntilEnd() const { return itemIsAvail() ? itemEnd - itemNow : 0; }
    void operator++() { itemNext(); }
    void operator--() { itemPrev(); }
    // Deletes the current item, if one is available; the next ++ reaches the item after it.
    void itemDelete();
    // Deletes item `n` of the vector and stays on the present item; when that is the one deleted, the next ++
    // reaches the item after it. REQUIRES: n < the vector's itemQty().
    void itemDeleteAt(unsigned int n);
    NX_VecM* collP() const { return coll; }
    // The current item; null when none is available. The second makes the vector modifiable first.
    char const* itemPConst() const {
        return itemIsAvail() ? static_cast<NX_VecM const*>(coll)->itemPConst(itemNow) : nullptr;
    }
    char* itemPMod() { return itemIsAvail() ? coll->itemPMod(itemNow) : nullptr; }

protected:
    void itemNext() { ++itemNow; }
    void itemPrev() { --itemNow; }

private:
    NX_VecM* coll;
    std::uint32_t itemNow;
    std::uint32_t itemBegin;
    std::uint32_t itemEnd;
};
