// Files: open modes, sharing between handles and processes, transfers, byte-range locks, operations by name.
#include "general/finfo/file.h"

#include <cstring>
#include <filesystem>

#include "general/collm/v4x.h"
#include "general/error/errorman.h"
#include "general/process/timer.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

using File = NX_File;
constexpr File::OpenMode createNew = File::modeReadWrite | File::modeCreate | File::modeTrunc;

// The details recorded for the calling thread's last error.
std::string details() {
    return NxErrorBuf().dataPConst();
}

int openTask(int, char** argv) {
    File file(argv[0], static_cast<File::OpenMode>(std::atoi(argv[1])));
    return file.errorNum() == 0 ? 0 : file.errorNum() == errorNumFileShared ? 1 : 2;
}
NXS_ChildEntry const openEntry("file-open", openTask);

// Holds a lock on 16 bytes at 16 for a while.
int lockTask(int, char** argv) {
    File file(argv[0], File::modeReadWrite);
    if (file.fileLockAt(16, File::lockOn | File::lockExclusive, 16) != 0)
        return 1;
    nxFileMake(argv[1], "ready");
    NX_TimerSleep(static_cast<unsigned long>(std::atoi(argv[2])), 1);
    return 0;
}
NXS_ChildEntry const lockEntry("file-lock", lockTask);

int openElsewhere(char const* name, File::OpenMode mode) {
    return nxRunSelf("file-open", {name, std::to_string(mode)});
}

} // namespace

TEST(File, OpenModes) {
    std::filesystem::create_directory("opendir");
    struct {
        char const* name;
        File::OpenMode mode;
        int errorNum;
        char const* left; // of open.txt, which held "old"
    } const table[] = {
        {"open.txt", File::modeRead, 0, "old"},
        {"open.txt", File::modeWrite, 0, "old"},
        {"open.txt", File::modeReadWrite | File::modeCreate, 0, "old"},
        {"open.txt", File::modeWrite | File::modeTrunc, 0, ""},
        {"open.txt", createNew, 0, ""},
        {"missing.txt", File::modeRead, errorNumFileNotFound, "old"},
        {"missing.txt", File::modeWrite | File::modeTrunc, errorNumFileNotFound, "old"},
        {"nodir/x", File::modeWrite | File::modeCreate, errorNumFileNotFound, "old"},
        {"opendir", File::modeRead, errorNumFileAccess, "old"},
        {"made1.txt", File::modeWrite | File::modeCreate, 0, "old"},
        {"made2.txt", createNew, 0, "old"},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.name) + " " + std::to_string(row.mode));
        nxFileMake("open.txt", "old");
        NxErrorOk();
        File file(row.name, row.mode);
        EXPECT_EQ(file.errorNum(), row.errorNum);
        EXPECT_EQ(NxErrorNum(), row.errorNum);
        EXPECT_EQ(file.fileIsOpen(), row.errorNum == 0);
        bool const reads = (row.mode & 3) != File::modeWrite;
        bool const writes = (row.mode & 3) == File::modeWrite || (row.mode & 3) == File::modeReadWrite;
        EXPECT_EQ(file.fileIsOpenRead(), row.errorNum == 0 && reads);
        EXPECT_EQ(file.fileIsOpenWrite(), row.errorNum == 0 && writes);
        EXPECT_EQ(file.fileIsOpenTrunc(), row.errorNum == 0 && (row.mode & File::modeTrunc) != 0);
        if (row.errorNum != 0) {
            EXPECT_EQ(details(), "E=" + std::to_string(row.errorNum & 0x7FF) + " F=" + row.name);
        }
        EXPECT_EQ(nxFileContent("open.txt"), row.left);
    }
    File append("open.txt", File::modeReadWrite | File::modeCreate | File::modeAppend);
    EXPECT_EQ(append.dataWrite("new", 3), 0);
    File again("open.txt", File::modeRead | File::modeAppend);
    EXPECT_EQ(again.fileTell(), 6);
}

TEST(File, SharingHoldsForAllHandlesAndProcesses) {
    struct {
        File::OpenMode first, second;
        bool allowed;
    } const table[] = {
        {File::modeRead, File::modeReadWrite, true},
        {File::modeWrite, File::modeReadDenyWrite, false},
        {File::modeReadDenyWrite, File::modeRead, true},
        {File::modeReadDenyWrite, File::modeReadDenyWrite, true},
        {File::modeReadDenyWrite, File::modeWrite, false},
        {File::modeReadDenyWrite, createNew, false},
        {File::modeRead | File::modeExclusive, File::modeRead, false},
        {File::modeRead, File::modeRead | File::modeExclusive, false},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::to_string(row.first) + " then " + std::to_string(row.second));
        nxFileMake("share.txt", "kept");
        File first("share.txt", row.first);
        EXPECT_EQ(File("share.txt", row.second).errorNum(), row.allowed ? 0 : errorNumFileShared);
        EXPECT_EQ(openElsewhere("share.txt", row.second), row.allowed ? 0 : 1);
        EXPECT_EQ(NX_File::fileErase("share.txt"), -1);
        EXPECT_EQ(NxErrorNum(), errorNumFileShared);
        EXPECT_EQ(NX_File::fileMove("share.txt", "elsewhere.txt"), -1);
        EXPECT_EQ(NxErrorNum(), errorNumFileShared);
        first.fileClose();
        EXPECT_EQ(nxFileContent("share.txt"), "kept");
    }
    EXPECT_EQ(openElsewhere("share.txt", File::modeRead | File::modeExclusive), 0);
}

TEST(File, Transfers) {
    File file("data.bin", createNew);
    char buffer[16] = {};
    EXPECT_EQ(file.dataWrite("0123456789", 10), 0);
    EXPECT_EQ(file.dataReadEOF(buffer, 4), 0);
    EXPECT_EQ(file.dataReadAt(2, buffer, 4), 0);
    EXPECT_STREQ(buffer, "2345");
    EXPECT_EQ(file.dataReadEOF(buffer, sizeof buffer), 4);
    NxErrorOk();
    EXPECT_EQ(file.dataReadAt(8, buffer, 4), -1);
    EXPECT_EQ(NxErrorNum(), errorNumFileShort);
    EXPECT_EQ(file.errorNum(), errorNumFileShort);
    EXPECT_EQ(details(), "E=220 F=data.bin");
    EXPECT_EQ(file.dataReadAt(3, buffer, 0), 0);
    EXPECT_EQ(file.fileTell(), 3);
    EXPECT_EQ(file.fileSize(), 10u);
    EXPECT_EQ(file.fileTell(), 3);
    EXPECT_EQ(file.fileSeek(-1, NX_FileSeekStart), -1);
    EXPECT_EQ(file.fileSeek(-4, NX_FileSeekEnd), 6);
    EXPECT_EQ(file.fileSeek(1, NX_FileSeekCurrent), 7);
    EXPECT_EQ(file.fileSeek(2, static_cast<NX_FileSeekMode>(9)), 2);
    EXPECT_EQ(file.dataZeroAt(4, 0), 0u);
    EXPECT_EQ(file.fileTell(), 4);
    EXPECT_EQ(file.dataZeroAt(4, 2000), 2000u);
    EXPECT_EQ(file.dataCopyAt(0, 5, 0), 0u);
    EXPECT_EQ(file.dataWriteAt(2010, "end", 3), 0);
    EXPECT_EQ(file.fileFlush(), 0);
    EXPECT_EQ(nxFileContent("data.bin"), "0123" + std::string(2006, '\0') + "end");

    EXPECT_EQ(file.fileClose(), 0);
    EXPECT_EQ(file.fileClose(), 0);
    EXPECT_EQ(file.dataRead(buffer, 1), -1);
    EXPECT_EQ(NxErrorNum(), errorNumSystem);
    EXPECT_EQ(details(), "E=580 F=data.bin");
    EXPECT_EQ(file.fileFlush(), -1);
    EXPECT_EQ(file.fileSize(), NX_NO_INDEX);
    EXPECT_EQ(file.dataZeroAt(0, 0), NX_NO_INDEX);
    EXPECT_EQ(File("data.bin", File::modeRead).dataWrite("x", 1), -1);
}

TEST(File, OverlappingCopyGoesForwardByPieces) {
    std::string content;
    for (int n = 0; n < 3000; ++n)
        content += static_cast<char>('a' + n % 23);
    for (auto const& [to, from] : {std::pair{500u, 0u}, std::pair{0u, 500u}}) {
        nxFileMake("copy.bin", content);
        std::string expected = content;
        for (unsigned int done = 0; done < 2300; done += 1024)
            expected.replace(to + done, std::min(1024u, 2300 - done),
                             expected.substr(from + done, std::min(1024u, 2300 - done)));
        File file("copy.bin", File::modeReadWrite);
        EXPECT_EQ(file.dataCopyAt(static_cast<long>(to), static_cast<long>(from), 2300), 2300u);
        EXPECT_EQ(file.dataCopyAt(0, 2500, 2000), NX_NO_INDEX); // runs past the end
        EXPECT_EQ(nxFileContent("copy.bin"), expected);
    }
}

TEST(File, LocksFollowTheHandle) {
    nxFileMake("lock.bin", std::string(64, 'x'));
    File one("lock.bin", File::modeReadWrite);
    File two("lock.bin", File::modeReadWrite);
    EXPECT_EQ(one.fileLockAt(0, static_cast<File::LockMode>(0x20 | 0x01), 8), -1);
    EXPECT_EQ(NxErrorNum(), errorNumLockMode);
    EXPECT_EQ(one.fileLockAt(16, File::lockOn, 16), 0);
    EXPECT_EQ(two.fileLockAt(8, File::lockOnBoth, 16), 0); // both shared
    EXPECT_EQ(two.fileLockAt(31, File::lockOn | File::lockExclusive, 1), -1);
    EXPECT_EQ(NxErrorNum(), errorNumFileLocked);
    EXPECT_EQ(details(), "E=205 F=lock.bin P=31");
    EXPECT_EQ(two.fileLockAt(32, File::lockOn | File::lockExclusive, 1), 0);
    EXPECT_EQ(one.fileLockAt(16, File::lockOff, 999), 0); // takes the position as the length
    EXPECT_EQ(two.fileLockAt(24, File::lockOn | File::lockExclusive, 8), 0);
    EXPECT_EQ(two.fileLockAt(24, File::lockOff, 8), -1);
    two.fileClose();
    EXPECT_EQ(one.fileLockAt(0, File::lockOn | File::lockExclusive, 64), 0);
}

TEST(File, LocksHoldBetweenProcesses) {
    nxFileMake("lock2.bin", std::string(64, 'x'));
    File file("lock2.bin", File::modeReadWrite);
    {
        NXS_Child child("file-lock", {"lock2.bin", "ready1", "60000"});
        ASSERT_TRUE(nxFileAwait("ready1"));
        EXPECT_EQ(file.fileLockAt(20, File::lockOn, 1), -1);
        EXPECT_EQ(file.fileLockAt(20, File::lockOn | File::lockRetry, 1), -1);
        EXPECT_EQ(file.fileLockAt(40, File::lockOn, 1), 0);
        child.kill();
    }
    EXPECT_EQ(file.fileLockAt(20, File::lockOn, 1), 0);
    file.fileClose();
    File waiting("lock2.bin", File::modeReadWrite);
    NXS_Child child("file-lock", {"lock2.bin", "ready2", "300"});
    ASSERT_TRUE(nxFileAwait("ready2"));
    EXPECT_EQ(waiting.fileLockAt(16, File::lockOn | File::lockExclusive | File::lockWait, 4), 0);
    EXPECT_EQ(child.wait(), 0);
}

TEST(File, ByName) {
    nxFileMake("from.txt", "content");
    nxFileMake("to.txt", "something longer");
    EXPECT_EQ(NX_File::fileCopy("from.txt", "to.txt"), 0);
    EXPECT_EQ(nxFileContent("to.txt"), "content");
    EXPECT_EQ(NX_File::fileMove("from.txt", "to.txt"), -1);
    EXPECT_EQ(NxErrorNum(), errorNumFileExists);
    EXPECT_EQ(details().find(" F="), std::string::npos);
    EXPECT_EQ(NX_File::fileCopy("none.txt", "copy.txt"), -1);
    EXPECT_EQ(NxErrorNum(), errorNumFileNotFound);
    EXPECT_NE(details().find(" F=copy.txt"), std::string::npos);
    EXPECT_EQ(NX_File::fileMove("from.txt", "moved.txt"), 0);
    EXPECT_EQ(NX_File::fileErase("from.txt"), -1);
    EXPECT_NE(details().find(" F=from.txt"), std::string::npos);
    EXPECT_EQ(NX_File::fileErase("moved.txt"), 0);
    EXPECT_FALSE(std::filesystem::exists("moved.txt"));
}

TEST(File, ComparisonByBlocks) {
    std::string const block(4096, 'b');
    struct {
        std::string a, b;
        int result;
    } const table[] = {
        {"same", "same", 0},           {"same", "samf", 1},           {"same", "sam", 1},
        {block + "x", block + "x", 0}, {block + "x", block + "y", 1}, {block + "x", block, 0},
        {block, block + "x", 0},       {"", "anything", 0},           {"anything", "", 0},
    };
    for (auto const& row : table) {
        nxFileMake("a.cmp", row.a);
        nxFileMake("b.cmp", row.b);
        EXPECT_EQ(NX_File::fileCompare("a.cmp", "b.cmp"), row.result) << row.a.size() << ' ' << row.b.size();
    }
    EXPECT_EQ(NX_File::fileCompare("a.cmp", "none.cmp"), -1);
    EXPECT_EQ(NxErrorNum(), errorNumFileNotFound);
}

TEST(File, VectorsReadAndWriteWholeItems) {
    int const three[] = {1, 2, 3};
    NX_IntVec vec(three, 3);
    {
        File file("vec.bin", createNew);
        EXPECT_EQ(vec.dataWrite(file), 0);
        EXPECT_EQ(vec.dataWrite(file, 1, 99), 0);
        EXPECT_EQ(vec.dataWrite(file, 7, 0), 0);
    }
    EXPECT_EQ(std::filesystem::file_size("vec.bin"), 20u);
    std::filesystem::resize_file("vec.bin", 10);
    File file("vec.bin", File::modeRead);
    EXPECT_EQ(vec.dataRead(file), 0);
    ASSERT_EQ(vec.itemQty(), 2u);
    EXPECT_EQ(vec[1], 2);
    NX_IntVec other(three, 3);
    file.fileSeek(0, NX_FileSeekStart);
    EXPECT_EQ(other.dataRead(file, 1, 1), 0); // 1, then the file's 1 2, then 3
    ASSERT_EQ(other.itemQty(), 4u);
    EXPECT_EQ(other[2], 2);
    EXPECT_EQ(other[3], 3);
    file.fileClose();
    EXPECT_EQ(other.dataRead(file), -1);
    EXPECT_ASSERTION(NX_IntVec().dataWrite(file), "item_num < itemQty()", "general/collm/v1.h");
}
