// Searching directories; the same on every target. What Wine does otherwise stands in posix_find_test.cpp.
#include <string>

#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

// The names found, each followed by a blank; the error of the first call in brackets when there are none.
std::string found(char const* pattern) {
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA(pattern, &data);
    if (search == INVALID_HANDLE_VALUE) {
        return "[" + std::to_string(GetLastError()) + "]";
    }
    std::string names;
    do {
        names += std::string(data.cFileName) + ' ';
    } while (FindNextFileA(search, &data));
    EXPECT_EQ(GetLastError(), 18u);
    EXPECT_EQ(errorOf(FindNextFileA(search, &data)), 18u);
    EXPECT_TRUE(FindClose(search));
    return names;
}

TEST(PlatformFind, patternsAndOrder) {
    for (char const* name : {"s", "s/Sub", "s/empty"}) {
        CreateDirectoryA(name, nullptr);
    }
    for (char const* name : {"s/b.txt", "s/A.TXT", "s/c", "s/_x", "s/ab.c.d"}) {
        nxFileMake(name, name);
    }
    struct {
        char const* pattern;
        char const* names;
    } const rows[] = {{"s/*", ". .. A.TXT ab.c.d b.txt c empty Sub _x "},
                      {"s\\*.*", ". .. A.TXT ab.c.d b.txt c empty Sub _x "},
                      {"s/*.txt", "A.TXT b.txt "},
                      {"s/*.d", "ab.c.d "},
                      {"s/a*", "A.TXT ab.c.d "},
                      {"s/c.*", "c "},
                      {"s/*b*", "ab.c.d b.txt Sub "},
                      {"s/?.TxT", "A.TXT b.txt "},
                      {"s/*.txt ", "A.TXT b.txt "},
                      {"s/empty/*", ". .. "},
                      {"s/empty/*.c", "[2]"},
                      {"s/b.txt", "b.txt "},
                      {"s", "s "},
                      {"s/none", "[2]"},
                      {"s/none*", "[2]"},
                      {"no/*", "[3]"},
                      {"no/x", "[3]"},
                      {"", "[3]"},
                      {"s*/x", "[123]"},
                      {"s/../s/./c", "c "},
                      {"s/", "[2]"}};
    for (auto const& row : rows) {
        EXPECT_EQ(found(row.pattern), row.names) << row.pattern;
    }
}

TEST(PlatformFind, dataOfAnEntry) {
    nxFileMake("sized", std::string(1234, 'x'));
    CreateDirectoryA("dir", nullptr);
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA("sized", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_EQ(data.dwFileAttributes, 0x20u);
    EXPECT_TRUE(data.nFileSizeLow == 1234 && data.nFileSizeHigh == 0);
    HANDLE const file = CreateFileA("sized", 0, 7, nullptr, OPEN_EXISTING, 0, nullptr);
    FILETIME created;
    FILETIME written;
    EXPECT_TRUE(GetFileTime(file, &created, nullptr, &written));
    CloseHandle(file);
    EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &written), 0);
    EXPECT_EQ(CompareFileTime(&data.ftCreationTime, &created), 0);
    EXPECT_FALSE(CloseHandle(search) && FindClose(search)); // one of them does not know it
    FindClose(FindFirstFileA("d?r", &data));
    EXPECT_STREQ(data.cFileName, "dir");
    EXPECT_EQ(data.dwFileAttributes, 0x10u);
    EXPECT_TRUE(data.nFileSizeLow == 0 && data.nFileSizeHigh == 0);
    EXPECT_EQ(errorOf(FindNextFileA(INVALID_HANDLE_VALUE, &data)), 6u);
}

TEST(PlatformFind, manyEntriesAreASnapshot) {
    CreateDirectoryA("many", nullptr);
    for (int n = 0; n < 3000; ++n) {
        nxFileMake(("many/a_rather_long_name_" + std::to_string(n)).c_str(), "");
    }
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA("many/a*", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    nxFileMake("many/a_new_one", "");
    std::string before;
    int qty = 0;
    do {
        EXPECT_LT(before, data.cFileName);
        before = data.cFileName;
        ++qty;
    } while (FindNextFileA(search, &data));
    EXPECT_EQ(qty, 3000);
    FindClose(search);
}

} // namespace
