// Copying, moving and deleting by name; the same on every target.
#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

// A scene for each row: files with their own names as contents, directories, and "open" held without
// deletion.
class PlatformMove : public testing::Test {
protected:
    void SetUp() override {
        CreateDirectoryA("scene", nullptr);
        SetCurrentDirectoryA("scene");
        for (char const* name : {"d", "d/sub", "e"})
            CreateDirectoryA(name, nullptr);
        for (char const* name : {"a", "b", "open", "d/x"})
            nxFileMake(name, *name == 'b' ? "longer than the others" : name);
        held_ = fileOpen("open", GENERIC_READ, FILE_SHARE_READ);
    }
    void TearDown() override {
        CloseHandle(held_);
        for (char const* name : {"a", "b", "c", "open", "d/x", "e/x", "d/new", "new/x"})
            DeleteFileA(name);
        for (char const* name : {"d/sub", "new/sub", "d", "e", "new"})
            RemoveDirectoryA(name);
        SetCurrentDirectoryA("..");
    }
    HANDLE held_ = nullptr;
};

struct Row {
    char const *from, *to;
    DWORD move, copy, copyNew; // 0 for success; `copyNew` with fail-if-exists
};

constexpr Row rows[] = {{"a", "c", 0, 0, 0},          {"none", "c", 2, 2, 2},     {"no/x", "c", 3, 3, 3},
                        {"a", "no/x", 3, 3, 3},       {"a", "b", 183, 0, 80},     {"a", "d", 183, 5, 80},
                        {"a", "./d/../a", 0, 32, 80}, {"d", "new", 0, 5, 5},      {"d", "e", 183, 5, 5},
                        {"d", "d/new", 87, 5, 5},     {"open", "c", 32, 0, 0},    {"a", "open", 183, 32, 80},
                        {"", "c", 3, 3, 3},           {"a*", "c", 123, 123, 123}, {"a\\", "c", 123, 123, 123},
                        {"a", "", 3, 3, 3},           {"a", "c?", 123, 123, 123}, {"none", "d", 2, 2, 2},
                        {"d/x", "e/x", 0, 0, 0},      {"d/sub", "new", 0, 5, 5}};

std::string content(char const* name) {
    return (GetFileAttributesA(name) & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "" : nxFileContent(name);
}

TEST_F(PlatformMove, copiesAndMoves) {
    for (Row const& row : rows) {
        for (char const* how : {"copy", "copy anew", "move"}) {
            SCOPED_TRACE(testing::Message() << how << ' ' << row.from << " to " << row.to);
            bool const move = *how == 'm', onlyNew = how[4] != 0;
            DWORD const expected = move ? row.move : onlyNew ? row.copyNew : row.copy;
            std::string const before = content(row.from), target = content(row.to);
            EXPECT_EQ(errorOf(move ? MoveFileA(row.from, row.to) : CopyFileA(row.from, row.to, onlyNew)),
                      expected);
            EXPECT_TRUE(move || content(row.from) == before);
            EXPECT_EQ(content(row.to), expected == 0 ? before : target);
            TearDown();
            SetUp();
        }
    }
    FILETIME const time = {0x12345678, 0x01D00000};
    EXPECT_TRUE(SetFileTime(NXS_Opened("a", GENERIC_WRITE), nullptr, nullptr, &time));
    EXPECT_TRUE(CopyFileA("a", "c", FALSE));
    WIN32_FIND_DATAA found;
    FindClose(FindFirstFileA("c", &found));
    EXPECT_EQ(CompareFileTime(&found.ftLastWriteTime, &time), 0);
    std::string big;
    for (unsigned int n = 0; n < 300000; ++n)
        big += std::to_string(n);
    nxFileMake("a", big);
    EXPECT_TRUE(CopyFileA("a", "c", FALSE) && nxFileContent("c") == big);
    EXPECT_TRUE(MoveFileA("d/sub/", "new/") && RemoveDirectoryA("new"));
    EXPECT_TRUE(MoveFileExA("c", "b", MOVEFILE_REPLACE_EXISTING));
    for (char const* name : {"open", "d"})
        EXPECT_EQ(errorOf(MoveFileExA("b", name, MOVEFILE_REPLACE_EXISTING)), 5u);
    EXPECT_EQ(nxFileContent("b"), big);
}

TEST_F(PlatformMove, deletesAndDirectories) {
    std::tuple<char const*, DWORD, DWORD, DWORD> const names[] = {
        {"none", 2, 2, 0},     {"no/x", 3, 3, 3},      {"d", 5, 145, 183},
        {"d/", 5, 145, 183},   {"open", 32, 267, 183}, {"", 3, 777, 777},
        {"a?", 123, 123, 123}, {"a\\", 123, 777, 777}, {"a", 0, 777, 777}};
    for (auto const& [name, erase, remove, make] : names) {
        EXPECT_EQ(errorOf(DeleteFileA(name)), erase) << name;
        if (remove != 777) {
            EXPECT_EQ(errorOf(RemoveDirectoryA(name)), remove) << name;
            EXPECT_EQ(errorOf(CreateDirectoryA(name, nullptr)), make) << name;
        }
    }
    EXPECT_TRUE(RemoveDirectoryA("none"));
    {
        NXS_Opened const file("b", GENERIC_READ, 7u);
        EXPECT_TRUE(DeleteFileA("b"));
        EXPECT_EQ(fileRead(file, 6), "longer"); // the contents live on for who has it open
    }
    EXPECT_EQ(GetFileAttributesA("b"), INVALID_FILE_ATTRIBUTES);
}

} // namespace
