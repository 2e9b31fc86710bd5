// Without a screen the system makes nothing of a resource, and says so.
#include "general/module/palette.h"
#include "general/module/resicon.h"
#include "general/module/resmenu.h"
#include "general/platform/platform.h"
#include "tests/module/restest.h"

namespace {

TEST(NoScreen, HandlesAreRefused) {
    NX_ResLib lib;
    NX_ResLib loose;
    ASSERT_TRUE(lib.resLibOpen("resources.dll", resLibTypeFile) == 1 &&
                loose.resLibOpen("two.ico", resLibTypeFile) == 1);
    auto const isRefused = [](void const* hand, char const* which) {
        bool const isTold = nxErrorTells(errorNumSystem, "S=50") && nxErrorTells(errorNumSystem, which);
        NxErrorOk();
        return hand == nullptr && isTold;
    };
    NX_ResBitmap const bitmap(lib, 7);
    EXPECT_TRUE(isRefused(bitmap.resHand(), " V=7"));
    EXPECT_EQ(bitmap.resIsOk(), 1) << "the bitmap itself is good";
    EXPECT_TRUE(isRefused(NX_ResIcon(lib, 1).resHand(), " V=1"));
    EXPECT_TRUE(isRefused(NX_ResIcon(loose, 1).imageHandSys(0), " F="));
    EXPECT_TRUE(isRefused(NX_ResCursor(lib, "POINTER").resHand(), " T=POINTER"));
    EXPECT_TRUE(isRefused(NX_ResMenu(lib, 10).resHand(), " V=10"));
    EXPECT_TRUE(isRefused(NX_ResAccel(lib, "KEYS").resHand(), " T=KEYS"));
    EXPECT_TRUE(isRefused(NxColorBrushSys(NX_Color()), ""));
    NX_ColorVec colors;
    colors += NX_Color();
    NX_Palette const palette(colors);
    NX_Color nearest(1, 2, 3);
    EXPECT_TRUE(isRefused(palette.paletteHand(), ""));
    EXPECT_TRUE(palette.colorNearestSys(NX_Color(), nearest) == -1 && nearest == NX_Color(1, 2, 3));
    EXPECT_TRUE(DestroyIcon(nullptr) == FALSE && GetLastError() == ERROR_NOT_SUPPORTED);
}

} // namespace
