// tests/text/textwild_test.cpp - the wildcard merge.
#include <gtest/gtest.h>
#include <tuple>

#include "general/text/textwild.h"
#include "tests/text/textsupport.h"

namespace {

// The merged name in a buffer of `cap` bytes; what is behind the buffer must stay.
std::string merge(std::string const& name, std::string const& pattern, int cap, int fold) {
    std::string buffer = name;
    buffer.resize(static_cast<std::size_t>(cap));
    buffer += "#####";
    int const len = NxTextWildMerge(buffer.data(), static_cast<int>(name.size()), cap, pattern.data(),
                                    static_cast<int>(pattern.size()), fold);
    EXPECT_EQ(buffer.substr(static_cast<std::size_t>(cap)), "#####");
    EXPECT_LT(len, cap);
    EXPECT_EQ(buffer[static_cast<std::size_t>(len)], 0);
    return buffer.substr(0, static_cast<std::size_t>(len));
}

} // namespace

TEST(TextWildMerge, Table) {
    NXS_CodePage const page(932);
    struct Row {
        char const *name, *pattern, *result;
        int cap = 32, fold = 0;
    };
    std::pair<char const*, std::vector<Row>> const groups[] = {
        {"plain",
         {{"report.txt", "*.bak", "report.bak"}, {"old.txt", "new.*", "new.txt"}, {"report.txt", "", ""}}},
        {"search", {{"abcdef", "??x*", "abxdef"}, {"abxcd", "*X", "abX", 32, 1}, {"abxcd", "*X", "abxcdX"}}},
        {"pattern's dot is not written", {{"report", "*.bak", "reportbak"}, {"", "*.txt", "txt"}}},
        {"place after a deletion", {{"xyz.c", "a.b", "a.cb"}}},
        {"room to insert before the dot", {{"a.c", "?b*", "ab.c"}, {"a.c", "?b*", "abc", 5}}},
        {"cut", {{"report.txt", "new.*", "", 1}, {"report.txt", "new.*", "newo", 5}}},
        {"other width", {{"abc.d", "\x81\x40*", "\x81\x40\x62\x63.d"}, {"\x81\x40\x62\x63", "x*", "xbc"}}},
        {"same width", {{"\x81\x40", "\x82\x41*", "\x82\x41"}, {"", "a\x81\x40", "a\x81\x40", 4}}},
        {"no room for the wider one", {{"abc", "\x81\x40*", "abc", 4}}},
        {"trail bytes",
         {{"a\x81.b.c", "*.x", "a\x81.b.x"}, {"\x81*x", "?y*", "\x81*y"}, {"abc", "\x81", "\x81"}}}};
    for (auto const& [what, rows] : groups)
        for (Row const& row : rows)
            EXPECT_EQ(merge(row.name, row.pattern, row.cap, row.fold), row.result)
                << what << ": " << row.pattern;
    char untouched = 'x';
    EXPECT_EQ(NxTextWildMerge(&untouched, 0, 0, "ab", 2, 0), 0);
    EXPECT_EQ(untouched, 'x');
}

TEST(TextWildMerge, WideTextMovesHalf) {
    std::tuple<char const*, char const*, int, std::string> const rows[] = {
        {"report.txt", "*.bak", 10, "report.bak"},
        {"ab.cdef", "??x*", 8, std::string("abx.cdf\0", 8)},
        {"xyz.cde", "a.*", 5, "a.c.c"}};
    for (auto const& [before, pattern, len, after] : rows) {
        NXS_Wide name(std::string(before) + std::string(20, '\0'));
        int const nameLen = static_cast<int>(std::string(before).size());
        int const patLen = static_cast<int>(std::string(pattern).size());
        EXPECT_EQ(NxTextWildMerge(name, nameLen, 20, NXS_Wide(pattern), patLen, 0), len) << before;
        EXPECT_EQ(name.text(len), after);
    }
}

// Whatever stands in name and pattern, the buffer holds it: merge() watches what is behind.
TEST(TextWildMerge, StaysInTheBuffer) {
    NXS_CodePage const page(932);
    NXS_RandomText random("ab..*?\x81\x82");
    for (int round = 0; round < 20000 && !HasFailure(); ++round) {
        std::string const name = random.bytes(12);
        merge(name, random.bytes(10), 1 + static_cast<int>(name.size() + random.below(6)), round % 2);
    }
}
