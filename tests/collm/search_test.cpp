// tests/collm/search_test.cpp - searching, extremes and the check of the order.
#include "tests/collm/rawvec.h"
#include "tests/support/support.h"

namespace {

TEST(Search, HalvingStepByStep) {
    static struct {
        char const* items;
        char key;
        unsigned int found, insertAt;
    } const rows[] = {{"", 'x', NX_NO_INDEX, 0},
                      {"bdf", 'a', NX_NO_INDEX, 0},
                      {"bdf", 'e', NX_NO_INDEX, 2},
                      {"bdf", 'g', NX_NO_INDEX, 3},
                      {"bdf", 'd', 1, 1},
                      {"bdddf", 'd', 2, 2},
                      {"b", 'c', NX_NO_INDEX, 1},
                      {"zzab", 'c', NX_NO_INDEX, 0},
                      {"azbb", 'c', NX_NO_INDEX, 1},
                      {"aaza", 'c', NX_NO_INDEX, 2},
                      {"bbbbbb", 'b', 2, 2},
                      {"baaa", 'c', NX_NO_INDEX, 4}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.items << " for " << row.key);
        RawVec const v{std::string(row.items)};
        unsigned int at = 99;
        EXPECT_EQ(v.itemSearch(&row.key, byteCompare, &at), row.found);
        EXPECT_EQ(at, row.insertAt);
    }
}

TEST(Search, ExtremesOfARangeCutToTheItems) {
    static struct {
        char const* items;
        unsigned int pos, qty, greatest, least;
    } const rows[] = {
        {"3771", 0, 4, 1, 3},   {"311", 0, NX_NO_INDEX, 0, 1}, {"ab", 2, 1, NX_NO_INDEX, NX_NO_INDEX},
        {"abcdef", 5, 1, 5, 5}, {"abcdef", 2, 3, 4, 2},        {"", 0, 0, NX_NO_INDEX, NX_NO_INDEX},
        {"ba", 1, 9, 1, 1}};
    for (auto const& row : rows) {
        RawVec const v{std::string(row.items)};
        EXPECT_EQ(v.itemMax(byteCompare, row.pos, row.qty), row.greatest) << row.items;
        EXPECT_EQ(v.itemMin(byteCompare, row.pos, row.qty), row.least) << row.items;
    }
}

TEST(Search, OrderCheck) {
    static struct {
        char const* items;
        int mode, result;
    } const rows[] = {{"cba", 0, 0},    {"cba", 0x0F, 0},     {"cba", 0x180, 0}, {"112", 0x10, 0},
                      {"112", 0x3F, 0}, {"112", 0x40, 22528}, {"123", 0x70, 0},  {"121", 0x10, 22528},
                      {"1", 0x40, 0},   {"", 0x40, 0}};
    for (auto const& row : rows)
        EXPECT_EQ(RawVec(std::string(row.items)).dataValid(row.mode, byteCompare), row.result)
            << row.items << row.mode;
}

TEST(SearchDeath, RangesOfNothing) {
    RawVec v(1);
    unsigned int at = 0;
    char const* const text = "item_num < itemQty()";
    char const* const file = "general/collm/v1.h";
    EXPECT_ASSERTION(v.itemSearch("a", byteCompare, 0, 0, &at), text, file);
    EXPECT_ASSERTION(v.itemSearchSeq("a", byteCompare, 0, 0), text, file);
    EXPECT_ASSERTION(v.itemSearch("a", byteCompareContext, nullptr, &at), "0", "general/collm/vsearchx");
}

} // namespace
