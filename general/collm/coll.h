// general/collm/coll.h - the abstract collection: the operations by which a collection's block and items are
// managed.
//
// A concrete collection overrides what it uses; the bodies here fail the assertion "0" in
// "general/collm/collm". Item addresses and quantities name runs of packed items. None of the operations
// reports a failure.
#pragma once

#include "general/collm/vecref.h"

class NX_PersistTextLoad;
class NX_PersistTextSave;

class NX_EXPORT NX_CollM {
public:
    NX_CollM() = default;
    NX_CollM(NX_CollM const&) {}
    NX_CollM& operator=(NX_CollM const&) { return *this; }
    virtual ~NX_CollM() = default;

    // Replaces the block by a private copy, with room for `itemQtyCap` items or for the present ones.
    virtual void collManClone(unsigned int itemQtyCap);
    virtual void collManClone();
    // Told that items have been duplicated byte by byte: items that own something take their further
    // references.
    virtual void collManCopied(void const* items, unsigned int qty) const;
    // Sets or clears flag bits of the block; 1 if any of them was set before.
    virtual int collManFlag(NX_RefFlag flag, int on) const;
    // Makes items in bytes that hold none.
    virtual void collManCreate(void* items, unsigned int qty);
    // Gives up this collection's reference to its block.
    virtual void collManDec();
    // Destroys items that are about to be removed.
    virtual void collManDestroy(void* items, unsigned int qty);
    // Takes one more reference to the block.
    virtual void collManInc() const;
    virtual unsigned int collManItemSize() const; // in bytes
    // Read and write the collection through the persistence streams.
    virtual NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load);
    virtual NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const;
};
