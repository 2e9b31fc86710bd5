// Full names; the same on every target, separators aside.
#include <algorithm>
#include <string>

#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

std::string slashed(std::string text) {
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

TEST(PlatformPath, fullNames) {
    CreateDirectoryA("w", nullptr);
    char before[1000];
    GetCurrentDirectoryA(sizeof before, before);
    ASSERT_TRUE(SetCurrentDirectoryA("w"));
    char work[1000];
    std::string const here(work, GetCurrentDirectoryA(sizeof work, work));
    std::string const up = here.substr(0, here.size() - 2);
    std::string const drive = here[1] == ':' ? here.substr(0, 2) : "";
    struct {
        char const* in;
        char base; // what stands before `out`: current directory, the one above it, the drive or nothing
        char const* out;
        char const* filePart;
    } const rows[] = {{"a", '.', "/a", "a"},
                      {"./a", '.', "/a", "a"},
                      {"d\\..\\a", '.', "/a", "a"},
                      {"no\\..\\a", '.', "/a", "a"},
                      {"d//a", '.', "/d/a", "a"},
                      {"d\\/\\a", '.', "/d/a", "a"},
                      {".", '.', "", "w"},
                      {"..\\x", '^', "/x", "x"},
                      {"d\\.", '.', "/d", "d"},
                      {"d\\..", '.', "", "w"},
                      {"d\\..\\", '.', "/", nullptr},
                      {"a\\", '.', "/a/", nullptr},
                      {"a.", '.', "/a", "a"},
                      {"a...", '.', "/a", "a"},
                      {"a. .", '.', "/a", "a"},
                      {" a", '.', "/ a", " a"},
                      {"...", '.', "/", nullptr},
                      {". ", '.', "/", nullptr},
                      {"d.\\a", '.', "/d/a", "a"},
                      {"d..\\a", '.', "/d./a", "a"},
                      {"d \\a", '.', "/d /a", "a"},
                      {"\\a", '|', "/a", "a"},
                      {"\\..\\a", '|', "/a", "a"},
                      {"\\", '|', "/", nullptr},
                      {"c:\\a\\..\\b", 0, "c:/b", "b"},
                      {"a*<|", '.', "/a*<|", "a*<|"},
                      {"nul", 0, "//./nul", nullptr},
                      {"d\\nul", 0, "//./nul", nullptr},
                      {"NUL.txt", 0, "//./NUL", nullptr}};
    for (auto const& row : rows) {
        std::string const base = row.base == '.' ? here : row.base == '^' ? up : row.base == '|' ? drive : "";
        std::string const out = slashed(base + row.out);
        char buffer[1000] = "xx";
        char* part = buffer + 1;
        EXPECT_EQ(GetFullPathNameA(row.in, static_cast<DWORD>(out.size()), buffer, &part), out.size() + 1)
            << row.in;
        EXPECT_STREQ(buffer, "xx") << row.in;
        EXPECT_EQ(part, buffer + 1) << row.in;
        EXPECT_EQ(GetFullPathNameA(row.in, static_cast<DWORD>(out.size() + 1), buffer, &part), out.size())
            << row.in;
        EXPECT_EQ(slashed(buffer), out) << row.in;
        EXPECT_EQ(part == nullptr ? "-" : std::string(part), row.filePart == nullptr ? "-" : row.filePart)
            << row.in;
        EXPECT_EQ(GetFullPathNameA(row.in, 0, nullptr, nullptr), out.size() + 1) << row.in;
    }
    for (char const* nothing : {"", "   "}) {
        EXPECT_EQ(GetFullPathNameA(nothing, sizeof work, work, nullptr), 0u);
    }
    std::string const tooLong(261, 'a');
    SetLastError(0);
    EXPECT_EQ(GetFullPathNameA(tooLong.c_str(), sizeof work, work, nullptr), 0u);
    EXPECT_EQ(GetLastError(), 206u);
    EXPECT_EQ(GetCurrentDirectoryA(3, work), here.size() + 1);
    EXPECT_TRUE(SetCurrentDirectoryA(before));
}

} // namespace
