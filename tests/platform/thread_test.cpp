// Identifiers and handles of threads; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <atomic>

namespace {

struct Seen {
    DWORD id = 0, errorAtStart = 1;
    unsigned int idGiven = 0;
};
std::atomic<int> stage;

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
    for (int i = 0; i < 20000 && stage < 1; ++i)
        Sleep(1);
    ASSERT_EQ(stage, 1);
    EXPECT_TRUE(seen.id == seen.idGiven && seen.id != 0 && seen.id != GetCurrentThreadId());
    EXPECT_TRUE(seen.errorAtStart == 0 && GetLastError() == 777);
    EXPECT_TRUE(CloseHandle(handle) && !CloseHandle(handle) && GetLastError() == 6);
    EXPECT_TRUE(CloseHandle(GetCurrentThread()));
    EXPECT_EQ(start(nullptr, nullptr), nullptr);
}

} // namespace
