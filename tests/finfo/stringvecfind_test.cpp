// tests/finfo/stringvecfind_test.cpp - string vectors filled by a search of the file system.
#include <filesystem>
#include <string>

#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

int NX_FASTCALL byName(NX_StringA const* a, NX_StringA const* b) {
    return a->strCompare(*b, NX_CompareExact);
}

std::string listOf(NX_StringVecA strings) {
    strings.dataSort(byName);
    std::string list;
    for (unsigned int n = 0; n < strings.itemQty(); ++n)
        list += std::string(strings[n].dataPConst()) + " ";
    return list;
}

TEST(StringVecFind, NamesOfDirectoriesAndPatterns) {
    std::filesystem::create_directories("listed/sub");
    for (char const* name : {"a.txt", "b.txt", "c.bak", ".hidden", "sub/d.txt"})
        nxFileMake((std::string("listed/") + name).c_str(), "x");
    struct {
        char const* name;
        int type;
        char const *text, *leaveOut; // may be null
        int withDir;
        char const* list;
    } const rows[] = {
        {"listed", 0, nullptr, nullptr, 0, "a.txt b.txt c.bak sub "},
        {"listed", 0, "", nullptr, 1, "listed/a.txt listed/b.txt listed/c.bak listed/sub "},
        {"listed/", 0x200, "*.txt", nullptr, 1, "listed/a.txt listed/b.txt "},
        {"listed/?*.txt", 0, "*.bak", nullptr, 1, "listed/a.txt listed/b.txt "}, // a pattern needs no other
        {"listed/?*", 0x202, nullptr, nullptr, 0, "sub "},                       // wanted outweighs refused
        {"listed/?*", 0x200, nullptr, "B*", 0, "a.txt c.bak "},
        {"listed/a.txt", 0, nullptr, nullptr, 0, ""}, // a file, not a search
        {"missing/?*", 0, nullptr, nullptr, 1, ""},
        {"", 0, nullptr, nullptr, 0, ""}};
    for (auto const& row : rows) {
        auto const type = static_cast<NX_FileFindType>(row.type);
        NX_StringVecA leaveOut;
        if (row.leaveOut)
            leaveOut += row.leaveOut;
        std::string list = listOf({row.name, leaveOut, type, row.text, row.withDir});
        for (char& ch : list) // a directory is joined with the system's own separator
            ch = ch == '\\' ? '/' : ch;
        EXPECT_EQ(row.list, list) << row.name << ' ' << row.type;
    }
    EXPECT_EQ(3u, NX_StringVecA("listed/?*", NX_FileFindNoDir, nullptr, 0).itemQty());
}

} // namespace
