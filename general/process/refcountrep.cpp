// general/process/refcountrep.cpp - shared objects, and their counting under the process-wide lock.
#include "general/collm/refcount.h"

#include "general/process/sem.h"

namespace {

NX_SemThreadOfProcess& countLock() {
    static NX_SemThreadOfProcess& lock = *new NX_SemThreadOfProcess;
    return lock;
}

} // namespace

NX_RefCountRep::~NX_RefCountRep() = default;

NX_TraceStream& NX_RefCountRep::dataTrace(NX_TraceStream& stream) const {
    return stream;
}

void NX_RefCountRep::refIncSync() const {
    NX_SyncThreadOfProcess const guard(&countLock(), 1);
    word(word() + 0x100);
}

// The object deletes itself while the lock is held.
void NX_RefCountRep::refDecSync() {
    NX_SyncThreadOfProcess const guard(&countLock(), 1);
    word(word() - 0x100);
    if (word() < 0x100)
        delete this;
}

void NX_RefCountRep::refIsModifiedSync(int on) {
    NX_SyncThreadOfProcess const guard(&countLock(), 1);
    word(on != 0 ? word() | 1u : word() & ~1u);
}

unsigned long NX_RefCountRep::refInfoWatch() const {
    std::uint32_t last = word();
    for (;;) {
        std::uint32_t const now = word();
        if (now != last)
            return now;
        last = now;
    }
}
