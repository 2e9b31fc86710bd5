// Directory listings and trees: filters, patterns, sorting, and that children belong to the record that holds
// them.
#include "general/finfo/dirinfo.h"

#include <filesystem>
#include <sstream>

#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

constexpr NX_FileFindType onlyFiles = NX_FileFindNoDir;

void treeMake() {
    for (char const* dir : {"tree", "tree/s1", "tree/s1/deep", "tree/S2", "tree/.hidden"})
        std::filesystem::create_directories(dir);
    nxFileMake("tree/a.txt", std::string(120, 'a'));
    nxFileMake("tree/b.dat", "bb");
    nxFileMake("tree/.dot", "");
    nxFileMake("tree/s1/c.txt", "c");
    nxFileMake("tree/s1/deep/a.txt", std::string(120, 'a'));
    nxFileMake("tree/S2/e.txt", "e");
    nxFileMake("tree/.hidden/f.txt", "f");
}

template <class Coll>
std::string names(Coll const& coll) {
    std::string text;
    for (unsigned int n = 0; n < coll.itemQty(); ++n)
        text += (n == 0 ? "" : " ") + std::string(coll[n].dataPConst());
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
    EXPECT_EQ(file.fileSize(), 120u);
    EXPECT_EQ(file.fileType(), unsigned{NX_FileInfoArchive});
    EXPECT_NE(file.fileAge().year, 0);
    EXPECT_EQ(file.dirP(), nullptr);
    NX_FileInfo const missing("tree/none", ageWrite);
    EXPECT_STREQ(missing.dataPConst(), "tree/none");
    EXPECT_EQ(missing.fileAge().year, 0);
    EXPECT_TRUE(missing.typeIsFile());
    struct {
        char const* name;
        char const* record;
    } const dirs[] = {
        {"tree/", "tree/"}, {"tree/s1/x*", "tree/s1/"}, {"tree\\", "tree\\"}, {"a.txt", ""}, {"/", "/"}};
    for (auto const& row : dirs) {
        NX_FileInfo const dir(row.name, nullptr, ageWrite, 1);
        EXPECT_STREQ(dir.dataPConst(), row.record);
        EXPECT_TRUE(dir.typeIsDir()) << row.name;
    }
    EXPECT_FALSE(NX_FileInfo("nodir/", nullptr, ageWrite, 1).typeIsDir());
}

TEST(FileInfo, ListsAndFilters) {
    treeMake();
    NX_StringVecA leaveOut;
    leaveOut += "B.*";
    struct {
        char const* where;
        char const* pattern;
        int find;
        bool leftOut, withDir;
        char const* found;
    } const table[] = {
        {"tree", nullptr, 0, false, false, "a.txt b.dat s1 S2"},
        {"tree/", "", NX_FileFindNoDir, false, false, "a.txt b.dat"},
        {"tree", "*.TXT", NX_FileFindNoDir, false, false, "a.txt"},
        {"tree/?*.dat", nullptr, 0, false, true, "tree/b.dat"},
        {"tree", nullptr, 0, true, false, "a.txt s1 S2"},
        {"tree", nullptr, NX_FileFindDir, false, false, "s1 S2"},
        {"tree", nullptr, NX_FileFindArchive | NX_FileFindDir, false, false, "a.txt b.dat s1 S2"},
        {"tree", nullptr, NX_FileFindDir | NX_FileFindNoDir, false, false, "s1 S2"}, // wanted beats refused
        {"tree", nullptr, NX_FileFindSystem, false, false, ""},
        {"tree", "nothing*", 0, false, false, ""},
        {"nodir", nullptr, 0, false, false, ""},
    };
    for (auto const& row : table) {
        SCOPED_TRACE(std::string(row.where) + " " + (row.pattern != nullptr ? row.pattern : ""));
        NX_FileInfoVec const coll(row.where, row.leftOut ? leaveOut : NX_StringVecA(),
                                  static_cast<NX_FileFindType>(row.find), nullptr, ageWrite, row.pattern,
                                  row.withDir);
        EXPECT_EQ(names(coll), row.found);
    }
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
    EXPECT_STREQ(dir.dataPConst(), "tree/");
    EXPECT_TRUE(dir.typeIsDir());
    EXPECT_EQ(outline(dir), whole);
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
    EXPECT_EQ(dir.fileColl()[0].dataCompare(deep.fileColl()[0]), 0);
    EXPECT_EQ(dir.fileColl()[0].dataCompare(dir.fileColl()[1]), 1);
    EXPECT_EQ(dir.fileColl()[0].nameCompare("A.TXT", NX_CompareFold), 0);
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
