// Full names; the same on every target, separators aside.
#include <algorithm>

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
    std::string const up = here.substr(0, here.size() - 2), drive = here[1] == ':' ? here.substr(0, 2) : "";
    // What it becomes, in front of it the current directory ('.'), the one above ('^') or the drive ('|').
    struct {
        char base;
        char const* out;
        std::vector<char const*> in;
    } const rows[] = {{'.', "/a", {"a", "./a", "d\\..\\a", "no\\..\\a", "a.", "a...", "a. ."}},
                      {'.', "/d/a", {"d//a", "d\\/\\a", "d.\\a"}},
                      {'.', "", {".", "d\\.."}},
                      {'.', "/", {"d\\..\\", "...", ". "}},
                      {'.', "/d", {"d\\."}},
                      {'.', "/a/", {"a\\"}},
                      {'.', "/ a", {" a"}},
                      {'.', "/d./a", {"d..\\a"}},
                      {'.', "/d /a", {"d \\a"}},
                      {'.', "/a*<|", {"a*<|"}},
                      {'^', "/x", {"..\\x"}},
                      {'|', "/a", {"\\a", "\\..\\a"}},
                      {'|', "/", {"\\"}},
                      {0, "c:/b", {"c:\\a\\..\\b"}},
                      {0, "//./nul", {"nul", "d\\nul"}},
                      {0, "//./NUL", {"NUL.txt"}},
                      {0, "//./x", {"\\\\.\\x", "//./a\\..\\x", "\\\\.\\..\\x."}}};
    for (auto const& row : rows) {
        std::string const base = row.base == '.' ? here : row.base == '^' ? up : row.base == '|' ? drive : "";
        std::string const out = slashed(base + row.out);
        bool const isNull = out == "//./nul" || out == "//./NUL";
        std::string const filePart = isNull ? "" : out.substr(out.rfind('/') + 1);
        DWORD const size = static_cast<DWORD>(out.size());
        for (char const* in : row.in) {
            char buffer[1000] = "xx";
            char* part = buffer + 1;
            EXPECT_EQ(GetFullPathNameA(in, size, buffer, &part), size + 1) << in;
            EXPECT_TRUE(buffer == std::string("xx") && part == buffer + 1) << in;
            EXPECT_TRUE(GetFullPathNameA(in, size + 1, buffer, &part) == size && slashed(buffer) == out)
                << in;
            EXPECT_EQ(part == nullptr ? "" : std::string(part), filePart) << in;
            EXPECT_NE(filePart == "", part != nullptr) << in;
            EXPECT_EQ(GetFullPathNameA(in, 0, nullptr, nullptr), size + 1) << in;
        }
    }
    for (char const* nothing : {"", "   "})
        EXPECT_EQ(GetFullPathNameA(nothing, sizeof work, work, nullptr), 0u);
    std::string const tooLong(261, 'a');
    EXPECT_TRUE(GetFullPathNameA(tooLong.c_str(), sizeof work, work, nullptr) == 0 && GetLastError() == 206);
    EXPECT_EQ(GetCurrentDirectoryA(3, work), here.size() + 1);
    EXPECT_TRUE(SetCurrentDirectoryA(before));
}

} // namespace
