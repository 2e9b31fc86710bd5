// Identifiers and handles of threads; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <atomic>

namespace {

std::atomic<DWORD> seenId, errorAtStart;

unsigned int NX_STDCALL look(void*) {
    errorAtStart = GetLastError();
    SetLastError(5);
    seenId = GetCurrentThreadId();
    return 0;
}

TEST(PlatformThread, identifiersAndHandles) {
    SetLastError(777);
    unsigned int id = 0;
    auto const handle = reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 4096, look, nullptr, 0, &id));
    for (int i = 0; i < 20000 && seenId == 0; ++i)
        Sleep(1);
    EXPECT_TRUE(seenId == id && id != 0 && id != GetCurrentThreadId());
    EXPECT_TRUE(errorAtStart == 0 && GetLastError() == 777);
    EXPECT_TRUE(CloseHandle(handle) && !CloseHandle(handle) && GetLastError() == 6);
    EXPECT_TRUE(CloseHandle(GetCurrentThread()));
    EXPECT_EQ(_beginthreadex(nullptr, 0, nullptr, nullptr, 0, nullptr), 0u);
}

} // namespace
