// general/process/thread.cpp - thread objects: start, run, end.
#include "general/process/thread.h"

#include "general/collm/assert.h"
#include "general/error/appup.h"
#include "general/error/errorintern.h"
#include "general/error/errorman.h"
#include "general/platform/platform.h"

int NX_ThreadBase::threadIsCurrent() const {
    return ident == GetCurrentThreadId();
}

int NX_ThreadBase::threadIsPrimary() const {
    return ident != 0u && ident == nxAppThreadId();
}

NX_Thread* NX_ThreadBase::threadP() const {
    return NxThreadP(ident);
}

// The pseudo-handle is a small negative number; its low 32 bits say all.
NX_ThreadCurrent::NX_ThreadCurrent()
    : NX_ThreadBase(static_cast<unsigned long>(reinterpret_cast<ULONG_PTR>(GetCurrentThread())),
                    GetCurrentThreadId()) {}

NX_Thread::NX_Thread()
    : NX_ThreadBase(0, 0), error(0), errorMan(nxErrorManOfProcess()), anchor(nullptr), alive(0), condemned(0),
      holder(0) {}

NX_Thread::NX_Thread(HINSTANCE instanceAnchor)
    : NX_ThreadBase(NX_ThreadCurrent()), error(0), errorMan(nxErrorManOfProcess()), anchor(instanceAnchor),
      alive(1), condemned(0), holder(0) {
    NxThreadPInsert(threadId(), this);
}

NX_Thread::~NX_Thread() {
    if (threadIsCurrent() != 0) {
        nxThreadGone(this); // now, because quitting does not come back
        threadQuit(0);
    } else {
        threadCondemn(1);
        nxThreadGone(this);
    }
}

void NX_Thread::threadRun() {
    NxAssertFail("general/process/thread", 274, "0");
}

int NX_Thread::threadCreateAndRun(int stackSize) {
    // The new thread takes this lock first: it does not run before the registry can find it.
    NX_SyncThreadOfProcess const sync(&sem, 1);
    unsigned int id = 0;
    std::uintptr_t const handle =
        _beginthreadex(nullptr, static_cast<unsigned int>(stackSize), &NX_Thread::threadStart, this, 0, &id);
    hand = static_cast<unsigned long>(handle);
    if (handle == 0) {
        NxWinERROR(errorNumThreadCreate);
        ident = 0;
        return -1;
    }
    ident = id;
    alive = 1;
    NxThreadPInsert(id, this);
    return 0;
}

unsigned int NX_STDCALL NX_Thread::threadStart(void* object) {
    NX_Thread* const thread = static_cast<NX_Thread*>(object);
    int const result = thread->threadInit();
    if (result != -1)
        thread->threadRun();
    thread->threadUninit(); // the object may be gone from here on
    return static_cast<unsigned int>(result);
}

int NX_Thread::threadInit() {
    threadSemRequest();
    return 0;
}

void NX_Thread::threadUninit() {
    if (alive == 0 || threadIsPrimary() != 0)
        return;
    alive = 0;
    CloseHandle(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(hand)));
    hand = 0;
    ident = 0;
    anchor = nullptr;
    // The identifier is cleared already, so this leaves the entry in place until the identifier is registered
    // again: whoever holds the identifier still finds the object while its owner destroys it.
    NxThreadPDelete(ident);
    threadSemRelease();
}

void NX_Thread::threadQuit(int exitCode) {
    if (alive == 0 || threadIsPrimary() != 0)
        return;
    threadUninit();
    _endthreadex(static_cast<unsigned int>(exitCode));
}

void NX_Thread::threadCondemn(int wait) {
    condemned = 1;
    if (wait == 0)
        return;
    // A thread just started has not taken its lock yet; from then on the lock tells when it ends.
    while (alive != 0 && holder == 0u && threadIsPrimary() == 0)
        Sleep(1);
    NX_SyncThreadOfProcess const sync(&sem, 1);
}

void NX_Thread::threadSemRequest() {
    sem.semRequest();
    holder = GetCurrentThreadId();
}

// The calling thread is compared by the system's identifier: the object's own is cleared when a thread ends.
void NX_Thread::threadSemRelease() {
    if (holder != GetCurrentThreadId())
        return;
    holder = 0;
    sem.semRelease();
}
