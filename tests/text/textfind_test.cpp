// tests/text/textfind_test.cpp - searching, spans and case: a table, then all forms against a naive model.
#include <cstring>

#include "general/text/textprim.h"
#include "tests/support/support.h"
#include "tests/text/textsupport.h"

namespace {

using Chars = std::vector<NXS_Char>;

bool sameAt(Chars const& text, std::size_t at, Chars const& sub) {
    for (std::size_t i = 0; i < sub.size(); ++i)
        if (at + i >= text.size() || text[at + i].value != sub[i].value)
            return false;
    return true;
}

// Offset of the first or last occurrence, -1 without one.
int modelFind(Chars const& text, int len, Chars const& sub, bool last) {
    int found = sub.empty() ? (last ? len : 0) : -1;
    for (std::size_t i = 0; i < text.size() && !sub.empty(); ++i)
        if (sameAt(text, i, sub) && (last || found < 0))
            found = text[i].at;
    return found;
}

bool occurs(Chars const& set, unsigned int value) {
    return modelFind(set, 0, {{value, 0, 1}}, false) >= 0;
}

template <class IsIn>
int modelRun(Chars const& text, int len, IsIn const& isIn) {
    for (NXS_Char const& c : text)
        if (!isIn(c.value))
            return c.at;
    return len;
}

bool isSpace(unsigned int c) {
    return c < 256 && (NxTextTypeP()[c + 4] & NX_TextSpace);
}

std::string modelCase(std::string text, char first) {
    for (NXS_Char const& c : nxChars(text))
        if (c.value - static_cast<unsigned char>(first) < 26)
            text[static_cast<std::size_t>(c.at)] = static_cast<char>(c.value ^ 0x20);
    return text;
}

std::ptrdiff_t offset(NX_TextA1PtrConst found, char const* start) {
    return found ? found - start : -1;
}

} // namespace

TEST(TextFind, QuotesIn8And16Bits) {
    std::tuple<char const*, char, int> const rows[] = {
        {"a\"x,y\",z", ',', 6}, {"a\\,b,c", ',', 4}, {"a\"b,c", ',', -1},    {"a\"b", '"', 1},
        {"a\\\"\"", '"', 3},    {"\\", '\\', 0},     {"\"\\\"\\", '\\', -1}, {"\"\\\",\",", ',', 5},
        {"a'b,c'", ',', 3},     {"\"\\", ',', -1},   {"a\\", ',', -1},       {"\"a\"\"b,\",", ',', 7}};
    for (auto const& [text, ch, at] : rows) {
        SCOPED_TRACE(text);
        int const len = static_cast<int>(std::strlen(text));
        EXPECT_EQ(offset(NxTextFindXQuote(text, ch), text), at);
        std::string const longer = text + std::string(",\",");
        EXPECT_EQ(offset(NxTextFindXQuote(longer.c_str(), len, ch), longer.c_str()), at);
        NXS_Wide const wide(text);
        EXPECT_EQ(wide.offset(NxTextFindXQuote(wide, ch)), at);
    }
    NXS_CodePage const page(932);
    char const* text = "\x81\\\x81\",\x81,";
    EXPECT_TRUE(NxTextFindXQuote(text, ',') == text + 4 && NxTextFindXQuote(text, 0x812C) == text + 5);
}

TEST(TextFind, CaseQuestionsAndEnds) {
    NXS_CodePage const page(932);
    std::tuple<char const*, int, int, int, int> const rows[] = {
        {"AB", 1, 1, 'B', 0}, {"AB1", 0, 1, '1', 0},          {"Ab", 0, 0, 'b', 0},
        {"", 1, 1, 0, 0},     {"A\x81\x41", 0, 0, 0x8141, 3}, {"\x81\x81\x41", 0, 0, 'A', 2},
        {" ", 0, 1, ' ', 0},  {"\xB1", 0, 1, 0xB1, 0}};
    for (auto const& [text, isUpper, isUpperAZ, last, dbcsEnd] : rows) {
        EXPECT_EQ((NXS_Results{NxTextIsUpper(text) != 0, NxTextIsUpperAZ(text) != 0, NxTextLast(text),
                               offset(NxTextDbcsEnd(text), text)}),
                  (NXS_Results{isUpper, isUpperAZ, last, dbcsEnd}))
            << testing::PrintToString(text);
    }
    EXPECT_TRUE(NxTextLast(NX_TextA1PtrConst()) == 0 && NxTextLast(NX_TextW1PtrConst(), 3) == 0);
    EXPECT_EQ(NxTextLast(NXS_Wide("ab")), 'b');
}

// The C library's routines serve where the flag says so, whatever the table; counted forms go by the table.
TEST(TextFind, FlagAndTableApart) {
    NXS_CodePage const page(932);
    char text[] = "\x81,\x81\x61,";
    EXPECT_TRUE(offset(NxTextFind(text, ','), text) == 4 && NxTextSpanNot(text, ",") == 4);
    EXPECT_STREQ(NxTextUpper(text), "\x81,\x81\x61,");
    NxDbcsIsTrue(0);
    EXPECT_EQ((NXS_Results{offset(NxTextFind(text, ','), text), offset(NxTextFind(text, ",\x81"), text),
                           NxTextSpanNot(text, ","), offset(NxTextFind(text, 5, ','), text),
                           NxTextSpanNot(text, 5, ",")}),
              (NXS_Results{1, 1, 1, 4, 4}));
    NxTextUpper(text, 5);
    EXPECT_STREQ(text, "\x81,\x81\x61,");
    EXPECT_STREQ(NxTextUpper(text), "\x81,\x81\x41,");
}

TEST(TextFind, AllFormsAgreeWithTheModel) {
    NXS_CodePage const restore(1252);
    NXS_RandomText random("aAzZb \t,0\x81\x82\x81,a");
    for (int page : nxModelPages) {
        nxModelPage(page);
        for (int round = 0; round < 6000; ++round) {
            std::string const text = round % 2 ? random.whole(70) : random.whole(400);
            std::string const sub = random.whole(round % 7 ? 3 : 0);
            std::string const counted = text + sub; // what is behind the length must not be found
            SCOPED_TRACE(std::to_string(page) + testing::PrintToString(text) + " / " +
                         testing::PrintToString(sub));
            Chars const chars = nxChars(text), subChars = nxChars(sub);
            int const len = static_cast<int>(text.size());
            char const* t = text.c_str();
            char const* n = counted.c_str();
            for (bool last : {false, true}) {
                auto const expected = modelFind(chars, len, subChars, last);
                char const* const s = sub.c_str();
                ASSERT_EQ(offset(last ? NxTextFindLast(t, s) : NxTextFind(t, s), t), expected);
                ASSERT_EQ(offset(last ? NxTextFindLast(n, len, s) : NxTextFind(n, len, s), n), expected);
                if (subChars.empty())
                    continue;
                int const ch = static_cast<int>(subChars[0].value);
                auto const expectedCh = modelFind(chars, len, {subChars[0]}, last);
                ASSERT_EQ(offset(last ? NxTextFindLast(t, ch) : NxTextFind(t, ch), t), expectedCh);
                ASSERT_EQ(offset(last ? NxTextFindLast(n, len, ch) : NxTextFind(n, len, ch), n), expectedCh);
            }
            int const in = modelRun(chars, len, [&](unsigned int c) { return occurs(subChars, c); });
            int const notIn = modelRun(chars, len, [&](unsigned int c) { return !occurs(subChars, c); });
            int end = 0;
            for (NXS_Char const& c : chars)
                end = isSpace(c.value) ? end : c.at + c.width;
            char const* const set = sub.c_str();
            ASSERT_EQ((NXS_Results{NxTextSpan(t, set), NxTextSpan(n, len, set), NxTextSpanNot(t, set),
                                   NxTextSpanNot(n, len, set), NxTextSpaceNotEnd(t),
                                   NxTextSpaceNotEnd(n, len), NxTextLast(t)}),
                      (NXS_Results{in, in, notIn, notIn, end, end, chars.empty() ? 0 : chars.back().value}));
            ASSERT_EQ(NxTextSpaceLen(n, len), modelRun(chars, len, isSpace));
            ASSERT_EQ(NxTextSpaceNotLen(t), modelRun(chars, len, [](unsigned int c) { return !isSpace(c); }));
            std::string changed = counted;
            ASSERT_EQ(NxTextUpper(changed.data(), len), changed.data());
            ASSERT_EQ(changed, modelCase(text, 'a') + sub);
            ASSERT_EQ(NxTextLower(changed.data(), len), changed.data());
            ASSERT_EQ(changed, modelCase(modelCase(text, 'a'), 'A') + sub);
            changed = text;
            ASSERT_EQ(std::string(NxTextLower(changed.data())), modelCase(text, 'A'));
            ASSERT_EQ(std::string(NxTextUpper(changed.data())), modelCase(modelCase(text, 'A'), 'a'));
            if (page != 1252)
                continue;
            NXS_Wide wide(text);
            NXS_Wide const wideSub(sub);
            ASSERT_EQ((NXS_Results{wide.offset(NxTextFind(wide, len, wideSub)),
                                   wide.offset(NxTextFindLast(wide, wideSub)), NxTextSpan(wide, wideSub),
                                   NxTextSpaceNotEnd(wide)}),
                      (NXS_Results{modelFind(chars, len, subChars, false),
                                   modelFind(chars, len, subChars, true), in, end}));
            NxTextUpper(wide);
            ASSERT_EQ(wide.text(), modelCase(text, 'a'));
        }
    }
}

// Counted text may hold zeros and end in a lone lead byte.
TEST(TextFind, ZerosAndLoneLeadBytes) {
    NXS_CodePage const page(932);
    char const text[] = {'a', 0, 'b', 0, ' ', '\x81', 'a', '\x81'};
    auto const at = [&](NX_TextA1PtrConst found) { return offset(found, text); };
    EXPECT_EQ((NXS_Results{at(NxTextFind(text, 8, 0)), at(NxTextFindLast(text, 8, 0)),
                           at(NxTextFind(text, 8, "b")), at(NxTextFindLast(text, 8, 'a')),
                           at(NxTextFind(text, 8, 0x8100)), at(NxTextFindLast(text, 8, 0x8161)),
                           at(NxTextFind(text, 6, 0x8161)), at(NxTextFind(text, -3, 'a'))}),
              (NXS_Results{1, 3, 2, 0, 7, 5, -1, -1}));
    EXPECT_EQ((NXS_Results{NxTextLast(text, 8), NxTextSpan(text, 8, "ab "), NxTextSpanNot(text, 8, " "),
                           NxTextSpaceNotEnd(text, 8)}),
              (NXS_Results{0x8100, 1, 4, 8})); // the zero is in no set
    char const* overlap = "a\x81\x61\x81\x61"; // the later hit starts in a trail byte
    EXPECT_EQ(offset(NxTextFindLast(overlap, "a\x81\x61"), overlap), 0);
}

// A character that the C library does not tell from its low byte; a signed one; the end.
TEST(TextFind, OddCharacters) {
    NXS_CodePage const page(1252);
    char const* text = "a\xE4";
    EXPECT_TRUE(NxTextFind(text, 'a' + 256) && !NxTextFind(text, 2, 'a' + 256));
    EXPECT_EQ(offset(NxTextFind(text, 2, static_cast<signed char>(0xE4)), text), 1);
    EXPECT_EQ(offset(NxTextFindLast(text, 0), text), 2);
    EXPECT_TRUE(NxTextFind(NXS_Wide("a"), 'a' + 0x10000) && !NxTextFind(NXS_Wide("a"), 1, 'a' + 0x10000));
}
