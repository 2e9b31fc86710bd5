// Code pages and directories; the same on every target.
#include "general/platform/platform.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <cstdlib>
#include <cstring>

namespace {

TEST(PlatformSystem, directories) {
    for (auto const directory : {GetSystemDirectoryA, GetWindowsDirectoryA}) {
        char buffer[300] = "xx";
        UINT const needed = directory(buffer, 0);
        EXPECT_TRUE(directory(buffer, needed - 1) == needed && std::strcmp(buffer, "xx") == 0);
        EXPECT_TRUE(directory(buffer, needed) == needed - 1 && std::strlen(buffer) == needed - 1) << buffer;
    }
}

TEST(PlatformSystem, localeCodePage) {
    char buffer[10] = "";
    int const full = static_cast<int>(std::to_string(GetACP()).size()) + 1;
    EXPECT_EQ(GetLocaleInfoA(0x800, 0x1004, buffer, full), full);
    EXPECT_EQ(buffer, std::to_string(GetACP()));
    EXPECT_TRUE(GetLocaleInfoA(0x800, 0x1004, buffer, full - 1) == 0 && GetLastError() == 122);
    EXPECT_TRUE(GetLocaleInfoA(0x800, 0x99999, buffer, 5) == 0 && GetLastError() == 1004);
}

TEST(PlatformSystem, codePages) {
    std::tuple<UINT, UINT, char const*> const rows[] = {
        // with first and last byte of each range of lead bytes
        {932, 2, "\x81\x9f\xe0\xfc"},
        {1361, 2, "\x84\xd3\xd8\xde\xe0\xf9"},
        {1252, 1, ""},
        {65001, 4, ""}};
    CPINFO info;
    for (auto const& [page, sizeMax, lead] : rows) {
        EXPECT_TRUE(GetCPInfo(page, &info) && info.MaxCharSize == sizeMax && info.DefaultChar[0] == '?')
            << page;
        EXPECT_STREQ(reinterpret_cast<char*>(info.LeadByte), lead) << page;
    }
    EXPECT_TRUE(!GetCPInfo(99999, &info) && GetLastError() == 87);
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
