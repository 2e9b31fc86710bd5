// Numbers, severities and the types of system codes; the templates and how they are filled.
#include "general/error/errorman.h"
#include "general/error/errortemplate.h"
#include "tests/support/support.h"

namespace {

TEST(ErrorNum, SeverityFollowsTheTypeIndex) {
    struct {
        int num;
        int severity;
    } const rows[] = {{0, 0},      {0x0800, 1},  {0x1FFF, 1}, {0x2000, 2}, {0x4FFF, 2},
                      {21060, 3},  {0x5800, 4},  {0x7FFF, 4}, {0x8000, 5}, {0x8800, 5},
                      {0xF800, 5}, {0x10000, 0}, {-1, 5}};
    for (auto const& row : rows) {
        EXPECT_EQ(NxErrorSeverity(row.num), row.severity) << row.num;
        EXPECT_EQ(NxErrorIsPerm(row.num), row.severity >= 4) << row.num;
    }
}

TEST(ErrorNum, SystemCodesHaveTypes) {
    struct {
        NX_ErrorType type;
        long codes[6];
    } const rows[] = {{errorTypeExists, {80, 183, 1073, 1410, 1760, 1802}},
                      {errorTypeRetry, {32, 33, 167, 173, 1108, 32}},
                      {errorTypeAccess, {5, 65, 994, 5, 65, 994}},
                      {errorTypeNotFound, {2, 3, 259, 1815, 1908, 3002}},
                      {errorTypeData, {11, 193, 11, 193, 11, 193}},
                      {errorTypeSystem, {0, 4, -2, 112, 65538, 1803}}};
    for (auto const& row : rows)
        for (long const code : row.codes)
            EXPECT_EQ(NxErrorTypeOfSys(code), row.type) << code;
}

TEST(ErrorTemplate, FillsPlaceholders) {
    struct {
        char const* text;
        char const* details;
        char const* filled;
    } const rows[] = {
        {"%(F): %(T): %(X): System error", "E=1 T=abc", "abc: System error"},
        {"%(F): %(T): %(X): System error", "E=1", "System error"},
        {"%(F): %(L): %(T): %(V): Not found", "E=1 F=a V=3", "a: 3: Not found"},
        {"%(F)", "F=one F=two", "two"},         // the last word counts
        {"%(F)!", "F=\"a b\" T=c", "\"a b\"!"}, // a quoted blank does not end a value
        {"%(F)!", "F=a\\ b T=c", "a\\ b!"},     // nor an escaped one
        {"<%(T)>", "T=\"open end", "<\"open end>"},
        {"%(T)%(F)", "T=%(F) F=x", "%(F)x"},     // values are not filled again
        {"x%(1): y%(9) :: z", "1=a 9=b", "xyz"}, // other digits never have a value
        {"[%(c)] %(E) %(H) %(P) %(S)", "E=580 c=f.cpp,12 H=ff P=-1 S=5", "[f.cpp,12] 580 ff -1 5"},
        {"%(Z) %(z)", "Z=up z=low", "up low"},
        {"%(E", "E=1", "%(E"}, // near misses are plain text
        {"%() %(_) %(EE) %E) 100%", "E=1", "%() %(_) %(EE) %E) 100%"},
        {"%%(E)", "E=1", "%1"},
        {"%(T)  :: end", "", "end"},
        {"", "E=1", ""},
    };
    for (auto const& row : rows)
        EXPECT_STREQ(nxErrorTemplateFill(row.text, row.details).dataPConst(), row.filled) << row.text;
}

TEST(ErrorTemplate, BuiltInTextsWithoutAnApplication) {
    struct {
        int num;
        char const* message;
    } const rows[] = {
        {16625, "Disk full: try deleting unneeded files"},
        {16884, "No more memory: try exiting other tasks"},
        {0x4001, "1: Unknown error"}, // type without text
        {0, "0: Unknown error"},
        {0x8800, "0: Unknown error"},
        {6145, "t: Invalid user input: correct and retry"},
        {10440, "f: Locked: try closing in other task"},
        {14547, "f: l: t: -7: Not found: try correct name"},
        {21060, "f: t: 1f,ffffffff: System error"},
        {28899, "f: -7: Version incompatible: correct and retry"},
        {32869, "Application error: report to supplier"},
    };
    unsigned long const values[] = {31, 0xFFFFFFFFul};
    for (auto const& row : rows) {
        NX_ErrorMan man;
        man.errorBufErrorNum(row.num);
        man.errorBufFileName("f");
        man.errorBufLibName("l");
        man.errorBufText("t");
        man.errorBufVal(-7);
        man.errorBufX(values, 2);
        EXPECT_STREQ(man.errorString().dataPConst(), row.message) << row.num;
        man.errorOk();
    }
}

} // namespace
