// Colours: texts, names, the system's, the nearest of a list.
#include "general/error/errorman.h"
#include "general/module/color.h"
#include "general/platform/platform.h"
#include "tests/support/support.h"

namespace {

TEST(Color, Texts) {
    static std::tuple<char const*, char const*, char const*> const rows[] = {
        {"#12aBCd", "#12ABCD", ""},        {"#000000", "#000000", "black"}, {"Silver", "#C0C0C0", "silver"},
        {"MAGENTA", "#FF00FF", "fuchsia"}, {"grey", "#808080", "gray"},     {"orange", "#FFA500", "orange"},
        {"navy", "#000080", "navy"},
    };
    NX_Color color(1, 2, 3);
    for (auto const& [text, value, name] : rows) {
        EXPECT_EQ(color.colorSet(text), 0) << text;
        EXPECT_STREQ(color.colorText().dataPConst(), value);
        EXPECT_STREQ(color.colorName().dataPConst(), name);
    }
    color = NX_Color(1, 2, 3);
    EXPECT_EQ(color.colorWord(), 0x030201u);
    for (char const* text : {"", "#", "#12345", "#1234567", "#12345g", "123456", "nave", "navyy", " navy"}) {
        EXPECT_EQ(color.colorSet(text), -1) << text;
        EXPECT_TRUE(NxErrorType() == errorTypeUserInput && color == NX_Color(1, 2, 3)) << text;
    }
    EXPECT_EQ(NxErrorBuf().strStrFirst("T= navy"), NxErrorBuf().strLen() - 7);
    NxErrorOk();
}

// Every system answers with the same scheme.
TEST(Color, PartsOfTheSystem) {
    unsigned int sum = 0;
    for (int part = -2; part < 64; ++part)
        sum = sum * 31 + NX_Color::colorSys(part).colorWord();
    EXPECT_EQ(sum, 4200791503u);
    for (int const metric : {SM_CXICON, SM_CYICON, SM_CXCURSOR, SM_CYCURSOR, SM_CXSMICON, SM_CYSMICON})
        EXPECT_EQ(GetSystemMetrics(metric), metric == SM_CXSMICON || metric == SM_CYSMICON ? 16 : 32);
    EXPECT_EQ(NX_Color::colorSys(colorSysWindow), NX_Color(255, 255, 255));
    EXPECT_EQ(NX_Color::colorSys(colorSysWindowText), NX_Color());
    for (int const part : {-1, 31, 99, 0x7FFFFFFF})
        EXPECT_EQ(NX_Color::colorSys(part), NX_Color()) << part;
}

TEST(Color, TheNearest) {
    NX_ColorVec colors;
    EXPECT_EQ(colors.colorNearest(NX_Color()), NX_NO_INDEX);
    for (NX_Color const& color :
         {NX_Color(0, 0, 0), NX_Color(100, 0, 0), NX_Color(0, 0, 100), NX_Color(100, 0, 0)})
        colors += color;
    EXPECT_EQ(colors.colorNearest(NX_Color(100, 0, 0)), 1u);
    EXPECT_EQ(colors.colorNearest(NX_Color(50, 0, 0)), 0u) << "the first of two as near";
    EXPECT_EQ(colors.colorNearest(NX_Color(51, 0, 0)), 1u);
    EXPECT_EQ(colors.colorNearest(NX_Color(80, 0, 80)), 1u);
    EXPECT_EQ(NX_Color(255, 255, 255).colorDistance(NX_Color()), 195075u);
}

} // namespace
