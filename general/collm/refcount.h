// general/collm/refcount.h - objects shared by an intrusive reference count, and the counting pointer.
//
// A shared object derives from NX_RefCountRep; owners hold it through NX_RefCountPtr. The last owner deletes
// it. Threads: an object without the multi-thread bit stays within one thread; with it, counting and the
// modified bit are changed under one process-wide lock (which the object's own destructor then runs under).
#pragma once

#include "general/platform/fwd.h"

#include <atomic>
#include <cstdint>

class NX_TraceStream;

// The info word: bit 0 modified, bit 1 multi-thread, bit 2 share always, bit 3 share never, bits 8 to 31 the
// count. What the sharing modes mean is up to the owning class; they are only kept here.
class NX_EXPORT NX_RefCountRep {
public:
    virtual ~NX_RefCountRep() = 0;
    virtual NX_TraceStream& dataTrace(NX_TraceStream& stream) const; // writes nothing

    void refInc() const {
        if (refIsMultiThread())
            refIncSync();
        else
            word(word() + 0x100);
    }
    void refDec() { // deletes the object with its last reference
        if (refIsMultiThread()) {
            refDecSync();
            return;
        }
        word(word() - 0x100);
        if (word() < 0x100)
            delete this;
    }
    // The info word. Of a multi-thread object it is watched until it changes: without a change from another
    // thread this does not return. refIsShared and refIsSole read it this way too.
    unsigned long refInfo() const { return refIsMultiThread() ? refInfoWatch() : word(); }
    int refIsModified() const { return word() & 1; }
    void refIsModified(int on) {
        if (refIsMultiThread())
            refIsModifiedSync(on);
        else
            word(on ? word() | 1u : word() & ~1u);
    }
    int refIsMultiThread() const { return (word() >> 1) & 1; }
    int refIsShareAlways() const { return (word() >> 2) & 1; }
    int refIsShareNever() const { return (word() >> 3) & 1; }
    int refIsShareUntilModify() const { return (word() & 0x0C) == 0; }
    int refIsShareable() const { return !refIsShareNever(); }
    int refIsShared() const { return refInfo() >= 0x200; } // two owners or more
    int refIsSole() const { return refInfo() < 0x200; }    // one owner or none

protected:
    explicit NX_RefCountRep(unsigned long infoWord) : refWord(static_cast<std::uint32_t>(infoWord)) {}
    // Copying takes the mode bits only: no count, not modified. Assigning replaces the target's count like
    // that too.
    NX_RefCountRep(NX_RefCountRep const& other) : refWord(other.word() & 0x0E) {}
    NX_RefCountRep& operator=(NX_RefCountRep const& other) {
        if (this != &other)
            word(other.word() & 0x0E);
        return *this;
    }

private:
    std::uint32_t word() const {
        return std::atomic_ref<std::uint32_t>(refWord).load(std::memory_order_relaxed);
    }
    void word(std::uint32_t value) const {
        std::atomic_ref<std::uint32_t>(refWord).store(value, std::memory_order_relaxed);
    }
    void refIncSync() const;
    void refDecSync();
    void refIsModifiedSync(int on);
    unsigned long refInfoWatch() const;

    mutable std::uint32_t refWord;
};

// Holds one object, or null. Everything but the default constructor is for derived, typed pointers.
class NX_EXPORT NX_RefCountPtr {
public:
    NX_RefCountPtr() = default;
    // Count the held object up or down, if there is one.
    void collManInc() const {
        if (refRep)
            refRep->refInc();
    }
    void collManDec() {
        if (refRep)
            refRep->refDec();
    }

protected:
    explicit NX_RefCountPtr(NX_RefCountRep* held) : refRep(held) { collManInc(); }
    NX_RefCountPtr(NX_RefCountPtr const& other) : refRep(other.refRep) { collManInc(); }
    ~NX_RefCountPtr() { collManDec(); }
    NX_RefCountPtr& operator=(NX_RefCountPtr const& other) {
        if (refRep != other.refRep) {
            NX_RefCountPtr old; // the new object is counted up before the old one goes
            old.refRep = refRep;
            refRep = other.refRep;
            collManInc();
        }
        return *this;
    }
    NX_RefCountRep* repP() const { return refRep; }

private:
    NX_RefCountRep* refRep = nullptr;
};

// A shared object with a recency number: the larger, the more recently used. The three operations on the
// number may be called through a null pointer, which counts as number 0.
class NX_EXPORT NX_RefCountCacheRep : public NX_RefCountRep {
public:
    ~NX_RefCountCacheRep() override = 0;
    unsigned long cachePriority() const;
    void cachePriorityTop(); // makes this the most recently used object
    // -1 when the other one is more recent, 1 when this one is, else 0.
    int cachePriorityCompare(NX_RefCountCacheRep const* other) const;

protected:
    explicit NX_RefCountCacheRep(unsigned long infoWord);
    NX_RefCountCacheRep(NX_RefCountCacheRep const& other);
    NX_RefCountCacheRep& operator=(NX_RefCountCacheRep const& other);

private:
    std::uint32_t priority;
};
