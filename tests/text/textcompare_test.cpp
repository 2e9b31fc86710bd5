// tests/text/textcompare_test.cpp - the comparison modes, against tables and against a naive model.
#include <cstring>

#include "general/text/textcompare.h"
#include "general/text/textprim.h"
#include "tests/support/support.h"
#include "tests/text/textsupport.h"

namespace {

int sign(int x) {
    return (x > 0) - (x < 0);
}

// ---- The rules, step by step. ----

unsigned int foldIf(unsigned int c, bool fold) {
    return fold && c < 256 ? NxTextLowerP()[c] : c;
}

using Chars = std::vector<NXS_Char>;

int lengthOrder(std::size_t a, std::size_t b) {
    return a == b ? 0 : a > b ? 1 : -1;
}

int modelWild(Chars const& a, std::size_t n, Chars const& b, std::size_t p, bool fold) {
    for (; p < b.size() && b[p].value != '*'; ++n, ++p) {
        if (n == a.size())
            return -1;
        unsigned int const ca = foldIf(a[n].value, fold), cb = foldIf(b[p].value, fold);
        if (b[p].value != '?' && ca != cb)
            return ca > cb ? 1 : -1;
    }
    if (p == b.size())
        return n == a.size() ? 0 : 1;
    while (p < b.size() && (b[p].value == '*' || b[p].value == '?'))
        ++p;
    for (; p < b.size() && n < a.size(); ++n)
        if (foldIf(a[n].value, fold) == foldIf(b[p].value, fold) && modelWild(a, n, b, p, fold) == 0)
            return 0;
    return p == b.size() ? 0 : -1;
}

bool isDigit(NXS_Char const& c) {
    return c.value >= '0' && c.value <= '9';
}

std::string digitsAt(Chars const& text, std::size_t& i) {
    std::string digits;
    while (i < text.size() && text[i].value == '0')
        ++i;
    for (; i < text.size() && isDigit(text[i]); ++i)
        digits += static_cast<char>(text[i].value);
    return digits;
}

int modelOrder(Chars const& a, std::size_t lenA, Chars const& b, std::size_t lenB, bool fold, bool numbers) {
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
        if (numbers && isDigit(a[i]) && isDigit(b[j])) {
            std::string const x = digitsAt(a, i), y = digitsAt(b, j);
            if (x.size() != y.size() || x != y)
                return x.size() != y.size() ? lengthOrder(x.size(), y.size()) : x < y ? -1 : 1;
            continue;
        }
        unsigned int const ca = foldIf(a[i++].value, fold), cb = foldIf(b[j++].value, fold);
        if (ca != cb)
            return ca > cb ? 1 : -1;
    }
    return lengthOrder(lenA, lenB);
}

int model(std::string const& a, std::string const& b, int type) {
    Chars const x = nxChars(a), y = nxChars(b);
    if (type == NX_CompareWild || type == NX_CompareWildFold)
        return modelWild(x, 0, y, 0, type == NX_CompareWildFold);
    return modelOrder(x, a.size(), y, b.size(), type >= NX_CompareFold, type % 2 == 1);
}

int compare(std::string const& a, std::string const& b, int type) {
    return NxTextCompare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                         static_cast<NX_CompareType>(type));
}

} // namespace

// What the random texts below do not reach.
TEST(TextCompare, TableIn8And16Bits) {
    std::tuple<int, char const*, char const*, int> const rows[] = {
        {0, "abc", "abd", -1}, {0, "ab", "abc", -1}, {0, "abc", "abc", 0},    {0, "\x7F", "\x80", -1},
        {0, "", "", 0},        {2, "A_", "Aa", -1},  {2, "\xC4", "\xE4", -1}, {1, "a007 12", "a7 123", -1},
        {4, "[a]", "[a]", 0},  {5, "abc", "xyz", 0}, {5, "abcd", "xyz", 1},   {-3, "a", "b", 0}};
    for (auto const& [mode, a, b, result] : rows) {
        auto const type = static_cast<NX_CompareType>(mode);
        EXPECT_EQ(sign(NxTextCompare(a, b, type)), result) << mode << a << b;
        if (type == NX_CompareExact)
            continue; // which wide text does its own way
        EXPECT_EQ(sign(NxTextCompare(NXS_Wide(a), NXS_Wide(b), type)), result) << mode << a << b;
    }
    EXPECT_EQ((NXS_Results{NxTextCompareFoldNoDbcs("a", "B"), NxTextCompareFoldNoDbcs("b", "bc"),
                           NxTextCompareFoldNoDbcs("B\xAD", "b\xAC")}),
              (NXS_Results{-1, -0x63, 0}));
}

// Half of the units count as bytes: a difference in the second half goes unseen, the lengths decide.
TEST(TextCompare, WideExactLooksAtHalf) {
    EXPECT_EQ((NXS_Results{NxTextCompare(NXS_Wide("abcd"), NXS_Wide("abxd"), NX_CompareExact),
                           sign(NxTextCompare(NXS_Wide("abcd"), NXS_Wide("axcd"), NX_CompareExact)),
                           NxTextCompare(NXS_Wide("abcd"), NXS_Wide("abxde"), NX_CompareExact)}),
              (NXS_Results{0, -1, -1}));
}

// The flag, not the table, makes folding go by byte; number and wildcard modes go by the table.
TEST(TextCompare, FlagAndTableApart) {
    NXS_CodePage const page(932);
    EXPECT_NE(NxTextCompare("\x81\x41", "\x81\x61", NX_CompareFold), 0);
    NxDbcsIsTrue(0);
    EXPECT_EQ(NxTextCompare("\x81\x41", "\x81\x61", NX_CompareFold), 0);
    EXPECT_NE(NxTextCompare("\x81\x41", "\x81\x61", NX_CompareFoldNum), 0);
}

TEST(TextCompare, AgreesWithTheModel) {
    NXS_CodePage const restore(1252);
    NXS_RandomText random("aAbB019*?\x81\x82\x41\xAD\xAC");
    for (int page : nxModelPages) {
        nxModelPage(page);
        for (int round = 0; round < 20000; ++round) {
            // Long common beginnings make the blocks of sixteen meet differences at every place.
            std::string const common = round % 2 ? random.bytes(40) : "";
            std::string const a = common + random.bytes(round % 3 ? 6 : 14);
            std::string b = common + random.bytes(round % 3 ? 6 : 14);
            if (round % 5 == 0) {
                b = a; // the same but for the case of some letters
                for (char& c : b)
                    if (random.below(3) == 0 && c >= 'A' && (c | 0x20) <= 'z')
                        c = static_cast<char>(c ^ 0x20);
            }
            for (int type : {1, 2, 3, 4, 6}) {
                if (type >= 4 && common.size() > 16)
                    continue; // the model tries out every way
                ASSERT_EQ(sign(compare(a, b, type)), model(a, b, type))
                    << page << " mode " << type << ": " << testing::PrintToString(a) << " / "
                    << testing::PrintToString(b);
                if (page != 1252)
                    continue;
                ASSERT_EQ(sign(NxTextCompare(NXS_Wide(a), static_cast<int>(a.size()), NXS_Wide(b),
                                             static_cast<int>(b.size()), static_cast<NX_CompareType>(type))),
                          model(a, b, type));
            }
        }
    }
}

// Each of these takes longer than the age of the world when every `*` tries every place anew.
TEST(TextCompare, PathologicalPatterns) {
    std::string const name(3000, 'a');
    std::string pattern;
    for (int i = 0; i < 60; ++i)
        pattern += "*a?a";
    for (int codePage : {1252, 932}) {
        NXS_CodePage const page(codePage);
        EXPECT_EQ((NXS_Results{compare(name, pattern + "b*", NX_CompareWild),
                               compare(name, pattern + "*b*a", NX_CompareWildFold),
                               compare(name, pattern, NX_CompareWild),
                               compare(name + "b", pattern + "B", NX_CompareWildFold)}),
                  (NXS_Results{-1, -1, 0, 0}));
    }
}
