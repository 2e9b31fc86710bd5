// Environment, code pages, directories and versions; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

TEST(PlatformSystem, environmentVariables) {
    ASSERT_TRUE(SetEnvironmentVariableA("NX_FULL", "hello") && SetEnvironmentVariableA("NX_EMPTY", ""));
    struct {
        char const* name;
        DWORD size, result;
        char const* text;
        DWORD error;
    } const rows[] = {
        {"NX_FULL", 0, 6, "xx", 777},  {"NX_FULL", 5, 6, "xx", 777}, {"NX_FULL", 6, 5, "hello", 777},
        {"NX_EMPTY", 0, 1, "xx", 777}, {"NX_EMPTY", 1, 0, "", 777},  {"NX_NONE", 9, 0, "xx", 203},
        {"", 9, 0, "xx", 203},         {nullptr, 9, 0, "xx", 203},   {"NX_FULL=", 9, 0, "xx", 203}};
    for (auto const& row : rows) {
        char buffer[10] = "xx";
        SetLastError(777);
        EXPECT_EQ(GetEnvironmentVariableA(row.name, buffer, row.size), row.result) << &row - rows;
        EXPECT_STREQ(buffer, row.text) << &row - rows;
        EXPECT_EQ(GetLastError(), row.error) << &row - rows;
    }
    EXPECT_TRUE(SetEnvironmentVariableA("NX_FULL", nullptr) &&
                !GetEnvironmentVariableA("NX_FULL", nullptr, 0));
}

TEST(PlatformSystem, directoriesAndVersion) {
    for (auto const directory : {GetSystemDirectoryA, GetWindowsDirectoryA}) {
        char buffer[300] = "xx";
        UINT const needed = directory(buffer, 0);
        EXPECT_TRUE(directory(buffer, needed - 1) == needed && std::strcmp(buffer, "xx") == 0);
        EXPECT_TRUE(directory(buffer, needed) == needed - 1 && std::strlen(buffer) == needed - 1) << buffer;
    }
    OSVERSIONINFOA info = {};
    EXPECT_TRUE(!GetVersionExA(&info) && GetLastError() == 122);
    info.dwOSVersionInfoSize = sizeof info;
    ASSERT_TRUE(GetVersionExA(&info));
    EXPECT_EQ(GetVersion(), info.dwBuildNumber << 16 | info.dwMinorVersion << 8 | info.dwMajorVersion);
}

TEST(PlatformSystem, localeCodePage) {
    std::string const page = std::to_string(GetACP());
    int const full = static_cast<int>(page.size()) + 1;
    struct {
        LCID locale;
        LCTYPE type;
        int size, result;
        DWORD error;
    } const rows[] = {{0x800, 0x1004, 5, full, 777},     {0x800, 0x1004, full, full, 777},
                      {0x800, 0x1004, full - 1, 0, 122}, {0x800, 0x1004, 0, full, 777},
                      {0x800, 0x1004, -1, 0, 87},        {0x800, 0x99999, 5, 0, 1004},
                      {0x9999, 0x1004, 5, 0, 87}};
    for (auto const& row : rows) {
        char buffer[10] = "";
        SetLastError(777);
        EXPECT_EQ(GetLocaleInfoA(row.locale, row.type, buffer, row.size), row.result) << &row - rows;
        EXPECT_EQ(GetLastError(), row.error) << &row - rows;
        EXPECT_TRUE(row.size < full || row.error != 777 || buffer == page) << buffer;
    }
}

TEST(PlatformSystem, codePages) {
    struct {
        UINT page, sizeMax;
        char lead[7]; // first and last byte of each range
    } const rows[] = {{932, 2, "\x81\x9f\xe0\xfc"},
                      {936, 2, "\x81\xfe"},
                      {949, 2, "\x81\xfe"},
                      {950, 2, "\x81\xfe"},
                      {1361, 2, "\x84\xd3\xd8\xde\xe0\xf9"},
                      {437, 1, ""},
                      {874, 1, ""},
                      {1250, 1, ""},
                      {1252, 1, ""},
                      {1258, 1, ""},
                      {65001, 4, ""},
                      {65000, 5, ""}};
    CPINFO info;
    for (auto const& row : rows) {
        std::memset(&info, 0xEE, sizeof info);
        ASSERT_TRUE(GetCPInfo(row.page, &info)) << row.page;
        EXPECT_TRUE(info.MaxCharSize == row.sizeMax && info.DefaultChar[0] == '?') << row.page;
        EXPECT_STREQ(reinterpret_cast<char*>(info.LeadByte), row.lead) << row.page;
    }
    EXPECT_FALSE(GetCPInfo(99999, &info) || GetCPInfo(1252, nullptr));
    EXPECT_EQ(GetLastError(), 87u);
}

int fatalExit(int, char**) {
    std::atexit([] { nxFileMake("left.txt", "a handler ran"); });
    FatalAppExitA(0, "the end");
    return 7;
}
NXS_ChildEntry const fatalExitEntry("fatal-exit", fatalExit);

TEST(PlatformSystem, fatalExitEndsAtOnce) {
    EXPECT_EQ(nxRunSelf("fatal-exit"), 1);
    EXPECT_EQ(GetFileAttributesA("left.txt"), INVALID_FILE_ATTRIBUTES);
}

} // namespace
