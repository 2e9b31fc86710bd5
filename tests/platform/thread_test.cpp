// Threads and critical sections; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <atomic>

namespace {

struct Seen {
    DWORD id = 0, errorAtStart = 1;
    unsigned int idGiven = 0;
};
std::atomic<int> stage;

void await(int wanted) {
    for (int i = 0; i < 20000 && stage < wanted; ++i)
        Sleep(1);
    ASSERT_EQ(stage, wanted);
}

unsigned int NX_STDCALL look(void* argument) {
    Seen& seen = *static_cast<Seen*>(argument);
    seen.errorAtStart = GetLastError();
    SetLastError(5);
    seen.id = GetCurrentThreadId();
    stage = 1;
    return 0;
}

HANDLE start(unsigned int(NX_STDCALL* routine)(void*), void* argument, unsigned int* id = nullptr) {
    return reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 4096, routine, argument, 0, id));
}

TEST(PlatformThread, identifiersAndHandles) {
    SetLastError(777);
    stage = 0;
    Seen seen;
    HANDLE const handle = start(look, &seen, &seen.idGiven);
    await(1);
    EXPECT_EQ(seen.id, seen.idGiven);
    EXPECT_TRUE(seen.id != 0 && seen.id != GetCurrentThreadId());
    EXPECT_TRUE(seen.errorAtStart == 0 && GetLastError() == 777);
    EXPECT_TRUE(CloseHandle(handle) && !CloseHandle(handle) && GetLastError() == 6);
    EXPECT_TRUE(CloseHandle(GetCurrentThread()));
    EXPECT_EQ(start(nullptr, nullptr), nullptr);
}

// Ends its thread from a destructor, which no exception and no unwinding could leave.
struct Ender {
    ~Ender() {
        stage = 1;
        _endthreadex(3);
    }
};

unsigned int NX_STDCALL endEarly(void*) {
    { Ender const ender; }
    stage = 2;
    return 0;
}

TEST(PlatformThread, endsWhereItStands) {
    stage = 0;
    EXPECT_TRUE(CloseHandle(start(endEarly, nullptr))); // the thread runs on
    await(1);
    Sleep(50);
    EXPECT_EQ(stage, 1);
}

CRITICAL_SECTION section;

unsigned int NX_STDCALL countUp(void* count) {
    for (int i = 0; i < 5000; ++i) {
        EnterCriticalSection(&section);
        EnterCriticalSection(&section);
        LeaveCriticalSection(&section);
        ++*static_cast<int*>(count); // still inside
        LeaveCriticalSection(&section);
    }
    ++stage;
    return 0;
}

TEST(PlatformThread, criticalSectionsAreRecursiveAndExclusive) {
    InitializeCriticalSection(&section);
    stage = 0;
    int count = 0;
    DWORD const begin = GetTickCount();
    for (int i = 0; i < 4; ++i)
        CloseHandle(start(countUp, &count));
    await(4);
    Sleep(60);
    EXPECT_GE(GetTickCount() - begin, 45u); // ticks may be coarse
    EXPECT_EQ(count, 20000);
    DeleteCriticalSection(&section);
}

} // namespace
