// The layer off Windows: read-only files, patterns, links, and every kind of failing system call.
#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <limits>

#include "general/platform/posix/codepage.h"
#include "general/platform/posix/pattern.h"
#include "general/platform/posix/seam.h"
#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

TEST(PosixFile, readOnlyHoldsForEveryUser) {
    nxFileMake("r", "abc");
    ASSERT_TRUE(SetFileAttributesA("r", FILE_ATTRIBUTE_READONLY));
    std::tuple<DWORD, DWORD, DWORD> const rows[] = {
        {OPEN_EXISTING, 0, 5}, {OPEN_ALWAYS, 183, 5}, {CREATE_ALWAYS, 5, 5}, {TRUNCATE_EXISTING, 87, 5}};
    for (auto const& [creation, reading, writing] : rows) {
        EXPECT_EQ(fileOpenError("r", GENERIC_READ, 3, creation), reading) << creation;
        EXPECT_EQ(fileOpenError("r", GENERIC_WRITE, 3, creation), writing) << creation;
    }
    FILETIME const time = {1, 0x01D00000};
    EXPECT_EQ((NXS_Results{errorOf(DeleteFileA("r")), errorOf(CopyFileA("r", "copy", FALSE)),
                           errorOf(CopyFileA("r", "copy", FALSE)), errorOf(MoveFileA("copy", "moved")),
                           GetFileAttributesA("moved"),
                           errorOf(SetFileTime(NXS_Opened("r", GENERIC_READ), nullptr, nullptr, &time))}),
              (NXS_Results{5, 0, 5, 0, 0x21, 5}));
    for (char const* name : {"r", "moved"})
        EXPECT_TRUE(SetFileAttributesA(name, FILE_ATTRIBUTE_NORMAL) && DeleteFileA(name));
}

TEST(PosixFile, namesOnlyHere) {
    CreateDirectoryA("dir", nullptr);
    nxFileMake(".dot", "x");
    nxFileMake("file", "x");
    for (char const* name : {"dir/", "/", "Q:\\x", "C:file", "dir/.../file"})
        EXPECT_EQ(fileOpenError(name, GENERIC_READ), 3u) << name;
    EXPECT_EQ(fileOpenError("FILE", GENERIC_READ), 2u);
    EXPECT_EQ(fileOpenError(std::string(256, 'a').c_str(), GENERIC_READ), 123u);
    EXPECT_EQ(GetFileAttributesA(".dot"), 0x22u);
    EXPECT_EQ(errorOf(SetFileAttributesA("file", FILE_ATTRIBUTE_HIDDEN)), 50u);
    // In a double-byte code page the second half of a character is no separator, although it looks like one.
    ASSERT_TRUE(nxPlatformCodePageSet(932));
    char buffer[1000], *part = nullptr;
    EXPECT_GT(GetFullPathNameA("dir\\\x95\\", sizeof buffer, buffer, &part), 0u);
    EXPECT_STREQ(part, "\x95\\");
    for (char const* name : {"dir\\\x95\\", "dir/\x95\x7C"})
        EXPECT_EQ(fileOpenError(name, GENERIC_WRITE, 3, CREATE_NEW), 0u);
    EXPECT_EQ(fileOpenError("dir/\x95\\|", GENERIC_READ), 123u);
    EXPECT_TRUE(DeleteFileA("dir/\x95\\"));
    // A first half without a second one leaves the separator a separator.
    EXPECT_GT(GetFullPathNameA("x\x95/../dir\x95/a", sizeof buffer, buffer, &part), 0u);
    EXPECT_TRUE(std::string(buffer).ends_with("/dir\x95/a") && !std::strstr(buffer, "/x\x95"));
    EXPECT_EQ(fileOpenError("dir\x95*", GENERIC_READ), 123u);
    EXPECT_TRUE(NXS_Pattern("*.c", 3, false).matches("a\x95.c"));
    nxPlatformCodePageSet(0);
}

// The null device stays where it is, whoever asks: an administrator could take it away.
TEST(PosixFile, theNullDeviceIsNoFile) {
    nxFileMake("file", "x");
    NXS_SeamScope const scope;
    static int changes;
    nxSeam.rename = [](char const*, char const*, unsigned int) { return ++changes; };
    nxSeam.unlinkAt = [](int, char const*, int) { return ++changes; };
    nxSeam.modeOf = [](char const*, unsigned int) { return ++changes; };
    for (DWORD const flags : {DWORD{0}, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED}) {
        EXPECT_EQ(errorOf(MoveFileExA("nul", "elsewhere", flags)), 5u);
        EXPECT_EQ(errorOf(MoveFileExA("file", "nul.txt", flags)), 5u);
    }
    EXPECT_EQ(errorOf(DeleteFileA("nul")), 5u);
    EXPECT_EQ(errorOf(SetFileAttributesA("nul", FILE_ATTRIBUTE_READONLY)), 5u);
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(CopyFileA("file", "nul", FALSE));
}

TEST(PosixFile, namesOfOneFile) {
    nxFileMake("one", "x");
    ASSERT_EQ(link("one", "two"), 0);
    EXPECT_EQ(errorOf(MoveFileA("one", "two")), 183u);
    EXPECT_TRUE(MoveFileExA("one", "two", MOVEFILE_REPLACE_EXISTING) && nxFileContent("two") == "x");
    EXPECT_EQ(GetFileAttributesA("one"), INVALID_FILE_ATTRIBUTES);
    // A file that is to go at its close is the one that was opened, under the name as it was.
    CreateDirectoryA("d", nullptr);
    ASSERT_EQ(mkdir("d.", 0777), 0);
    nxFileMake("d/f", "stays");
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    for (char const* name : {"d..\\f", "two"}) {
        NXS_Opened const file(name, GENERIC_WRITE, all, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
        if (std::strcmp(name, "two") == 0 && MoveFileA("two", "three"))
            nxFileMake("two", "another");
    }
    EXPECT_NE(access("d./f", F_OK), 0);
    EXPECT_TRUE(nxFileContent("d/f") == "stays" && nxFileContent("two") == "another");
}

TEST(PosixFind, patterns) {
    std::tuple<char const*, bool, char const*, char const*> const rows[] = {
        {"*.*", false, "a", nullptr},          {"a.*", false, "a", "ba"},
        {"ab?", false, "ab", "abcd"},          {"????????.???", false, "ab", "abcdefghi"},
        {"?.c", false, "a.c", "ab.c"},         {"*", true, "ab", "a.b"},
        {"a*", true, "abc", "abc.d"},          {"a?b", false, "axb", "a.b"},
        {"*?", false, "x", nullptr},           {"*a*b*c", false, "xaxbxabc", "abca"},
        {"A\xE4*", false, "a\xE4x", "a\xC4x"}, {"*.txt", false, "b.TXT", "b.txtx"},
        {"??.a", false, "x.a", "xyz.a"},       {"*b.?", false, "ab.bb.", "ab.bb.xx"}};
    for (auto const& [stars, starDot, yes, no] : rows) {
        NXS_Pattern const pattern(stars, std::strlen(stars), starDot);
        EXPECT_TRUE(pattern.matches(yes)) << stars;
        EXPECT_FALSE(no != nullptr && pattern.matches(no)) << stars;
    }
    std::string hostile;
    for (int n = 0; n < 60; ++n)
        hostile += "*a";
    EXPECT_FALSE(
        NXS_Pattern((hostile + "b").c_str(), 121, false).matches(std::string(100, 'a').c_str())); // soon
    ASSERT_TRUE(nxPlatformCodePageSet(932));
    EXPECT_TRUE(NXS_Pattern("?x", 2, false).matches("\x83\x41x"));
    EXPECT_FALSE(NXS_Pattern("\x83\x61", 2, false).matches("\x83\x41"));
    nxPlatformCodePageSet(0);
}

TEST(PosixFind, linksAndErrors) {
    for (char const* name : {"t", "t/sub", "t/other"})
        CreateDirectoryA(name, nullptr);
    nxFileMake("t/file", "12345");
    // The first leads back: a walk would not end.
    EXPECT_EQ((NXS_Results{symlink("../../t", "t/sub/up"), symlink("../other", "t/sub/aside"),
                           symlink("../file", "t/sub/link"), symlink("nowhere", "t/sub/dangling")}),
              (NXS_Results{0, 0, 0, 0}));
    WIN32_FIND_DATAA data;
    std::string names;
    HANDLE const search = FindFirstFileA("t/sub/?*", &data);
    do {
        names += data.cFileName + std::string(" ") + std::to_string(data.dwFileAttributes) + ' ';
        EXPECT_TRUE(std::strcmp(data.cFileName, "link") != 0 || data.nFileSizeLow == 5);
    } while (FindNextFileA(search, &data));
    FindClose(search);
    EXPECT_EQ(names, ". 16 .. 16 aside 1040 dangling 32 link 32 ");
    std::tuple<char const*, DWORD> const rows[] = {
        {"t/file\\*", 267}, {"t/file/x\\*", 3}, {"no/", 3}, {"t/", 2}, {"t/a<b", 2}};
    auto const findError = [&](char const* pattern) {
        return errorOf(FindFirstFileA(pattern, &data) != INVALID_HANDLE_VALUE);
    };
    for (auto const& [pattern, error] : rows)
        EXPECT_EQ(findError(pattern), error) << pattern;
    EXPECT_TRUE(RemoveDirectoryA("t\\sub\\aside") && GetFileAttributesA("t/other") == 0x10u);
    EXPECT_EQ(GetFileAttributesA("t/sub/aside"), INVALID_FILE_ATTRIBUTES);
    NXS_SeamScope const scope;
    nxSeam.allocate = [](std::size_t) -> void* { return nullptr; };
    EXPECT_EQ(findError("t\\*"), 8u);
}

// What a replaced system call returns when it fails.
template <class Result = int>
Result failing(int error) {
    errno = error;
    return -1;
}

int calls;

TEST(PosixSeam, interruptedAndShortTransfers) {
    NXS_SeamScope const scope;
    nxSeam.writeAt = [](int file, void const* data, std::size_t size, std::int64_t at) -> ssize_t {
        if (++calls % 2 == 0)
            return failing(EINTR);
        return pwrite(file, data, size > 3 ? 3 : size, static_cast<off_t>(at));
    };
    nxSeam.readAt = [](int file, void* data, std::size_t size, std::int64_t at) -> ssize_t {
        if (++calls % 2 == 0)
            return failing(EINTR);
        return pread(file, data, size > 2 ? 2 : size, static_cast<off_t>(at));
    };
    NXS_Opened const file("cut", GENERIC_READ | GENERIC_WRITE, 3u, CREATE_ALWAYS);
    DWORD done = 0;
    EXPECT_TRUE(WriteFile(file, "0123456789", 10, &done, nullptr) && done == 10);
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    EXPECT_EQ(fileRead(file, 20), "0123456789");
}

TEST(PosixSeam, failuresReachTheCaller) {
    NXS_SeamScope const scope;
    HANDLE const file = fileOpen("full", GENERIC_READ | GENERIC_WRITE, 3, CREATE_ALWAYS);
    char buffer[8] = {};
    DWORD done = 99;
    nxSeam.writeAt = [](int target, void const* data, std::size_t size, std::int64_t at) -> ssize_t {
        if (at >= 4)
            return failing(ENOSPC);
        return pwrite(target, data, size > 4 ? 4 : size, static_cast<off_t>(at));
    };
    EXPECT_TRUE(WriteFile(file, buffer, 8, &done, nullptr) && done == 4); // what there was room for
    EXPECT_TRUE(errorOf(WriteFile(file, buffer, 4, &done, nullptr)) == 112 && done == 0);
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 4u);
    nxSeam.readAt = [](int, void*, std::size_t, std::int64_t) { return failing<ssize_t>(EIO); };
    EXPECT_EQ(errorOf(ReadFile(file, buffer, 1, &done, nullptr)), 1117u);
    nxSeam.close = [](int target) {
        close(target);
        return failing(EDQUOT);
    };
    for (DWORD const error : {112u, 6u}) // a late write error, and the handle is gone all the same
        EXPECT_EQ(errorOf(CloseHandle(file)), error);
    nxSeam.close = close;
    // A copy that fails leaves no target, and one that fails late is not taken for done by a move.
    nxFileMake("source", "data");
    nxSeam.rename = [](char const*, char const*, unsigned int) { return failing(EXDEV); };
    nxSeam.close = [](int target) {
        bool const writes = (fcntl(target, F_GETFL) & O_ACCMODE) != O_RDONLY;
        close(target);
        return writes ? failing(EDQUOT) : 0;
    };
    EXPECT_EQ(errorOf(CopyFileA("source", "target", FALSE)), 112u);
    EXPECT_EQ(errorOf(MoveFileA("source", "target")), 112u);
    EXPECT_EQ(GetFileAttributesA("target"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(nxFileContent("source"), "data");
    nxSeam.close = close;
    nxSeam.copyRange = [](int, int, std::size_t) { return failing<ssize_t>(EXDEV); };
    nxSeam.write = [](int, void const*, std::size_t) { return failing<ssize_t>(ENOSPC); };
    EXPECT_EQ(errorOf(CopyFileA("source", "target", FALSE)), 112u);
    EXPECT_EQ(GetFileAttributesA("target"), INVALID_FILE_ATTRIBUTES);
    nxSeam.write = write;
    EXPECT_TRUE(CopyFileA("source", "target", FALSE) && nxFileContent("target") == "data");
    // To another file system a file is copied and deleted; without that kind of renaming it is linked.
    static int renameError;
    for (int const error : {EXDEV, EINVAL}) {
        renameError = error;
        nxSeam.rename = [](char const*, char const*, unsigned int) { return failing(renameError); };
        EXPECT_TRUE(MoveFileA("target", "elsewhere") && nxFileContent("elsewhere") == "data");
        EXPECT_EQ(GetFileAttributesA("target"), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(errorOf(MoveFileA("source", "elsewhere")), 183u);
        CopyFileA("elsewhere", "target", FALSE);
        DeleteFileA("elsewhere");
    }
    // The name that cannot be taken away remains the only one.
    nxSeam.unlinkAt = [](int directory, char const* name, int flags) {
        return std::strcmp(name, "source") == 0 ? failing(EACCES) : unlinkat(directory, name, flags);
    };
    EXPECT_EQ(errorOf(MoveFileA("source", "elsewhere")), 5u);
    EXPECT_EQ(GetFileAttributesA("elsewhere"), INVALID_FILE_ATTRIBUTES);
    nxSeam.stat = [](int directory, char const* name, int flags, unsigned int mask, struct statx* found) {
        int const result = statx(directory, name, flags, mask, found);
        found->stx_mtime.tv_sec = std::numeric_limits<std::int64_t>::max();
        found->stx_atime.tv_sec = std::numeric_limits<std::int64_t>::min();
        return result;
    };
    HANDLE const ages = fileOpen("source", GENERIC_READ);
    FILETIME accessed, written;
    EXPECT_TRUE(GetFileTime(ages, nullptr, &accessed, &written) && CloseHandle(ages));
    EXPECT_TRUE(written.dwHighDateTime == 0x7FFFFFFF && accessed.dwHighDateTime == 0);
    nxSeam.openAt = [](int, char const*, int, unsigned int) { return failing(EMFILE); };
    EXPECT_EQ(fileOpenError("source", GENERIC_READ), 4u);
}

} // namespace
