// Searching directories; the same on every target. What Wine does otherwise stands in posix_file_test.cpp.
#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

// The names found, each followed by a blank; the error of the first call in brackets when there are none.
std::string found(char const* pattern) {
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA(pattern, &data);
    if (search == INVALID_HANDLE_VALUE)
        return "[" + std::to_string(GetLastError()) + "]";
    std::string names;
    do
        names += std::string(data.cFileName) + ' ';
    while (FindNextFileA(search, &data));
    EXPECT_EQ(GetLastError(), 18u);
    EXPECT_EQ(errorOf(FindNextFileA(search, &data)), 18u);
    EXPECT_TRUE(FindClose(search));
    return names;
}

TEST(PlatformFind, patternsAndOrder) {
    for (char const* name : {"s", "s/Sub", "s/empty"})
        CreateDirectoryA(name, nullptr);
    for (char const* name : {"s/b.txt", "s/A.TXT", "s/c", "s/_x", "s/ab.c.d"})
        nxFileMake(name, name);
    std::tuple<char const*, std::vector<char const*>> const rows[] = {
        {". .. A.TXT ab.c.d b.txt c empty Sub _x ", {"s\\*", "s\\*.*"}},
        {"A.TXT b.txt ", {"s\\*.txt", "s/?.TxT", "s\\*.txt "}},
        {"ab.c.d b.txt Sub ", {"s\\*b*"}},
        {"b.txt ", {"s/b.txt"}},
        {"c ", {"s/c.*", "s/../s/./c"}},
        {"s ", {"s"}},
        {". .. ", {"s/empty\\*"}},
        {"[2]", {"s/empty\\*.c", "s/none", "s/none*", "s/"}},
        {"[3]", {"no\\*", "no/x", ""}},
        {"[123]", {"s*/x"}}};
    for (auto const& [names, patterns] : rows)
        for (char const* pattern : patterns)
            EXPECT_EQ(found(pattern), names) << pattern;
}

TEST(PlatformFind, dataOfAnEntry) {
    nxFileMake("sized", std::string(1234, 'x'));
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA("s?zed", &data);
    EXPECT_STREQ(data.cFileName, "sized");
    EXPECT_TRUE(data.nFileSizeLow == 1234 && data.nFileSizeHigh == 0 && data.dwFileAttributes == 0x20);
    EXPECT_FALSE(CloseHandle(search) && FindClose(search)); // one of them does not know it
    EXPECT_EQ(errorOf(FindNextFileA(INVALID_HANDLE_VALUE, &data)), 6u);
}

TEST(PlatformFind, manyEntriesAreASnapshot) {
    CreateDirectoryA("many", nullptr);
    for (int n = 0; n < 3000; ++n)
        nxFileMake(("many/a_rather_long_name_" + std::to_string(n)).c_str(), "");
    WIN32_FIND_DATAA data;
    HANDLE const search = FindFirstFileA("many/a*", &data);
    nxFileMake("many/a_new_one", "");
    std::string before = data.cFileName;
    int qty = 1;
    for (; FindNextFileA(search, &data); before = data.cFileName, ++qty)
        EXPECT_LT(before, data.cFileName);
    EXPECT_TRUE(qty == 3000 && FindClose(search));
}

} // namespace
