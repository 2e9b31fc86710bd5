// Directory listings and trees: filters, patterns, sorting, and that children belong to the record that holds
// them.
#include "general/finfo/dirinfo.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

constexpr NX_FileFindType onlyFiles = NX_FileFindNoDir;

void treeMake() {
    for (char const* dir : {"tree/s1/deep", "tree/S2", "tree/.hidden"})
        std::filesystem::create_directories(dir);
    for (char const* name : {"b.dat", ".dot", "s1/c.txt", "S2/e.txt", ".hidden/f.txt"})
        nxFileMake((std::string("tree/") + name).c_str(), "x");
    for (char const* name : {"tree/a.txt", "tree/s1/deep/a.txt"})
        nxFileMake(name, std::string(120, 'a'));
}

template <class Coll>
std::string names(Coll const& coll) {
    std::string text;
    for (unsigned int n = 0; n < coll.itemQty(); ++n)
        text += (n == 0 ? "" : " ") + std::string(coll[n].dataPConst());
    return text;
}

// A directory is joined with the system's own separator.
std::string slashed(std::string text) {
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

// All names of a tree, each directory in brackets.
std::string outline(NX_DirInfo const& dir) {
    std::string text = "[" + names(dir.fileColl());
    for (unsigned int n = 0; n < dir.subColl().itemQty(); ++n)
        text += " " + std::string(dir.subColl()[n].dataPConst()) + outline(dir.subColl()[n]);
    return text + "]";
}

void expectOwnChildren(NX_DirInfo const& dir) {
    for (unsigned int n = 0; n < dir.fileColl().itemQty(); ++n)
        ASSERT_EQ(dir.fileColl()[n].dirP(), &dir) << dir.dataPConst();
    for (unsigned int n = 0; n < dir.subColl().itemQty(); ++n) {
        ASSERT_EQ(dir.subColl()[n].dirP(), &dir) << dir.dataPConst();
        expectOwnChildren(dir.subColl()[n]);
    }
}

int NX_FASTCALL byNameDown(NX_DirInfo const* a, NX_DirInfo const* b) {
    return NX_DirInfo::nameCompare(b, a);
}

NX_DirInfo treeRead(NX_DirInfo::SortType sort = NX_DirInfo::nameCompare) {
    return NX_DirInfo("tree/", sort, NX_StringVecA(), onlyFiles, nullptr, ageWrite, nullptr);
}

constexpr char whole[] = "[a.txt b.dat tree/s1/[c.txt tree/s1/deep/[a.txt]] tree/S2/[e.txt]]";

} // namespace

TEST(FileInfo, ByName) {
    treeMake();
    NX_FileInfo const file("tree/a.txt", ageWrite);
    EXPECT_TRUE(file.fileSize() == 120 && file.fileType() == NX_FileInfoArchive && file.fileAge().year != 0);
    NX_FileInfo const missing("tree/none", ageWrite);
    EXPECT_STREQ(missing.dataPConst(), "tree/none");
    EXPECT_TRUE(missing.fileAge().year == 0 && missing.typeIsFile() && missing.dirP() == nullptr);
    std::pair<char const*, char const*> const dirs[] = {
        {"tree/", "tree/"}, {"tree/s1/x*", "tree/s1/"}, {"tree\\", "tree\\"}, {"a.txt", ""}, {"/", "/"}};
    for (auto const& [name, record] : dirs) {
        NX_FileInfo const dir(name, nullptr, ageWrite, 1);
        EXPECT_STREQ(dir.dataPConst(), record);
        EXPECT_TRUE(dir.typeIsDir()) << name;
    }
    EXPECT_FALSE(NX_FileInfo("nodir/", nullptr, ageWrite, 1).typeIsDir());
}

TEST(FileInfo, ListsAndFilters) {
    treeMake();
    NX_StringVecA leaveOut;
    leaveOut += "B.*";
    struct {
        char const *where, *pattern;
        int find;
        bool leftOut, withDir;
        char const* found;
    } const table[] = {
        {"tree", nullptr, 0, false, false, "a.txt b.dat s1 S2"},
        {"tree/", "", NX_FileFindNoDir, false, false, "a.txt b.dat"},
        {"tree", "*.TXT", NX_FileFindNoDir, false, true, "tree/a.txt"},
        {"tree/?*.dat", nullptr, NX_FileFindNoDir, false, true, "tree/b.dat"},
        {"tree", nullptr, 0, true, false, "a.txt s1 S2"},
        {"tree", nullptr, NX_FileFindDir, false, false, "s1 S2"},
        {"tree", nullptr, NX_FileFindArchive | NX_FileFindDir, false, false, "a.txt b.dat s1 S2"},
        {"tree", nullptr, NX_FileFindDir | NX_FileFindNoDir, false, false, "s1 S2"},
        {"tree", nullptr, NX_FileFindSystem, false, false, ""},
        {"tree", "nothing*", 0, false, false, ""},
        {"nodir", nullptr, 0, false, false, ""},
        {"nodir/?*", nullptr, 0, false, true, ""}};
    for (auto const& [where, pattern, find, leftOut, withDir, found] : table) {
        SCOPED_TRACE(std::string(where) + " " + (pattern != nullptr ? pattern : ""));
        auto const type = static_cast<NX_FileFindType>(find);
        NX_StringVecA const& without = leftOut ? leaveOut : NX_StringVecA();
        NX_FileInfoVec const coll(where, without, type, nullptr, ageWrite, pattern, withDir);
        EXPECT_EQ(slashed(names(coll)), found);
        EXPECT_EQ(slashed(names(NX_StringVecA(where, without, type, pattern, withDir))), found);
    }
    for (char const* noSearch : {"tree/a.txt", ""})
        EXPECT_EQ(NX_StringVecA(noSearch, NX_StringVecA(), NX_FileFindAll, nullptr, 0).itemQty(), 0u);
    EXPECT_EQ(names(NX_StringVecA("tree/?*.dat", NX_FileFindAll, "*.txt", 0)),
              "b.dat"); // a pattern needs no other
    NX_FileInfoVec coll;
    coll.infoRead("tree/s1/c.txt", NX_StringVecA(), onlyFiles, nullptr, ageWrite);
    coll.infoRead("tree/", leaveOut, onlyFiles, nullptr, ageWrite);
    EXPECT_EQ(names(coll), "c.txt a.txt");
    NX_FileInfoVec sorted(coll);
    sorted.dataSort(NX_FileInfo::nameCompare);
    EXPECT_EQ(names(sorted), "a.txt c.txt");
    sorted.dataSort(NX_FileInfo::sizeCompare);
    EXPECT_EQ(names(sorted), "c.txt a.txt");
    EXPECT_EQ(coll[0].dataPConst(), sorted[0].dataPConst()); // names are shared, not copied
}

TEST(DirInfo, Trees) {
    treeMake();
    NX_DirInfo const dir(treeRead());
    EXPECT_EQ(dir.dataPConst() + outline(dir), std::string("tree/") + whole);
    expectOwnChildren(dir);
    EXPECT_EQ(outline(treeRead(byNameDown)),
              "[a.txt b.dat tree/S2/[e.txt] tree/s1/[c.txt tree/s1/deep/[a.txt]]]");

    NX_StringVecA leaveOut;
    leaveOut += "s*";
    leaveOut += "E.TXT";
    NX_DirInfo const filtered("tree/?*.txt", NX_DirInfo::nameCompare, leaveOut, onlyFiles, nullptr, ageWrite,
                              "*.dat");
    EXPECT_EQ(outline(filtered), "[a.txt tree/s1/[c.txt tree/s1/deep/[a.txt]] tree/S2/[]]");
    NX_DirInfo const nowhere("nodir/", nullptr, leaveOut, onlyFiles, nullptr, ageWrite, nullptr);
    EXPECT_EQ(nowhere.subCollP(), nullptr);
    EXPECT_EQ(outline(nowhere), "[]");

    NX_DirInfo const& deep = dir.subColl()[0].subColl()[0];
    NX_FileInfo const& file = dir.fileColl()[0];
    EXPECT_EQ((NXS_Results{file.dataCompare(deep.fileColl()[0]), file.dataCompare(dir.fileColl()[1]),
                           file.nameCompare("A.TXT", NX_CompareFold)}),
              (NXS_Results{0, 1, 0}));
    std::ostringstream shown;
    shown << deep;
    EXPECT_NE(shown.str().find("\na.txt 120 "), std::string::npos);
}

TEST(DirInfo, ChildrenBelongToTheirRecordWhereverItLies) {
    treeMake();
    NX_DirInfoVec coll;
    {
        NX_DirInfo copy;
        {
            NX_DirInfo const dir(treeRead());
            copy = dir;
            copy = copy.subColl()[0]; // part of what it replaces
            copy = dir;
        }
        expectOwnChildren(copy);
        EXPECT_EQ(outline(copy), whole);
        for (int n = 0; n < 30; ++n)
            n % 2 == 0 ? coll += copy : static_cast<void>(coll.itemInsertAt(0, copy));
    }
    coll += coll.itemPConst(3)->subColl()[1];
    NX_DirInfoVec other(coll); // one block, until one of them changes
    EXPECT_EQ(&std::as_const(other)[0], &std::as_const(coll)[0]);
    other.itemDeleteAt(1);
    other.dataSort(byNameDown);
    coll.itemQtyCap(1000);
    for (NX_DirInfoVec const* each : {&coll, &other})
        for (unsigned int n = 0; n < each->itemQty(); ++n)
            expectOwnChildren((*each)[n]);
    EXPECT_EQ(outline(*other.itemPConst(7)), whole);
    EXPECT_EQ(other.itemQty(), 30u);
    coll.collDefault();
    EXPECT_EQ(outline(*other.itemPConst(0)), "[e.txt]");
    NX_DirInfoVec view(other);
    view(1, 28) = NX_DirInfoVec();
    view.itemAdopt();
    expectOwnChildren(*view.itemPConst(1));
    EXPECT_EQ(view.itemQty(), 2u);
}
