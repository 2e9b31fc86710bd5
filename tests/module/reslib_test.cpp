// Resource libraries opened as data: what they list, find and load, sharing, names, failures.
#include "general/module/dll.h"
#include "general/module/resicon.h"
#include "general/platform/platform.h"
#include "tests/module/restest.h"

#include <filesystem>
#include <thread>

namespace {

// One line a resource, as in the list that is kept beside the files.
std::string linesOf(char const* name, NX_ResLibType type) {
    std::string lines;
    NX_ResLib lib;
    NX_ResDescVec list;
    EXPECT_EQ(lib.resLibOpen(name, resLibTypeFile), 1) << name;
    EXPECT_TRUE(lib.resLibType() == type && lib.resLibHand() == nullptr) << "nothing is loaded";
    EXPECT_EQ(lib.resDescs(list), 0);
    for (NX_ResDescVecPtrConst desc(list); desc.itemIsAvail(); ++desc) {
        NX_ResData data;
        EXPECT_TRUE(lib.resDataLoad(data, *desc) == 0 && data.dataSize() == desc->resSize());
        std::uint32_t sum = 2166136261u;
        for (unsigned int n = 0; n < data.dataSize(); ++n)
            sum = (sum ^ data.dataP()[n]) * 16777619u;
        NX_StringA line;
        line.strPrintF("%s %s %s %d %u %08x\n", name, desc->resTypeText().dataPConst(),
                       desc->resIdText().dataPConst(), desc->resLang(), data.dataSize(), sum);
        lines += line.dataPConst();
    }
    return lines;
}

TEST(ResLib, EveryTargetReadsTheSameList) {
    std::string lines = "File, type, id, language, size, FNV-1a sum: what every target reads.\n";
    lines += linesOf("resources.dll", resLibTypeModule);
    for (char const* name : {"two.ico", "disc.ico", "spot.cur", "small.bmp", "gap.bmp"})
        lines += linesOf(name, std::string(name).ends_with("bmp") ? resLibTypeBmp : resLibTypeIco);
    EXPECT_EQ(lines, nxResTestFile("list.txt"));
}

TEST(ResLib, FindsByNumberNameAndLanguage) {
    NX_ResLib lib;
    ASSERT_EQ(lib.resLibOpen("resources.dll", resLibTypeModule), 1);
    NX_ResDescVec texts;
    EXPECT_TRUE(lib.resDescs(texts, resTypeString) == 0 && texts.itemQty() == 6);
    EXPECT_TRUE(lib.resDescs(texts, 99) == 0 && texts.itemQty() == 0);
    NX_ResDesc desc;
    static std::tuple<int, int, int> const rows[] = {
        {5, -1, 0x409}, {5, 0x407, 0x407}, {6, -1, 0x407}, {7, -1, 0}}; // English, else the first
    for (auto const& [id, asked, lang] : rows)
        EXPECT_TRUE(lib.resDescFind(desc, resTypeData, id, asked) == 0 && desc.resLang() == lang) << id;
    EXPECT_TRUE(lib.resDescFindNear(desc, resTypeData, 5, 0x407) == 0 && desc.resLang() == 0x407);
    EXPECT_TRUE(lib.resDescFindNear(desc, resTypeData, 5, 0x40C) == 0 && desc.resLang() == 0x409);
    EXPECT_TRUE(lib.resDescFind(desc, resTypeAccel, "keys") == 0 && desc.resId() == 0);
    EXPECT_STREQ(desc.resName().dataPConst(), "KEYS");
    EXPECT_TRUE(lib.resDescFind(desc, "speech", "Short_Text") == 0 && desc.resType() == 0);
    EXPECT_STREQ(desc.resTypeName().dataPConst(), "SPEECH");
    EXPECT_TRUE(lib.resDescFind(desc, "#500", "#300") == 0 && desc.resType() == 500 && desc.resId() == 300);

    EXPECT_EQ(lib.resDescFind(desc, resTypeData, 5, 0x40C), -1);
    EXPECT_TRUE(nxErrorTells(errorNumResLibNotFound, "F=resources.dll V=5"));
    EXPECT_EQ(lib.resDescFind(desc, resTypeAccel, "none"), -1);
    EXPECT_TRUE(nxErrorTells(errorNumResLibNotFound, "F=resources.dll T=none"));
    EXPECT_EQ(desc.resType(), 500) << "what was found stays";
    EXPECT_EQ(lib.resDescFind(desc, resTypeAccel, 0), -1) << "a name is not number 0";
    for (char const* id : {"#", "#4294967301", "#65541", "#5x", "# 5", "#-5"})
        EXPECT_EQ(lib.resDescFind(desc, resTypeData, id), -1) << id << " is not 5";

    // A description stands for the same resource of another library.
    NX_ResLib other;
    NX_ResData data;
    ASSERT_EQ(other.resLibOpen("two.ico", resLibTypeIco), 1);
    ASSERT_EQ(other.resDescFind(desc, resTypeIcon, 2), 0);
    EXPECT_TRUE(lib.resDataLoad(data, desc) == -1 && nxErrorTells(errorNumResLibNotFound, "V=2"))
        << "its icons are not neutral";
    ASSERT_EQ(lib.resDescFind(desc, resTypeData, 7), 0);
    EXPECT_EQ(lib.resDataLoad(data, desc), 0);
    lib.resLibClose();
    EXPECT_EQ(nxText(data), "in no language") << "held by the data";
    EXPECT_TRUE(lib.resDescFind(desc, resTypeData, 7) == -1 && lib.resDataLoad(data, desc) == -1) << "closed";
    NxErrorOk();
}

TEST(ResLib, TextsOfData) {
    NX_ResLib lib;
    ASSERT_EQ(lib.resLibOpen("resources.dll", resLibTypeFile), 1);
    static std::tuple<int, char const*> const rows[] = {
        {1, "one"},
        {15, "the last of its block"},
        {16, "the first of the next"},
        {200, "nur auf Deutsch"},
        {-1, "the last of all"},
        {0, ""},
        {2, ""},
        {3000, ""},
        {100, GetACP() == 1252 ? "caf\xE9, 5 \x80, ?, ??" : "caf?, 5 ?, ?, ??"},
    };
    NX_StringA text;
    for (auto const& [id, expected] : rows) {
        EXPECT_EQ(text.strLoad(lib, id), static_cast<int>(std::string(expected).size())) << id;
        EXPECT_STREQ(text.dataPConst(), expected);
    }
    char buffer[6] = "old";
    EXPECT_TRUE(lib.resTextLoad(buffer, 1, 1) == 0 && lib.resTextLoad(buffer, sizeof buffer, 2) == 0);
    EXPECT_STREQ(buffer, "old");
    EXPECT_TRUE(lib.resTextLoad(buffer, sizeof buffer, 15) == 5 && std::string(buffer) == "the l");
}

TEST(ResLib, SharedByFileWhateverTheName) {
    std::filesystem::copy(nxResTestPath("two.ico"), "Icons.ICO");
    std::filesystem::copy(nxResTestPath("spot.cur"), "spot.new");
    NX_ResLib first;
    NX_ResLib second;
    NX_ResData one;
    NX_ResData two;
    NX_ResDesc desc;
    auto const load = [&desc](NX_ResLib const& lib, NX_ResData& data) {
        return lib.resDescFind(desc, resTypeIcon, 1) == 0 ? lib.resDataLoad(data, desc) : -1;
    };
    ASSERT_EQ(first.resLibOpen("Icons", resLibTypeFile), 1) << "the extension is looked for in both cases";
    ASSERT_EQ(second.resLibOpen("Icons.ICO", ".", resLibTypeIco), 1);
    ASSERT_TRUE(load(first, one) == 0 && load(second, two) == 0);
    EXPECT_EQ(one.dataP(), two.dataP());

    std::filesystem::rename("spot.new", "Icons.ICO");
    ASSERT_EQ(second.resLibOpen("./Icons.ICO", resLibTypeIco), 1);
    EXPECT_TRUE(load(second, two) == -1 && second.resDescFind(desc, resTypeCursor, 1) == 0)
        << "another file now";
    EXPECT_EQ(load(first, one), 0) << "those who have the old one keep it";
    NxErrorOk();

    // Code and data are two uses: a module opened as data stays data.
    NX_ResLib code("resources", NX_ResLib::resLibNameSys(nullptr).nameOfDir(), resLibTypeModule);
    EXPECT_TRUE(code.resLibIsOpen() == 0 && code.resLibType() == resLibTypeNone && code.resLibOpen() == 1);
    EXPECT_EQ(GetModuleHandleA("resources.dll"), nullptr);
    EXPECT_TRUE(code.resLibHandSys() != nullptr || GetLastError() == ERROR_NOT_SUPPORTED);
    std::filesystem::copy(nxResTestPath("resources.dll"), "gone.dll");
    ASSERT_EQ(code.resLibOpen("gone.dll", ".", resLibTypeModule), 1);
    std::filesystem::remove("gone.dll");
    EXPECT_TRUE(code.resLibHandSys() == nullptr && GetLastError() == ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(code.resDescFind(desc, resTypeData, 7), 0) << "its bytes are here";
    NX_Dll dll;
    EXPECT_TRUE(dll.resLibOpen("testmodule", resLibTypeNone) == -1 && dll.resLibType() == resLibTypeNone);
    EXPECT_TRUE(dll.resLibOpen("two.ico", resLibTypeIco) == 1 && dll.dllIsOpen() == 0) << "nothing is loaded";
    EXPECT_TRUE(dll.dllOpen("testmodule.dll") == 1 && dll.dllIsOpen() == 1);
    NX_ResDescVec list;
    EXPECT_EQ(dll.resDescs(list), 0) << "read from its file; elsewhere a module has no such directory";
    EXPECT_NE(dll.resLibHandSys(), nullptr);
}

TEST(ResLib, FailuresNameTheLibrary) {
    std::filesystem::create_directory("folder.ico");
    nxFileMake("text.dll", "MZ but no more");
    nxFileMake("empty.bmp", "");
    static std::tuple<char const*, NX_ResLibType, int> const rows[] = {
        {"missing", resLibTypeFile, errorNumResLibNotFound},
        {"missing.ico", resLibTypeIco, errorNumResLibNotFound},
        {"folder.ico", resLibTypeIco, errorNumFileAccess},
        {"text.dll", resLibTypeModule, errorNumImage},
        {"empty.bmp", resLibTypeFile, errorNumImage},
        {"two.ico", resLibTypeBmp, errorNumImage},
        {"spot.cur", resLibTypeModule, errorNumImage},
    };
    for (auto const& [name, type, number] : rows) {
        NX_ResLib lib;
        EXPECT_EQ(lib.resLibOpen(name, type), -1) << name;
        EXPECT_TRUE(nxErrorTells(number, (std::string(" F=") + name).c_str())) << NxErrorBuf();
    }
    NX_ResLib lib;
    EXPECT_TRUE(lib.resLibOpen("", resLibTypeFile) == 0 &&
                lib.resLibOpen("two.ico", ".", resLibTypeIco) == -1);
    ASSERT_EQ(lib.resLibOpen("two.ico", resLibTypeIco), 1);
    EXPECT_TRUE(lib.resLibOpen("two.ico", resLibTypeBmp) == -1 && lib.resLibType() == resLibTypeIco)
        << "stays";
    EXPECT_TRUE(lib.resLibHandSys() == nullptr && GetLastError() == ERROR_INVALID_HANDLE);

    HANDLE const held = CreateFileA("text.dll", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(lib.resLibOpen("text.dll", resLibTypeFile) == -1 && NxErrorNum() == errorNumFileShared);
    CloseHandle(held);
    NxErrorOk();
}

TEST(ResLib, ManyThreadsOpenOneFile) {
    std::vector<std::thread> threads;
    std::atomic<int> good = 0;
    NX_ResLib held;
    ASSERT_EQ(held.resLibOpen("two.ico", resLibTypeFile), 1);
    EXPECT_NE(held.resLibName().dataPConst(), held.resLibName().dataPConst())
        << "blocks of texts are counted without a lock: threads must not share them";
    for (int n = 0; n < 4; ++n)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                NX_ResLib lib;
                NX_ResIconImage image;
                lib.resLibOpen(held.resLibName(), resLibTypeFile);
                for (NX_ResIcon const& icon : {NX_ResIcon(lib, 1), NX_ResIcon(held, 1)})
                    good += icon.resData().dataSize() == 34 && icon.imageLoad(image, 0) == 0;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(good, 400);
}

} // namespace
