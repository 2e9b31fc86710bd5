// Resource objects from a module and from loose files: alike on every system.
#include "general/module/resicon.h"
#include "general/module/resmenu.h"
#include "general/module/resstring.h"
#include "tests/module/imagecases.h"
#include "tests/module/restest.h"

namespace {

struct ResObject : testing::Test {
    NX_ResLib lib;

    void open(char const* name) { ASSERT_EQ(lib.resLibOpen(name, resLibTypeFile), 1) << name; }
    void make(char const* name, std::string const& bytes) {
        lib.resLibClose(); // so that a file of this name is read again whatever its time
        nxFileMake(name, bytes);
        open(name);
    }
    void TearDown() override { NxErrorOk(); }
};

std::string fileOf(auto const& object) {
    NX_ByteVec file;
    return object.fileData(file) == 0 ? std::string(file.dataPConst(), file.itemPEndConst()) : "";
}

std::string imageOf(NX_ResIconGroup const& group, unsigned int entry) {
    NX_ResIconImage icon;
    return nxDecoded(icon, group.imageLoad(icon, entry));
}

TEST_F(ResObject, ImagesGoBackIntoTheirFiles) {
    for (char const* name : {"resources.dll", "small.bmp"}) {
        open(name);
        NX_ResBitmap const bitmap(lib, *name == 'r' ? 7 : 1);
        ASSERT_EQ(bitmap.resIsOk(), 1) << name;
        EXPECT_TRUE(bitmap.imageWidth() == 7 && bitmap.imageHeight() == 3 && bitmap.imageDepth() == 24);
        NX_Image image;
        EXPECT_EQ(bitmap.imagePixels(image), 0);
        EXPECT_EQ(nxPixels(image).substr(0, 8), "R E1001E");
        EXPECT_EQ(image.pixel(0, 2), (NX_Pixel{0xFF, 0xA0, 0, 255}));
        EXPECT_EQ(fileOf(bitmap), nxResTestFile("small.bmp"));
    }
    std::string first;
    for (char const* name : {"two.ico", "resources.dll"}) {
        open(name);
        NX_ResIcon const icon(lib, 1);
        ASSERT_TRUE(icon.resIsOk() == 1 && icon.iconEntries().itemQty() == 2);
        EXPECT_TRUE(icon.iconBest(8, 8) == 0 && icon.iconBest() == 1 && icon.iconBest(16, 16, 1) == 1);
        EXPECT_EQ(imageOf(icon, 0).substr(0, 19), "K00 80000000 008000") << name;
        std::string const both = imageOf(icon, 0) + imageOf(icon, 1);
        EXPECT_TRUE(first.empty() || first == both);
        first = both;
        EXPECT_EQ(fileOf(icon), nxResTestFile("two.ico")) << name;
    }
    for (char const* name : {"spot.cur", "resources.dll"}) {
        open(name);
        NX_ResCursor const cursor(lib, *name == 's' ? NX_ResKey(1) : NX_ResKey("pointer"));
        NX_ResIconImage image;
        ASSERT_TRUE(cursor.resIsOk() == 1 && cursor.imageLoad(image, cursor.iconBest()) == 0) << name;
        EXPECT_TRUE(image.imageWidth() == 16 && image.imageHeight() == 16);
        EXPECT_TRUE(image.hotX() == 3 && image.hotY() == 5);
        EXPECT_EQ(fileOf(cursor), nxResTestFile("spot.cur")) << name;
    }
}

// The module of the tests with a change: `with` in the place of `what`, which it has once.
std::string patched(std::string const& what, std::string const& with) {
    std::string bytes = nxResTestFile("resources.dll");
    EXPECT_EQ(bytes.find(what), bytes.rfind(what));
    return bytes.replace(bytes.find(what), with.size(), with);
}

TEST_F(ResObject, FilesHaveTheSizesOfTheImages) {
    for (unsigned int const height : {16u, 32u, 64u}) { // 16 is not doubled
        std::string const size = nxHex("00000200 0100 1000");
        make("height.dll", patched(size + nxLe(32, 2), size + nxLe(height, 2)));
        NX_ResCursor const cursor(lib, "POINTER");
        EXPECT_EQ(cursor.iconEntries()[0].height, height == 64 ? 32u : 16u);
        EXPECT_EQ(fileOf(cursor), nxResTestFile("spot.cur")) << height;
    }
    make("png.ico", nxHex("0000 0100 0100 20200000 0100 2000 21000000 16000000"
                          "89504E470D0A1A0A 0000000D 49484452 0000012C 00000080 01 00 000000 99AF69F9"));
    NX_ResIcon const icon(lib, 1);
    NX_ResIconImage image;
    NX_Image pixels;
    ASSERT_EQ(icon.imageLoad(image, 0), 0);
    EXPECT_EQ(fileOf(icon).substr(6, 2), nxHex("0080")) << "256 or more, 128";
    EXPECT_TRUE(image.imagePixels(pixels) == -1 && nxErrorTells(errorNumImage, "V=1")) << "a header alone";
}

// Makers of modules count the images' ids anew in each language.
TEST_F(ResObject, ImagesInTheLanguageOfTheirGroup) {
    std::string const two = nxHex("0000 0200 01000000"); // the directory of icons 1 and 2
    std::string bytes = patched(two, two);
    auto const number = [&bytes](std::size_t at) {
        return nxBytes(bytes)[at] + 256u * nxBytes(bytes)[at + 1];
    };
    std::size_t const at = bytes.find(two) + 4;
    std::size_t const lang = number(bytes.find(".rsrc") + 20) + number(at + 4) + 16;
    ASSERT_TRUE(number(at + 8) == 2 && number(lang) == 0x409);
    bytes.replace(lang, 2, 2, '\0'); // 1, neutral; 1, of the group's language
    bytes[at + 8] = 1;
    make("langs.dll", bytes);
    NX_ResIcon const icon(lib, 1);
    NX_ResIconImage image;
    EXPECT_TRUE(icon.imageLoad(image, 0) == 0 && image.imageWidth() == 16);
    EXPECT_TRUE(icon.imageLoad(image, 1) == -1 && NxErrorNum() == errorNumResLibNotFound);
}

// What is in the list can be decoded, even under a name nobody can ask for.
TEST_F(ResObject, TheOneDescribed) {
    for (char const* name : {"0200 2300 3100", "0000 5000"}) { // "#1", and nothing
        make("name.dll", patched(nxHex("0700 5000 4F00 4900"), nxHex(name)));
        NX_ResDescVec list;
        ASSERT_TRUE(lib.resDescs(list, resTypeCursorGroup) == 0 && list.itemQty() == 1);
        EXPECT_EQ(NX_ResCursor(lib, list[0].resName()).resIsOk(), 0) << name;
        NX_ResCursor const cursor(lib, list[0]);
        EXPECT_TRUE(cursor.resIsOk() == 1 && cursor.iconEntries().itemQty() == 1) << name;
    }
}

std::string linesOf(NX_MenuItemVec const& items) {
    std::string lines;
    for (unsigned int n = 0; n < items.itemQty(); ++n) {
        NX_MenuItem const& item = items[n];
        NX_StringA line;
        line.strPrintF("%u %d %x %x %d %s|", item.itemDepth(), item.itemId(), item.itemType(),
                       item.itemState(), item.itemHelpId(), item.itemText().dataPConst());
        lines += line.dataPConst();
    }
    return lines;
}

TEST_F(ResObject, MenusAndKeys) {
    open("resources.dll");
    NX_ResMenu const plain(lib, 10);
    NX_ResMenu const extended(lib, 11);
    EXPECT_EQ(linesOf(plain.menuItems()),
              "0 0 0 0 0 &File|1 101 0 0 0 &Open\tCtrl+O|1 0 800 3 0 |1 0 0 0 0 &Recent|"
              "2 102 0 1 0 None|1 103 0 8 0 E&xit|0 104 4000 0 0 &Help|");
    EXPECT_EQ(linesOf(extended.menuItems()), "0 200 0 0 900 &View|1 201 200 8 0 &Large|1 202 0 0 0 &Small|");
    NX_ResAccel const keys(lib, "keys");
    ASSERT_EQ(keys.accelEntries().itemQty(), 4u);
    std::string entries;
    for (unsigned int n = 0; n < 4; ++n) {
        NX_AccelEntry const& entry = keys.accelEntries()[n];
        for (int const field :
             {static_cast<int>(entry.flags), static_cast<int>(entry.key), static_cast<int>(entry.id)})
            entries += std::to_string(field) + " ";
    }
    EXPECT_EQ(entries, "9 79 101 1 112 104 13 88 103 18 104 104 ")
        << "shift 4, control 8, Alt 16, no inverting 2";
    EXPECT_STREQ(NX_ResString(lib, 16).dataPConst(), "the first of the next");
    EXPECT_STREQ(NX_ResString(lib, 17).dataPConst(), "");
}

TEST_F(ResObject, WhatIsNotThere) {
    open("resources.dll");
    NX_Image image(1, 1);
    NX_ResBitmap const number(lib, 99);
    EXPECT_TRUE(number.resIsOk() == 0 && number.errorNum() == errorNumResLibNotFound);
    EXPECT_TRUE(nxErrorTells(errorNumResLibNotFound, " V=99"));
    NX_ResIcon const name(lib, "NONE");
    EXPECT_TRUE(nxErrorTells(errorNumResLibNotFound, " T=NONE"));
    EXPECT_TRUE(number.imagePixels(image) == -1 && image.imageWidth() == 1 && fileOf(number).empty());
    EXPECT_TRUE(name.iconBest() == NX_NO_INDEX && fileOf(name).empty() && name.resHand() == nullptr);
    NxErrorOk();
    EXPECT_TRUE(NX_ResMenu(NX_ResLib(), 10).errorNum() == errorNumResLibNotFound && NxErrorIsError());
    EXPECT_EQ(NX_ResMenu(lib, NX_ResKey(10, 0x407)).errorNum(), errorNumResLibNotFound) << "not in German";
}

TEST_F(ResObject, DamageInAFileThatOpens) {
    std::string bitmap = nxResTestFile("small.bmp");
    bitmap[14 + 8] = 100; // more rows than there are
    make("damaged.bmp", bitmap);
    NX_ResBitmap const damaged(lib, 1);
    EXPECT_TRUE(nxErrorTells(errorNumImage, "damaged.bmp") && nxErrorTells(errorNumImage, " V=1"));
    EXPECT_TRUE(damaged.errorNum() == errorNumImage && damaged.resDesc().resType() == resTypeNone);

    std::string icon = nxResTestFile("two.ico");
    icon[38 + 14] = 3; // bits a pixel of the first image
    make("damaged.ico", icon);
    NX_ResIcon const half(lib, 1);
    NX_ResIconImage image;
    EXPECT_TRUE(half.resIsOk() == 1 && half.imageLoad(image, 1) == 0);
    EXPECT_TRUE(half.imageLoad(image, 0) == -1 && NxErrorNum() == errorNumImage && image.imageWidth() == 16);
    EXPECT_EQ(fileOf(half), "");

    std::string const codes = nxDibHead(4, 2, 8, 1, 1, 40, 2) + nxHex("00000000 0400");
    make("codes.bmp", "BM" + nxLe(0, 8) + nxLe(14 + 44, 4) + codes);
    NX_ResBitmap const packed(lib, 1);
    EXPECT_TRUE(packed.resIsOk() == 1 && packed.resHand() == nullptr && NxErrorNum() == errorNumImage);

    constexpr unsigned int qty = 1025; // more images than a file has
    std::string many;
    std::string images;
    for (unsigned int n = 0; n < qty; ++n) {
        many += nxHex("01010000 0100 2000 2C000000") + nxLe(6 + 16 * qty, 4);
        images += nxDibHead(1, 2, 32) + nxHex("00000000");
    }
    make("many.ico", nxHex("0000 0100") + nxLe(qty, 2) + many + images);
    EXPECT_TRUE(fileOf(NX_ResIcon(lib, 1)).empty() && NxErrorNum() == errorNumImage);
}

TEST_F(ResObject, ObjectsKeepTheirLibrary) {
    open("two.ico");
    NX_ResIcon icon(lib, 1);
    lib.resLibClose();
    NX_ResIcon const copy(icon);
    open("small.bmp");
    icon = NX_ResIcon(lib, 1);
    EXPECT_EQ(icon.resIsOk(), 0);
    EXPECT_EQ(imageOf(copy, 0).substr(0, 12), "K00 80000000");
    EXPECT_EQ(copy.resLib().resLibIsOpen(), 1);
}

} // namespace
