// general/process/threadreg.cpp - the registry of threads: identifiers and objects, sorted by identifier.
//
// Every recorded error asks for the calling thread's object, so each thread keeps the last answer in a slot
// of its own. A generation number tells whether the registry has changed since; the lock is taken only then.
#include <atomic>

#include "general/collm/v4x.h"
#include "general/error/errorintern.h"
#include "general/platform/platform.h"
#include "general/process/thread.h"

namespace {

struct Entry {
    std::uint32_t id;
    int gone; // 1 when the object is destroyed; the entry stays all the same
    NX_Thread* thread;
};

struct Registry {
    NX_SemThreadOfProcess lock;
    NX_VecT<Entry> entries;
    std::atomic<std::uint32_t> generation{1};
};

// What the calling thread last found; generation 0 means nothing yet.
struct Slot {
    std::uint32_t generation;
    int gone;
    NX_Thread* thread;
};

[[gnu::tls_model("initial-exec")]] thread_local Slot slot;

Registry& registry() {
    static Registry& theRegistry = *new Registry;
    return theRegistry;
}

int NX_FASTCALL compareId(Entry const* a, Entry const* b) {
    return a->id < b->id ? -1 : a->id > b->id;
}

// The entry of `id`, null without one; `*insertAt` is its place or where it belongs. The lock is held.
Entry const* entryOf(Registry const& reg, std::uint32_t id, unsigned int* insertAt) {
    unsigned int const at = reg.entries.itemSearch(Entry{id, 0, nullptr}, compareId, insertAt);
    return at != NX_NO_INDEX ? reg.entries.itemPConst(at) : nullptr;
}

Slot const& slotUpToDate() {
    Registry& reg = registry();
    if (slot.generation != reg.generation.load(std::memory_order_acquire)) [[unlikely]] {
        std::uint32_t const id = GetCurrentThreadId();
        NX_SyncThreadOfProcess const sync(&reg.lock, 1);
        unsigned int at = 0;
        Entry const* const entry = entryOf(reg, id, &at);
        slot = Slot{reg.generation.load(std::memory_order_relaxed), 0, nullptr};
        if (entry != nullptr) {
            slot.gone = entry->gone;
            slot.thread = entry->thread;
        }
    }
    return slot;
}

// Makes every thread ask anew. The lock is held.
void changed(Registry& reg) {
    std::uint32_t const next = reg.generation.load(std::memory_order_relaxed) + 1;
    reg.generation.store(next != 0 ? next : 1, std::memory_order_release);
}

} // namespace

NX_Thread* NxThreadP() {
    return slotUpToDate().thread;
}

NX_Thread* nxThreadLiveP() {
    Slot const& mine = slotUpToDate();
    return mine.gone == 0 ? mine.thread : nullptr;
}

NX_Thread* NxThreadP(unsigned int id) {
    Registry& reg = registry();
    NX_SyncThreadOfProcess const sync(&reg.lock, 1);
    unsigned int at = 0;
    Entry const* const entry = entryOf(reg, id, &at);
    return entry != nullptr ? entry->thread : nullptr;
}

int NxThreadPInsert(unsigned int id, NX_Thread* thread) {
    Registry& reg = registry();
    NX_SyncThreadOfProcess const sync(&reg.lock, 1);
    unsigned int at = 0;
    bool const isNew = entryOf(reg, id, &at) == nullptr;
    if (isNew)
        reg.entries.itemInsertAt(at, Entry{id, 0, thread});
    else
        reg.entries[at] = Entry{id, 0, thread};
    changed(reg);
    return isNew;
}

int NxThreadPDelete(unsigned int id) {
    Registry& reg = registry();
    NX_SyncThreadOfProcess const sync(&reg.lock, 1);
    unsigned int at = 0;
    if (entryOf(reg, id, &at) == nullptr)
        return 0;
    reg.entries.itemDeleteAt(at);
    changed(reg);
    return 1;
}

void nxThreadGone(NX_Thread const* thread) {
    Registry& reg = registry();
    NX_SyncThreadOfProcess const sync(&reg.lock, 1);
    for (unsigned int i = 0; i < reg.entries.itemQty(); ++i)
        if (reg.entries.itemPConst(i)->thread == thread) {
            reg.entries[i].gone = 1;
            changed(reg);
        }
}
