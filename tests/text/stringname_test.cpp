// tests/text/stringname_test.cpp - file names as text: parts, replacing, shortening, counting up.
#include "general/text/dbcs.h"
#include "general/text/namewalk.h"
#include "general/text/stringa.h"
#include "tests/support/support.h"

namespace {

std::string text(NX_StringA const& s) {
    return s.dataPConst();
}

std::string text(NX_CharASub const& view) {
    return std::string(view.dataPConst() != nullptr ? view.dataPConst() : "", view.itemQty());
}

// Directory, body, extension, last node and nameOfDir with bars between them, the number of nodes, then `a`
// for an absolute name and `d` for one that says it is a directory's.
std::string parts(char const* name) {
    NX_StringA const s(name);
    EXPECT_EQ(text(s.nameDirBody()), text(s.nameDir()) + text(s.nameBody()));
    EXPECT_EQ(text(s).substr(s.nameExtOff()), text(s.nameBodyExt()).substr(s.nameBody().itemQty()));
    return text(s.nameDir()) + '|' + text(s.nameBody()) + '|' + text(s.nameExt()) + '|' +
           text(s.nameNodeLast()) + '|' + text(s.nameOfDir()) + '|' +
           std::to_string(s.nameNodeVec().itemQty()) + (s.nameIsAbs() ? "a" : "") +
           (s.nameIsDir() ? "d" : "");
}

TEST(StringName, parts) {
    std::tuple<char const*, char const*> const table[] = {
        {"", "|||||0"},
        {"file", "|file||file||1"},
        {"a.b.c", "|a.b|c|a.b.c||1"},
        {".rc", "||rc|.rc||1"},
        {".", "|.||.||1"},
        {"d/..", "d/|..||..|d|2"},
        {"d.x/file", "d.x/|file||file|d.x|2"},
        {"a/b\\c/", "a/b\\c/|||c|a/b\\c|3d"},
        {"a//b\\\\c.d", "a//b\\\\|c|d|c.d|a//b|3"},
        {"/", "/||||/|0ad"},
        {"\\f.x", "\\|f|x|f.x|\\|1a"},
        {"C:", "C:||||C:|0d"},
        {"C:\\", "C:\\||||C:\\|0ad"},
        {"c:/d/f.x", "c:/d/|f|x|f.x|c:/d|2a"},
        {"1:f", "|1:f||1:f||1"},
        {"\\\\host\\share\\f", "\\\\host\\share\\|f||f|\\\\host\\share|3a"},
        // Double-byte characters that end in the byte of a backslash.
        {"\x83\x5C", "|\x83\x5C||\x83\x5C||1"},
        {"\x83\x5C\\\x90\x5C.\x81\x5C", "\x83\x5C\\|\x90\x5C|\x81\x5C|\x90\x5C.\x81\x5C|\x83\x5C|2"},
        {"a\\\x83\x5C\\", "a\\\x83\x5C\\|||\x83\x5C|a\\\x83\x5C|2d"}};
    NxDbcsIsLead(0x81, 0x9F, 1);
    for (auto const& [name, expected] : table)
        EXPECT_EQ(expected, parts(name)) << name;
    EXPECT_EQ("\x83\x5C" + std::string(1, nxNameSep) + "x",
              text(NX_StringA("\x83\x5C", "x", 1, NX_FileTypeFile)));
    NxDbcsIsLead(0x81, 0x9F, 0);
}

#define WITH(expression) [](NX_StringA& s) { (void)(expression); }

TEST(StringName, changing) {
    using Step = void (*)(NX_StringA&);
    std::tuple<char const*, Step, char const*> const table[] = {
        {"d\\f.x", WITH(s.nameExt("yy", 1)), "d\\f.yy"},
        {"d\\f.x", WITH(s.nameExt(".yy", 1)), "d\\f.yy"},
        {"d.e\\f", WITH(s.nameExt(NX_StringA("y"), 1)), "d.e\\f.y"},
        {"d\\f.x", WITH(s.nameExt(s.nameBody(), 1)), "d\\f.f"},
        {"d\\f.x", WITH(s.nameBody("longer", 1)), "d\\longer.x"},
        {"d\\f.x", WITH(s.nameBodyExt("ghost", 1, 1)), "d\\g"},
        {"d\\f.x", WITH(s.nameDir("e", 1)), "e\\f.x"},
        {"d\\f.x", WITH(s.nameDir("C:", 1)), "C:f.x"},
        {"C:/f.x", WITH(s.nameDir(NX_StringA("q/d")(2), 1)), "d/f.x"},
        {"/a/b/c/f", WITH(s.nameDir(2u, NX_StringA("z"), 1)), "/a/b/z/f"},
        {"/a/b/c/f", WITH(s.nameDir(1u, "", 1)), "/a/f"},
        {"/a/b/c/f", WITH(s.nameDir(9u, "zz", 1u, 1)), "/a/b/c/z/f"},
        {"a/b", WITH(s.nameDirSep().nameDirSep()), "a/b/"},
        {"C:", WITH(s.nameDirSep()), "C:"},
        {"a\\b", WITH(s.nameDirSep(NX_FileNameDir)), "a\\b\\"},
        {"a\\b", WITH(s = NX_StringA(s, "c", 1, NX_FileTypeDir)), "a\\b\\c\\"},
        {"x\\abxcd", WITH(s.nameWildMergeBodyExt("*X", 1)), "x\\abX"},
        {"C:\\alpha\\beta\\gamma\\f.x", WITH(s.nameAbbreviate(23)), "C:\\alpha\\beta\\gamma\\f.x"},
        {"C:\\alpha\\beta\\gamma\\f.x", WITH(s.nameAbbreviate(22)), "C:\\alpha\\...\\gamma\\f.x"},
        {"C:\\alpha\\beta\\gamma\\f.x", WITH(s.nameAbbreviate(3)), "C:\\...\\f.x"},
        {"one/two/three/four/five/six", WITH(s.nameAbbreviate(19)), "one/.../five/six"},
        {"FILE009", [](NX_StringA& s) { EXPECT_EQ(1, s.nameInc()); }, "FILE010"},
        {"none", [](NX_StringA& s) { EXPECT_EQ(-1, s.nameInc()); }, "none"}};
    for (auto const& [name, step, expected] : table) {
        NX_StringA s(name);
        step(s);
        EXPECT_EQ(expected, text(s)) << name;
    }
}

} // namespace
