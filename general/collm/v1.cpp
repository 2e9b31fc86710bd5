// general/collm/v1.cpp - reference management of the untyped vector, and inserting, removing and replacing
// items.
#include "general/collm/v1.h"

#include <cstring>
#include <functional>

namespace {

// A quantity worked out in 64 bits, as the 32 bits that blocks count in.
unsigned int quantity(std::uint64_t n) {
    if (n > 0xFFFFFFFFu)
        nxMemExhausted();
    return static_cast<unsigned int>(n);
}

void bytesCopy(char* dest, char const* source, std::size_t size) {
    if (size != 0)
        std::memmove(dest, source, size);
}

} // namespace

void NX_VecM::collManCopied(void const*, unsigned int) const {}

void NX_VecM::collManDestroy(void*, unsigned int) {}

NX_VecM& NX_VecM::operator=(NX_VecM const& other) {
    if (this != &other) {
        other.collManInc();
        collManDec();
        vecRef = other.vecRef;
    }
    return *this;
}

void NX_VecM::collDefault(NX_VecRefM* adopted) {
    collManDec();
    vecRef = adopted;
}

void NX_VecM::refManDec() {
    if (vecRef->refIsSole())
        collManDestroy(vecRef->dataPMod(), vecRef->itemQty());
    vecRef->refDec();
}

void NX_VecM::refManClone(unsigned int itemQtyCap) {
    NX_VecRefM* const old = vecRef;
    vecRef = old->refClone(itemQtyCap);
    collManCopied(vecRef->dataPConst(), vecRef->itemQty());
    if (old->refIsSole())
        collManDestroy(old->dataPMod(), old->itemQty());
    old->refDec();
}

void NX_VecM::collManModSlow() {
    if (vecRef->refIsModifiable())
        collManFlag(NX_RefFlagDirty, 1);
    else
        collManClone();
}

int NX_VecM::collManMod(unsigned int n) {
    if (vecRef->refIsModifiable()) {
        collManFlag(NX_RefFlagDirty, 1);
        return 0;
    }
    collManClone(n);
    return 1;
}

unsigned int NX_VecM::itemQty(unsigned int n) {
    unsigned int const qty = itemQty();
    if (n < qty)
        dataDeleteAt(n, qty - n);
    else if (n > qty)
        dataCreateAt(qty, n - qty);
    return qty;
}

unsigned int NX_VecM::itemQtyGrow(unsigned int n) {
    return itemQty(quantity(std::uint64_t{itemQty()} + n));
}

unsigned int NX_VecM::itemQtyCapNext(unsigned int n) const {
    std::uint64_t const need = std::uint64_t{itemQty()} + n + 1;
    if (itemQtyCap() >= need)
        return static_cast<unsigned int>(need);
    std::uint64_t const more = need / 4 > n ? need / 4 : n;
    return quantity((more + itemQty() + 15) & ~std::uint64_t{15});
}

void NX_VecM::itemQtyCap(unsigned int n) {
    unsigned int const cap = quantity(std::uint64_t{n} + 1);
    collManMod(cap);
    vecRef = vecRef->itemQtyCap(cap);
}

unsigned int NX_VecM::dataCreateAt(unsigned int pos, unsigned int n) {
    unsigned int const qty = itemQty();
    NX_ASSERT(pos <= qty, "item_num <= itemQty()", "general/collm/v1");
    itemQtyCap(itemQtyCapNext(n));
    char* const items = vecRef->dataPMod() + itemOff(pos);
    bytesCopy(items + itemOff(n), items, itemOff(qty - pos));
    collManCreate(items, n);
    vecRef->itemQtySet(qty + n);
    return pos;
}

unsigned int NX_VecM::dataDeleteAt(unsigned int pos, unsigned int n) {
    unsigned int const qty = itemQty();
    NX_ASSERT(pos <= qty && n <= qty - pos, "item_num + item_qty <= itemQty()", "general/collm/v1");
    collManMod();
    char* const items = vecRef->dataPMod() + itemOff(pos);
    collManDestroy(items, n);
    bytesCopy(items, items + itemOff(n), itemOff(qty - pos - n));
    vecRef->itemQtySet(qty - n);
    return pos;
}

unsigned int NX_VecM::dataReplaceAt(unsigned int pos, unsigned int delQty, char const* items,
                                    unsigned int qty) {
    if (pos == NX_NO_INDEX && delQty == 0)
        return pos;
    unsigned int const oldQty = itemQty();
    NX_ASSERT(pos <= oldQty, "item_num <= itemQty()", "general/collm/v1");
    if (delQty > oldQty - pos)
        delQty = oldQty - pos;
    if (items == nullptr)
        qty = 0;
    unsigned int const tail = oldQty - delQty - pos;
    unsigned int const newCap = quantity(std::uint64_t{oldQty} - delQty + qty + 1);

    NX_VecRefM* const old = vecRef;
    std::less<char const*> const before;
    bool const own =
        items != nullptr && !before(items, old->dataPConst()) && before(items, old->dataPEndConst());
    bool const inPlace = old->refIsModifiable();
    if (!inPlace)
        collManClone(newCap);
    else if (!old->refIsDirty())
        collManFlag(NX_RefFlagDirty, 1);
    // The incoming items are announced before any is destroyed, so that items may be replaced by themselves.
    if (qty != 0)
        collManCopied(items, qty);

    if (own && inPlace) {
        // The vector's own items go on in another block. Those of a block with one owner move; those of a
        // block that stays with other owners are duplicated.
        bool const moves = old->refIsSole();
        NX_VecRefM* const fresh = NX_VecRefM::refAlloc(old->refSole(), newCap, old->itemSize());
        char* const to = fresh->dataPMod();
        char const* const oldTail = old->dataPConst() + itemOff(pos + delQty);
        bytesCopy(to, old->dataPConst(), itemOff(pos));
        bytesCopy(to + itemOff(pos), items, itemOff(qty));
        bytesCopy(to + itemOff(pos + qty), oldTail, itemOff(tail));
        if (moves) {
            collManDestroy(old->dataPMod() + itemOff(pos), delQty); // nothing is read of them any more
        } else {
            collManCopied(to, pos);
            collManCopied(to + itemOff(pos + qty), tail);
        }
        old->refDec();
        vecRef = fresh;
    } else {
        // After cloning, own items are still read from the old block, which its other owners hold.
        if (delQty != 0)
            collManDestroy(vecRef->dataPMod() + itemOff(pos), delQty);
        vecRef = vecRef->itemQtyCap(newCap);
        char* const to = vecRef->dataPMod() + itemOff(pos);
        bytesCopy(to + itemOff(qty), to + itemOff(delQty), itemOff(tail));
        bytesCopy(to, items, itemOff(qty));
    }
    vecRef->itemQtySet(newCap - 1);
    return pos;
}

char* NX_VecM::dataCopyAt(char* dest, unsigned int destQty, unsigned int pos, unsigned int qty,
                          unsigned int* copied) const {
    if (dest == nullptr || (pos == NX_NO_INDEX && qty == 0))
        return dest;
    NX_ASSERT(pos <= itemQty(), "item_num <= itemQty()", "general/collm/v1");
    if (qty > destQty)
        qty = destQty;
    if (qty > itemQty() - pos)
        qty = itemQty() - pos;
    *copied = qty;
    if (qty > 0) {
        char const* const items = dataPConst() + itemOff(pos);
        collManCopied(items, qty);
        std::memcpy(dest, items, itemOff(qty));
    }
    return dest;
}

void NX_VecM::dataZero() {
    std::memset(dataPMod(), 0, dataSize());
}

unsigned int NX_VecM::dataZero(unsigned int pos, unsigned int n) {
    NX_ASSERT(pos <= itemQty(), "item_num <= itemQty()", "general/collm/v1");
    if (n > itemQty() - pos)
        n = itemQty() - pos;
    if (n > 0)
        std::memset(dataPMod() + itemOff(pos), 0, itemOff(n));
    return pos;
}

void NX_VecM::dataSole() {
    if (vecRef->refNo() > 0x100)
        collManClone();
}
