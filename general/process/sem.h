// general/process/sem.h - the lock for threads of one process, and the guard that holds it for a scope.
//
// The lock is recursive: its owner may take it again and must give it up as often. It is taken and given up
// through guards only. A lock must not be destroyed while it is held. Nothing here fails.
// Process-wide locks of the library are made on first use and never destroyed, so that destructors that run
// late in process exit can still take them.
#pragma once

#include <cstddef>

#include "general/platform/fwd.h"
#include "general/process/sharedword.h"

class NX_EXPORT NX_SemThreadOfProcess {
public:
    NX_SemThreadOfProcess();
    NX_SemThreadOfProcess(NX_SemThreadOfProcess const&) = delete;
    NX_SemThreadOfProcess& operator=(NX_SemThreadOfProcess const&) = delete;
    ~NX_SemThreadOfProcess();

    // 1 while any thread holds the lock, else 0. A glance: the answer may be out of date when it arrives.
    int semIsHeldBySomeone() const { return holdCount != 0; }

private:
    friend class NX_SyncThreadOfProcess;
    friend class NX_Thread;

    void semRequest();
    void semRelease();

    // Room for the system's critical section, whose type stays out of public headers.
    static constexpr std::size_t sectionBytes = sizeof(void*) == 8 ? 40 : 24;

    NXS_Shared<int> holdCount; // changed by the owner only
    alignas(void*) unsigned char section[sectionBytes];
};

class NX_EXPORT NX_SyncThreadOfProcess {
public:
    // Takes `lock` when `enabled` is not 0, waiting as long as needed; otherwise does nothing, also at the
    // end. The lock must outlive the guard.
    NX_SyncThreadOfProcess(NX_SemThreadOfProcess* lock, int enabled) : held(enabled != 0 ? lock : nullptr) {
        if (held != nullptr)
            held->semRequest();
    }
    NX_SyncThreadOfProcess(NX_SyncThreadOfProcess const&) = delete;
    NX_SyncThreadOfProcess& operator=(NX_SyncThreadOfProcess const&) = delete;
    ~NX_SyncThreadOfProcess() {
        if (held != nullptr)
            held->semRelease();
    }

private:
    NX_SemThreadOfProcess* held; // null when built disabled
};
