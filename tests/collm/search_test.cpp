// tests/collm/search_test.cpp - searching, extremes and the check of the order.
#include "tests/collm/rawvec.h"
#include "tests/support/support.h"

namespace {

TEST(Search, HalvingStepByStep) {
    static std::tuple<char const*, char, unsigned int, unsigned int> const rows[] = {
        {"", 'x', NX_NO_INDEX, 0},     {"bdf", 'e', NX_NO_INDEX, 2},  {"bdf", 'g', NX_NO_INDEX, 3},
        {"bdddf", 'd', 2, 2},          {"zzab", 'c', NX_NO_INDEX, 0}, {"azbb", 'c', NX_NO_INDEX, 1},
        {"aaza", 'c', NX_NO_INDEX, 2}, {"bbbbbb", 'b', 2, 2},         {"baaa", 'c', NX_NO_INDEX, 4}};
    for (auto const& [items, key, found, insertAt] : rows) {
        SCOPED_TRACE(testing::Message() << items << " for " << key);
        RawVec const v{std::string(items)};
        unsigned int at = 99;
        EXPECT_EQ(v.itemSearch(&key, byteCompare, &at), found);
        EXPECT_EQ(at, insertAt);
    }
}

TEST(Search, ExtremesOfARangeCutToTheItems) {
    static std::tuple<char const*, unsigned int, unsigned int, unsigned int, unsigned int> const rows[] = {
        {"3771", 0, 4, 1, 3},   {"311", 0, NX_NO_INDEX, 0, 1}, {"ab", 2, 1, NX_NO_INDEX, NX_NO_INDEX},
        {"abcdef", 5, 1, 5, 5}, {"abcdef", 2, 3, 4, 2},        {"", 0, 0, NX_NO_INDEX, NX_NO_INDEX},
        {"ba", 1, 9, 1, 1}};
    for (auto const& [items, pos, qty, greatest, least] : rows) {
        RawVec const v{std::string(items)};
        EXPECT_EQ(v.itemMax(byteCompare, pos, qty), greatest) << items;
        EXPECT_EQ(v.itemMin(byteCompare, pos, qty), least) << items;
    }
}

TEST(Search, OrderCheck) {
    static std::tuple<char const*, int, int> const rows[] = {
        {"cba", 0, 0},        {"cba", 0x0F, 0}, {"cba", 0x180, 0},    {"112", 0x10, 0}, {"112", 0x3F, 0},
        {"112", 0x40, 22528}, {"123", 0x70, 0}, {"121", 0x10, 22528}, {"1", 0x40, 0},   {"", 0x40, 0}};
    for (auto const& [items, mode, result] : rows)
        EXPECT_EQ(RawVec(std::string(items)).dataValid(mode, byteCompare), result) << items << mode;
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
