// Byte-range locks where this layer is stricter than the emulation the other tests also run on.
#include <fcntl.h>
#include <unistd.h>

#include <string>

#include "general/platform/posix/seam.h"
#include "tests/platform/files.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

DWORD transfer(HANDLE file, bool write, DWORD offset, DWORD size) {
    OVERLAPPED where = fileAt(offset);
    char buffer[100] = {};
    DWORD done = 99;
    BOOL const ok =
        write ? WriteFile(file, buffer, size, &done, &where) : ReadFile(file, buffer, size, &done, &where);
    EXPECT_EQ(done, ok ? size : 0);
    return ok ? 0 : GetLastError();
}

HANDLE open(DWORD access = GENERIC_READ | GENERIC_WRITE) {
    return fileOpen("strict", access);
}

int transferChild(int, char** argv) {
    HANDLE const file = open();
    return static_cast<int>(transfer(file, *argv[0] == 'w', 15, 1));
}
NXS_ChildEntry const transferEntry("transfer", transferChild);

TEST(PosixLock, locksBindReadsAndWrites) {
    struct {
        bool exclusive, write, ownHandle;
        DWORD error;
    } const rows[] = {{true, false, true, 0},   {true, true, true, 0},   {true, false, false, 33},
                      {true, true, false, 33},  {false, false, true, 0}, {false, true, true, 33},
                      {false, false, false, 0}, {false, true, false, 33}};
    nxFileMake("strict", std::string(100, 'x'));
    HANDLE const one = open();
    HANDLE const two = open();
    for (auto const& row : rows) {
        ASSERT_EQ(fileLock(one, row.exclusive, 10, 10), 0u);
        HANDLE const user = row.ownHandle ? one : two;
        EXPECT_EQ(transfer(user, row.write, 0, 11), row.error) << &row - rows;
        EXPECT_EQ(transfer(user, row.write, 19, 5), row.error) << &row - rows;
        EXPECT_EQ(transfer(user, row.write, 20, 5), 0u) << &row - rows;
        EXPECT_EQ(transfer(user, row.write, 0, 10), 0u) << &row - rows;
        EXPECT_EQ(transfer(user, row.write, 15, 0), 0u) << &row - rows;
        int const foreign = row.ownHandle ? 0 : nxRunSelf("transfer", {row.write ? "w" : "r"});
        EXPECT_EQ(foreign, row.ownHandle ? 0 : static_cast<int>(row.error)) << &row - rows;
        ASSERT_EQ(fileUnlock(one, 10, 10), 0u);
        EXPECT_EQ(transfer(user, row.write, 0, 30), 0u);
    }
    // A reader's exclusive lock binds others but not itself.
    HANDLE const reader = open(GENERIC_READ);
    ASSERT_EQ(fileLock(reader, true, 10, 10), 0u);
    EXPECT_EQ(transfer(reader, false, 0, 30), 0u);
    EXPECT_EQ(transfer(two, false, 0, 30), 33u);
    EXPECT_EQ(errorOf(CopyFileA("strict", "copy", FALSE)), 33u);
    for (HANDLE const file : {one, two, reader})
        CloseHandle(file);
}

TEST(PosixLock, refusals) {
    nxFileMake("strict", "x");
    HANDLE const file = open();
    HANDLE const blind = open(0);
    EXPECT_EQ(fileUnlock(file, 0, 1), 158u);
    ASSERT_EQ(fileLock(file, false, 0, 5), 0u);
    EXPECT_EQ(fileUnlock(file, 0, 4), 158u);
    EXPECT_EQ(fileLock(blind, false, 0, 1), 5u);
    EXPECT_EQ(fileLock(file, false, ~0ull, 1), 0u);
    EXPECT_EQ(fileLock(file, false, ~0ull, 2), 307u);
    CloseHandle(file);
    CloseHandle(blind);
}

// The rules between handles of this process hold on file systems without locks as well.
TEST(PosixLock, fileSystemWithoutLocks) {
    NXS_SeamScope const scope;
    nxSeam.lock = [](int, int, struct flock64*) {
        errno = ENOLCK;
        return -1;
    };
    nxFileMake("strict", "x");
    HANDLE const one = open();
    HANDLE const two = open();
    EXPECT_EQ(fileOpenError("strict", GENERIC_READ, FILE_SHARE_READ), 32u);
    EXPECT_FALSE(DeleteFileA("strict"));
    EXPECT_EQ(fileLock(one, true, 0, 5), 0u);
    EXPECT_EQ(fileLock(two, false, 4, 1), 33u);
    EXPECT_EQ(transfer(two, false, 0, 1), 33u);
    EXPECT_EQ(fileUnlock(one, 0, 5), 0u);
    EXPECT_EQ(fileLock(two, true, 4, 1), 0u);
    CloseHandle(one);
    CloseHandle(two);
    EXPECT_TRUE(DeleteFileA("strict"));
}

} // namespace
