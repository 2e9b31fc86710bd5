// general/collm/vecref.cpp - making, growing and freeing the blocks of collections.
#include "general/collm/vecref.h"

#include <cstring>

#define NXS_EMPTY_BLOCK(size) \
    alignas(16) NXS_EmptyBlock<size>::Words NXS_EmptyBlock<size>::words = {0, 0, 1, size};
NXS_EMPTY_BLOCK_SIZES(NXS_EMPTY_BLOCK)
#undef NXS_EMPTY_BLOCK

NX_VecRefM* NX_VecRefM::refAlloc(unsigned long refNo, unsigned int itemQtyCap, unsigned int itemSize) {
    void* p = nullptr;
    NxMemHeapAlloc(&p, refSizeHeap(refSize(itemSize, itemQtyCap)));
    NX_VecRefM* const ref = static_cast<NX_VecRefM*>(p);
    ref->refNo_ = static_cast<std::uint32_t>(refNo);
    ref->itemQtyCap_ = itemQtyCap;
    ref->itemSize_ = itemSize;
    return ref;
}

NX_VecRefM* NX_VecRefM::refClone(unsigned int itemQtyCap) {
    NX_VecRefM* const copy =
        refAlloc(refSole(), itemQtyCap > itemQty_ ? itemQtyCap : itemQty_ + 1, itemSize_);
    std::memcpy(copy->dataPMod(), dataPConst(), dataSize());
    copy->itemQty_ = itemQty_;
    return copy;
}

NX_VecRefM* NX_VecRefM::itemQtyCap(unsigned int n) {
    if (itemQtyCap_ >= n)
        return this;
    if (refIsConst())
        return refClone(n);
    unsigned int const oldSize = refSizeHeap(refSize(itemQtyCap_));
    unsigned int const newSize = refSizeHeap(refSize(n));
    void* p = this;
    if (newSize > oldSize)
        nxMemHeapGrow(&p, oldSize, newSize);
    NX_VecRefM* const ref = static_cast<NX_VecRefM*>(p);
    ref->itemQtyCap_ = n;
    return ref;
}

void NX_VecRefM::refFree() {
    void* p = this;
    NxMemHeapFree(&p);
}

int NX_VecRefM::refFlag(NX_RefFlag flag, int on) {
    std::uint32_t const ref = word();
    std::uint32_t const bits = static_cast<std::uint32_t>(flag) & 0xF0;
    if (ref >= 0x100) {
        std::uint32_t const now = on != 0 ? ref | bits : ref & ~bits;
        if (now != ref)
            word(now);
    }
    return (ref & bits) != 0;
}
