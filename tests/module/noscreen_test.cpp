// Without a screen the system makes nothing of a resource, and says so.
#include "general/error/errorman.h"
#include "general/module/palette.h"
#include "general/module/resicon.h"
#include "general/module/resmenu.h"
#include "general/platform/platform.h"
#include "tests/support/support.h"

namespace {

TEST(NoScreen, HandlesAreRefused) {
    NX_ResLib lib;
    ASSERT_EQ(lib.resLibOpen("resources.dll", resLibTypeFile), 1);
    NX_ResLib loose;
    ASSERT_EQ(loose.resLibOpen("two.ico", resLibTypeFile), 1);
    auto const isRefused = [](void const* hand, char const* which) {
        NX_StringA const details = NxErrorBuf();
        bool const told = NxErrorNum() == errorNumSystem && details.strStrFirst("S=50") != NX_NO_INDEX &&
                          details.strStrFirst(which) != NX_NO_INDEX;
        NxErrorOk();
        return hand == nullptr && told ? "" : details.dataPConst();
    };
    NX_ResBitmap const bitmap(lib, 7);
    EXPECT_STREQ(isRefused(bitmap.resHand(), " V=7"), "");
    EXPECT_EQ(bitmap.resIsOk(), 1) << "the bitmap itself is good";
    EXPECT_STREQ(isRefused(NX_ResIcon(lib, 1).resHand(), " V=1"), "");
    EXPECT_STREQ(isRefused(NX_ResIcon(loose, 1).imageHandSys(0), " F="), "");
    EXPECT_STREQ(isRefused(NX_ResCursor(lib, "POINTER").resHand(), " T=POINTER"), "");
    EXPECT_STREQ(isRefused(NX_ResMenu(lib, 10).resHand(), " V=10"), "");
    EXPECT_STREQ(isRefused(NX_ResAccel(lib, "KEYS").resHand(), " T=KEYS"), "");
    NX_ColorVec colors;
    colors += NX_Color();
    NX_Palette const palette(colors);
    NX_Color nearest(1, 2, 3);
    EXPECT_STREQ(isRefused(palette.paletteHand(), ""), "");
    EXPECT_TRUE(palette.colorNearestSys(NX_Color(), nearest) == -1 && nearest == NX_Color(1, 2, 3));
    EXPECT_STREQ(isRefused(NxColorBrushSys(NX_Color()), ""), "");
    EXPECT_TRUE(DestroyIcon(nullptr) == FALSE && GetLastError() == ERROR_NOT_SUPPORTED);
}

} // namespace
