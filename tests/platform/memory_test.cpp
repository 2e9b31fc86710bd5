// Global memory: handles, lock counts and what is refused; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/support.h"

#include <algorithm>

namespace {

// Checks a call's result and the last error it leaves; 777 stands for "left alone".
#define EXPECT_CALL(expression, result, error) \
    SetLastError(777);                         \
    EXPECT_EQ(expression, result);             \
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(error)) << #expression

constexpr LPVOID none = nullptr;

TEST(PlatformMemory, movable) {
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, 100);
    auto* const bytes = static_cast<char*>(GlobalLock(block));
    ASSERT_TRUE(bytes != nullptr && bytes != block && reinterpret_cast<std::uintptr_t>(bytes) % 8 == 0);
    EXPECT_EQ(std::count(bytes, bytes + 100, 0), 100);
    EXPECT_CALL(GlobalLock(block), bytes, 777);
    EXPECT_CALL(GlobalHandle(bytes + 8), none, 6);
    EXPECT_CALL(GlobalHandle(nullptr), none, 87);
    EXPECT_CALL(GlobalUnlock(block), TRUE, 777);
    EXPECT_CALL(GlobalUnlock(block), FALSE, 0);
    EXPECT_CALL(GlobalUnlock(block), FALSE, 158);
    EXPECT_CALL(GlobalUnlock(nullptr), FALSE, 6);
    EXPECT_CALL(GlobalHandle(bytes), block, 777); // also while unlocked
    EXPECT_CALL(GlobalLock(bytes), bytes, 777);   // the address serves as a fixed block's
    EXPECT_CALL(GlobalUnlock(block), FALSE, 158); // and counted nothing
    GlobalLock(block);
    EXPECT_CALL(GlobalFree(block), none, 777); // locked or not
    EXPECT_CALL(GlobalFree(block), block, 6);
    EXPECT_CALL(GlobalLock(block), none, 6);
    EXPECT_CALL(GlobalHandle(bytes), none, 6);
}

TEST(PlatformMemory, fixedEmptyAndTooLarge) {
    HGLOBAL const fixed = GlobalAlloc(GMEM_ZEROINIT, 50);
    EXPECT_CALL(GlobalLock(fixed), fixed, 777);
    EXPECT_CALL(GlobalUnlock(fixed), TRUE, 777);
    EXPECT_CALL(GlobalHandle(fixed), fixed, 777);
    EXPECT_CALL(GlobalFree(fixed), none, 777);
    HGLOBAL const empty = GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_CALL(GlobalLock(empty), none, 157);
    EXPECT_CALL(GlobalFree(empty), none, 777);
    EXPECT_CALL(GlobalAlloc(GMEM_MOVEABLE, ~SIZE_T{0} - 15), none, 8);
}

} // namespace
