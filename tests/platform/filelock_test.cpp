// Byte-range locks; the same on every target. What Wine does otherwise stands in posix_filelock_test.cpp.
#include <thread>

#include "tests/platform/files.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

enum Kind : bool { shared = false, exclusive = true };

HANDLE open(DWORD access = GENERIC_READ | GENERIC_WRITE) {
    return fileOpen("locked", access, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS);
}

// Tries one lock and says how it went.
int tryChild(int, char** argv) {
    HANDLE const file = open();
    return static_cast<int>(fileLock(file, *argv[0] == '1', std::stoull(argv[1]), std::stoull(argv[2])));
}
NXS_ChildEntry const tryEntry("try-lock", tryChild);

int foreign(Kind kind, std::uint64_t offset, std::uint64_t size) {
    return nxRunSelf("try-lock", {std::to_string(kind), std::to_string(offset), std::to_string(size)});
}

class PlatformLock : public testing::Test {
protected:
    HANDLE one_ = open(), two_ = open();
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
            EXPECT_EQ(0u, fileLock(one_, held, 10, 10));
            EXPECT_EQ(fileLock(one_, wanted, 19, 5), own) << held << wanted;
            EXPECT_EQ(fileLock(two_, wanted, 5, 6), other) << held << wanted;
            EXPECT_EQ(foreign(wanted, 12, 1), static_cast<int>(other)) << held << wanted;
            EXPECT_EQ(0u, fileLock(two_, wanted, 8, 2)); // up to the edge
            TearDown();
            one_ = open();
            two_ = open();
        }
    }
}

TEST_F(PlatformLock, unlockingIsExactAndCounts) {
    for (int n = 0; n < 2; ++n)
        EXPECT_EQ(fileLock(one_, shared, 0, 10) + fileLock(one_, shared, 10 + 10 * n, 10), 0u);
    for (std::uint64_t const size : {20u, 5u})
        EXPECT_NE(fileUnlock(one_, 0, size), 0u);
    EXPECT_NE(fileUnlock(two_, 0, 10), 0u);
    EXPECT_EQ((NXS_Results{fileUnlock(one_, 0, 10), fileLock(two_, exclusive, 5, 1), foreign(exclusive, 5, 1),
                           fileUnlock(one_, 0, 10), foreign(exclusive, 0, 10), foreign(exclusive, 10, 1)}),
              (NXS_Results{0, 33, 33, 0, 0, 33}));
    EXPECT_NE(fileUnlock(one_, 0, 10), 0u);
    // Exclusive and shared on one range: the exclusive one goes first, in one step.
    EXPECT_EQ((NXS_Results{fileLock(one_, exclusive, 0, 10), fileLock(one_, shared, 0, 10),
                           foreign(shared, 3, 1), fileUnlock(one_, 0, 10), foreign(shared, 3, 1),
                           foreign(exclusive, 3, 1), fileUnlock(one_, 0, 10)}),
              (NXS_Results{0, 0, 33, 0, 0, 33, 0}));
    EXPECT_NE(fileUnlock(one_, 0, 10), 0u);
}

TEST_F(PlatformLock, edgesOfRanges) {
    constexpr std::uint64_t last = ~0ull, away = 1ull << 40;
    struct {
        std::uint64_t offset, size, offset2, size2;
        DWORD second;
    } const rows[] = {{10, 0, 5, 10, 33},         {10, 0, 10, 10, 0},
                      {10, 0, 5, 5, 0},           {10, 0, 10, 0, 0},
                      {5, 10, 10, 0, 33},         {10, 10, 10, 0, 0},
                      {0, last, last - 1, 1, 33}, {last - 9, 9, last - 1, 1, 33},
                      {last - 1, 1, last, 1, 0},  {away, 5, away + 4, 1, 33}};
    for (auto const& row : rows) {
        for (HANDLE const second : {one_, two_}) {
            EXPECT_EQ(0u, fileLock(one_, exclusive, row.offset, row.size)) << &row - rows;
            EXPECT_EQ(fileLock(second, exclusive, row.offset2, row.size2), row.second) << &row - rows;
            EXPECT_EQ(fileUnlock(second, row.offset2, row.size2) == 0, row.second == 0) << &row - rows;
            EXPECT_EQ(0u, fileUnlock(one_, row.offset, row.size)) << &row - rows;
        }
    }
    EXPECT_EQ(SetFilePointer(one_, 0, nullptr, FILE_END), 0u); // locks do not extend the file
    // A lock on everything does not stand in the way of opening.
    EXPECT_EQ(0u, fileLock(one_, exclusive, 0, ~0ull));
    EXPECT_TRUE(CloseHandle(open(GENERIC_READ)));
    EXPECT_EQ(foreign(shared, 7, 1), 33); // another handle's close drops its own locks only
    CloseHandle(one_);
    EXPECT_EQ(foreign(shared, 7, 1), 0);
    EXPECT_EQ(fileLock(one_, shared, 0, 1), 6u);
    OVERLAPPED where = fileAt(0);
    EXPECT_EQ(errorOf(LockFileEx(two_, 0, 1, 1, 0, &where)), 87u);
    one_ = open();
}

TEST_F(PlatformLock, accessDoesNotMatter) {
    HANDLE const reader = open(GENERIC_READ);
    NXS_Opened const writer("locked", GENERIC_WRITE);
    EXPECT_EQ((NXS_Results{fileLock(reader, exclusive, 0, 1), fileLock(writer, shared, 5, 1),
                           foreign(exclusive, 5, 1), fileLock(two_, shared, 0, 1)}),
              (NXS_Results{0, 0, 33, 33}));
    CloseHandle(reader);
    EXPECT_EQ(0u, fileLock(two_, shared, 0, 1));
}

int holdChild(int, char**) {
    HANDLE const file = open();
    nxFileMake("holding", std::to_string(fileLock(file, exclusive, 0, 10)));
    Sleep(300);
    return static_cast<int>(fileLock(file, exclusive, 0, 1)); // 33: still held at the end
}
NXS_ChildEntry const holdEntry("hold-lock", holdChild);

TEST_F(PlatformLock, waitingEndsWithTheHolder) {
    NXS_Child child("hold-lock", {});
    ASSERT_TRUE(nxFileAwait("holding"));
    EXPECT_EQ(fileLock(one_, exclusive, 5, 1), 33u);
    EXPECT_EQ(0u, fileLock(one_, exclusive, 5, 1, 0)); // the other process ends without unlocking
    EXPECT_EQ(child.wait(), 33);
    DeleteFileA("holding");
    DWORD waited = 99;
    std::thread waiter([&] { waited = fileLock(two_, exclusive, 0, 10, 0); });
    Sleep(50);
    EXPECT_EQ(0u, fileUnlock(one_, 5, 1));
    waiter.join();
    EXPECT_EQ(waited, 0u);
    EXPECT_EQ(fileLock(one_, shared, 9, 1), 33u);
}

} // namespace
