// What the person in front of a message box sees, and what each answer leads to.
#include "tests/box/user.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

namespace {

NXS_Box box(char const* caption, char const* text, char const* buttons, char const* manner = "icon") {
    return {caption, text, buttons, manner};
}

constexpr int aborted = -1;

// Runs a flow of boxes: how the child ends, what it noted, what stands in the log, what is shown behind.
void check(char const* name, NXS_Flow const& flow, int end, char const* notes, char const* logged,
           char const* last = "") {
    SCOPED_TRACE(name);
    nxFileMake("notes.txt", "");
    nxLogErase();
    NXS_Outcome const outcome = nxUserAnswers(flow);
    EXPECT_EQ(outcome.fault, "");
    EXPECT_EQ(outcome.end, end);
    EXPECT_EQ(outcome.last, last);
    ASSERT_EQ(outcome.boxes.size(), flow.steps.size());
    for (std::size_t n = 0; n < outcome.boxes.size(); ++n) {
        NXS_Box const& seen = outcome.boxes[n];
        NXS_Box const& wanted = flow.steps[n].box;
        EXPECT_EQ(seen.caption + "|" + seen.text + "|" + seen.buttons,
                  wanted.caption + "|" + wanted.text + "|" + wanted.buttons)
            << "box " << n;
        EXPECT_EQ(seen.manner.value_or(*wanted.manner), *wanted.manner) << "box " << n;
    }
    EXPECT_EQ(nxFileContent("notes.txt"), notes);
    std::string const log = nxFileContent("quorix.log");
    EXPECT_TRUE(*logged == 0 ? log.empty() : log.find(logged) != std::string::npos) << log;
}

TEST(Box, EveryKindAndEveryAnswer) {
    static std::tuple<char const*, char const*, std::vector<char const*>> const rows[] = {
        {"0", "ok [Enter]", {"ok", nxEnter}},
        {"1", "ok [Enter], cancel", {"ok", "cancel", nxTurnAway}},
        {"2", "abort [Enter], retry, ignore", {"abort", "retry", "ignore", nxEnter}},
        {"3", "yes [Enter], no, cancel", {"yes", "cancel", nxTurnAway}},
        {"4", "yes [Enter], no", {"yes", "no"}},
        {"5", "retry [Enter], cancel", {"retry", "cancel", nxTurnAway}},
        {"257", "ok, cancel [Enter]", {nxEnter}},       // the second button preset is 256
        {"515", "yes, no, cancel [Enter]", {nxEnter}}}; // the third 512
    NXS_Flow flow = {"show", {}, {}};
    for (auto const& [style, buttons, answers] : rows)
        for (char const* answer : answers) {
            flow.arguments.push_back(style);
            flow.steps.push_back(
                {box("MSG00042  Payroll", "First line.\nSecond: line.", buttons, ""), answer});
        }
    check(
        "answers", flow, 10,
        "/ / / cancel / cancel / abort / retry / ignore / abort / yes / cancel / cancel / yes / no / retry / "
        "cancel / cancel / cancel / cancel / ",
        "");
}

TEST(Box, ErrorsAssertionsAndTheVersionCheck) {
    NXS_Box const error = box("MSG25211  Payroll", "pay.dat: Not found: try correct name", "ok [Enter]");
    check("error", {"error", {}, {{error, "ok"}}}, 10, "00", "");
    char const failed[] = "Assert fail: general/some/file 12 : a < b";
    NXS_Box const last = box("Error", failed, "ok [Enter]", "icon, on top");
    check("assertion", {"assertion", {}, {{last, "ok"}}}, aborted, "", failed);
    char const wrong[] = "VX7BASE: Version incompatible: correct and retry";
    NXS_Box const mismatch = box("MSG25163  payroll", wrong, "ok [Enter]");
    check("mismatch", {"mismatch", {}, {{mismatch, "ok"}}}, aborted, "", wrong);
}

TEST(Box, TheUserIsAskedWhenMemoryRunsOut) {
    if (!nxMemoryEnds)
        GTEST_SKIP() << "memory has no end here";
    char const text[] = "Memory is short: close something and retry";
    NXS_Box const asks = box("MSG25500  payroll", text, "retry [Enter], cancel");
    std::vector<NXS_Step> const insists = {{asks, "retry"}, {asks, "retry"}, {asks, "cancel"}};
    char const all[] = "50331648 1 0 1 0\n50331648 2 0 1 0\n50331648 3 0 1 0\n";
    char const met[] = "50331648 1 0 1 0\n50331648 2 0 1 0\nmet 1 0\n";
    check("a request given up", {"shortage", {"alloc", "0"}, insists}, 1, all, "", text);
    check("a growing block given up", {"shortage", {"resize", "0"}, insists}, aborted, all, "E=500");
    for (char const* how : {"alloc", "resize"})
        check("memory given back", {"shortage", {how, "2"}, {{asks, "retry"}, {asks, nxEnter}}}, 10, met, "");
}

} // namespace
