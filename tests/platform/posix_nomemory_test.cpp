// The layer off Windows without memory: a call that needs some fails with 8, changes nothing, and can be
// tried again.
#include <cstdlib>
#include <functional>
#include <new>

#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

int constexpr unlimited = -1;
thread_local int allocationsLeft = unlimited;

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (allocationsLeft == 0)
        throw std::bad_alloc();
    if (allocationsLeft > 0)
        --allocationsLeft;
    if (void* const p = std::malloc(size != 0 ? size : 1))
        return p;
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    try {
        return operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
[[gnu::noinline]] void operator delete(void* p) noexcept {
    std::free(p);
}
[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace {

// Lets the call fail at its first allocation, its second and so on. How many failures came before its
// success.
int failuresOf(std::function<bool()> const& call) {
    for (int failures = 0; failures < 50; ++failures) {
        SetLastError(0);
        allocationsLeft = failures;
        bool const done = call();
        DWORD const code = GetLastError();
        allocationsLeft = unlimited;
        if (done)
            return failures;
        EXPECT_EQ(code, 8u);
    }
    return -1;
}

TEST(PosixNoMemory, CallsFailAndCanBeTriedAgain) {
    nxFileMake("a", "0123456789");
    HANDLE file = INVALID_HANDLE_VALUE, search = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAA found;
    DWORD const access = GENERIC_READ | GENERIC_WRITE;
    EXPECT_GT(failuresOf([&] { return (file = fileOpen("a", access)) != INVALID_HANDLE_VALUE; }), 0);
    EXPECT_GT(failuresOf([&] { return (search = FindFirstFileA("*", &found)) != INVALID_HANDLE_VALUE; }), 0);
    EXPECT_TRUE(FindClose(search));

    HANDLE const other = fileOpen("a", access);
    EXPECT_GT(failuresOf([&] { return fileLock(file, true, 1, 5) == 0; }), 0);
    EXPECT_EQ(fileLock(other, true, 1, 5), 33u);
    EXPECT_GT(failuresOf([&] { return fileUnlock(file, 1, 5) == 0; }), 0);
    EXPECT_EQ(fileLock(other, true, 1, 5), 0u) << "nothing of the lock was left behind";
    CloseHandle(other);
    CloseHandle(file);

    EXPECT_GT(failuresOf([] { return CopyFileA("a", "b", TRUE) != FALSE; }), 0);
    EXPECT_EQ(nxFileContent("b"), "0123456789");
    EXPECT_TRUE(DeleteFileA("a") && DeleteFileA("b"));
}

} // namespace
