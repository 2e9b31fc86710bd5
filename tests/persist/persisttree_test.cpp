// Directory trees through the streams: round trips, and files damaged in every way.
#include <filesystem>
#include <memory>
#include <sstream>

#include "general/error/errornum.h"
#include "general/finfo/dirinfo.h"
#include "general/persist/persist.h"
#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

constexpr int binary = std::ios::binary;

void quiet(void*, NX_PersistTextLoad&, int, long) {}

template <class T>
std::string saved(T const& value) {
    {
        NX_PersistTextSave save("tree.sav", binary, 0);
        save << value;
    }
    return nxFileContent("tree.sav");
}

// Loads a T from a text with everything checked and shows it; the error's number.
template <class T>
int loaded(std::string const& text, std::string* shown = nullptr, T* keep = nullptr) {
    std::filesystem::remove("tree.lod"); // a new file is made faster than an old one overwritten
    nxFileMake("tree.lod", text);
    NX_PersistTextLoad load(NX_StringA("tree.lod"), binary, 0, quiet, nullptr);
    T own;
    T& value = keep != nullptr ? *keep : own;
    load >> value;
    std::ostringstream os;
    os << value;
    if (shown != nullptr)
        *shown = os.str();
    return load.errorNum();
}

NX_DirInfo treeMade() {
    for (char const* dir : {"top/one/deep", "top/two", "top/three"})
        std::filesystem::create_directories(dir);
    for (char const* file : {"top/a", "top/bb.txt", "top/one/c", "top/one/deep/d", "top/two/e"})
        nxFileMake(file, file);
    return NX_DirInfo("top/", NX_DirInfo::nameCompare, NX_StringVecA(), NX_FileFindNoDir, nullptr, ageWrite,
                      nullptr);
}

void expectOwnChildren(NX_DirInfo const& dir) {
    for (unsigned int n = 0; n < dir.fileColl().itemQty(); ++n)
        ASSERT_EQ(dir.fileColl()[n].dirP(), &dir);
    for (unsigned int n = 0; n < dir.subColl().itemQty(); ++n) {
        ASSERT_EQ(dir.subColl()[n].dirP(), &dir);
        expectOwnChildren(dir.subColl()[n]);
    }
}

// A directory's text: name, no parent, time, size, type, then the lists.
std::string dirText(std::string const& parent, std::string const& lists) {
    return "\nD\nD1 d \n" + parent + " \nD 1998/7/4 9:5:2.0 1 2" + lists;
}

} // namespace

TEST(PersistTree, RoundTrip) {
    NX_DirInfo const dir(treeMade());
    std::string const text = saved(dir);
    std::ostringstream expected;
    expected << dir;
    std::string shown;
    NX_DirInfo back;
    EXPECT_EQ(loaded(text, &shown, &back), 0);
    EXPECT_EQ(shown, expected.str());
    expectOwnChildren(back);
    EXPECT_EQ(saved(back), text);
    EXPECT_EQ(loaded(text, &shown, &back), 0); // into a record that holds a tree already
    EXPECT_EQ(saved(NX_DirInfo(back)), text);

    // What follows lists that were referred to only.
    NX_FileInfoVec const none;
    NX_StringA const name("a text as long as what is left of the file");
    {
        NX_PersistTextSave save("tree.lod", binary, 0);
        save << none << NX_FileInfoVec(none) << name;
    }
    NX_FileInfoVec lists[2];
    NX_StringA nameBack;
    NX_PersistTextLoad rest(NX_StringA("tree.lod"), binary, 0, quiet, nullptr);
    rest >> lists[0] >> lists[1] >> nameBack;
    EXPECT_EQ(rest.errorNum(), 0);
    EXPECT_STREQ(nameBack.dataPConst(), name.dataPConst());

    {
        NX_PersistTextSave save("tree.lod", binary, 0);
        save << NX_DirInfoVec() << dir;
    }
    NX_DirInfoVec noDirs; // the empty lists of every class share one block
    NX_PersistTextLoad both(NX_StringA("tree.lod"), binary, 0, quiet, nullptr);
    both >> noDirs >> back;
    EXPECT_EQ(both.errorNum(), 0);

    // A list alone, whose records' directory is made by loading and holds the same list.
    NX_FileInfoVec const files(dir.fileColl());
    nxFileMake("tree.lod", saved(files));
    NX_PersistTextLoad load("tree.lod", binary, 0);
    NX_FileInfoVec filesBack;
    load >> filesBack;
    ASSERT_EQ(filesBack.itemQty(), 2u);
    std::unique_ptr<NX_DirInfo const> const parent(std::as_const(filesBack)[1].dirP());
    EXPECT_EQ(&parent->fileColl()[0], &std::as_const(filesBack)[0]);
    EXPECT_EQ(parent->subColl().itemQty(), 3u);
}

TEST(PersistTree, NoDamageGoesAstray) {
    std::string const text = saved(treeMade());
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_NE(loaded<NX_DirInfo>(text.substr(0, length)), 0) << length;
    int refused = 0;
    std::string const changes = std::string("09DP( \n;-x\xFF") + '\0';
    for (std::size_t at = 0; at < text.size(); ++at)
        for (char const change : changes) {
            std::string damaged = text;
            damaged[at] = change;
            refused += loaded<NX_DirInfo>(damaged) != 0; // must come back, whatever it makes of it
        }
    EXPECT_GT(refused, 0);
}

TEST(PersistTree, HostileTexts) {
    std::string const empty = "\nD\nD0()";
    std::string deep = "S0";
    for (int n = 0; n < 5000; ++n)
        deep += dirText("P" + std::to_string(n == 0 ? 0 : n * 7 - 6), empty + "\nD\nD1( ");
    std::pair<char const*, std::string> const table[] = {
        {"count past the file", "S0\nD\nD4000000000 d"},
        {"count that wraps", "S0\nD\nD4294967296 d"},
        {"list past the file", "S0" + dirText("P0", "\nD\nD60( " + std::string(200, ' '))},
        {"negative count", "S0\nD\nD-1 d"},
        {"block of another type", "S0" + dirText("P0", "\nD\nP2")},
        {"object as a block", "S0" + dirText("P0", "\nD\nP1")},
        {"loader as a block", "S0" + dirText("P0", "\nD\nP0")},
        {"its own parent", "S0" + dirText("P1", empty + "\nP0")},
        {"time as parent", "S0\nD\nD1 d \nD 1998/7/4 9:5:2.0"},
        {"object where one is held", "S0\nP0"},
        {"list that holds its own directory",
         "S0" + dirText("P0", empty + "\nD\nD1( " + dirText("P1", "\nP4\nP7"))},
        {"list referred to from inside",
         "S0" + dirText("P0", empty + "\nD\nD1( " + dirText("P1", "\nD\nP5\nD\nP7") + ")")},
        {"unlimited depth", deep}};
    for (auto const& [what, text] : table)
        EXPECT_EQ(loaded<NX_DirInfo>(text), errorNumPersistText) << what;
    // What one list still expects is not there for the lists in its records.
    std::string nested = "S0" + dirText("P0", empty + "\nD\nD40( " + dirText("P1", empty + "\nD\nD40( "));
    std::size_t const second = nested.rfind('(');
    nxFileMake("tree.lod", nested.append(300, ' '));
    {
        NX_PersistTextLoad load(NX_StringA("tree.lod"), binary, 0, quiet, nullptr);
        NX_DirInfo dir;
        load >> dir;
        EXPECT_EQ(load.errorPos(), static_cast<long>(second));
    }
    EXPECT_EQ(loaded<NX_DirInfo>("S0" + dirText("P0", empty + "\nP0")),
              0); // the texts are right but for their fault
}

TEST(PersistTree, MoreThanTheBuffersHold) {
    std::string text = "S0\nD\nD50000(";
    for (unsigned int n = 0; n < 50000; ++n)
        text += " \nD\nD1 f \nP0 \nD 1998/7/4 9:5:2.0 1 1";
    text += ')';
    NX_FileInfoVec coll;
    EXPECT_EQ(loaded(text, nullptr, &coll), 0);
    EXPECT_EQ(saved(coll), text);
}
