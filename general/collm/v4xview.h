// general/collm/v4xview.h - typed ranges and cursors over a typed vector.
//
// T is the vector class, complete where a member is used; it offers its item type as T::ItemType. A vector
// class gives out views itself:
//
//     NX_VecSubT<T> operator()(unsigned int first, unsigned int length = NX_NO_INDEX) { return {this, first,
//     length}; }
//
// Everything holds as in general/collm/vsub.h.
#pragma once

#include "general/collm/vsub.h"

// A comparison of typed items as one of untyped items; both take two addresses in the same places.
template <class E>
NX_VecCompareM nxVecCompareM(int(NX_FASTCALL* cmp)(E const*, E const*)) {
    return reinterpret_cast<NX_VecCompareM>(cmp);
}

template <class T>
class NX_VecSubT : public NX_VecSubM {
public:
    using ItemType = typename T::ItemType;
    using CompareType = int(NX_FASTCALL*)(ItemType const*, ItemType const*);

    NX_VecSubT(T const* viewed, unsigned int first, unsigned int length)
        : NX_VecSubM(viewed, first, length) {}
    NX_VecSubT(NX_VecSubT const&) = default;
    // Replace the viewed items; the view's own fields stay.
    NX_VecSubT& operator=(T const& other) {
        NX_VecSubM::operator=(other);
        return *this;
    }
    NX_VecSubT& operator=(NX_VecSubT const& other) {
        NX_VecSubM::operator=(other);
        return *this;
    }

    T* collP() const { return static_cast<T*>(NX_VecSubM::collP()); }
    ItemType const* dataPConst() const { return reinterpret_cast<ItemType const*>(NX_VecSubM::dataPConst()); }
    ItemType* dataPMod() { return reinterpret_cast<ItemType*>(NX_VecSubM::dataPMod()); }
    ItemType* dataCopy(ItemType* dest, unsigned int destQty, unsigned int* copied) const {
        return reinterpret_cast<ItemType*>(
            NX_VecSubM::dataCopy(reinterpret_cast<char*>(dest), destQty, copied));
    }
    void dataSort(CompareType cmp) { NX_VecSubM::dataSort(nxVecCompareM(cmp)); }
    unsigned int itemSearch(ItemType const& key, CompareType cmp, unsigned int* insertAt) const {
        return NX_VecSubM::itemSearch(reinterpret_cast<char const*>(&key), nxVecCompareM(cmp), insertAt);
    }
    unsigned int itemSearchSeq(ItemType const& key, CompareType cmp) const {
        return NX_VecSubM::itemSearchSeq(reinterpret_cast<char const*>(&key), nxVecCompareM(cmp));
    }
};

template <class T>
class NX_VecPtrConstT : public NX_VecPtrConstM {
public:
    using ItemType = typename T::ItemType;

    NX_VecPtrConstT(T const& walked) : NX_VecPtrConstM(walked) {}
    NX_VecPtrConstT(NX_VecSubT<T> const& view) : NX_VecPtrConstM(view) {}

    T const* collP() const { return static_cast<T const*>(NX_VecPtrConstM::collP()); }
    ItemType const* itemPConst() const {
        return reinterpret_cast<ItemType const*>(NX_VecPtrConstM::itemPConst());
    }
    operator ItemType const*() const { return itemPConst(); }
    ItemType const* operator->() const { return itemPConst(); }
    ItemType const& operator*() const { return *itemPConst(); } // REQUIRES: itemIsAvail()
};

template <class T>
class NX_VecPtrT : public NX_VecPtrM {
public:
    using ItemType = typename T::ItemType;

    NX_VecPtrT(T& walked) : NX_VecPtrM(walked) {}
    NX_VecPtrT(NX_VecSubT<T> const& view) : NX_VecPtrM(view) {}

    T* collP() const { return static_cast<T*>(NX_VecPtrM::collP()); }
    ItemType const* itemPConst() const { return reinterpret_cast<ItemType const*>(NX_VecPtrM::itemPConst()); }
    ItemType* itemPMod() { return reinterpret_cast<ItemType*>(NX_VecPtrM::itemPMod()); }
    // Through a const cursor to read; through another one the vector is made modifiable first.
    operator ItemType const*() const { return itemPConst(); }
    ItemType const* operator->() const { return itemPConst(); }
    ItemType const& operator*() const { return *itemPConst(); }
    operator ItemType*() { return itemPMod(); }
    ItemType* operator->() { return itemPMod(); }
    ItemType& operator*() { return *itemPMod(); }
};
