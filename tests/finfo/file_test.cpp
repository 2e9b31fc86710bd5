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

// Holds a lock on 16 bytes at 16 of lock.bin for a while.
int lockTask(int, char** argv) {
    File file("lock.bin", File::modeReadWrite);
    int const result = file.fileLockAt(16, File::lockOn | File::lockExclusive, 16);
    nxFileMake(argv[0], "ready");
    NX_TimerSleep(static_cast<unsigned long>(std::atoi(argv[1])), 1);
    return result;
}
NXS_ChildEntry const lockEntry("file-lock", lockTask);

} // namespace

TEST(File, OpenModes) {
    std::filesystem::create_directory("opendir");
    constexpr int none = errorNumFileNotFound;
    struct {
        char const* name;
        File::OpenMode mode;
        int errorNum;
        char const* left; // of open.txt, which held "old"
    } const table[] = {{"open.txt", File::modeRead, 0, "old"},
                       {"open.txt", File::modeWrite, 0, "old"},
                       {"open.txt", File::modeReadWrite | File::modeCreate, 0, "old"},
                       {"open.txt", File::modeWrite | File::modeTrunc, 0, ""},
                       {"open.txt", createNew, 0, ""},
                       {"missing.txt", File::modeRead, none, "old"},
                       {"missing.txt", File::modeWrite | File::modeTrunc, none, "old"},
                       {"nodir/x", File::modeWrite | File::modeCreate, none, "old"},
                       {"opendir", File::modeRead, errorNumFileAccess, "old"},
                       {"made1.txt", File::modeWrite | File::modeCreate, 0, "old"},
                       {"made2.txt", createNew, 0, "old"}};
    for (auto const& [name, mode, errorNum, left] : table) {
        SCOPED_TRACE(std::string(name) + " " + std::to_string(mode));
        nxFileMake("open.txt", "old");
        NxErrorOk();
        File file(name, mode);
        EXPECT_TRUE(file.errorNum() == errorNum && NxErrorNum() == errorNum);
        bool const open = errorNum == 0, writeOnly = (mode & 3) == File::modeWrite;
        EXPECT_EQ(
            (NXS_Results{file.fileIsOpen(), file.fileIsOpenRead(), file.fileIsOpenWrite(),
                         file.fileIsOpenTrunc()}),
            (NXS_Results{open, open && !writeOnly, open && (writeOnly || (mode & 3) == File::modeReadWrite),
                         open && (mode & File::modeTrunc) != 0}));
        EXPECT_TRUE(open || details() == "E=" + std::to_string(errorNum & 0x7FF) + " F=" + name) << details();
        EXPECT_EQ(nxFileContent("open.txt"), left);
    }
    File append("open.txt", File::modeReadWrite | File::modeCreate | File::modeAppend);
    EXPECT_EQ(append.dataWrite("new", 3), 0);
    EXPECT_EQ(File("open.txt", File::modeRead | File::modeAppend).fileTell(), 6);
}

TEST(File, SharingHoldsForAllHandlesAndProcesses) {
    struct {
        File::OpenMode first, second;
        bool allowed;
    } const table[] = {{File::modeRead, File::modeReadWrite, true},
                       {File::modeWrite, File::modeReadDenyWrite, false},
                       {File::modeReadDenyWrite, File::modeRead, true},
                       {File::modeReadDenyWrite, File::modeReadDenyWrite, true},
                       {File::modeReadDenyWrite, File::modeWrite, false},
                       {File::modeReadDenyWrite, createNew, false},
                       {File::modeRead | File::modeExclusive, File::modeRead, false},
                       {File::modeRead, File::modeRead | File::modeExclusive, false}};
    for (auto const& [mode, second, allowed] : table) {
        SCOPED_TRACE(std::to_string(mode) + " then " + std::to_string(second));
        nxFileMake("share.txt", "kept");
        File first("share.txt", mode);
        EXPECT_EQ(File("share.txt", second).errorNum(), allowed ? 0 : errorNumFileShared);
        EXPECT_EQ(nxRunSelf("file-open", {"share.txt", std::to_string(second)}), allowed ? 0 : 1);
        EXPECT_TRUE(NX_File::fileErase("share.txt") == -1 && NxErrorNum() == errorNumFileShared);
        first.fileClose();
        EXPECT_EQ(nxFileContent("share.txt"), "kept");
    }
}

TEST(File, Transfers) {
    File file("data.bin", createNew);
    char buffer[16] = {};
    EXPECT_EQ((NXS_Results{file.dataWrite("0123456789", 10), file.dataReadEOF(buffer, 4),
                           file.dataReadAt(2, buffer, 4), file.dataReadEOF(buffer + 4, 9)}),
              (NXS_Results{0, 0, 0, 4}));
    EXPECT_STREQ(buffer, "23456789");
    NxErrorOk();
    EXPECT_EQ(file.dataReadAt(8, buffer, 4), -1);
    EXPECT_TRUE(file.errorNum() == errorNumFileShort && details() == "E=220 F=data.bin") << details();
    EXPECT_EQ(
        (NXS_Results{file.dataReadAt(3, buffer, 0), file.fileTell(), file.fileSize(), file.fileTell(),
                     file.fileSeek(-1, NX_FileSeekStart), file.fileSeek(-4, NX_FileSeekEnd),
                     file.fileSeek(1, NX_FileSeekCurrent), file.fileSeek(2, static_cast<NX_FileSeekMode>(9)),
                     file.dataZeroAt(4, 0), file.fileTell(), file.dataZeroAt(4, 2000),
                     file.dataCopyAt(0, 5, 0), file.dataWriteAt(2010, "end", 3), file.fileFlush()}),
        (NXS_Results{0, 3, 10, 3, -1, 6, 7, 2, 0, 4, 2000, 0, 0, 0}));
    EXPECT_EQ(nxFileContent("data.bin"), "0123" + std::string(2006, '\0') + "end");
    EXPECT_EQ((NXS_Results{file.fileClose(), file.fileClose(), file.dataRead(buffer, 1)}),
              (NXS_Results{0, 0, -1}));
    EXPECT_EQ(details(), "E=580 F=data.bin");
    EXPECT_TRUE(file.fileFlush() == -1 && file.fileSize() == NX_NO_INDEX &&
                file.dataZeroAt(0, 0) == NX_NO_INDEX);
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
    constexpr File::LockMode exclusive = File::lockOn | File::lockExclusive;
    File one("lock.bin", File::modeReadWrite), two("lock.bin", File::modeReadWrite);
    EXPECT_EQ(one.fileLockAt(0, static_cast<File::LockMode>(0x20 | 0x01), 8), -1);
    EXPECT_EQ(NxErrorNum(), errorNumLockMode);
    EXPECT_EQ((NXS_Results{one.fileLockAt(16, File::lockOn, 16), two.fileLockAt(8, File::lockOnBoth, 16),
                           two.fileLockAt(31, exclusive, 1)}),
              (NXS_Results{0, 0, -1})); // both shared, then refused
    EXPECT_EQ(details(), "E=205 F=lock.bin P=31");
    // Unlocking takes the position as the length.
    EXPECT_EQ((NXS_Results{two.fileLockAt(32, exclusive, 1), one.fileLockAt(16, File::lockOff, 999),
                           two.fileLockAt(24, exclusive, 8), two.fileLockAt(24, File::lockOff, 8)}),
              (NXS_Results{0, 0, 0, -1}));
    two.fileClose();
    EXPECT_EQ(one.fileLockAt(0, exclusive, 64), 0);
}

TEST(File, LocksHoldBetweenProcesses) {
    nxFileMake("lock.bin", std::string(64, 'x'));
    File file("lock.bin", File::modeReadWrite);
    {
        NXS_Child child("file-lock", {"ready1", "60000"});
        ASSERT_TRUE(nxFileAwait("ready1"));
        EXPECT_EQ((NXS_Results{file.fileLockAt(20, File::lockOn, 1),
                               file.fileLockAt(20, File::lockOn | File::lockRetry, 1),
                               file.fileLockAt(40, File::lockOn, 1)}),
                  (NXS_Results{-1, -1, 0}));
        child.kill();
    }
    EXPECT_EQ(file.fileLockAt(20, File::lockOn, 1), 0);
    file.fileClose();
    File waiting("lock.bin", File::modeReadWrite);
    NXS_Child child("file-lock", {"ready2", "300"});
    ASSERT_TRUE(nxFileAwait("ready2"));
    EXPECT_EQ(waiting.fileLockAt(16, File::lockOn | File::lockExclusive | File::lockWait, 4), 0);
    EXPECT_EQ(child.wait(), 0);
}

TEST(File, ByName) {
    nxFileMake("from.txt", "content");
    nxFileMake("to.txt", "something longer");
    EXPECT_TRUE(NX_File::fileCopy("from.txt", "to.txt") == 0 && nxFileContent("to.txt") == "content");
    EXPECT_TRUE(NX_File::fileMove("from.txt", "to.txt") == -1 && NxErrorNum() == errorNumFileExists);
    EXPECT_EQ(details().find(" F="), std::string::npos);
    EXPECT_TRUE(NX_File::fileCopy("none.txt", "copy.txt") == -1 && NxErrorNum() == errorNumFileNotFound);
    EXPECT_NE(details().find(" F=copy.txt"), std::string::npos);
    EXPECT_EQ((NXS_Results{NX_File::fileMove("from.txt", "moved.txt"), NX_File::fileErase("moved.txt"),
                           NX_File::fileErase("from.txt")}),
              (NXS_Results{0, 0, -1}));
    EXPECT_NE(details().find(" F=from.txt"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists("moved.txt"));
}

TEST(File, ComparisonByBlocks) {
    std::string const block(4096, 'b');
    std::tuple<std::string, std::string, int> const table[] = {
        {"same", "same", 0},           {"same", "samf", 1},           {"same", "sam", 1},
        {block + "x", block + "x", 0}, {block + "x", block + "y", 1}, {block + "x", block, 0},
        {block, block + "x", 0},       {"", "anything", 0},           {"anything", "", 0}};
    for (auto const& [a, b, result] : table) {
        nxFileMake("a.cmp", a);
        nxFileMake("b.cmp", b);
        EXPECT_EQ(NX_File::fileCompare("a.cmp", "b.cmp"), result) << a.size() << ' ' << b.size();
    }
    EXPECT_TRUE(NX_File::fileCompare("a.cmp", "none.cmp") == -1 && NxErrorNum() == errorNumFileNotFound);
}

TEST(File, VectorsReadAndWriteWholeItems) {
    int const three[] = {1, 2, 3};
    NX_IntVec vec(three, 3);
    {
        File file("vec.bin", createNew);
        EXPECT_TRUE(vec.dataWrite(file) == 0 && vec.dataWrite(file, 1, 99) == 0 &&
                    vec.dataWrite(file, 7, 0) == 0);
    }
    EXPECT_EQ(std::filesystem::file_size("vec.bin"), 20u);
    std::filesystem::resize_file("vec.bin", 10);
    File file("vec.bin", File::modeRead);
    EXPECT_EQ((NXS_Results{vec.dataRead(file), vec.itemQty(), vec[1]}), (NXS_Results{0, 2, 2}));
    NX_IntVec other(three, 3);
    file.fileSeek(0, NX_FileSeekStart); // 1, then the file's 1 2, then 3
    EXPECT_EQ((NXS_Results{other.dataRead(file, 1, 1), other.itemQty(), other[2], other[3]}),
              (NXS_Results{0, 4, 2, 3}));
    file.fileClose();
    EXPECT_EQ(other.dataRead(file), -1);
    EXPECT_ASSERTION(NX_IntVec().dataWrite(file), "item_num < itemQty()", "general/collm/v1.h");
}
