// The example program: output, exit status and messages.
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

struct Result {
    int status;
    std::string out, err;
};

// Runs the program that lies beside this one. Arguments are separated by blanks.
Result run(std::string const& arguments) {
    fs::path program = fs::path(nxSelf()).parent_path() / "catalog";
    int const status =
        std::system((program.make_preferred().string() + " " + arguments + " >out.txt 2>err.txt").c_str());
    std::string texts[] = {nxFileContent("out.txt"), nxFileContent("err.txt")};
    for (std::string& text : texts)
        std::erase(text, '\r');
    return {status > 255 ? status / 256 : status, texts[0], texts[1]}; // as wait reports it
}

bool has(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

// What is shown must have all these parts.
void expectRun(std::string const& arguments, int status, std::initializer_list<char const*> parts = {}) {
    Result const result = run(arguments);
    EXPECT_EQ(result.status, status) << arguments;
    for (char const* part : parts)
        EXPECT_TRUE(has(result.out + result.err, part)) << arguments << ": " << result.out << result.err;
}

long linesOf(std::string const& text) {
    return std::count(text.begin(), text.end(), '\n');
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
    EXPECT_TRUE(scan.status == 0 && scan.out + scan.err == "") << "no progress into a file" << scan.err;
    std::string const show = run("show t.cat --sort size").out;
    EXPECT_TRUE(has(show, "4 files in 3 directories, 3004 bytes") && !has(show, "hidden")) << show;
    EXPECT_LT(show.find("two.dat"), show.find("one.txt")) << "the largest first";
    for (auto const& [sought, name] : {std::pair("\"o*.txt\"", "one.txt"), {"\"/e[0-9]+/\"", "file10.txt"}}) {
        Result const find = run(std::string("find t.cat ") + sought);
        EXPECT_TRUE(find.status == 0 && linesOf(find.out) == 1 && has(find.out, name)) << find.out;
    }
}

TEST_F(Catalog, DiffTellsAddedRemovedChanged) {
    ASSERT_EQ(run("scan tree t.cat").status, 0);
    Result const same = run("diff t.cat tree");
    EXPECT_TRUE(same.status == 0 && same.out.empty()) << same.out << same.err;

    nxFileMake("tree/one.txt", "changed");
    nxFileMake("tree/b/new.txt", "");
    fs::remove_all("tree/b/c");
    expectRun("diff t.cat tree", 1, {"changed  one.txt", "added    b", "new.txt", "removed  b", "c"});
    EXPECT_EQ(linesOf(run("diff t.cat tree").out), 3);
}

TEST_F(Catalog, DiffOfContents) {
    fs::copy("tree", "copy", fs::copy_options::recursive);
    nxFileMake("copy/two.dat", std::string(2999, '2') + "3"); // the same size and time, another content
    for (char const* path : {"one.txt", "two.dat", "b/three.txt", "b/c/file10.txt"})
        fs::last_write_time(fs::path("copy") / path, fs::last_write_time(fs::path("tree") / path));
    EXPECT_EQ(run("diff tree copy").status, 0);
    Result const contents = run("diff tree copy --contents");
    EXPECT_TRUE(contents.status == 1 && contents.out == "changed  two.dat\n") << contents.out;
    fs::remove_all("copy");
}

TEST_F(Catalog, ChoicesOfTheScanHoldForTheDiff) {
    expectRun("scan tree t.cat --pattern \"*.txt\" --leave-out \"three*\" --files-of archive", 0);
    expectRun("show t.cat", 0, {"2 files in 3 directories, 1 bytes"});
    expectRun("diff t.cat tree", 0);
    expectRun("diff tree t.cat", 0);
}

// What a catalogue named without a directory means, with CATALOG_DIR set.
TEST_F(Catalog, DirectoryOfCatalogues) {
    fs::create_directory("cats");
    nxEnvironmentSet("CATALOG_DIR", "cats");
    expectRun("scan tree t.cat", 0);
    EXPECT_TRUE(fs::exists("cats/t.cat") && !fs::exists("t.cat")) << "it is made there";
    expectRun("diff t.cat tree", 0);
    expectRun("diff tree t.cat", 0);
    expectRun("find t.cat one.txt", 0, {"one.txt"});
    expectRun("show ./t.cat", 2); // a directory is given
    expectRun("show nothere.cat", 2, {"nothere.cat: Not found"});

    expectRun("scan tree/b ./t.cat", 0);
    EXPECT_FALSE(has(run("show t.cat").out, "one.txt")) << "the current directory comes first";
    std::string const before = nxFileContent("cats/t.cat");
    expectRun("scan tree/b/c t.cat", 0);
    expectRun("show t.cat", 0, {"1 files in 1 dir"});
    EXPECT_EQ(nxFileContent("cats/t.cat"), before);

    expectRun("help", 0, {"CATALOG_DIR (cats)"});
    nxEnvironmentSet("CATALOG_DIR", "nothere");
    expectRun("scan tree u.cat", 2, {"Not found"});
    fs::remove_all("cats");
}

TEST_F(Catalog, TextsNameProgramAndValues) {
    expectRun("help", 0,
              {"\ncatalog scan DIR FILE ", "[--sort name|age|size] [--files-of",
               "CLASS: all|archive|hidden|readonly|system. "});
    EXPECT_FALSE(has(run("help").out, "%["));
    expectRun("%[PROGRAM]", 2, {"%[PROGRAM]: Unknown command: catalog help tells more"}); // as it was typed
}

TEST_F(Catalog, FaultsAreToldAndNothingIsOverwritten) {
    ASSERT_EQ(run("scan tree t.cat").status, 0);
    std::string const before = nxFileContent("t.cat");
    nxFileMake("bad.cat", "S0\nD\nD9 catalogue");
    nxFileMake("other.cat", "S1");
    static std::pair<char const*, char const*> const rows[] = {
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
    for (auto const& [arguments, message] : rows) {
        expectRun(arguments, 2, {message});
        EXPECT_EQ(nxFileContent("out.txt"), "") << arguments;
    }
    EXPECT_TRUE(has(nxFileContent("quorix.log"), "Not a regular expression"));
    EXPECT_EQ(nxFileContent("t.cat"), before);
    EXPECT_EQ(std::distance(fs::directory_iterator("tree"), fs::directory_iterator()), 4)
        << "nothing left behind";
}

TEST_F(Catalog, ResourcesAreListedAndWrittenOut) {
    std::string const bin = fs::path(nxSelf()).parent_path().generic_string() + "/";
    std::string const module = "resources " + bin + "resources.dll";
    expectRun(module, 0,
              {"ICON GROUP    1 ", "34  8x8x4 16x16x1\n", "CURSOR GROUP  POINTER ", "112  7x3x24\n",
               "STRING        1 ", "SPEECH        SHORT_TEXT ", "23 resources, 1691 bytes"});
    static std::pair<char const*, char const*> const rows[] = {
        {"1", "two.ico"}, {"pointer", "spot.cur"}, {"Bitmap/7", "small.bmp"}};
    for (auto const& [id, original] : rows) {
        expectRun(module + " --extract " + id + " out.bin", 0);
        EXPECT_EQ(nxFileContent("out.bin"), nxFileContent((bin + original).c_str())) << id;
    }
    expectRun(module + " --extract icon/2 one.ico", 0);
    expectRun("resources one.ico", 0, {"2 resources"});
    expectRun(module + " --extract string/1 out.bin", 0);
    expectRun(module + " --extract 999 out.bin", 2, {"resources.dll: 999: No such resource"});
    EXPECT_EQ(nxFileContent("out.bin"), "1\tone\n15\tthe last of its block\n") << "the second is untouched";
    nxFileMake("bad.ico", std::string("\0\0\1\0\2\0 cut", 10));
    expectRun("resources bad.ico", 2, {"bad.ico: Data invalid"});
    expectRun("resources one.ico --extract 1", 2); // a value is missing
}

} // namespace
