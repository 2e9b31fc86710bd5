// tests/finfo/stringfile_test.cpp - what the string asks the file system: kinds of names, full paths,
// finding.
#include "general/error/errorman.h"
#include "general/finfo/env.h"
#include "general/finfo/fileinfo.h"
#include "general/platform/platform.h"
#include "general/text/namewalk.h"
#include "tests/support/support.h"

namespace {

void dirMake(std::string const& name, std::initializer_list<char const*> files) {
    EXPECT_TRUE(CreateDirectoryA(name.c_str(), nullptr));
    for (char const* file : files)
        nxFileMake((name + "/" + file).c_str(), file);
}

NX_StringA fullOf(char const* name) {
    NX_StringA full;
    EXPECT_EQ(0, full.nameFull(name));
    return full;
}

// Sets the write time of a file to `days` after a fixed day.
void ageSet(char const* name, unsigned int days) {
    HANDLE const file = CreateFileA(name, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    FILETIME time;
    ASSERT_TRUE(DosDateTimeToFileTime(static_cast<WORD>((10u << 9) | (1u << 5) | days), 0, &time));
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    CloseHandle(file);
}

TEST(StringFile, kindsOfNames) {
    dirMake("kinds", {"file.x"});
    std::tuple<NX_FileNameType, std::vector<char const*>> const table[] = {
        {NX_FileNameEmpty, {""}},
        {NX_FileNameMissing, {"kinds/none", "none/file.x", "kinds/file.x/"}},
        {NX_FileNameFile, {"kinds/file.x", ".\\kinds\\file.x"}},
        {NX_FileNameDevice, {"C:", "nul"}},
        {NX_FileNameDir, {"kinds", "kinds/", "kinds\\", "."}},
        {NX_FileNameWild, {"*.x", "kinds/?ile.x"}}};
    NxErrorOk();
    for (auto const& [type, names] : table)
        for (char const* name : names) {
            NX_StringA s(name);
            EXPECT_EQ((NXS_Results{s.nameType(), s.nameFind(), s.nameIsDir(0)}),
                      (NXS_Results{type, type == NX_FileNameFile, type == NX_FileNameDir}))
                << name;
            EXPECT_STREQ(name, s.dataPConst());
        }
    EXPECT_TRUE(NxErrorIsOK());
}

TEST(StringFile, fullPaths) {
    NX_StringA s = fullOf(".");
    EXPECT_EQ(1, s.nameIsDir(1));
    EXPECT_TRUE(s.nameIsAbs() && s.nameIsDir());
    EXPECT_STREQ((s + "a.x").dataPConst(), fullOf("sub/..\\a.x").dataPConst());
    s += "b";
    EXPECT_EQ(0, s.nameFull(s.dataPConst() + s.nameBodyExtOff())); // of a part of itself
    EXPECT_STREQ(fullOf("b").dataPConst(), s.dataPConst());
    for (int length : {0, 40000}) {
        NX_StringA refused('x', static_cast<unsigned int>(length));
        EXPECT_EQ(-1, refused.nameFull());
        EXPECT_EQ(length ? errorNumSystem : errorNumFileNotFound, NxErrorNum());
        EXPECT_EQ(static_cast<unsigned int>(length), refused.strLen());
    }
    NxErrorOk();
}

TEST(StringFile, searchOrder) {
    dirMake("first", {"both.x", "one.x"});
    dirMake("second", {"both.x", "two.x"});
    dirMake("third", {"both.x", "three.x"});
    NX_EnvString const path("PATH");
    std::string const separator(1, nxNameListSep);
    SetEnvironmentVariableA("PATH", (path.dataPConst() + separator + "\"third\"").c_str());
    struct {
        char const *name, *dir, *found;
        int here, dirToo;
    } const table[] = {{"both.x", "first", "first/both.x", 0, 0},
                       {"two.x", "first", nullptr, 0, 0},
                       {"two.x", "first|second", "second/two.x", 0, 0},
                       {"both.x", "first|second", "first/both.x", 0, 0},
                       {"three.x", "", "third/three.x", 0, 0},
                       {"first/one.x", "second", nullptr, 0, 0},
                       {"first/one.x", "second", "first/one.x", 1, 0},
                       {"third", ".", nullptr, 1, 0},
                       {"third", ".", "third", 0, 1},
                       {"", "first", nullptr, 1, 1}};
    for (auto const& t : table) {
        NX_StringA dir(t.dir);
        char const pairs[] = {'|', nxNameListSep, 0};
        dir.strXlate(pairs);
        NX_StringA s(t.name);
        EXPECT_EQ(t.found != nullptr, s.nameFind(dir, t.here, t.dirToo) == 1) << t.name << " in " << t.dir;
        EXPECT_STREQ(t.found != nullptr ? fullOf(t.found).dataPConst() : t.name, s.dataPConst());
    }
    // A name that says where it is is looked for there only.
    NX_StringA absolute = fullOf("second/one.x");
    EXPECT_EQ(0, absolute.nameFind("first", 1));
    absolute = fullOf("first/one.x");
    EXPECT_EQ(1, absolute.nameFind("second", 0));
    SetEnvironmentVariableA("PATH", path.dataPConst());
}

TEST(StringFile, patterns) {
    dirMake("find", {"b.x", "a.x", "c.x", "d.y"});
    ageSet("find/a.x", 3);
    ageSet("find/b.x", 7);
    ageSet("find/c.x", 5);
    auto const sorted = [](NX_StringA& s, int withDir) {
        return s.nameFind(NX_FileInfo::nameCompare, NX_FileFindAll, ageWrite, withDir);
    };
    auto const newest = [](NX_StringA& s, int) { return s.nameFindNewest(NX_FileFindAll, ageWrite); };
    auto const first = [](NX_StringA& s, int type) {
        return s.nameFindFirst(static_cast<NX_FileFindType>(type));
    };
    struct {
        char const* pattern;
        int (*find)(NX_StringA&, int);
        int argument;
        char const* found; // the pattern: nothing
    } const table[] = {
        {"find/?*.x", sorted, 1, "find/a.x"},    {"find\\*.x", sorted, 0, "a.x"},
        {"find/?.x", newest, 0, "find/b.x"},     {"find/?*.y", first, NX_FileFindAll, "find/d.y"},
        {"fin?", first, NX_FileFindDir, "find"}, {"find/?*.x", first, NX_FileFindDir, "find/?*.x"},
        {"none/?*", newest, 0, "none/?*"}};
    for (auto const& [pattern, find, argument, found] : table) {
        NX_StringA s(pattern);
        EXPECT_EQ(std::string(pattern) != found, find(s, argument) == 1) << pattern;
        EXPECT_STREQ(found, s.dataPConst());
    }
}

} // namespace
