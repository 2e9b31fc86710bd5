// general/collm/vecref.h - the block behind every collection: a header of four words, then the items.
//
// Several collections may point at one block; the reference word counts them and carries the type and flag
// bits. A block whose count is 0 is a static constant: never counted, freed or written. At least one spare
// item (a terminator slot) follows the last item in use: itemQty < itemQtyCap. Positions and quantities are
// in items; sizes in bytes. Item bytes never seen before read zero. Threads: the reference word is read and
// written tear-free, but counting is a plain read, add and write. Failure: index checks assert in
// "general/collm/v1.h"; memory is the heap layer's business.
#pragma once

#include "general/collm/assert.h"
#include "general/collm/mem.h"
#include "general/platform/fwd.h"

#include <atomic>
#include <bit>
#include <cstdint>

class NXS_SemMutex;

// Sharing type of a block, the low four bits of its reference word.
enum NX_RefType : int { NX_RefTypeCopy = 0, NX_RefTypeShared = 1 };
// Flag bits of a block; the other bits of 0xF0 are free for the owning class.
enum NX_RefFlag : int { NX_RefFlagNone = 0, NX_RefFlagDirty = 0x10 };

class NX_EXPORT NX_VecRefM {
public:
    // A zeroed block with room for `itemQtyCap` items and none in use.
    static NX_VecRefM* refAlloc(unsigned long refNo, unsigned int itemQtyCap, unsigned int itemSize);
    // A copy with room for `itemQtyCap` items, at least for the present ones and the spare one. It keeps type
    // and flags and counts 1; this block stays as it is.
    NX_VecRefM* refClone(unsigned int itemQtyCap);
    // Makes room for `n` items and returns the block's possibly new address. A constant block is cloned
    // instead. A heap block must have no other owner that would keep the old address.
    NX_VecRefM* itemQtyCap(unsigned int n);
    NX_VecRefM& operator=(NX_VecRefM const& other) = default; // the header words, not the items
    NX_VecRefM(NX_VecRefM const&) = delete;

    // Counting; nothing on a constant block. refDec frees the block with its last reference, without a look
    // at the items.
    void refInc() {
        std::uint32_t const ref = word();
        if (ref >= 0x100)
            word(ref + 0x100);
    }
    void refInc(NXS_SemMutex*) { refInc(); }
    void refDec() {
        std::uint32_t const ref = word();
        if (ref < 0x100)
            return;
        word(ref - 0x100);
        if (ref < 0x200)
            refFree();
    }
    void refDec(NXS_SemMutex*) { refDec(); }
    void refFree();
    // Sets or clears flag bits; 1 if any of them was set before. Does nothing to a constant block.
    int refFlag(NX_RefFlag flag, int on);
    int refFlag(NXS_SemMutex*, NX_RefFlag flag, int on) { return refFlag(flag, on); }

    // What a reference word says.
    static int refIsConst(unsigned long ref) { return static_cast<std::uint32_t>(ref) < 0x100; }
    static int refIsHeap(unsigned long ref) { return !refIsConst(ref); }
    static int refIsSole(unsigned long ref) { return (static_cast<std::uint32_t>(ref) & ~0xFFu) == 0x100; }
    // A sole block with any type or flag bit set does not pass.
    static int refIsConstOrSole(unsigned long ref) { return static_cast<std::uint32_t>(ref) < 0x101; }
    static int refIsShared(unsigned long ref) { return ref & 1; }
    static int refIsDirty(unsigned long ref) { return (ref & 0x10) != 0; }
    static int refWasSole(unsigned long ref) { return refIsConst(ref); } // of a word counted down
    static NX_RefType refType(unsigned long ref) { return static_cast<NX_RefType>(ref & 0x0F); }
    static NX_RefFlag refFlag(unsigned long ref) { return static_cast<NX_RefFlag>(ref & 0xF0); }
    static unsigned long refSole(unsigned long ref) { return (ref & 0xFF) + 0x100; }

    unsigned long refNo() const { return word(); }
    int refIsConst() const { return refIsConst(word()); }
    int refIsHeap() const { return refIsHeap(word()); }
    int refIsSole() const { return refIsSole(word()); }
    int refIsConstOrSole() const { return refIsConstOrSole(word()); }
    int refIsShared() const { return refIsShared(word()); }
    int refIsDirty() const { return refIsDirty(word()); }
    NX_RefType refType() const { return refType(word()); }
    NX_RefFlag refFlag() const { return refFlag(word()); }
    unsigned long refSole() const { return refSole(word()); }
    int refIsCloneable() const {
        std::uint32_t const ref = word();
        return refIsConst(ref) || refIsSole(ref) || !refIsShared(ref);
    }
    int refIsModifiable() const {
        std::uint32_t const ref = word();
        return refIsHeap(ref) && (refIsSole(ref) || refIsShared(ref));
    }

    // Bytes of a block of `n` items; a size past 32 bits ends the process as a lack of memory.
    static unsigned int refSize(unsigned int itemSize, unsigned int n) {
        std::uint64_t const size = std::uint64_t{itemSize} * n + sizeof(NX_VecRefM);
        if (size > 0xFFFFFFFFu) [[unlikely]]
            nxMemExhausted();
        return static_cast<unsigned int>(size);
    }
    unsigned int refSize(unsigned int n) const { return refSize(itemSize_, n); }
    // Bytes that are really asked of the heap for a block of `size` bytes: steps of 16, then of an eighth to
    // a sixteenth, so that most growth by one item stays inside the memory the block has.
    static unsigned int refSizeHeap(unsigned int size) {
        if (size > 0x70000000u) [[unlikely]]
            return size;
        int const bits = static_cast<int>(std::bit_width(size - 9));
        return ((size - 9) | ((1u << (bits < 8 ? 4 : bits - 4)) - 1)) + 9;
    }

    char const* dataPConst() const { return reinterpret_cast<char const*>(this + 1); }
    char* dataPMod() { return reinterpret_cast<char*>(this + 1); }
    char const* dataPEndConst() const { return dataPConst() + itemOff(itemQty_); }
    char* dataPEndMod() { return dataPMod() + itemOff(itemQty_); }
    unsigned int dataSize() const { return itemOff(itemQty_); }
    unsigned int dataSize(unsigned int n) const { return itemOff(n); }
    unsigned int dataSizeCap() const { return itemOff(itemQtyCap_); }
    unsigned int itemQty() const { return itemQty_; }
    unsigned int itemQtyCap() const { return itemQtyCap_; }
    unsigned int itemSize() const { return itemSize_; }
    unsigned int itemNum(char const* p) const {
        return static_cast<unsigned int>((p - dataPConst()) / static_cast<std::ptrdiff_t>(itemSize_));
    }
    unsigned int itemOff(unsigned int n) const { return n * itemSize_; }
    char const* itemPConst(unsigned int n) const {
        NX_ASSERT(n < itemQty_, "item_num < itemQty()", "general/collm/v1.h");
        return dataPConst() + itemOff(n);
    }
    char* itemPMod(unsigned int n) {
        NX_ASSERT(n < itemQty_, "item_num < itemQty()", "general/collm/v1.h");
        return dataPMod() + itemOff(n);
    }
    // `n` may be itemQty(): the spare item.
    char const* itemPExtraConst(unsigned int n) const {
        NX_ASSERT(n <= itemQty_, "item_num <= itemQty()", "general/collm/v1.h");
        return dataPConst() + itemOff(n);
    }

    // For the owning collection: states how many items are in use. REQUIRES: n < itemQtyCap().
    void itemQtySet(unsigned int n) { itemQty_ = n; }
    // For the owning collection: one more item at the end, or null when that needs more than a few words
    // written (the block is not sole, not yet marked dirty, or out of room). Capacities come out as by the
    // growth rule of NX_VecM.
    char* itemNewQuick(unsigned int itemSize) {
        std::uint32_t const qty = itemQty_;
        std::uint32_t const cap = itemQtyCap_;
        if ((word() & ~0xEFu) != 0x110)
            return nullptr;
        if (cap < qty + 3) {
            std::uint32_t const size = cap * itemSize + std::uint32_t{sizeof(NX_VecRefM)};
            if (cap != qty + 2 || refSizeHeap(size) - size < itemSize)
                return nullptr;
            itemQtyCap_ = qty + 3;
        }
        itemQty_ = qty + 1;
        return dataPMod() + qty * itemSize;
    }

private:
    NX_VecRefM() = default; // blocks are made by refAlloc, or are static words

    std::uint32_t word() const {
        return std::atomic_ref<std::uint32_t>(const_cast<std::uint32_t&>(refNo_))
            .load(std::memory_order_relaxed);
    }
    void word(std::uint32_t ref) {
        std::atomic_ref<std::uint32_t>(refNo_).store(ref, std::memory_order_relaxed);
    }

    std::uint32_t refNo_;
    std::uint32_t itemQty_;
    std::uint32_t itemQtyCap_;
    std::uint32_t itemSize_;
};
static_assert(sizeof(NX_VecRefM) == 16);

// The static empty block of an item size: count 0, room for the one spare item, which is zero. Read-only.
template <unsigned int Size>
struct NXS_EmptyBlock {
    alignas(16) static constexpr std::uint32_t words[4 + (Size + 3) / 4] = {0, 0, 1, Size};
    static NX_VecRefM* blockP() { return reinterpret_cast<NX_VecRefM*>(const_cast<std::uint32_t*>(words)); }
};

// Those of the usual sizes live in the library, so that they outlast the modules that use them.
#define NXS_EMPTY_BLOCK_SIZES(block) \
    block(1) block(2) block(4) block(8) block(12) block(16) block(20) block(28) block(32) block(40) block(64)
#define NXS_EMPTY_BLOCK(size)                                                        \
    template <>                                                                      \
    struct NX_EXPORT NXS_EmptyBlock<size> {                                          \
        using Words = std::uint32_t const[4 + (size + 3) / 4];                       \
        static Words words;                                                          \
        static NX_VecRefM* blockP() {                                                \
            return reinterpret_cast<NX_VecRefM*>(const_cast<std::uint32_t*>(words)); \
        }                                                                            \
    };
NXS_EMPTY_BLOCK_SIZES(NXS_EMPTY_BLOCK)
#undef NXS_EMPTY_BLOCK
