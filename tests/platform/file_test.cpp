// Reading, writing, positions and handles; the same on every target.
#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

DWORD position(HANDLE file) {
    return SetFilePointer(file, 0, nullptr, FILE_CURRENT);
}

TEST(PlatformFile, readsAndWrites) {
    nxFileMake("f", "0123456789");
    NXS_Opened const file("f", GENERIC_READ | GENERIC_WRITE), other("f", GENERIC_READ);
    DWORD done = 99;
    SetLastError(777);
    for (char const* read : {"0123", "4567", "89", ""})
        EXPECT_EQ(fileRead(file, 4), read);
    OVERLAPPED where = fileAt(3);
    EXPECT_EQ(fileRead(file, 2, &where), "34");
    EXPECT_EQ(position(file), 5u); // after the transfer
    where = fileAt(12);
    EXPECT_TRUE(WriteFile(file, "ab", 2, &done, &where) && done == 2);
    EXPECT_TRUE(position(file) == 14 && position(other) == 0);
    EXPECT_EQ(fileRead(other, 20), std::string("0123456789\0\0ab", 14));
    EXPECT_TRUE(ReadFile(file, nullptr, 0, &done, nullptr));
    EXPECT_EQ(SetFilePointer(file, 50, nullptr, FILE_BEGIN), 50u);
    EXPECT_TRUE(WriteFile(file, nullptr, 0, &done, nullptr) && FlushFileBuffers(file));
    EXPECT_EQ(SetFilePointer(other, 0, nullptr, FILE_END), 14u);
    EXPECT_EQ(GetLastError(), 777u);
    where = fileAt(14);
    done = 99;
    EXPECT_EQ(errorOf(ReadFile(file, &where, 2, &done, &where)), 38u);
    EXPECT_EQ(done, 0u);
}

TEST(PlatformFile, positions) {
    nxFileMake("f", "0123456789");
    NXS_Opened const file("f", GENERIC_WRITE);
    constexpr LONG none = 1234, least = -2147483647 - 1;
    constexpr DWORD no = 0xFFFFFFFFu;
    struct {
        LONG low, high;
        DWORD method, result, error;
        LONG highAfter;
    } const rows[] = {
        {5, none, 0, 5, 777, none},        {-2, none, 1, 3, 777, none},   {-4, none, 1, no, 131, none},
        {-10, none, 2, 0, 777, none},      {-11, none, 2, no, 131, none}, {least, none, 0, no, 131, none},
        {least, 0, 0, no / 2 + 1, 777, 0}, {-1, 2, 0, no, 0, 2},          {1, 0, 1, 0, 777, 3},
        {-1, -1, 0, no, 131, -1},          {0, none, 3, no, 87, none}};
    for (auto const& row : rows) {
        LONG high = row.high;
        SetLastError(777);
        DWORD const result = SetFilePointer(file, row.low, high == none ? nullptr : &high, row.method);
        EXPECT_TRUE(result == row.result && GetLastError() == row.error) << &row - rows;
        EXPECT_EQ(high, row.highAfter) << &row - rows;
    }
}

TEST(PlatformFile, refusals) {
    nxFileMake("f", "abc");
    NXS_Opened const reader("f", GENERIC_READ), writer("f", GENERIC_WRITE);
    HANDLE const closed = fileOpen("f", GENERIC_READ);
    EXPECT_TRUE(CloseHandle(closed));
    char buffer[4];
    for (DWORD const size : {0u, 1u}) {
        DWORD done[] = {99, 99, 99, 99};
        EXPECT_EQ(errorOf(WriteFile(reader, buffer, size, &done[0], nullptr)), 5u);
        EXPECT_EQ(errorOf(ReadFile(writer, buffer, size, &done[1], nullptr)), 5u);
        EXPECT_EQ(errorOf(ReadFile(closed, buffer, size, &done[2], nullptr)), 6u);
        EXPECT_EQ(errorOf(WriteFile(nullptr, buffer, size, &done[3], nullptr)), 6u);
        EXPECT_EQ(done[0] + done[1] + done[2] + done[3], 0u);
    }
    EXPECT_EQ(errorOf(FlushFileBuffers(reader)), 5u);
    for (HANDLE const none : {closed, HANDLE{}})
        EXPECT_TRUE(errorOf(FlushFileBuffers(none)) == 6 && errorOf(CloseHandle(none)) == 6);
    EXPECT_EQ(SetFilePointer(closed, 0, nullptr, FILE_BEGIN), 0xFFFFFFFFu);
    EXPECT_TRUE(CloseHandle(INVALID_HANDLE_VALUE));
}

TEST(PlatformFile, whichFileAHandleStandsFor) {
    nxFileMake("known", "12345");
    nxFileMake("stranger", "12345");
    BY_HANDLE_FILE_INFORMATION info[3];
    char const* const names[] = {"known", "renamed", "stranger"};
    for (int n = 0; n < 3; ++n) {
        EXPECT_TRUE(n != 1 || MoveFileA("known", "renamed"));
        HANDLE const file = fileOpen(names[n], GENERIC_READ);
        EXPECT_EQ(errorOf(GetFileInformationByHandle(file, &info[n])), 0u);
        FILETIME written;
        EXPECT_TRUE(GetFileTime(file, nullptr, nullptr, &written));
        EXPECT_EQ(CompareFileTime(&written, &info[n].ftLastWriteTime), 0);
        CloseHandle(file);
        EXPECT_EQ(errorOf(GetFileInformationByHandle(file, &info[n])), 6u);
    }
    auto const index = [&info](int n) {
        return std::uint64_t{info[n].nFileIndexHigh} << 32 | info[n].nFileIndexLow;
    };
    EXPECT_TRUE(index(0) == index(1) && index(0) != index(2));
    EXPECT_TRUE(info[0].dwVolumeSerialNumber == info[2].dwVolumeSerialNumber && info[0].nNumberOfLinks == 1);
    EXPECT_TRUE(info[0].nFileSizeLow == 5 && info[0].nFileSizeHigh == 0);
    EXPECT_EQ(info[0].dwFileAttributes & ~DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_FALSE(GetFileInformationByHandle(NXS_Opened("nul", GENERIC_READ), &info[0]));
}

} // namespace
