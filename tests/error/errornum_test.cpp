// Numbers, severities and the types of system codes; the templates and how they are filled.
#include "general/error/errorman.h"
#include "general/error/errortemplate.h"
#include "tests/support/support.h"

namespace {

TEST(ErrorNum, SeverityFollowsTheTypeIndex) {
    std::tuple<int, int> const rows[] = {{0, 0},      {0x0800, 1},  {0x1FFF, 1}, {0x2000, 2},
                                         {0x4FFF, 2}, {21060, 3},   {0x5800, 4}, {0x7FFF, 4},
                                         {0x8000, 5}, {0x10000, 0}, {-1, 5}};
    for (auto const& [num, severity] : rows) {
        EXPECT_EQ(NxErrorSeverity(num), severity) << num;
        EXPECT_EQ(NxErrorIsPerm(num), severity >= 4) << num;
    }
}

TEST(ErrorNum, SystemCodesHaveTypes) {
    std::tuple<NX_ErrorType, std::vector<long>> const rows[] = {
        {errorTypeExists, {80, 183, 1073, 1410, 1760, 1802}},
        {errorTypeRetry, {32, 33, 167, 173, 1108}},
        {errorTypeAccess, {5, 65, 994}},
        {errorTypeNotFound, {2, 3, 259, 1815, 1908, 3002}},
        {errorTypeData, {11, 193}},
        {errorTypeSystem, {0, 4, -2, 112, 65538, 1803}}};
    for (auto const& [type, codes] : rows)
        for (long const code : codes)
            EXPECT_EQ(NxErrorTypeOfSys(code), type) << code;
}

TEST(ErrorTemplate, FillsPlaceholders) {
    std::tuple<char const*, char const*, char const*> const rows[] = {
        {"%(F): %(T): %(X): System error", "E=1 T=abc", "abc: System error"},
        {"%(F): %(L): %(T): %(V): Not found", "E=1 F=a V=3", "a: 3: Not found"},
        {"%(F)", "F=one F=two", "two"},         // the last word counts
        {"%(F)!", "F=\"a b\" T=c", "\"a b\"!"}, // a quoted blank does not end a value
        {"%(F)!", "F=a\\ b T=c", "a\\ b!"},     // nor an escaped one
        {"<%(T)>", "T=\"open end", "<\"open end>"},
        {"%(T)%(F)", "T=%(F) F=x", "%(F)x"},     // values are not filled again
        {"x%(1): y%(9) :: z", "1=a 9=b", "xyz"}, // other digits never have a value
        {"[%(c)] %(E) %(H) %(P) %(S)", "E=580 c=f.cpp,12 H=ff P=-1 S=5", "[f.cpp,12] 580 ff -1 5"},
        {"%(Z) %(z)", "Z=up z=low", "up low"},
        {"%() %(_) %(EE) %E) %%(E) %(E", "E=1", "%() %(_) %(EE) %E) %1 %(E"}, // near misses are plain text
        {"%(T)  :: end", "", "end"}};
    for (auto const& [text, details, filled] : rows)
        EXPECT_STREQ(nxErrorTemplateFill(text, details).dataPConst(), filled) << text;
}

TEST(ErrorTemplate, BuiltInTextsWithoutAnApplication) {
    std::tuple<int, char const*> const rows[] = {{16625, "Disk full: try deleting unneeded files"},
                                                 {0x4001, "1: Unknown error"}, // type without text
                                                 {14547, "f: l: t: -7: Not found: try correct name"},
                                                 {21060, "f: t: 1f,ffffffff: System error"},
                                                 {32869, "Application error: report to supplier"}};
    unsigned long const values[] = {31, 0xFFFFFFFFul};
    for (auto const& [num, message] : rows) {
        NX_ErrorMan man;
        man.errorBufErrorNum(num);
        man.errorBufFileName("f");
        man.errorBufLibName("l");
        man.errorBufText("t");
        man.errorBufVal(-7);
        man.errorBufX(values, 2);
        EXPECT_STREQ(man.errorString().dataPConst(), message) << num;
        man.errorOk();
    }
}

} // namespace
