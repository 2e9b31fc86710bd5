// general/process/thread.h - threads, and the registry that finds a thread's object by its identifier.
//
// A program derives from NX_Thread, overrides threadRun and calls threadCreateAndRun once the derived object
// is complete. The owner asks the thread to end with threadCondemn(0); threadRun polls threadIsCondemned().
// Destroying the object from another thread waits for the thread's end. A derived destructor runs before that
// wait: a class whose threadRun uses its own members condemns with waiting in its own destructor.
// Identifiers are the system's, 32 bits, never 0. Threads that were not started here have no object; code
// that runs on them uses the process-wide error manager and error number.
#pragma once

#include <cstdint>

#include "general/error/errornum.h"
#include "general/process/sem.h"

class NX_ErrorMan;
class NX_Thread;

// A thread's handle and identifier; owns neither.
class NX_EXPORT NX_ThreadBase {
public:
    NX_ThreadBase(unsigned long handle, unsigned int id) : hand(handle), ident(id) {}

    unsigned long threadHand() const { return hand; }
    unsigned int threadId() const { return ident; }      // 0: no running thread
    int threadIsRunnable() const { return ident != 0u; } // 1 or 0, like all questions here
    int threadIsCurrent() const;                         // it is the calling thread
    int threadIsPrimary() const;                         // it is the application's primary thread
    NX_Thread* threadP() const;                          // the object registered for the identifier, or null

protected:
    NXS_Shared<unsigned long> hand;
    NXS_Shared<std::uint32_t> ident;
};

// The calling thread.
class NX_EXPORT NX_ThreadCurrent : public NX_ThreadBase {
public:
    NX_ThreadCurrent();
};

class NX_EXPORT NX_Thread : public NX_ThreadBase {
public:
    NX_Thread(NX_Thread const&) = delete;
    NX_Thread& operator=(NX_Thread const&) = delete;

    // Takes the thread's own lock. The thread does so before threadRun and holds it until its end. Returns 0.
    int threadInit();

    // Ends the calling thread with `exitCode`; to be called on this object's thread. Does not return there.
    // Does nothing when the thread is not alive or is the primary one.
    void threadQuit(int exitCode);

    // Asks the thread to end. With `wait` not 0 also waits until it has ended: also when the thread was just
    // started and has not run yet; not when it is the primary one or the caller.
    void threadCondemn(int wait);

    NX_ErrorMan* threadErrorP() const { return errorMan; } // this thread's innermost error manager
    NX_Error* threadErrorNumP() { return &error; }         // this thread's current error
    HINSTANCE threadInstanceAnchor() const { return anchor; }
    int threadIsAlive() const { return alive; }
    int threadIsCondemned() const { return condemned; }

protected:
    NX_Thread(); // nothing runs yet

    // What the thread does. The base version is a failing assertion.
    virtual void threadRun();

    // Starts the thread; `stackSize` in bytes is a lower limit. 0, or -1 with error 21100 recorded and
    // logged. The thread is in the registry before threadRun begins.
    int threadCreateAndRun(int stackSize);

public:
    // On the thread itself: threadQuit(0), so that a started thread does not come back and the object's
    // memory is not given back. Elsewhere: asks the thread to end and waits for it.
    virtual ~NX_Thread();

private:
    friend class NX_App;
    friend class NX_ErrorMan;

    explicit NX_Thread(HINSTANCE instanceAnchor); // the object of the calling thread, which it registers

    static unsigned int NX_STDCALL threadStart(void* object);
    void threadUninit();
    void threadSemRequest();
    void threadSemRelease();

    NX_Error error; // the thread's current error
    NX_ErrorMan* errorMan;
    HINSTANCE anchor;
    NXS_Shared<int> alive;
    NXS_Shared<int> condemned;
    std::uint32_t reserved1 = 0;
    NX_SemThreadOfProcess sem;        // held by the thread for its whole run
    NXS_Shared<std::uint32_t> holder; // the identifier that took `sem` through threadSemRequest, 0 when none
    std::uint32_t reserved2 = 0;
};

// The registry: pairs of identifier and object, ascending by identifier. Any thread may call these at any
// time, also late in process exit. An ended thread's entry stays until its identifier is registered again:
// the object that it names may be gone by then.
NX_EXPORT NX_Thread* NxThreadP();                // for the calling thread; null when it has no entry
NX_EXPORT NX_Thread* NxThreadP(unsigned int id); // null when there is no entry

// 1 when an entry was added, 0 when an existing one was given the new object.
NX_EXPORT int NxThreadPInsert(unsigned int id, NX_Thread* thread);

// 1 when an entry was removed, 0 when there was none.
NX_EXPORT int NxThreadPDelete(unsigned int id);
