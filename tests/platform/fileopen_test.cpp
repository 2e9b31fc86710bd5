// Opening files: share modes, dispositions, names; the same on every target.
#include "tests/platform/files.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

constexpr DWORD rw = GENERIC_READ | GENERIC_WRITE;
constexpr DWORD accesses[] = {0, GENERIC_READ, GENERIC_WRITE, rw};

std::string nameOf(unsigned int access, DWORD share) {
    return "share" + std::to_string(access * 8 + share);
}

// Opens each file in each way beside an opener with the access and share mode of the file's name. Counts what
// the rule does not allow or does not refuse with 32.
int pairsWrong(int, char**) {
    int wrong = 0;
    for (unsigned int pair = 0; pair < 1024; ++pair) {
        unsigned int const a1 = pair >> 8, a2 = pair >> 3 & 3;
        DWORD const s1 = pair >> 5 & 7, s2 = pair & 7;
        bool const expected = a1 == 0 || a2 == 0 || ((a2 & ~s1) == 0 && (a1 & ~s2) == 0);
        HANDLE const second = fileOpen(nameOf(a1, s1).c_str(), accesses[a2], s2);
        DWORD const error = GetLastError();
        bool const opened = second != INVALID_HANDLE_VALUE;
        wrong += opened != expected || error != (expected ? 0u : 32u);
        if (opened)
            CloseHandle(second);
    }
    return wrong > 250 ? 250 : wrong;
}

NXS_ChildEntry const pairsEntry("share-pairs", pairsWrong);

TEST(PlatformOpen, shareModesOfAllPairs) {
    HANDLE holders[32];
    for (unsigned int n = 0; n < 32; ++n) {
        nxFileMake(nameOf(n >> 3, n & 7).c_str(), "x");
        holders[n] = fileOpen(nameOf(n >> 3, n & 7).c_str(), accesses[n >> 3], n & 7);
        ASSERT_NE(holders[n], INVALID_HANDLE_VALUE);
    }
    EXPECT_EQ(pairsWrong(0, nullptr), 0);
    EXPECT_EQ(nxRunSelf("share-pairs"), 0);
    for (unsigned int n = 0; n < 32; ++n) {
        EXPECT_TRUE(CloseHandle(holders[n])); // and the share with it
        EXPECT_EQ(fileOpenError(nameOf(n >> 3, n & 7).c_str(), rw, 0), 0u);
    }
}

int holdChild(int, char** argv) {
    HANDLE const held = fileOpen(argv[0], rw, 0);
    nxFileMake("held", held != INVALID_HANDLE_VALUE ? "yes" : "no");
    Sleep(60000);
    return 0;
}
NXS_ChildEntry const holdEntry("hold-file", holdChild);

TEST(PlatformOpen, killedProcessReleasesItsShare) {
    nxFileMake("mine", "abc");
    NXS_Child child("hold-file", {"mine"});
    ASSERT_TRUE(nxFileAwait("held"));
    EXPECT_TRUE(fileOpenError("mine", GENERIC_READ, 7) == 32 && errorOf(DeleteFileA("mine")) == 32);
    child.kill();
    for (int tries = 0; tries < 500 && fileOpenError("mine", rw, 0) != 0; ++tries)
        Sleep(10);
    EXPECT_EQ(fileOpenError("mine", rw, 0), 0u);
    EXPECT_EQ(nxFileContent("mine"), "abc");
    DeleteFileA("held");
}

TEST(PlatformOpen, refusedOpenLeavesTheContents) {
    nxFileMake("kept", "abc");
    NXS_Opened const holder("kept", GENERIC_READ, FILE_SHARE_READ);
    for (DWORD const creation : {CREATE_ALWAYS, TRUNCATE_EXISTING})
        EXPECT_EQ(fileOpenError("kept", GENERIC_WRITE, 7, creation), 32u);
    EXPECT_EQ(fileOpenError("kept", GENERIC_READ, 7, CREATE_NEW), 80u);
    EXPECT_EQ(nxFileContent("kept"), "abc");
}

TEST(PlatformOpen, dispositions) {
    // the way, and the last error
    std::tuple<DWORD, DWORD, DWORD, DWORD, bool> const rows[] = {
        {CREATE_NEW, 0, 80, 80, false},  {CREATE_ALWAYS, 0, 183, 5, true},   {OPEN_EXISTING, 2, 0, 5, false},
        {OPEN_ALWAYS, 0, 183, 5, false}, {TRUNCATE_EXISTING, 2, 0, 5, true}, {0, 87, 87, 87, false},
        {6, 87, 87, 87, false}};
    CreateDirectoryA("dir", nullptr);
    for (auto const& [creation, missing, file, directory, empties] : rows) {
        auto const attempt = [&](char const* name) { return fileOpenError(name, rw, 7, creation); };
        DeleteFileA("fresh");
        nxFileMake("old", "abc");
        bool const valid = missing != 87;
        EXPECT_EQ(attempt("fresh"), missing) << creation;
        EXPECT_EQ(GetFileAttributesA("fresh"), missing == 0 ? 0x20u : INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(attempt("old"), file) << creation;
        EXPECT_EQ(nxFileContent("old"), empties ? "" : "abc") << creation;
        EXPECT_EQ(attempt("dir"), directory) << creation;
        EXPECT_EQ(attempt("nodir/x"), valid ? 3u : 87u) << creation;
        EXPECT_EQ(attempt("old/x"), valid ? 3u : 87u) << creation;
    }
}

TEST(PlatformOpen, names) {
    CreateDirectoryA("d", nullptr);
    nxFileMake("d/g", "g");
    nxFileMake("f.txt", "f");
    std::string const tooLong = std::string(259, '/') + "aa";
    std::tuple<DWORD, std::vector<char const*>> const rows[] = {
        {0, {".\\f.txt", "./f.txt", "d\\g", "d//g", "d\\.\\g", "d\\..\\f.txt", "no\\..\\f.txt"}},
        {0, {"f.txt\\..\\f.txt", "f.txt. .", "d.\\g", "nul", "d\\NUL.txt", "nul:"}},
        {2, {"none", "none\\", " f.txt"}},
        {3, {"", "no\\x", "f.txt\\x", "d \\g"}},
        {5, {".", "..", "d"}},
        {123, {"f.txt\\", "*", "a?", "a<", "a|b", "a\"", "a\x1f"}},
        {206, {tooLong.c_str()}}};
    for (auto const& [error, group] : rows)
        for (char const* name : group)
            EXPECT_EQ(fileOpenError(name, GENERIC_READ, 7), error) << name;
    EXPECT_EQ(fileOpenError("made\\", GENERIC_WRITE, 7, CREATE_NEW), 123u);
    EXPECT_EQ(GetFileAttributesA("d\\"), 0x10u);
    EXPECT_TRUE(GetFileAttributesA("no\\x") == INVALID_FILE_ATTRIBUTES && GetLastError() == 3);
}

TEST(PlatformOpen, deleteOnCloseAndReadOnlyCreation) {
    {
        NXS_Opened const gone("gone", GENERIC_WRITE, 7u, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
        NXS_Opened const sealed("sealed", GENERIC_WRITE, 7u, CREATE_NEW, FILE_ATTRIBUTE_READONLY);
        DWORD done = 0;
        EXPECT_TRUE(GetFileAttributesA("gone") == 0x20 && WriteFile(sealed, "abc", 3, &done, nullptr));
    }
    EXPECT_EQ(GetFileAttributesA("gone"), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(GetFileAttributesA("sealed") == 0x21 && nxFileContent("sealed") == "abc");
    EXPECT_TRUE(SetFileAttributesA("sealed", FILE_ATTRIBUTE_NORMAL) && DeleteFileA("sealed"));
}

} // namespace
