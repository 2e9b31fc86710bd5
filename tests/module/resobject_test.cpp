// Resource objects from a module and from loose files: alike on every system.
#include "general/error/errorman.h"
#include "general/finfo/file.h"
#include "general/module/resicon.h"
#include "general/module/resmenu.h"
#include "general/module/resstring.h"
#include "tests/module/imagecases.h"
#include "tests/module/restest.h"
#include "tests/support/support.h"

#include <thread>

namespace {

struct ResObject : testing::Test {
    NX_ResLib lib;

    void open(char const* name) { ASSERT_EQ(lib.resLibOpen(name, resLibTypeFile), 1) << name; }
    void TearDown() override { NxErrorOk(); }
};

std::string textOf(NX_ByteVec const& bytes) {
    return {bytes.dataPConst(), bytes.dataPConst() + bytes.itemQty()};
}

std::string imageOf(NX_ResIconGroup const& group, unsigned int entry) {
    NX_ResIconImage icon;
    NX_Image image;
    EXPECT_TRUE(group.imageLoad(icon, entry) == 0 && icon.imagePixels(image) == 0);
    return nxPixels(image);
}

TEST_F(ResObject, BitmapsGoBackIntoTheirFiles) {
    for (char const* name : {"resources.dll", "small.bmp"}) {
        open(name);
        NX_ResBitmap const bitmap(lib, *name == 'r' ? 7 : 1);
        ASSERT_EQ(bitmap.resIsOk(), 1) << name;
        EXPECT_TRUE(bitmap.imageWidth() == 7 && bitmap.imageHeight() == 3 && bitmap.imageDepth() == 24);
        NX_Image image;
        EXPECT_EQ(bitmap.imagePixels(image), 0);
        EXPECT_EQ(nxPixels(image).substr(0, 8), "R E1001E");
        EXPECT_EQ(image.pixel(0, 2), (NX_Pixel{0xFF, 0xA0, 0, 255}));
        NX_ByteVec file;
        EXPECT_EQ(bitmap.fileData(file), 0);
        EXPECT_EQ(textOf(file), nxFileContent(nxResTestPath("small.bmp").c_str()));
    }
}

TEST_F(ResObject, IconsAndCursorsGoBackIntoTheirFiles) {
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
        NX_ByteVec file;
        EXPECT_EQ(icon.fileData(file), 0);
        EXPECT_EQ(textOf(file), nxFileContent(nxResTestPath("two.ico").c_str())) << name;
    }
    for (char const* name : {"spot.cur", "resources.dll"}) {
        open(name);
        NX_ResCursor const cursor(lib, *name == 's' ? NX_ResKey(1) : NX_ResKey("pointer"));
        NX_ResIconImage image;
        ASSERT_TRUE(cursor.resIsOk() == 1 && cursor.imageLoad(image, cursor.iconBest()) == 0) << name;
        EXPECT_TRUE(image.imageWidth() == 16 && image.imageHeight() == 16 && image.hotX() == 3 &&
                    image.hotY() == 5);
        NX_ByteVec file;
        EXPECT_EQ(cursor.fileData(file), 0);
        EXPECT_EQ(textOf(file), nxFileContent(nxResTestPath("spot.cur").c_str())) << name;
    }
}

// The module of the tests with a change: `with` in the place of `what`, which it has once.
std::string patched(std::string const& what, std::string const& with) {
    std::string bytes = nxFileContent(nxResTestPath("resources.dll").c_str());
    EXPECT_EQ(bytes.find(what), bytes.rfind(what));
    return bytes.replace(bytes.find(what), with.size(), with);
}

TEST_F(ResObject, FilesHaveTheSizesOfTheImages) {
    for (int const height : {16, 32, 64}) { // 16 is not doubled
        lib.resLibClose();                  // so that the next file is read whatever its time
        nxFileMake("height.dll",
                   patched(nxHex("00000200 0100 1000 2000"),
                           nxHex("00000200 0100 1000") + nxLe(static_cast<unsigned int>(height), 2)));
        open("height.dll");
        NX_ResCursor const cursor(lib, "POINTER");
        NX_ByteVec file;
        EXPECT_EQ(cursor.iconEntries()[0].height, height == 64 ? 32u : 16u);
        EXPECT_EQ(cursor.fileData(file), 0);
        EXPECT_EQ(textOf(file), nxFileContent(nxResTestPath("spot.cur").c_str())) << height;
    }
    std::string const png =
        nxHex("89504E470D0A1A0A 0000000D 49484452 0000012C 00000080 01 00 000000 99AF69F9");
    nxFileMake("png.ico", nxHex("0000 0100 0100 20200000 0100 2000 21000000 16000000") + png);
    open("png.ico");
    NX_ResIcon const icon(lib, 1);
    NX_ResIconImage image;
    NX_Image pixels;
    NX_ByteVec file;
    ASSERT_TRUE(icon.imageLoad(image, 0) == 0 && icon.fileData(file) == 0);
    EXPECT_EQ(textOf(file).substr(6, 2), nxHex("0080")) << "256 or more, 128";
    EXPECT_TRUE(image.imagePixels(pixels) == -1 && NxErrorNum() == errorNumImage) << "a header alone";
    EXPECT_NE(NxErrorBuf().strStrFirst("V=1"), NX_NO_INDEX) << NxErrorBuf();
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
    nxFileMake("langs.dll", bytes);
    open("langs.dll");
    NX_ResIcon const icon(lib, 1);
    NX_ResIconImage image;
    EXPECT_TRUE(icon.imageLoad(image, 0) == 0 && image.imageWidth() == 16);
    EXPECT_TRUE(icon.imageLoad(image, 1) == -1 && NxErrorNum() == errorNumResLibNotFound);
}

// What is in the list can be decoded, even under a name nobody can ask for.
TEST_F(ResObject, TheOneDescribed) {
    for (char const* name : {"0200 2300 3100", "0000 5000"}) { // "#1", and nothing
        lib.resLibClose();
        nxFileMake("name.dll", patched(nxHex("0700 5000 4F00 4900"), nxHex(name)));
        open("name.dll");
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
    static NX_AccelEntry const expected[] = {{accelVirtKey | accelControl, 'O', 101},
                                             {accelVirtKey, 0x70, 104},
                                             {accelVirtKey | accelControl | accelShift, 'X', 103},
                                             {accelAlt | accelNoInvert, 'h', 104}};
    for (unsigned int n = 0; n < 4; ++n) {
        NX_AccelEntry const& entry = keys.accelEntries()[n];
        EXPECT_TRUE(entry.flags == expected[n].flags && entry.key == expected[n].key &&
                    entry.id == expected[n].id)
            << n << ' ' << entry.flags << ' ' << entry.key;
    }
    EXPECT_STREQ(NX_ResString(lib, 16).dataPConst(), "the first of the next");
    EXPECT_STREQ(NX_ResString(lib, 17).dataPConst(), "");
}

TEST_F(ResObject, WhatIsNotThere) {
    open("resources.dll");
    NX_Image image(1, 1);
    NX_ByteVec bytes;
    NX_ResBitmap const number(lib, 99);
    EXPECT_TRUE(number.resIsOk() == 0 && number.errorNum() == errorNumResLibNotFound);
    EXPECT_NE(std::string(NxErrorBuf().dataPConst()).find(" V=99"), std::string::npos) << NxErrorBuf();
    NX_ResIcon const name(lib, "NONE");
    EXPECT_NE(std::string(NxErrorBuf().dataPConst()).find(" T=NONE"), std::string::npos) << NxErrorBuf();
    EXPECT_TRUE(number.imagePixels(image) == -1 && image.imageWidth() == 1 && number.fileData(bytes) == -1);
    EXPECT_TRUE(name.iconBest() == NX_NO_INDEX && name.fileData(bytes) == -1 && name.resHand() == nullptr);
    NxErrorOk();
    EXPECT_TRUE(NX_ResMenu(NX_ResLib(), 10).errorNum() == errorNumResLibNotFound && NxErrorIsError());
    EXPECT_EQ(NX_ResMenu(lib, NX_ResKey(10, 0x407)).errorNum(), errorNumResLibNotFound) << "not in German";
}

TEST_F(ResObject, DamageInAFileThatOpens) {
    std::string bitmap = nxFileContent(nxResTestPath("small.bmp").c_str());
    bitmap[14 + 8] = 100; // more rows than there are
    nxFileMake("damaged.bmp", bitmap);
    open("damaged.bmp");
    EXPECT_EQ(NX_ResBitmap(lib, 1).errorNum(), errorNumImage);
    EXPECT_EQ(NX_ResBitmap(lib, 1).resDesc().resType(), resTypeNone);
    std::string const details = NxErrorBuf().dataPConst();
    EXPECT_TRUE(details.find("damaged.bmp") != std::string::npos && details.find(" V=1") != std::string::npos)
        << details;
    std::string icon = nxFileContent(nxResTestPath("two.ico").c_str());
    icon[38 + 14] = 3; // bits a pixel of the first image
    nxFileMake("damaged.ico", icon);
    open("damaged.ico");
    NX_ResIcon const half(lib, 1);
    NX_ResIconImage image;
    NX_ByteVec file;
    EXPECT_TRUE(half.resIsOk() == 1 && half.imageLoad(image, 1) == 0);
    EXPECT_TRUE(half.imageLoad(image, 0) == -1 && NxErrorNum() == errorNumImage && image.imageWidth() == 16);
    EXPECT_TRUE(half.fileData(file) == -1 && file.itemQty() == 0);
    std::string const codes = nxDibHead(4, 2, 8, 1, 1, 40, 2) + nxHex("00000000 0400");
    nxFileMake("codes.bmp", "BM" + nxLe(0, 8) + nxLe(14 + 44, 4) + codes);
    open("codes.bmp");
    NX_ResBitmap const packed(lib, 1);
    EXPECT_TRUE(packed.resIsOk() == 1 && packed.resHand() == nullptr && NxErrorNum() == errorNumImage);
    unsigned int const qty = 1025;
    std::string many = nxHex("0000 0100") + nxLe(qty, 2);
    std::string const one = nxDibHead(1, 2, 32) + nxHex("00000000");
    for (unsigned int n = 0; n < qty; ++n)
        many += nxHex("01010000 0100 2000 2C000000") + nxLe(6 + 16 * qty, 4);
    for (unsigned int n = 0; n < qty; ++n)
        many += one;
    nxFileMake("many.ico", many);
    open("many.ico");
    EXPECT_TRUE(NX_ResIcon(lib, 1).fileData(file) == -1 && NxErrorNum() == errorNumImage);
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

TEST_F(ResObject, ThreadsMakeTheirOwnFromOneLibrary) {
    open("resources.dll");
    auto const use = [this] {
        for (int n = 0; n < 200; ++n) {
            NX_ResIcon const icon(lib, 1);
            NX_ResIconImage image;
            EXPECT_TRUE(icon.resIsOk() == 1 && icon.imageLoad(image, 0) == 0);
        }
    };
    std::thread first(use);
    std::thread second(use);
    first.join();
    second.join();
}

} // namespace
