// What the person in front of a message box sees, and what each answer leads to.
#include "tests/box/user.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <algorithm>

namespace {

NXS_Box box(char const* caption, char const* text, char const* buttons, char const* manner = "icon") {
    return {caption, text, buttons, manner};
}

NXS_Step kind(char const* buttons, char const* answer) {
    return {box("MSG00042  Payroll", "First line.\nSecond: line.", buttons, ""), answer};
}

constexpr int aborted = -1;

struct Row {
    char const* name;
    NXS_Flow flow;
    int end;
    char const* notes;
    char const* logged;
    char const* last = "";
};

// Runs the flow as every kind of person does.
void check(Row const& row) {
    for (NXS_User const& user : nxUsers()) {
        SCOPED_TRACE(std::string(row.name) + ", " + user.name);
        nxFileMake("notes.txt", "");
        nxLogErase();
        NXS_Outcome const outcome = user.run(row.flow);
        EXPECT_EQ(outcome.fault, "");
        EXPECT_EQ(outcome.end, row.end);
        EXPECT_EQ(outcome.last, row.last);
        ASSERT_EQ(outcome.boxes.size(), row.flow.steps.size());
        for (std::size_t n = 0; n < outcome.boxes.size(); ++n) {
            NXS_Box const& seen = outcome.boxes[n];
            NXS_Box const& wanted = row.flow.steps[n].box;
            EXPECT_EQ(seen.caption, wanted.caption) << "box " << n;
            EXPECT_EQ(seen.text, wanted.text) << "box " << n;
            EXPECT_EQ(seen.buttons.value_or(*wanted.buttons), *wanted.buttons) << "box " << n;
            EXPECT_EQ(seen.manner.value_or(*wanted.manner), *wanted.manner) << "box " << n;
        }
        EXPECT_EQ(nxFileContent("notes.txt"), row.notes);
        std::string const log = nxFileContent("quorix.log");
        EXPECT_TRUE(*row.logged == 0 ? log.empty() : log.find(row.logged) != std::string::npos) << log;
    }
}

TEST(Box, EveryKindAndEveryAnswer) {
    check({"answers",
           {"show",
            {"0", "1", "1", "2", "2", "2", "3", "3", "4", "4", "5", "5"},
            {kind("ok [Enter]", "ok"), kind("ok [Enter], cancel", "ok"), kind("ok [Enter], cancel", "cancel"),
             kind("abort [Enter], retry, ignore", "abort"), kind("abort [Enter], retry, ignore", "retry"),
             kind("abort [Enter], retry, ignore", "ignore"), kind("yes [Enter], no, cancel", "yes"),
             kind("yes [Enter], no, cancel", "cancel"), kind("yes [Enter], no", "yes"),
             kind("yes [Enter], no", "no"), kind("retry [Enter], cancel", "retry"),
             kind("retry [Enter], cancel", "cancel")}},
           10,
           "/ / cancel / abort / retry / ignore / yes / cancel / yes / no / retry / cancel / ",
           ""});
    // The second button preset is 256, the third 512.
    check({"Enter and turning away",
           {"show",
            {"0", "257", "515", "2", "1", "3", "5"},
            {kind("ok [Enter]", nxEnter), kind("ok, cancel [Enter]", nxEnter),
             kind("yes, no, cancel [Enter]", nxEnter), kind("abort [Enter], retry, ignore", nxEnter),
             kind("ok [Enter], cancel", nxTurnAway), kind("yes [Enter], no, cancel", nxTurnAway),
             kind("retry [Enter], cancel", nxTurnAway)}},
           10,
           "/ cancel / cancel / abort / cancel / cancel / cancel / ",
           ""});
}

TEST(Box, ErrorsAssertionsAndTheVersionCheck) {
    check({"error",
           {"error",
            {},
            {{box("MSG25211  Payroll", "pay.dat: Not found: try correct name", "ok [Enter]"), "ok"}}},
           10,
           "00",
           ""});
    char const failed[] = "Assert fail: general/some/file 12 : a < b";
    check({"assertion",
           {"assertion", {}, {{box("Error", failed, "ok [Enter]", "icon, on top"), "ok"}}},
           aborted,
           "",
           failed});
    char const wrong[] = "VX7BASE: Version incompatible: correct and retry";
    check({"mismatch",
           {"mismatch", {}, {{box("MSG25163  payroll", wrong, "ok [Enter]"), "ok"}}},
           aborted,
           "",
           wrong});
}

TEST(Box, TheUserIsAskedWhenMemoryRunsOut) {
    if (!nxMemoryEnds)
        GTEST_SKIP() << "memory has no end here";
    char const text[] = "Memory is short: close something and retry";
    NXS_Box const asks = box("MSG25500  payroll", text, "retry [Enter], cancel");
    std::vector<NXS_Step> const insists = {{asks, "retry"}, {asks, "retry"}, {asks, "cancel"}};
    char const all[] = "50331648 1 0 1 0\n50331648 2 0 1 0\n50331648 3 0 1 0\n";
    check({"a request given up", {"shortage", {"alloc", "0"}, insists}, 1, all, "", text});
    check({"a growing block given up", {"shortage", {"resize", "0"}, insists}, aborted, all, "E=500"});
    for (char const* how : {"alloc", "resize"})
        check({"memory given back",
               {"shortage", {how, "2"}, {{asks, "retry"}, {asks, nxEnter}}},
               10,
               "50331648 1 0 1 0\n50331648 2 0 1 0\nmet 1 0\n",
               ""});
}

} // namespace
