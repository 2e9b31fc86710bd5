// tests/text/regexp_test.cpp - compiling and searching with regular expressions.
#include <random>
#include <sstream>

#include "general/text/regexp.h"
#include "general/text/stringa.h"
#include "tests/support/support.h"

namespace {

// The text with the first match from `start` on between angle brackets.
std::string search(char const* source, std::string text, unsigned int start = 0) {
    NX_RegExpA const pattern(source);
    unsigned int length = 77;
    unsigned int const found = pattern.itemNum(text.c_str(), &length, start);
    EXPECT_TRUE(pattern.expIsOk() && (found != NX_NO_INDEX || length == 0)) << source;
    if (found != NX_NO_INDEX)
        text.insert(found + length, ">").insert(found, "<");
    return text;
}

TEST(RegExp, Searches) {
    std::istringstream rows(R"(
        [0-9]+ ab<42>c   %([0-9]) a<%(7)>  a* <>bbb           $ ab<>           b$ ba<b>         a$b x<a$b>
        a^b x<a^b>       ^b ab             x?x x              x?x <xx>         a|b <a|b>        {2} a<{2}>
        ] a<]>           [^a] aa<b>        [] x               []a a            [-a]+ B<-a>      [a-]+ b<-a>
        [^-a] -a<b>      [c-a]+ x<abc>     [a-c-e]+ <edcba>   [a\-c]+ b<->     [\]x]+ a<]x>     A a
        [\x30-\71]+ a<09>:  \x41\X4a <AJ>  \xg g              \1018 <A8>       \501 <A>         a\^ <a^>
        a\ <a\>          \.\*\q x<.*q>     \a <a>             [^\^A]\^] x      )");
    for (std::string pattern, match; rows >> pattern >> match;) {
        std::string text = match;
        std::erase_if(text, [](char ch) { return ch == '<' || ch == '>'; });
        EXPECT_EQ(match, search(pattern.c_str(), text)) << pattern;
    }
    EXPECT_EQ("<\x08\x1B\x0C\n\r \t\x01\x01\x1B\xE1\xFF>",
              search("\\b\\E\\f\\N\\r\\S\\t\\^a\\^A\\^[\\^![^a]", "\x08\x1B\x0C\n\r \t\x01\x01\x1B\xE1\xFF"));
    EXPECT_EQ("ab4<2>c", search("[0-9]+", "ab42c", 3));
    EXPECT_EQ("a<b>", search("^b", "ab", 1));
    EXPECT_EQ("bbb<>", search("a*", "bbb", 3));
    EXPECT_EQ("bbb", search("a*", "bbb", 4));
}

TEST(RegExp, Status) {
    NX_RegExpA reused;
    EXPECT_EQ(NX_RegExpA::EXP_Syntax, reused.expStatus());
    for (char const* source : {"", "*a", "+", "?", "a**", "a+?", "^*", "[abc", "[a-", "[a\\", "\\"}) {
        reused = source;
        NX_RegExpA const copy(reused);
        reused = "b"; // in a block of its own
        unsigned int length = 77;
        EXPECT_TRUE(reused.itemNum("ab", &length, 0) == 1 && copy.itemQty() == 128);
        EXPECT_EQ(*source == '\\' ? NX_RegExpA::EXP_Ok : NX_RegExpA::EXP_Syntax, copy.expStatus()) << source;
        EXPECT_EQ(NX_NO_INDEX, copy.itemNum("", &length, 0));
        EXPECT_EQ(0u, length);
    }
    // The end code needs unit 127 at the latest.
    // literals in front
    std::tuple<unsigned int, char const*> const rows[] = {{127, ""}, {126, "*"}, {110, "[a]"}, {109, "[a]*"}};
    for (auto const& [most, last] : rows)
        for (unsigned int over = 0; over < 3; ++over) {
            reused = (std::string(most + over, 'x') + last).c_str();
            EXPECT_EQ(over ? NX_RegExpA::EXP_Overflow : NX_RegExpA::EXP_Ok, reused.expStatus()) << last;
        }
}

// The plain backtracking reading of a compiled program: the end of a match at `pos`, or -1.
int naive(unsigned short const* code, std::string const& text, std::size_t pos) {
    bool const repeats = *code == 0x802A || *code == 0x802B;
    unsigned short const* const element = code + (repeats || *code == 0x803F);
    unsigned short const* const rest = element + (*element == 0x805B ? 17 : 1);
    auto const fits = [&](std::size_t at) {
        auto const byte = static_cast<unsigned char>(text[at]); // the zero at the end is in no test's set
        return at < text.size() && (*element == 0x805B ? element[1 + byte / 16] >> (byte % 16) & 1
                                                       : *element == 0x802E || *element == byte);
    };
    if (*code == 0x8000)
        return static_cast<int>(pos);
    if (*code == 0x8024)
        return pos == text.size() ? naive(rest, text, pos) : -1;
    if (*code == 0x803F)
        return naive(rest, text, pos + fits(pos));
    if (!repeats)
        return fits(pos) ? naive(rest, text, pos + 1) : -1;
    std::size_t end = pos;
    while (fits(end))
        ++end;
    int match = -1;
    for (std::size_t tries = end + 1 - pos - (*code == 0x802B); match < 0 && tries > 0; --tries)
        match = naive(rest, text, end--);
    return match;
}

TEST(RegExp, AgreesWithPlainBacktracking) {
    char const* const elements[] = {"a", "b",  "c",     ".",  "[ab]", "[^a]", "a*", "b*", ".*",    "[ab]*",
                                    "c", "a+", "[^b]+", ".+", "a?",   "b?",   ".?", "$",  "[^a]?", "c*"};
    std::mt19937 random(20);
    auto const below = [&](std::size_t n) { return static_cast<unsigned int>(random() % n); };
    NX_RegExpA pattern;
    for (int round = 0; round < 60000; ++round) {
        std::string source = below(8) == 0 ? "^" : "";
        for (unsigned int n = 1 + below(7); n > 0; --n)
            source += elements[below(std::size(elements))];
        std::string text;
        for (unsigned int n = below(14); n > 0; --n)
            text += "aabc"[below(4)];
        pattern = source.c_str();
        ASSERT_TRUE(pattern.expIsOk()) << source;
        bool const anchored = source[0] == '^';
        unsigned int const start = below(text.size() + 1);
        unsigned int expected = NX_NO_INDEX, expectedLength = 0;
        for (unsigned int pos = start; pos <= text.size() && expected == NX_NO_INDEX; ++pos) {
            int const end = naive(pattern.dataPConst() + anchored, text, pos);
            if (end >= 0) {
                expected = pos;
                expectedLength = static_cast<unsigned int>(end) - pos;
            }
            if (anchored)
                break;
        }
        unsigned int length = 77;
        ASSERT_EQ(expected, pattern.itemNum(NX_StringA(text.c_str()), &length, start))
            << source << " on " << text;
        ASSERT_EQ(expectedLength, length) << source << " on " << text;
    }
}

// Each of these would take hours or a gigabyte of stack by plain backtracking.
TEST(RegExp, LongTextsAndHostilePatterns) {
    NX_StringA const text('a', 300000);
    unsigned int length = 0;
    for (char const* source : {"a*a*a*a*a*a*a*a*b", ".*.*.*.*b", "a+a+a+$b", "[ab]*.*a?a?a+c"})
        EXPECT_EQ(NX_NO_INDEX, NX_RegExpA(source).itemNum(text, &length, 0)) << source;
    EXPECT_EQ(0u, NX_RegExpA("a*a*a*").itemNum(text, &length, 0));
    EXPECT_EQ(300000u, length);
}

// The quick search for a beginning, over blocks and their ends.
TEST(RegExp, BeginningsAreFoundWhereverTheyLie) {
    for (char const* source : {"X", "[XZ]+", "[W-Y]", "[1UX]", "[13UX]", "[13579UX]", "X$", "Y?X", "X*$"})
        for (unsigned int at = 0; at < 200; ++at) {
            NX_StringA text('-', 200);
            *text.itemPMod(at) = 'X';
            text.strLen(at + 1, ' ');
            unsigned int length = 0;
            ASSERT_EQ(at, NX_RegExpA(source).itemNum(text, &length, 0)) << source;
            ASSERT_EQ(1u, length);
        }
}

} // namespace
