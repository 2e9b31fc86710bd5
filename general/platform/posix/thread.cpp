// general/platform/posix/thread.cpp - threads, their identifiers, critical sections, sleeping and ticks.
//
// A thread's handle only stands for it: threads run detached, and a handle may be closed at any time.
#include <limits.h>
#include <pthread.h>
#include <sched.h>
#include <setjmp.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <new>

#include "general/platform/platform.h"
#include "general/platform/posix/handles.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr unsigned int createSuspended = 4;
constexpr std::size_t stackSizeMin = std::size_t{1} << 20; // requests are lower limits

class Thread final : public NXS_HandleObject {
public:
    static constexpr NXS_HandleType handleType = NXS_HandleType::thread;

    Thread() : NXS_HandleObject(handleType) {}

private:
    ~Thread() override = default;
};

// What a new thread takes over; it lies on the creator's stack, who waits until the thread has read it.
struct Start {
    unsigned int(NX_STDCALL* routine)(void*);
    void* argument;
    unsigned int* id;
    bool taken = false;
    std::mutex mutex;
    std::condition_variable changed;
};

// Where _endthreadex goes back to; null in threads that this layer did not start.
thread_local jmp_buf* threadEnd = nullptr;

void* threadMain(void* argument) {
    Start& start = *static_cast<Start*>(argument);
    auto const routine = start.routine;
    void* const routineArgument = start.argument;
    // The creator finds the identifier in its place when _beginthreadex returns, the thread when it runs.
    if (start.id != nullptr)
        *start.id = GetCurrentThreadId();
    {
        std::lock_guard const guard(start.mutex);
        start.taken = true;
        start.changed.notify_one(); // under the lock: the creator gives the object up after it
    }

    jmp_buf end;
    if (::_setjmp(end) == 0) {
        threadEnd = &end;
        routine(routineArgument);
    }
    threadEnd = nullptr;
    return nullptr;
}

std::uintptr_t threadFail(int error, DWORD code) {
    errno = error;
    SetLastError(code);
    return 0;
}

bool threadStart(Start& start, unsigned int stackSize) {
    pthread_attr_t attributes;
    if (::pthread_attr_init(&attributes) != 0)
        return false;
    ::pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    std::size_t const page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    std::size_t const wanted = std::max<std::size_t>(stackSize, stackSizeMin) + page - 1;
    pthread_t thread;
    bool const started = ::pthread_attr_setstacksize(&attributes, wanted / page * page) == 0 &&
                         nxSeam.threadStart(&thread, &attributes, threadMain, &start) == 0;
    ::pthread_attr_destroy(&attributes);
    if (!started)
        return false;
    std::unique_lock guard(start.mutex);
    start.changed.wait(guard, [&start] { return start.taken; });
    return true;
}

// The identifier is asked for once in each thread; after a fork the only thread has a new one.
[[gnu::tls_model("initial-exec")]] thread_local DWORD threadId = 0;

[[gnu::noinline]] DWORD threadIdAsk() {
    static std::once_flag once;
    std::call_once(once, [] { ::pthread_atfork(nullptr, nullptr, [] { threadId = 0; }); });
    threadId = static_cast<DWORD>(::syscall(SYS_gettid));
    return threadId;
}

} // namespace

std::uintptr_t _beginthreadex(void*, unsigned int stackSize, unsigned int(NX_STDCALL* start)(void*),
                              void* argument, unsigned int flags, unsigned int* id) {
    if (start == nullptr)
        return threadFail(EINVAL, GetLastError());
    if ((flags & createSuspended) != 0)
        return threadFail(EINVAL, ERROR_NOT_SUPPORTED);
    auto* const object = new (std::nothrow) Thread;
    if (object == nullptr)
        return threadFail(ENOMEM, ERROR_NOT_ENOUGH_MEMORY);
    // The handle comes first: once the thread runs nothing can fail any more.
    HANDLE const handle = nxHandleOpen(object);
    if (handle == nullptr)
        return threadFail(ENOMEM, ERROR_NOT_ENOUGH_MEMORY);
    Start given{start, argument, id, false, {}, {}};
    if (!threadStart(given, stackSize)) {
        nxHandleClose(handle, NXS_HandleType::thread);
        return threadFail(EAGAIN, ERROR_NOT_ENOUGH_MEMORY);
    }
    return reinterpret_cast<std::uintptr_t>(handle);
}

void _endthreadex(unsigned int) {
    // Objects on the thread's stack are not destroyed, and the call may come from one's destructor; so the
    // stack is left at one step, not unwound.
    if (threadEnd != nullptr)
        ::_longjmp(*threadEnd, 1);
    ::pthread_exit(nullptr);
}

HANDLE GetCurrentThread() {
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-2));
}

DWORD GetCurrentThreadId() {
    return threadId != 0 ? threadId : threadIdAsk();
}

DWORD GetCurrentProcessId() {
    return static_cast<DWORD>(::getpid());
}

void InitializeCriticalSection(CRITICAL_SECTION* section) {
    pthread_mutexattr_t attributes;
    ::pthread_mutexattr_init(&attributes);
    ::pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    ::pthread_mutex_init(&section->mutex, &attributes);
    ::pthread_mutexattr_destroy(&attributes);
}

void EnterCriticalSection(CRITICAL_SECTION* section) {
    ::pthread_mutex_lock(&section->mutex);
}

void LeaveCriticalSection(CRITICAL_SECTION* section) {
    ::pthread_mutex_unlock(&section->mutex);
}

void DeleteCriticalSection(CRITICAL_SECTION* section) {
    ::pthread_mutex_destroy(&section->mutex);
}

void Sleep(DWORD milliseconds) {
    if (milliseconds == 0) {
        ::sched_yield();
        return;
    }
    do {
        timespec left = {static_cast<time_t>(milliseconds / 1000),
                         static_cast<long>(milliseconds % 1000) * 1000000};
        nxSeamRepeat([&left] { return nxSeam.sleep(&left, &left); });
    } while (milliseconds == INFINITE);
}

DWORD GetTickCount() {
    // Includes the time the machine was suspended; wraps after 49.7 days.
    timespec now;
    if (nxSeam.clock(CLOCK_BOOTTIME, &now) != 0 && nxSeam.clock(CLOCK_MONOTONIC, &now) != 0)
        return 0;
    return static_cast<DWORD>(static_cast<std::uint64_t>(now.tv_sec) * 1000 +
                              static_cast<std::uint64_t>(now.tv_nsec) / 1000000);
}
