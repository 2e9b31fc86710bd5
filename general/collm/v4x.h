// general/collm/v4x.h - typed vectors: the untyped vector of general/collm/v1.h under the types of its items.
//
// A concrete class derives from NX_VecT<item> and adds nothing but its own operations:
//
//     class NX_EXPORT NX_FooVec : public NX_VecT<NX_Foo, NXS_FooItems> {
//     public:
//         using NX_VecT::NX_VecT;
//     };
//
// Copying one shares the block: one pointer and a count. Items that own something name a hook class; the
// hooks, not overridden collMan operations, are how items are managed. Every item type must stand being moved
// as raw bytes. Ownership, threads and failure are those of general/collm/v1.h. Views and cursors are in
// general/collm/v4xview.h.
#pragma once

#include "general/collm/v1.h"
#include "general/collm/v4xview.h"

#include <concepts>
#include <new>

// Hooks of items that own nothing. `create` makes items out of bytes that hold none (for owning items: any
// bytes), `copied` takes the references of items just duplicated, `destroy` gives up those of items about to
// go.
struct NXS_PlainItems {
    template <class E>
    static void create(E*, unsigned int) {}
    template <class E>
    static void copied(E const*, unsigned int) {}
    template <class E>
    static void destroy(E*, unsigned int) {}
};

// Hooks of items that own something by reference and may move as raw bytes, such as strings. A copy made by
// the copy constructor has the bytes of its original and shares what it owns.
struct NXS_OwningItems {
    template <class E>
    static void create(E* items, unsigned int qty) {
        for (unsigned int n = 0; n < qty; ++n)
            new (items + n) E;
    }
    template <class E>
    static void copied(E const* items, unsigned int qty) {
        // A copy that nobody destroys leaves its references to the duplicate.
        alignas(E) char copy[sizeof(E)];
        for (unsigned int n = 0; n < qty; ++n)
            new (copy) E(items[n]);
    }
    template <class E>
    static void destroy(E* items, unsigned int qty) {
        for (unsigned int n = 0; n < qty; ++n)
            items[n].E::~E();
    }
};

template <class E, class Hooks = NXS_PlainItems>
class NX_VecT : public NX_VecM {
public:
    using ItemType = E;
    using CompareType = int(NX_FASTCALL*)(E const*, E const*);

    NX_VecT() : NX_VecM(emptyP()) {} // no memory is taken before the first write
    // `qty` created items in a block with room for `cap` (and always for the spare item).
    template <std::integral N>
    NX_VecT(N qty, unsigned int cap) : NX_VecM(0x100, cap == 0 ? 1 : cap, sizeof(E)) {
        itemQty(static_cast<unsigned int>(qty));
    }
    // Copies of `qty` items, in a block with just the spare item more.
    NX_VecT(E const* items, unsigned int qty)
        : NX_VecM(0x100, qty == NX_NO_INDEX ? qty : qty + 1, sizeof(E)) {
        dataReplaceAt(0, 0, raw(items), qty);
    }
    NX_VecT(NX_VecT const& other) : NX_VecM(other.refP()) { refP()->refInc(); }
    ~NX_VecT() override { release(); }
    NX_VecT& operator=(NX_VecT const& other) {
        other.refP()->refInc();
        release();
        refP(other.refP());
        return *this;
    }
    void collDefault() { NX_VecM::collDefault(emptyP()); } // gives everything up

    E const* dataPConst() const { return reinterpret_cast<E const*>(NX_VecM::dataPConst()); }
    E* dataPMod() { return reinterpret_cast<E*>(NX_VecM::dataPMod()); }
    E const* itemPConst(unsigned int n) const { return reinterpret_cast<E const*>(NX_VecM::itemPConst(n)); }
    E* itemPMod(unsigned int n) { return reinterpret_cast<E*>(NX_VecM::itemPMod(n)); }
    E const* itemPEndConst() const {
        return reinterpret_cast<E const*>(itemPExtraConst(itemQty()));
    } // the spare item
    E const& operator[](unsigned int n) const { return *itemPConst(n); }
    E& operator[](unsigned int n) { return *itemPMod(n); } // makes the vector modifiable; never grows it
    unsigned int itemNum(E const* p) const { return NX_VecM::itemNum(raw(p)); }
    using NX_VecM::itemQty;

    // Append and insert; the item may be one of the vector's own. The first two give the block just the room
    // needed and return the index, += follows the growth rule.
    unsigned int itemAppend(E const& x) { return dataReplaceAt(itemQty(), 0, raw(&x), 1); }
    unsigned int itemInsertAt(unsigned int n, E const& x) { return dataReplaceAt(n, 0, raw(&x), 1); }
    void operator+=(E const& x) {
        if (char* p = refP()->itemNewQuick(sizeof(E))) [[likely]] {
            Hooks::create(reinterpret_cast<E*>(p), 1);
            *reinterpret_cast<E*>(p) = x;
        } else {
            appendSlow(x);
        }
    }
    void operator+=(NX_VecT const& other) { dataAppend(other.dataPConst(), other.itemQty()); }
    unsigned int dataAppend(E const* items, unsigned int qty) {
        return dataReplaceAt(itemQty(), 0, raw(items), qty);
    }
    unsigned int dataReplace(E const* items, unsigned int qty) {
        return dataReplaceAt(0, itemQty(), raw(items), qty);
    }
    // Copies at most `destQty` items out and says in *copied how many; returns dest.
    E* dataCopy(E* dest, unsigned int destQty, unsigned int* copied) const {
        return reinterpret_cast<E*>(
            dataCopyAt(reinterpret_cast<char*>(dest), destQty, 0, NX_NO_INDEX, copied));
    }

    // Search and sort, as in general/collm/v1.h.
    void dataSort(CompareType cmp) { NX_VecM::dataSort(nxVecCompareM(cmp)); }
    unsigned int itemSearch(E const& key, CompareType cmp, unsigned int* insertAt) const {
        return NX_VecM::itemSearch(raw(&key), nxVecCompareM(cmp), insertAt);
    }
    unsigned int itemSearchSeq(E const& key, CompareType cmp) const {
        return NX_VecM::itemSearchSeq(raw(&key), nxVecCompareM(cmp));
    }
    unsigned int itemMin(CompareType cmp) const { return NX_VecM::itemMin(nxVecCompareM(cmp)); }
    unsigned int itemMin(CompareType cmp, unsigned int pos, unsigned int qty) const {
        return NX_VecM::itemMin(nxVecCompareM(cmp), pos, qty);
    }
    unsigned int itemMax(CompareType cmp) const { return NX_VecM::itemMax(nxVecCompareM(cmp)); }
    unsigned int itemMax(CompareType cmp, unsigned int pos, unsigned int qty) const {
        return NX_VecM::itemMax(nxVecCompareM(cmp), pos, qty);
    }
    void dataValid() const {} // an order is checked only where a class defines one

    using NX_VecM::dataBin;
    using NX_VecM::dataHex;
    using NX_VecM::dataRead;
    using NX_VecM::dataWrite;

    void collManClone(unsigned int cap) override { refManClone(cap); }
    void collManClone() override { refManClone(itemQty()); }
    void collManCopied(void const* items, unsigned int qty) const override {
        Hooks::copied(static_cast<E const*>(items), qty);
    }
    int collManFlag(NX_RefFlag flag, int on) const override { return refManFlag(flag, on); }
    void collManCreate(void* items, unsigned int qty) override { Hooks::create(static_cast<E*>(items), qty); }
    void collManDec() override { release(); }
    void collManDestroy(void* items, unsigned int qty) override {
        Hooks::destroy(static_cast<E*>(items), qty);
    }
    void collManInc() const override { refManInc(); }
    unsigned int collManItemSize() const override { return sizeof(E); }

protected:
    explicit NX_VecT(NX_VecRefM* adopted) : NX_VecM(adopted) {} // without counting

    static NX_VecRefM* emptyP() { return NXS_EmptyBlock<sizeof(E)>::blockP(); }
    static char const* raw(E const* items) { return reinterpret_cast<char const*>(items); }

private:
    // What NX_VecM::refManDec does, without leaving the header.
    void release() {
        if (refP()->refIsSole())
            Hooks::destroy(reinterpret_cast<E*>(refP()->dataPMod()), itemQty());
        refP()->refDec();
    }
    void appendSlow(E const& x) {
        E const own(x); // x may lie in the block that is about to move
        itemQtyGrow(1);
        *reinterpret_cast<E*>(refP()->dataPEndMod() - sizeof(E)) = own;
    }
};

class NX_EXPORT NX_IntVec : public NX_VecT<int> {
public:
    using NX_VecT::NX_VecT;
};

class NX_EXPORT NX_UShortVec : public NX_VecT<unsigned short> {
public:
    using NX_VecT::NX_VecT;
};
