// Decoding of bitmaps, images and groups of icons, menus and accelerators from bytes, good and damaged.
#include "general/module/iconimage.h"
#include "general/module/menuitem.h"
#include "tests/fuzz/imageread.h"
#include "tests/module/imagecases.h"
#include "tests/module/restest.h"
#include "tests/support/support.h"

#include <filesystem>

namespace {

std::string decoded(std::string const& bytes) {
    NX_Dib dib;
    return nxDecoded(dib, dib.dibOpen(nxBytes(bytes), nxSize(bytes)));
}

TEST(Image, Bitmaps) {
    for (NXS_ImageCase const& row : nxImageCases()) {
        EXPECT_EQ(decoded(row.bytes), row.pixels) << row.name;
        // Every byte counts, but for the padding of the last row.
        EXPECT_EQ(decoded(row.bytes.substr(0, row.bytes.size() - 4)), "") << row.name;
    }
    NX_Dib dib;
    std::string const png = nxDibHead(1, 1, 0, 5) + std::string(64, 'x');
    EXPECT_EQ(dib.dibOpen(nxBytes(png), nxSize(png)), errorNumSystem);
    EXPECT_EQ(dib.dibOpen(nullptr, 0), errorNumImage);
}

TEST(Image, IconImages) {
    std::string const two = nxHex("00000000 FFFFFF00");
    std::string const mono = nxDibHead(2, 4, 1) + two + nxHex("80000000 40000000 40000000 C0000000");
    std::tuple<char const*, NX_IconType, std::string, std::string> const rows[] = {
        // The upper row is transparent and inverts where it is white.
        {"mask", iconTypeIcon, mono, "K00 W00 / W K00"},
        {"hot spot", iconTypeCursor, nxHex("0100 FFFF") + mono, "K00 W00 / W K00"},
        {"alpha", iconTypeIcon, nxDibHead(2, 2, 32) + nxHex("01020380 04050600 C0000000"),
         "03020180 06050400"},
        {"no alpha, so the mask", iconTypeIcon, nxDibHead(2, 2, 32) + nxHex("01020300 04050600 40000000"),
         "030201 06050400"},
        {"no alpha and no mask", iconTypeIcon, nxDibHead(1, 2, 32) + nxHex("01020300"), "030201"},
        {"no mask", iconTypeIcon, nxDibHead(1, 2, 24) + nxHex("01020300"), ""},
        {"height of one", iconTypeIcon, nxDibHead(1, 1, 24) + nxHex("01020300 00000000"), ""},
        {"run-length", iconTypeIcon, nxDibHead(1, 2, 8, 1, 2) + two + nxHex("0100 0001 00000000"), ""},
        {"hot spot, cut", iconTypeCursor, nxHex("0100"), ""},
    };
    for (auto const& [name, type, bytes, pixels] : rows) {
        NX_IconImage icon;
        int const opened = icon.imageOpen(nxBytes(bytes), nxSize(bytes), type);
        EXPECT_EQ(nxDecoded(icon, opened), pixels) << name;
        bool const isHot = type == iconTypeCursor && opened == 0;
        EXPECT_TRUE(icon.hotX() == isHot && icon.hotY() == -isHot && icon.imageIsPng() == 0) << name;
    }
}

TEST(Image, TheBestOfAGroup) {
    std::string group = nxHex("0000 0100 0600");
    //               width height colours planes depth       size     id
    group += nxHex("10 10 10 00 0100 0400 00010000 0100"); // 16, 4 bits
    group += nxHex("20 20 10 00 0000 0000 00010000 0200"); // 32, sixteen colours told
    group += nxHex("20 20 00 00 0100 0800 00010000 0300"); // 32, 8 bits
    group += nxHex("20 20 00 00 0100 2000 00010000 0400"); // 32, 32 bits
    group += nxHex("20 20 00 00 0100 2000 00010000 0500"); // the same once more
    group += nxHex("00 00 00 00 0100 2000 00010000 0600"); // 256
    NX_IconEntryVec entries;
    ASSERT_EQ(entries.iconRead(nxBytes(group), nxSize(group), iconTypeIcon), 0);
    static std::tuple<unsigned int, unsigned int, unsigned int, int> const rows[] = {
        {16, 16, 32, 1}, {20, 20, 32, 1}, {24, 24, 4, 1},  {32, 32, 4, 2},   {32, 32, 1, 2},
        {32, 32, 24, 3}, {32, 32, 32, 4}, {48, 48, 32, 4}, {255, 255, 1, 6}, {0xFFFFFFFF, 0xFFFFFFFF, 8, 6},
        {0, 0, 0, 1},
    };
    for (auto const& [width, height, depth, id] : rows)
        EXPECT_EQ(entries[entries.iconBest(width, height, depth)].id, id) << width << ' ' << depth;
    EXPECT_EQ(entries.iconRead(nxBytes(group), nxSize(group) - 1, iconTypeIcon), errorNumImage);
    EXPECT_EQ(entries.iconBest(32, 32, 8), NX_NO_INDEX);
    EXPECT_EQ(entries.iconRead(nxBytes(group), nxSize(group), iconTypeCursor), errorNumImage);
    EXPECT_EQ(entries.iconRead(nxBytes(nxHex("000001000000")), 6, iconTypeIcon), errorNumImage);
}

TEST(Image, MenusInsideMenus) {
    auto const nested = [](unsigned int depth) {
        std::string bytes(4, '\0');
        for (unsigned int n = 0; n < depth; ++n)
            bytes += nxHex("9000 4100 0000"); // a popup, the last of its level
        return bytes + nxHex("8000 0500 4200 0000");
    };
    NX_MenuItemVec items;
    for (unsigned int const depth : {0u, 1u, NX_MenuItemVec::depthMax}) {
        std::string const menu = nested(depth);
        ASSERT_EQ(items.menuRead(nxBytes(menu), nxSize(menu)), 0);
        EXPECT_EQ(items.menuFind(5), depth);
        EXPECT_EQ(items[depth].itemDepth(), depth);
        for (unsigned int size = 0; size < menu.size(); ++size)
            EXPECT_EQ(items.menuRead(nxBytes(menu), size), errorNumImage) << size;
        EXPECT_EQ(items.itemQty(), 0u);
    }
    for (std::string const& menu : {nested(NX_MenuItemVec::depthMax + 1), nxHex("0200 0000 8000 0500 0000"),
                                    nxHex("0000 FFFF 8000 0500 0000"), nxHex("0100 0400 00000000 00000000")})
        EXPECT_EQ(items.menuRead(nxBytes(menu), nxSize(menu)), errorNumImage);
}

TEST(Image, Accelerators) {
    std::string const table = nxHex("1500 4100 0700 0000 8000 4200 0800 0000 0000 4300 0900 0000");
    NX_AccelVec entries;
    ASSERT_EQ(entries.accelRead(nxBytes(table), 24), 0);
    ASSERT_EQ(entries.itemQty(), 2u);
    EXPECT_TRUE(entries[0].flags == (accelVirtKey | accelShift | accelAlt) && entries[0].key == 'A');
    EXPECT_TRUE(entries[1].flags == 0 && entries[1].id == 8);
    EXPECT_EQ(entries.accelRead(nxBytes(table), 15), errorNumImage);
    EXPECT_EQ(entries.itemQty(), 0u);
}

TEST(Image, EveryCutAndEveryChangedByte) {
    int files = 0;
    unsigned int sum = 0;
    for (auto const& file : std::filesystem::directory_iterator(nxResTestPath("corpus/image"))) {
        auto const touch = [&](std::string const& bytes, std::size_t at) {
            EXPECT_TRUE(nxInputTouch(nxBytes(bytes), bytes.size(), sum)) << file.path().string() << at;
        };
        std::string const whole = nxFileContent(file.path().string().c_str());
        touch(whole, 0);
        nxDamageEach(whole, touch);
        ++files;
    }
    EXPECT_GT(files, 0);
}

} // namespace
