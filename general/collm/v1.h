// general/collm/v1.h - the untyped vector: items of one size in a shared, copy-on-write block.
//
// Copying shares the block in constant time. Every write first makes the vector modifiable: a block of its
// own is marked dirty and written in place, one with other owners is copied first. Const members never do
// either. Positions and quantities are in items, never bytes; the first item is at 0. Items move as raw
// bytes; what owns resources is kept right by the collMan operations of the derived class. Addresses of items
// are good until the next write through the vector. Threads: two threads may each hold a vector on one block
// and read it. Counting in a block takes no lock: copying, the first write and the end of vectors that share
// one are serialised by the callers, as are all writes to one vector. Failure: bad indexes assert
// ("general/collm/v1.h" and "general/collm/v1"); a count that cannot be represented and a lack of memory end
// the process through the heap layer.
#pragma once

#include "general/collm/coll.h"
#include "general/collm/vecref.h"

class NX_File;

// How two items order: negative, 0 or positive. Searches pass the key first and an item of the vector second.
using NX_VecCompareM = int(NX_FASTCALL*)(char const* a, char const* b);
using NX_VecCompareContextM = int(NX_FASTCALL*)(char const* a, char const* b, void* context);

class NX_EXPORT NX_VecM : public NX_CollM {
public:
    // Plain items need no care when they are copied or removed.
    void collManCopied(void const* items, unsigned int qty) const override;
    void collManDestroy(void* items, unsigned int qty) override;

    unsigned int itemQty() const { return vecRef->itemQty(); }
    unsigned int itemQtyCap() const { return vecRef->itemQtyCap(); }
    unsigned int itemSize() const { return vecRef->itemSize(); }
    unsigned int dataSize() const { return vecRef->dataSize(); }
    unsigned int dataSize(unsigned int n) const { return vecRef->dataSize(n); }
    unsigned int dataSizeCap() const { return vecRef->dataSizeCap(); }
    unsigned long refNo() const { return vecRef->refNo(); }
    NX_RefFlag refFlag() const { return vecRef->refFlag(); }
    NX_RefType refType() const { return vecRef->refType(); }
    int refIsDirty() const { return vecRef->refIsDirty(); }
    int refIsDirty(int on) const {
        return collManFlag(NX_RefFlagDirty, on);
    } // sets or clears; the state before
    int refIsSole() const { return vecRef->refIsSole(); }

    // Sets the count: items past it are destroyed, missing ones created at the end. Returns the count before.
    unsigned int itemQty(unsigned int n);
    unsigned int itemQtyGrow(unsigned int n); // by `n` items
    // The capacity to ask itemQtyCap(n) for before `n` items are added: a quarter more, or as many as are
    // added, in steps of 16; just what is needed while the block has room for it.
    unsigned int itemQtyCapNext(unsigned int n) const;
    void itemQtyCap(unsigned int n); // makes room for `n` items and the spare one; never shrinks
    // Inserts `n` items before item `pos` and returns pos. New items of plain data hold whatever bytes lay
    // there. REQUIRES: pos <= itemQty().
    unsigned int dataCreateAt(unsigned int pos, unsigned int n);
    // Removes `n` items from `pos` on and returns pos; the capacity stays. REQUIRES: pos + n <= itemQty().
    unsigned int dataDeleteAt(unsigned int pos, unsigned int n);
    unsigned int itemDeleteAt(unsigned int pos) { return dataDeleteAt(pos, 1); }
    // Zeroes all item bytes, or those of at most `n` items from `pos` on (returns pos). REQUIRES: pos <=
    // itemQty().
    void dataZero();
    unsigned int dataZero(unsigned int pos, unsigned int n);
    // Clones a heap block that has other owners or any type or flag bit set; one with neither and a constant
    // one stay.
    void dataSole();

    // The sharing part of persistence. 1: the block is one that the stream knows already (and, on loading, is
    // shared now). 0: the count has been written, or read and set, and the items follow.
    int refIsLoaded(NX_PersistTextLoad& load);
    int refIsSaved(NX_PersistTextSave& save) const;

protected:
    friend class NX_VecSubM;
    friend class NX_VecPtrConstM;
    friend class NX_VecPtrM;

    NX_VecM(unsigned long refNo, unsigned int itemQtyCap, unsigned int itemSize)
        : vecRef(NX_VecRefM::refAlloc(refNo, itemQtyCap, itemSize)) {}
    explicit NX_VecM(NX_VecRefM* adopted) : vecRef(adopted) {} // without counting
    NX_VecM(NX_VecM const& other) : NX_CollM(), vecRef(other.vecRef) { other.collManInc(); }
    ~NX_VecM() override = default; // the derived class gives up the block
    NX_VecM& operator=(NX_VecM const& other);
    void collDefault(NX_VecRefM* adopted); // gives up the block and adopts another without counting

    NX_VecRefM* refP() const { return vecRef; }
    void refP(NX_VecRefM* adopted) { vecRef = adopted; } // neither the old nor the new block is counted
    void refManInc() const { vecRef->refInc(); }
    void refManInc(NXS_SemMutex*) const { refManInc(); }
    void refManDec(); // the last owner destroys the items
    void refManDec(NXS_SemMutex*) { refManDec(); }
    void refManClone(unsigned int itemQtyCap);
    void refManClone(NXS_SemMutex*, unsigned int itemQtyCap) { refManClone(itemQtyCap); }
    int refManFlag(NX_RefFlag flag, int on) const { return vecRef->refFlag(flag, on); }
    int refManFlag(NXS_SemMutex*, NX_RefFlag flag, int on) const { return refManFlag(flag, on); }

    // The door to every write. The second form clones with room for `n` items; 1 when it cloned, else 0.
    void collManMod() {
        if ((vecRef->refNo() & 0xFFFFFF10u) != 0x110)
            collManModSlow();
    }
    int collManMod(unsigned int n);

    // Addresses; the Mod forms make the vector modifiable first and check the index after that.
    char const* dataPConst() const { return vecRef->dataPConst(); }
    char const* dataPEndConst() const { return vecRef->dataPEndConst(); }
    char const* itemPConst(unsigned int n) const { return vecRef->itemPConst(n); }
    char const* itemPExtraConst(unsigned int n) const { return vecRef->itemPExtraConst(n); }
    char* dataPMod() {
        collManMod();
        return vecRef->dataPMod();
    }
    char* dataPEndMod() {
        collManMod();
        return vecRef->dataPEndMod();
    }
    char* itemPMod(unsigned int n) {
        collManMod();
        return vecRef->itemPMod(n);
    }
    unsigned int itemNum(char const* p) const { return vecRef->itemNum(p); }
    unsigned int itemOff(unsigned int n) const { return vecRef->itemOff(n); }

    // Replaces `delQty` items (at most those there are) from `pos` on by copies of `qty` items, which may be
    // the vector's own; null `items` means none. Returns pos. Nothing happens for pos NX_NO_INDEX and delQty
    // 0. REQUIRES: pos <= itemQty(); `items` are not in memory that only a replaced item owns.
    unsigned int dataReplaceAt(unsigned int pos, unsigned int delQty, char const* items, unsigned int qty);
    unsigned int itemAppend(char const* item) { return dataReplaceAt(itemQty(), 0, item, 1); }
    unsigned int itemInsertAt(unsigned int pos, char const* item) { return dataReplaceAt(pos, 0, item, 1); }
    // Copies at most `qty` items from `pos` on to `dest`, which has room for `destQty`; *copied says how
    // many. Returns dest. Nothing happens, and *copied is left alone, for a null dest and for pos NX_NO_INDEX
    // with qty 0.
    char* dataCopyAt(char* dest, unsigned int destQty, unsigned int pos, unsigned int qty,
                     unsigned int* copied) const;
    // The bytes as lower-case hexadecimal text with `sep` (null: none) between the bytes, and back. On the
    // way back all other characters part the digits; a digit alone is a byte of its own.
    void dataHex(char const* sep);
    void dataBin();
    // Item bytes from and to a file; whole items only. The file's result, or -1 when its size is unknown.
    int dataRead(NX_File& file);
    int dataRead(NX_File& file, unsigned int pos, unsigned int qty);
    int dataWrite(NX_File& file) const;
    int dataWrite(NX_File& file, unsigned int pos, unsigned int qty) const;

    // Binary search in ascending items: the index of an item equal to the key (any of several) or
    // NX_NO_INDEX; *insertAt is where the key belongs. In the range forms both count from `pos`. REQUIRES:
    // pos < itemQty().
    unsigned int itemSearch(char const* key, NX_VecCompareM cmp, unsigned int* insertAt) const;
    unsigned int itemSearch(char const* key, NX_VecCompareM cmp, unsigned int pos, unsigned int qty,
                            unsigned int* insertAt) const;
    // Linear search: the first equal item, or NX_NO_INDEX. In the range form counted from `pos`, pos <
    // itemQty().
    unsigned int itemSearchSeq(char const* key, NX_VecCompareM cmp) const;
    unsigned int itemSearchSeq(char const* key, NX_VecCompareM cmp, unsigned int pos, unsigned int qty) const;
    // Searching with a context is not supported: these assert "0" in "general/collm/vsearchx".
    unsigned int itemSearch(char const* key, NX_VecCompareContextM cmp, void* context,
                            unsigned int* insertAt) const;
    unsigned int itemSearch(char const* key, NX_VecCompareContextM cmp, unsigned int pos, unsigned int qty,
                            void* context, unsigned int* insertAt) const;
    unsigned int itemSearchSeq(char const* key, NX_VecCompareContextM cmp, void* context) const;
    unsigned int itemSearchSeq(char const* key, NX_VecCompareContextM cmp, unsigned int pos, unsigned int qty,
                               void* context) const;
    // Sort ascending, not stable. REQUIRES of the range forms: pos < itemQty(), and all `qty` items exist.
    void dataSort(NX_VecCompareM cmp);
    void dataSort(NX_VecCompareM cmp, unsigned int pos, unsigned int qty);
    void dataSort(NX_VecCompareContextM cmp, void* context);
    void dataSort(NX_VecCompareContextM cmp, unsigned int pos, unsigned int qty, void* context);
    // Index of the greatest or least item (the first of several), NX_NO_INDEX when there is none. The range
    // is cut to the items present; the result counts from item 0.
    unsigned int itemMax(NX_VecCompareM cmp) const { return itemMax(cmp, 0, itemQty()); }
    unsigned int itemMax(NX_VecCompareM cmp, unsigned int pos, unsigned int qty) const;
    unsigned int itemMin(NX_VecCompareM cmp) const { return itemMin(cmp, 0, itemQty()); }
    unsigned int itemMin(NX_VecCompareM cmp, unsigned int pos, unsigned int qty) const;
    // Checks the order: mode bits 0x10 to 0x30 accept equal neighbours, 0x40 to 0x70 do not, none of them
    // accepts everything. 0, or error number 22528.
    int dataValid(int mode, NX_VecCompareM cmp) const;

private:
    void collManModSlow();
    unsigned int itemExtreme(NX_VecCompareM cmp, unsigned int pos, unsigned int qty, int sign) const;

    NX_VecRefM* vecRef;
};
