// Byte-range locks where this layer is stricter than the emulation the other tests also run on.
#include <fcntl.h>
#include <unistd.h>

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

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

int transferChild(int, char** argv) {
    return static_cast<int>(transfer(NXS_Opened("strict", readWrite), *argv[0] == 'w', 15, 1));
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
    NXS_Opened const one("strict", readWrite), two("strict", readWrite);
    for (auto const& row : rows) {
        ASSERT_EQ(fileLock(one, row.exclusive, 10, 10), 0u);
        HANDLE const user = row.ownHandle ? one : two;
        auto const result = [&](DWORD offset, DWORD size) { return transfer(user, row.write, offset, size); };
        EXPECT_EQ((NXS_Results{result(0, 11), result(19, 5), result(20, 5), result(0, 10), result(15, 0)}),
                  (NXS_Results{row.error, row.error, 0, 0, 0}))
            << &row - rows;
        int const foreign = row.ownHandle ? 0 : nxRunSelf("transfer", {row.write ? "w" : "r"});
        EXPECT_EQ(foreign, row.ownHandle ? 0 : static_cast<int>(row.error)) << &row - rows;
        ASSERT_EQ(fileUnlock(one, 10, 10), 0u);
        EXPECT_EQ(transfer(user, row.write, 0, 30), 0u);
    }
    // A reader's exclusive lock binds others but not itself.
    NXS_Opened const reader("strict", GENERIC_READ);
    EXPECT_EQ((NXS_Results{fileLock(reader, true, 10, 10), transfer(reader, false, 0, 30),
                           transfer(two, false, 0, 30), errorOf(CopyFileA("strict", "copy", FALSE))}),
              (NXS_Results{0, 0, 33, 33}));
}

TEST(PosixLock, refusals) {
    nxFileMake("strict", "x");
    NXS_Opened const file("strict", readWrite), blind("strict", 0);
    EXPECT_EQ((NXS_Results{fileUnlock(file, 0, 1), fileLock(file, false, 0, 5), fileUnlock(file, 0, 4),
                           fileLock(blind, false, 0, 1), fileLock(file, false, ~0ull, 1),
                           fileLock(file, false, ~0ull, 2)}),
              (NXS_Results{158, 0, 158, 5, 0, 307}));
}

// The rules between handles of this process hold on file systems without locks as well.
TEST(PosixLock, fileSystemWithoutLocks) {
    NXS_SeamScope const scope;
    nxSeam.lock = [](int, int, struct flock64*) {
        errno = ENOLCK;
        return -1;
    };
    nxFileMake("strict", "x");
    {
        NXS_Opened const one("strict", readWrite), two("strict", readWrite);
        EXPECT_EQ((NXS_Results{fileOpenError("strict", GENERIC_READ, FILE_SHARE_READ),
                               errorOf(DeleteFileA("strict")), fileLock(one, true, 0, 5),
                               fileLock(two, false, 4, 1), transfer(two, false, 0, 1), fileUnlock(one, 0, 5),
                               fileLock(two, true, 4, 1)}),
                  (NXS_Results{32, 32, 0, 33, 33, 0, 0}));
    }
    EXPECT_TRUE(DeleteFileA("strict"));
}

} // namespace
