// general/text/stringbynamet.h - the template behind the dictionaries of general/text/stringbyname.h.
//
// A dictionary is a typed vector of pairs in ascending order of their keys under one comparison mode; no two
// keys compare equal. It is searched by halving. Everything else holds as in general/collm/v4x.h.
#pragma once

#include <cstddef>

#include "general/collm/v4x.h"
#include "general/text/stringa.h"

// Where the newest search or insertion through a dictionary's key operations found the place of its key. One
// word for the whole library.
NX_EXPORT void nxByNameInsertAt(unsigned int n);
NX_EXPORT unsigned int nxByNameInsertAt();

// One entry.
template <class Key, NX_CompareType Type>
struct NXS_ByNamePair {
    Key key;
    NX_StringA value;

    NXS_ByNamePair() = default;
    NXS_ByNamePair(Key const& name, NX_StringA const& text) : key(name), value(text) {}

    int operator<(NXS_ByNamePair const& other) const { // 1 when this key orders before the other one
        return key.strCompare(other.key.dataPConst(), other.key.strLen(), Type) < 0;
    }
};

// The vector of pairs.
template <class Key, NX_CompareType Type>
class NXS_ByNameBase : public NX_VecT<NXS_ByNamePair<Key, Type>, NXS_OwningItems> {
public:
    using Pair = NXS_ByNamePair<Key, Type>;
    using Vec = NX_VecT<Pair, NXS_OwningItems>;
    using Vec::Vec;
    NXS_ByNameBase() = default;

    // The order of two entries by their keys: -1, 0 or 1.
    static int NX_FASTCALL itemCompare(Pair const* a, Pair const* b) { return *a < *b ? -1 : *b < *a; }

    // Inserts a pair at its place, which goes to `*insertAt`, and returns its index. An entry with an equal
    // key takes over the pair's key and value instead, and the result is NX_NO_INDEX.
    unsigned int itemInsert(Pair const& pair, unsigned int* insertAt) {
        unsigned int const found = place(pair, insertAt);
        if (found == NX_NO_INDEX)
            return this->itemInsertAt(*insertAt, pair);
        Pair& entry = *this->itemPMod(found);
        entry.key = pair.key;
        entry.value = pair.value;
        return NX_NO_INDEX;
    }

    // Removes the entry with an equal key and returns its former index, NX_NO_INDEX when there is none.
    unsigned int itemDelete(Pair const& pair) {
        unsigned int insertAt = 0;
        unsigned int const found = this->itemSearch(pair, itemCompare, &insertAt);
        nxByNameInsertAt(insertAt);
        return found == NX_NO_INDEX ? found : this->itemDeleteAt(found);
    }

private:
    // Searches for an equal key. Keys that arrive in order are not searched for, unless the mode is one whose
    // order has exceptions (numbers with leading zeros): there the halving decides, step by step.
    unsigned int place(Pair const& pair, unsigned int* insertAt) const {
        unsigned int const qty = this->itemQty();
        if constexpr (Type == NX_CompareExact || Type == NX_CompareFold) {
            if (qty > 0 && *this->itemPConst(qty - 1) < pair) {
                *insertAt = qty;
                return NX_NO_INDEX;
            }
        }
        return this->itemSearch(pair, itemCompare, insertAt);
    }
};

// The operations by key. An `insertAt` argument is accepted and not written; the place goes to the library's
// word.
template <class Key, NX_CompareType Type>
class NXS_ByName : public NXS_ByNameBase<Key, Type> {
public:
    using Base = NXS_ByNameBase<Key, Type>;
    using Pair = typename Base::Pair;
    using Base::Base;
    NXS_ByName() = default;

    // The new entry's index; NX_NO_INDEX when an entry with an equal key was overwritten, its key's text too.
    unsigned int itemInsert(Key const& key, NX_StringA const& value, unsigned int* = nullptr) {
        unsigned int at = 0;
        unsigned int const inserted = Base::itemInsert(Pair(key, value), &at);
        nxByNameInsertAt(at);
        return inserted;
    }
    // The index of the entry removed, or NX_NO_INDEX when no key is equal.
    unsigned int itemDelete(Key const& key) { return Base::itemDelete(Pair(key, NX_StringA())); }
    // The index of the entry with an equal key, or NX_NO_INDEX.
    unsigned int itemSearch(Key const& key, unsigned int* = nullptr) const {
        unsigned int at = 0;
        unsigned int const found = Base::itemSearch(Pair(key, NX_StringA()), Base::itemCompare, &at);
        nxByNameInsertAt(at);
        return found;
    }
    // The value under a key, or null.
    NX_StringA const* itemPConst(Key const& key) const {
        unsigned int const found = itemSearch(key);
        return found == NX_NO_INDEX ? nullptr : itemPAtConst(found);
    }
    // The value of entry `n`; the second makes the dictionary modifiable first. REQUIRES: n < itemQty().
    NX_StringA const* itemPAtConst(unsigned int n) const { return &Base::itemPConst(n)->value; }
    NX_StringA* itemPAtMod(unsigned int n) { return &Base::itemPMod(n)->value; }
    // The index of the entry whose value is at that address.
    unsigned int itemNum(NX_StringA const* value) const {
        auto const* const first = reinterpret_cast<char const*>(&this->dataPConst()->value);
        return static_cast<unsigned int>(
            static_cast<std::size_t>(reinterpret_cast<char const*>(value) - first) / sizeof(Pair));
    }
};
