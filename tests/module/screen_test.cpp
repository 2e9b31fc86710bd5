// The decoders beside what the system makes of the same resources; handles and who releases them.
#include "general/module/palette.h"
#include "general/module/resicon.h"
#include "general/module/resmenu.h"
#include "tests/module/imagecases.h"
#include "tests/module/restest.h"

#include <windows.h>

namespace {

// A bitmap of the system, without alpha.
NX_Image sysImage(HBITMAP bitmap, unsigned int width, unsigned int height) {
    HDC const dc = GetDC(nullptr);
    BITMAPINFO info = {};
    info.bmiHeader = {40, static_cast<LONG>(width), -static_cast<LONG>(height), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<DWORD> pixels(width * height);
    EXPECT_EQ(GetDIBits(dc, bitmap, 0, height, pixels.data(), &info, DIB_RGB_COLORS),
              static_cast<int>(height));
    ReleaseDC(nullptr, dc);
    NX_Image image(width, height);
    for (unsigned int n = 0; n < width * height; ++n)
        image.rowPMod(n / width)[n % width] = {GetBValue(pixels[n]), GetGValue(pixels[n]),
                                               GetRValue(pixels[n]), 255};
    return image;
}

struct Screen : testing::Test {
    NX_ResLib lib;

    void SetUp() override { ASSERT_EQ(lib.resLibOpen("resources.dll", resLibTypeFile), 1); }
    void TearDown() override { NxErrorOk(); }
};

TEST_F(Screen, BitmapsHaveTheSystemsPixels) {
    for (NXS_ImageCase const& row : nxImageCases()) {
        if (row.isOwn || row.pixels.empty())
            continue;
        NX_Dib dib;
        ASSERT_EQ(dib.dibOpen(nxBytes(row.bytes), nxSize(row.bytes)), 0) << row.name;
        nxFileMake("case.bmp", "BM" + nxLe(nxSize(row.bytes) + 14, 4) + nxLe(0, 4) +
                                   nxLe(14 + dib.dataOffBits(), 4) + row.bytes);
        NX_ResLib loose;
        ASSERT_EQ(loose.resLibOpen("case.bmp", resLibTypeFile), 1) << row.name;
        NX_ResBitmap const bitmap(loose, 1);
        HBITMAP const hand = bitmap.resHand();
        ASSERT_NE(hand, nullptr) << row.name << NxErrorBuf();
        EXPECT_EQ(nxPixels(sysImage(hand, dib.imageWidth(), dib.imageHeight())), row.pixels) << row.name;
    }
    NX_ResBitmap const own(lib, 7);
    EXPECT_EQ(nxPixels(sysImage(own.resHand(), 7, 3)), nxDecoded(own, 0));
}

TEST_F(Screen, IconsHaveTheSystemsPixels) {
    NX_ResLib loose;
    ASSERT_EQ(loose.resLibOpen("spot.cur", resLibTypeFile), 1);
    NX_ResIcon const icon(lib, 1);
    NX_ResCursor const cursor(lib, "POINTER");
    NX_ResCursor const file(loose, 1);
    ASSERT_EQ(loose.resLibOpen("disc.ico", resLibTypeFile), 1);
    NX_ResIcon const compressed(loose, 1);
    struct {
        NX_ResIconGroup const& group;
        unsigned int entry;
    } const rows[] = {{icon, 0}, {icon, 1}, {cursor, 0}, {file, 0}, {compressed, 0}, {compressed, 1}};
    for (auto const& row : rows) {
        NX_ResIconImage image;
        NX_Image pixels;
        ASSERT_TRUE(row.group.imageLoad(image, row.entry) == 0 && image.imagePixels(pixels) == 0);
        unsigned int const width = image.imageWidth();
        unsigned int const height = image.imageHeight();
        auto* const bytes = const_cast<BYTE*>(image.resData().dataP());
        HICON const hand =
            CreateIconFromResourceEx(bytes, image.resData().dataSize(), image.hotX() == 0, 0x30000,
                                     static_cast<int>(width), static_cast<int>(height), 0);
        ICONINFO info;
        ASSERT_TRUE(GetIconInfo(hand, &info));
        bool const isMono = info.hbmColor == nullptr; // then image and mask stand in one, the mask above
        NX_Image const mask = sysImage(info.hbmMask, width, isMono ? 2 * height : height);
        NX_Image const colors = isMono ? mask : sysImage(info.hbmColor, width, height);
        for (unsigned int n = 0; n < width * height; ++n) {
            NX_Pixel const own = pixels.pixels()[n];
            NX_Pixel const system = colors.pixels()[isMono ? width * height + n : n];
            if (own.alpha == 0 || own.alpha == 255) { // the mask knows nothing between
                EXPECT_EQ(own.alpha == 0, mask.pixels()[n].red == 255) << n;
            }
            EXPECT_EQ((NX_Pixel{own.red, own.green, own.blue, 255}), system) << n;
        }
        if (image.hotX() != 0) {
            EXPECT_TRUE(!info.fIcon && info.xHotspot == 3 && info.yHotspot == 5);
        }
        DeleteObject(info.hbmMask);
        DeleteObject(info.hbmColor);
        EXPECT_TRUE(DestroyIcon(hand));
    }
    auto* const group = const_cast<BYTE*>(icon.resData().dataP());
    for (int const size : {8, 11, 12, 13, 16, 32})
        EXPECT_EQ(LookupIconIdFromDirectoryEx(group, TRUE, size, size, LR_DEFAULTCOLOR),
                  icon.iconEntries()[icon.iconBest(static_cast<unsigned int>(size),
                                                   static_cast<unsigned int>(size))]
                      .id)
            << size;
    HICON const usual = icon.imageHandSys(0);
    ICONINFO info;
    EXPECT_TRUE(GetIconInfo(usual, &info) &&
                nxPixels(sysImage(info.hbmColor, 32, 32)).substr(0, 31) == "K K K K 800000 800000 800000 80");
    EXPECT_TRUE(DeleteObject(info.hbmMask) && DeleteObject(info.hbmColor) && DestroyIcon(usual));
    EXPECT_TRUE(icon.resHand() != nullptr && cursor.resHand() != nullptr && file.resHand() != nullptr);
}

void expectMenu(HMENU menu, NX_MenuItemVec const& items, unsigned int& n, unsigned int depth) {
    for (int at = 0; at < GetMenuItemCount(menu); ++at) {
        char text[80] = {};
        MENUITEMINFOA info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = sizeof text;
        ASSERT_TRUE(GetMenuItemInfoA(menu, static_cast<UINT>(at), TRUE, &info));
        ASSERT_LT(n, items.itemQty());
        NX_MenuItem const& item = items[n++];
        EXPECT_STREQ(item.itemText().dataPConst(), text);
        EXPECT_EQ(item.itemType(), info.fType) << text;
        EXPECT_EQ(item.itemState(), info.fState) << text;
        EXPECT_TRUE(item.itemDepth() == depth && (item.itemIsPopup() != 0) == (info.hSubMenu != nullptr))
            << text;
        if (info.hSubMenu == nullptr) {
            EXPECT_EQ(item.itemId(), static_cast<int>(info.wID)) << text;
        } else {
            expectMenu(info.hSubMenu, items, n, depth + 1);
        }
    }
}

TEST_F(Screen, MenusAndKeysAreTheSystems) {
    for (int const id : {10, 11}) {
        NX_ResMenu const menu(lib, id);
        unsigned int n = 0;
        expectMenu(menu.resHand(), menu.menuItems(), n, 0);
        EXPECT_EQ(n, menu.menuItems().itemQty());
    }
    NX_ResAccel const keys(lib, "KEYS");
    HACCEL const system = LoadAcceleratorsA(lib.resLibHandSys(), "KEYS");
    for (HACCEL const hand : {system, keys.resHand()}) {
        ACCEL table[8];
        ASSERT_EQ(CopyAcceleratorTableA(hand, table, 8), 4);
        for (unsigned int n = 0; n < 4; ++n) {
            NX_AccelEntry const& entry = keys.accelEntries()[n];
            EXPECT_TRUE((table[n].fVirt & 0x7F) == entry.flags && table[n].key == entry.key &&
                        table[n].cmd == entry.id);
        }
    }
}

TEST_F(Screen, TheLastHolderReleasesTheHandle) {
    HMENU hand = nullptr;
    {
        NX_ResMenu menu(lib, 10);
        NX_ResMenu const copy(menu);
        hand = menu.resHand();
        EXPECT_EQ(hand, copy.resHand());
        menu = NX_ResMenu(lib, 11);
        EXPECT_TRUE(IsMenu(hand));
    }
    EXPECT_FALSE(IsMenu(hand));
}

TEST_F(Screen, Palettes) {
    NX_ColorVec colors;
    NX_Color nearest;
    EXPECT_TRUE(NX_Palette(colors).paletteHand() == nullptr && NxErrorNum() == errorNumSystem)
        << "no colours";
    for (NX_Color const& color : {NX_Color(255, 0, 0), NX_Color(0, 0, 255)})
        colors += color;
    NX_Palette const palette(colors);
    HPALETTE const hand = palette.paletteHand();
    EXPECT_EQ(GetNearestPaletteIndex(hand, RGB(10, 10, 200)), palette.colorNearest(NX_Color(10, 10, 200)));
    EXPECT_EQ(NX_Palette(palette).paletteHand(), hand);
    EXPECT_EQ(palette.colorNearestSys(NX_Color(1, 2, 3), nearest), 0);
    EXPECT_EQ(nearest, NX_Color(1, 2, 3)) << "a screen without a palette shows every colour";
    HBRUSH const brush = NxColorBrushSys(NX_Color(1, 2, 3));
    EXPECT_TRUE(brush != nullptr && DeleteObject(brush));
}

} // namespace
