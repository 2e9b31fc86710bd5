// Byte-range locks; the same on every target. What Wine does otherwise stands in posix_filelock_test.cpp.
#include <string>
#include <thread>

#include "tests/platform/files.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

constexpr DWORD all = 0xFFFFFFFFu;
enum Kind : DWORD { shared = 0, exclusive = LOCKFILE_EXCLUSIVE_LOCK };

OVERLAPPED at(std::uint64_t offset) {
    OVERLAPPED result = {};
    result.Offset = static_cast<DWORD>(offset);
    result.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return result;
}

// 0 or the last error.
DWORD lock(HANDLE file, Kind kind, std::uint64_t offset, std::uint64_t size,
           DWORD flags = LOCKFILE_FAIL_IMMEDIATELY) {
    OVERLAPPED where = at(offset);
    return LockFileEx(file, kind | flags, 0, static_cast<DWORD>(size), static_cast<DWORD>(size >> 32), &where)
               ? 0
               : GetLastError();
}

bool unlock(HANDLE file, std::uint64_t offset, std::uint64_t size) {
    OVERLAPPED where = at(offset);
    return UnlockFileEx(file, 0, static_cast<DWORD>(size), static_cast<DWORD>(size >> 32), &where) != FALSE;
}

HANDLE open(DWORD access = GENERIC_READ | GENERIC_WRITE) {
    return CreateFileA("locked", access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0,
                       nullptr);
}

// Tries one lock and says how it went.
int tryChild(int, char** argv) {
    HANDLE const file = open();
    return static_cast<int>(
        lock(file, *argv[0] == 'x' ? exclusive : shared, std::stoull(argv[1]), std::stoull(argv[2])));
}
NXS_ChildEntry const tryEntry("try-lock", tryChild);

int foreign(Kind kind, std::uint64_t offset, std::uint64_t size) {
    return nxRunSelf("try-lock",
                     {kind == exclusive ? "x" : "s", std::to_string(offset), std::to_string(size)});
}

class PlatformLock : public testing::Test {
protected:
    HANDLE one_ = open();
    HANDLE two_ = open();
    void TearDown() override {
        CloseHandle(one_);
        CloseHandle(two_);
    }
};

TEST_F(PlatformLock, conflicts) {
    for (Kind const held : {exclusive, shared}) {
        for (Kind const wanted : {exclusive, shared}) {
            DWORD const own = wanted == exclusive ? 33 : 0;
            DWORD const other = held == shared && wanted == shared ? 0 : 33;
            ASSERT_EQ(lock(one_, held, 10, 10), 0u);
            EXPECT_EQ(lock(one_, wanted, 19, 5), own) << held << wanted;
            EXPECT_EQ(lock(two_, wanted, 5, 6), other) << held << wanted;
            EXPECT_EQ(foreign(wanted, 12, 1), static_cast<int>(other)) << held << wanted;
            EXPECT_EQ(lock(two_, wanted, 30, 5), 0u);
            EXPECT_EQ(lock(two_, wanted, 8, 2), 0u); // up to the edge
            TearDown();
            one_ = open();
            two_ = open();
        }
    }
}

TEST_F(PlatformLock, unlockingIsExactAndCounts) {
    EXPECT_FALSE(unlock(one_, 0, 10));
    ASSERT_EQ(lock(one_, shared, 0, 10), 0u);
    ASSERT_EQ(lock(one_, shared, 0, 10), 0u);
    ASSERT_EQ(lock(one_, shared, 10, 10), 0u);
    EXPECT_FALSE(unlock(one_, 0, 20));
    EXPECT_FALSE(unlock(one_, 0, 5));
    EXPECT_FALSE(unlock(two_, 0, 10));
    EXPECT_TRUE(unlock(one_, 0, 10));
    EXPECT_EQ(lock(two_, exclusive, 5, 1), 33u);
    EXPECT_EQ(foreign(exclusive, 5, 1), 33);
    EXPECT_TRUE(unlock(one_, 0, 10));
    EXPECT_EQ(foreign(exclusive, 0, 10), 0);
    EXPECT_EQ(foreign(exclusive, 10, 1), 33);
    EXPECT_FALSE(unlock(one_, 0, 10));
    EXPECT_TRUE(unlock(one_, 10, 10));
    // Exclusive and shared on one range: the exclusive one goes first, in one step.
    ASSERT_EQ(lock(one_, exclusive, 0, 10), 0u);
    ASSERT_EQ(lock(one_, shared, 0, 10), 0u);
    EXPECT_EQ(foreign(shared, 3, 1), 33);
    EXPECT_TRUE(unlock(one_, 0, 10));
    EXPECT_EQ(foreign(shared, 3, 1), 0);
    EXPECT_EQ(foreign(exclusive, 3, 1), 33);
    EXPECT_TRUE(unlock(one_, 0, 10));
    EXPECT_FALSE(unlock(one_, 0, 10));
}

TEST_F(PlatformLock, edgesOfRanges) {
    struct {
        std::uint64_t offset, size, offset2, size2;
        DWORD second;
    } const rows[] = {{10, 0, 5, 10, 33},
                      {10, 0, 10, 10, 0},
                      {10, 0, 5, 5, 0},
                      {10, 0, 10, 0, 0},
                      {5, 10, 10, 0, 33},
                      {10, 10, 10, 0, 0},
                      {0, ~0ull, 5, 1, 33},
                      {0, ~0ull, ~0ull - 1, 1, 33},
                      {~0ull - 9, 9, ~0ull - 1, 1, 33},
                      {~0ull - 1, 1, ~0ull, 1, 0},
                      {1ull << 40, 5, (1ull << 40) + 4, 1, 33}};
    for (auto const& row : rows) {
        for (HANDLE const second : {one_, two_}) {
            ASSERT_EQ(lock(one_, exclusive, row.offset, row.size), 0u) << &row - rows;
            EXPECT_EQ(lock(second, exclusive, row.offset2, row.size2), row.second) << &row - rows;
            EXPECT_EQ(unlock(second, row.offset2, row.size2), row.second == 0) << &row - rows;
            EXPECT_TRUE(unlock(one_, row.offset, row.size)) << &row - rows;
        }
    }
    EXPECT_EQ(SetFilePointer(one_, 0, nullptr, FILE_END), 0u); // locks do not extend the file
    // A lock on everything does not stand in the way of opening.
    ASSERT_EQ(lock(one_, exclusive, 0, (std::uint64_t{all} << 32) | all), 0u);
    HANDLE const third = open(GENERIC_READ);
    EXPECT_NE(third, INVALID_HANDLE_VALUE);
    EXPECT_EQ(foreign(shared, 7, 1), 33);
    CloseHandle(third);
    EXPECT_EQ(foreign(shared, 7, 1), 33); // another handle's close drops its own locks only
    CloseHandle(one_);
    EXPECT_EQ(foreign(shared, 7, 1), 0);
    OVERLAPPED where = at(0);
    EXPECT_EQ(errorOf(LockFileEx(one_, 0, 0, 1, 0, &where)), 6u);
    EXPECT_EQ(errorOf(LockFileEx(two_, 0, 1, 1, 0, &where)), 87u);
    one_ = open();
}

TEST_F(PlatformLock, accessDoesNotMatter) {
    HANDLE const reader = open(GENERIC_READ);
    HANDLE const writer = open(GENERIC_WRITE);
    EXPECT_EQ(lock(reader, exclusive, 0, 1), 0u);
    EXPECT_EQ(foreign(shared, 0, 1), 33);
    EXPECT_EQ(lock(writer, shared, 5, 1), 0u);
    EXPECT_EQ(foreign(shared, 5, 1), 0);
    EXPECT_EQ(foreign(exclusive, 5, 1), 33);
    EXPECT_EQ(lock(two_, shared, 0, 1), 33u);
    CloseHandle(reader);
    EXPECT_EQ(lock(two_, shared, 0, 1), 0u);
    CloseHandle(writer);
}

int holdChild(int, char**) {
    HANDLE const file = open();
    nxFileMake("holding", std::to_string(lock(file, exclusive, 0, 10)));
    Sleep(300);
    return static_cast<int>(lock(file, exclusive, 0, 1)); // 33: still held at the end
}
NXS_ChildEntry const holdEntry("hold-lock", holdChild);

TEST_F(PlatformLock, waitingEndsWithTheHolder) {
    NXS_Child child("hold-lock", {});
    ASSERT_TRUE(nxFileAwait("holding"));
    EXPECT_EQ(lock(one_, exclusive, 5, 1), 33u);
    EXPECT_EQ(lock(one_, exclusive, 5, 1, 0), 0u); // the other process ends without unlocking
    EXPECT_EQ(child.wait(), 33);
    DeleteFileA("holding");
    DWORD waited = 99;
    std::thread waiter([&] { waited = lock(two_, exclusive, 0, 10, 0); });
    Sleep(50);
    EXPECT_TRUE(unlock(one_, 5, 1));
    waiter.join();
    EXPECT_EQ(waited, 0u);
    EXPECT_EQ(lock(one_, shared, 9, 1), 33u);
}

} // namespace
