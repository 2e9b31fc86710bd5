// The example program: output, exit status and messages.
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

struct Result {
    int status;
    std::string out;
    std::string err;
};

// Runs the program that lies beside this one. Arguments are separated by blanks.
Result run(std::string const& arguments) {
    fs::path program = fs::path(nxSelf()).parent_path() / "catalog";
    int status =
        std::system((program.make_preferred().string() + " " + arguments + " >out.txt 2>err.txt").c_str());
    if (status > 255)
        status /= 256; // as wait reports it
    std::string out = nxFileContent("out.txt");
    std::string err = nxFileContent("err.txt");
    std::erase(out, '\r');
    std::erase(err, '\r');
    return {status, out, err};
}

bool has(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

class Catalog : public testing::Test {
protected:
    Catalog() {
        nxEnvironmentSet("CATALOG_DIR", "");
        fs::create_directories("tree/b/c");
        nxFileMake("tree/one.txt", "1");
        nxFileMake("tree/two.dat", std::string(3000, '2'));
        nxFileMake("tree/b/three.txt", "333");
        nxFileMake("tree/b/c/file10.txt", "");
        nxFileMake("tree/.hidden", "not listed");
    }
    ~Catalog() override {
        fs::remove_all("tree");
        fs::remove("t.cat");
    }
};

TEST_F(Catalog, ScanShowFind) {
    Result const scan = run("scan tree t.cat --sort name");
    EXPECT_EQ(scan.status, 0) << scan.err;
    EXPECT_EQ(scan.out + scan.err, "") << "nothing to tell, and no progress into a file";

    Result const show = run("show t.cat --sort size");
    EXPECT_TRUE(show.status == 0 && has(show.out, "4 files in 3 directories, 3004 bytes")) << show.out;
    EXPECT_LT(show.out.find("two.dat"), show.out.find("one.txt")) << "the largest first";
    EXPECT_FALSE(has(show.out, "hidden"));

    Result const wild = run("find t.cat \"o*.txt\"");
    EXPECT_EQ(std::count(wild.out.begin(), wild.out.end(), '\n'), 1) << wild.out;
    EXPECT_TRUE(wild.status == 0 && has(wild.out, "one.txt"));
    Result const regular = run("find t.cat \"/e[0-9]+/\"");
    EXPECT_EQ(std::count(regular.out.begin(), regular.out.end(), '\n'), 1) << regular.out;
    EXPECT_TRUE(regular.status == 0 && has(regular.out, "file10.txt"));
}

TEST_F(Catalog, DiffTellsAddedRemovedChanged) {
    ASSERT_EQ(run("scan tree t.cat").status, 0);
    Result const same = run("diff t.cat tree");
    EXPECT_EQ(same.status, 0) << same.out << same.err;
    EXPECT_EQ(same.out, "");

    nxFileMake("tree/one.txt", "changed");
    nxFileMake("tree/b/new.txt", "");
    fs::remove_all("tree/b/c");
    Result const diff = run("diff t.cat tree");
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(std::count(diff.out.begin(), diff.out.end(), '\n'), 3) << diff.out;
    EXPECT_TRUE(has(diff.out, "changed  one.txt"));
    EXPECT_TRUE(has(diff.out, "added    b") && has(diff.out, "new.txt"));
    EXPECT_TRUE(has(diff.out, "removed  b") && has(diff.out, "c"));
}

TEST_F(Catalog, DiffOfContents) {
    fs::copy("tree", "copy", fs::copy_options::recursive);
    // The same size and time, another content.
    auto const time = fs::last_write_time("tree/two.dat");
    nxFileMake("copy/two.dat", std::string(2999, '2') + "3");
    for (fs::path const& path : {fs::path("one.txt"), fs::path("b/three.txt"), fs::path("b/c/file10.txt")})
        fs::last_write_time("copy" / path, fs::last_write_time("tree" / path));
    fs::last_write_time("copy/two.dat", time);
    EXPECT_EQ(run("diff tree copy").status, 0);
    Result const contents = run("diff tree copy --contents");
    EXPECT_EQ(contents.status, 1);
    EXPECT_EQ(contents.out, "changed  two.dat\n");
    fs::remove_all("copy");
}

TEST_F(Catalog, ChoicesOfTheScanHoldForTheDiff) {
    ASSERT_EQ(run("scan tree t.cat --pattern \"*.txt\" --leave-out \"three*\" --files-of archive").status, 0);
    Result const show = run("show t.cat");
    EXPECT_TRUE(has(show.out, "2 files in 3 directories, 1 bytes")) << show.out;
    EXPECT_EQ(run("diff t.cat tree").status, 0);
    EXPECT_EQ(run("diff tree t.cat").status, 0);
}

// What a catalogue named without a directory means, with CATALOG_DIR set.
TEST_F(Catalog, DirectoryOfCatalogues) {
    fs::create_directory("cats");
    nxEnvironmentSet("CATALOG_DIR", "cats");
    EXPECT_EQ(run("scan tree t.cat").status, 0);
    EXPECT_TRUE(fs::exists("cats/t.cat") && !fs::exists("t.cat")) << "it is made there";
    EXPECT_TRUE(run("diff t.cat tree").status == 0 && run("diff tree t.cat").status == 0);
    EXPECT_TRUE(has(run("find t.cat one.txt").out, "one.txt"));
    EXPECT_EQ(run("show ./t.cat").status, 2) << "a directory is given";
    EXPECT_TRUE(has(run("show nothere.cat").err, "nothere.cat: Not found"));

    EXPECT_EQ(run("scan tree/b ./t.cat").status, 0);
    EXPECT_FALSE(has(run("show t.cat").out, "one.txt")) << "the current directory comes first";
    std::string const before = nxFileContent("cats/t.cat");
    EXPECT_EQ(run("scan tree/b/c t.cat").status, 0);
    EXPECT_TRUE(nxFileContent("cats/t.cat") == before && has(run("show t.cat").out, "1 files in 1 dir"));

    EXPECT_TRUE(has(run("help").out, "CATALOG_DIR (cats)"));
    nxEnvironmentSet("CATALOG_DIR", "nothere");
    EXPECT_TRUE(has(run("scan tree u.cat").err, "Not found"));
    fs::remove_all("cats");
}

TEST_F(Catalog, TextsNameProgramAndValues) {
    Result const help = run("help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(has(help.out, "\ncatalog scan DIR FILE ") &&
                has(help.out, "[--sort name|age|size] [--files-of"));
    EXPECT_TRUE(has(help.out, "CLASS: all|archive|hidden|readonly|system. ")) << help.out;
    EXPECT_FALSE(has(help.out, "%["));
    EXPECT_TRUE(has(run("%[PROGRAM]").err, "%[PROGRAM]: Unknown command: catalog help tells more"))
        << "what was typed is not looked up";
}

TEST_F(Catalog, FaultsAreToldAndNothingIsOverwritten) {
    ASSERT_EQ(run("scan tree t.cat").status, 0);
    std::string const before = nxFileContent("t.cat");
    nxFileMake("bad.cat", "S0\nD\nD9 catalogue");
    nxFileMake("other.cat", "S1");
    static struct {
        char const* arguments;
        char const* message;
    } const rows[] = {
        {"scna tree t.cat", "scna: Unknown command"},
        {"scan tree t.cat --fast", "--fast: Unknown option"},
        {"scan tree t.cat --sort", "--sort: Option without its value"},
        {"scan tree t.cat --sort colour", "colour: Unknown value"},
        {"show t.cat more", "more: Argument missing or one too many"},
        {"scan nothere t.cat", "nothere: Not found"},
        {"scan tree/one.txt t.cat", "Not a directory"},
        {"scan tree nothere/t.cat", "Not found"},
        {"scan tree nul", "nul: Not an ordinary file"},
        {"scan tree t.cat --leave-out a/b", "a/b: Unknown value"},
        {"show nothere.cat", "nothere.cat: Not found"},
        {"show tree", "Access not allowed"},
        {"show bad.cat", "bad.cat: Damaged catalogue at position"},
        {"show other.cat", "other.cat: Catalogue of another version"},
        {"find t.cat \"/+a/\"", "Not a regular expression"},
    };
    for (auto const& row : rows) {
        Result const result = run(row.arguments);
        EXPECT_TRUE(result.status == 2 && has(result.err, row.message))
            << row.arguments << ": " << result.err;
    }
    EXPECT_TRUE(has(nxFileContent("quorix.log"), "Not a regular expression"));
    EXPECT_EQ(nxFileContent("t.cat"), before);
    EXPECT_EQ(std::distance(fs::directory_iterator("tree"), fs::directory_iterator()), 4)
        << "nothing left behind";
}

TEST_F(Catalog, ResourcesAreListedAndWrittenOut) {
    std::string const bin = fs::path(nxSelf()).parent_path().generic_string() + "/";
    Result const list = run("resources " + bin + "resources.dll");
    EXPECT_EQ(list.status, 0) << list.err;
    for (char const* row :
         {"ICON GROUP    1 ", "34  8x8x4 16x16x1\n", "CURSOR GROUP  POINTER ", "112  7x3x24\n",
          "STRING        1 ", "SPEECH        SHORT_TEXT ", "23 resources, 1691 bytes"})
        EXPECT_TRUE(has(list.out, row)) << row << "\n" << list.out;

    struct {
        char const* id;
        char const* original;
    } const rows[] = {{"1", "two.ico"}, {"pointer", "spot.cur"}, {"Bitmap/7", "small.bmp"}};
    for (auto const& [id, original] : rows) {
        EXPECT_EQ(run("resources " + bin + "resources.dll --extract " + id + " out.bin").status, 0);
        EXPECT_EQ(nxFileContent("out.bin"), nxFileContent((bin + original).c_str())) << id;
    }
    EXPECT_EQ(run("resources " + bin + "resources.dll --extract icon/2 one.ico").status, 0);
    EXPECT_TRUE(has(run("resources one.ico").out, "2 resources")) << run("resources one.ico").out;
    EXPECT_EQ(run("resources " + bin + "resources.dll --extract string/1 out.bin").status, 0);
    EXPECT_EQ(nxFileContent("out.bin"), "1\tone\n15\tthe last of its block\n");

    Result const missing = run("resources " + bin + "resources.dll --extract 999 out.bin");
    EXPECT_TRUE(missing.status == 2 && has(missing.err, "resources.dll: 999: No such resource"))
        << missing.err;
    EXPECT_TRUE(nxFileContent("out.bin").starts_with("1\tone")) << "untouched";
    nxFileMake("bad.ico", std::string("\0\0\1\0\2\0 cut", 10));
    Result const bad = run("resources bad.ico");
    EXPECT_TRUE(bad.status == 2 && has(bad.err, "bad.ico: Data invalid")) << bad.err;
    EXPECT_EQ(run("resources one.ico --extract 1").status, 2) << "a value is missing";
}

} // namespace
