// tests/text/dbcs_test.cpp - code pages, lead-byte settings, Japanese variants, double-byte spaces.
#include "tests/support/support.h"
#include "tests/text/textsupport.h"

TEST(Dbcs, CodePagesHaveTheirRegionAndLeadBytes) {
    struct {
        int codePage, isTrue, china, japan, korea;
        char const *space, *unknown, *leads, *plain;
    } const rows[] = {{932, 1, 0, 1, 0, "\x81\x40", "\xFC\xFC", "\x81\x9F\xE0\xFC", "\x41\x80\xA0\xDF\xFD"},
                      {936, 1, 0, 0, 0, "", "", "\x81\xFE", "\x80\xFF"},
                      {949, 1, 0, 0, 1, "\xA1\xA1", "\xAF\xFE", "\x81\xFE", "\x80\xFF"},
                      {950, 1, 1, 0, 0, "\xA1\x40", "\xC8\xFE", "\x81\xFE", "\x80\xFF"},
                      {1252, 0, 0, 0, 0, "", "", "", "\x81\xE4"},
                      {1380, 0, 1, 0, 0, "\xA1\xA1", "\xAF\xFE", "", "\x81"}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.codePage);
        NX_DbcsInfo const info(row.codePage);
        EXPECT_EQ((NXS_Results{info.dbcsIsTrue(), info.dbcsIsFalse(), info.dbcsIsChina(), info.dbcsIsJapan(),
                               info.dbcsIsKorea(), info.chIsSpace(row.space)}),
                  (NXS_Results{row.isTrue, !row.isTrue, row.china, row.japan, row.korea, *row.space != 0}));
        EXPECT_EQ(info.chSpace() + std::string(info.chUnknown()), row.space + std::string(row.unknown));
        for (char const* p = row.leads; *p; ++p)
            EXPECT_TRUE(info.chIsLead(int{*p})); // a negative value is a byte
        for (char const* p = row.plain; *p; ++p)
            EXPECT_FALSE(info.chIsLead(*p));
        EXPECT_FALSE(info.chIsLead(0x181));
    }
    EXPECT_TRUE(NX_DbcsInfo::dbcsCodePageIsDbcs(930));
    EXPECT_FALSE(NX_DbcsInfo::dbcsCodePageIsDbcs(1380) || NX_DbcsInfo::dbcsCodePageIsDbcs(936));
    EXPECT_EQ(NX_DbcsInfo().dbcsCodePage(), NxCodePageDefault());
}

TEST(Dbcs, LeadByteSettings) {
    // last below first: no lead bytes at all; -2: unchanged
    std::tuple<char const*, int, int, int, int> const rows[] = {{"0x81-0x9F", 0, 0x81, 0x9F, 9},
                                                                {" \t129", 0, 129, 129, 5},
                                                                {"0-255", 0, 0, 255, 5},
                                                                {"-", 0, 1, 0, 1},
                                                                {" - more", 0, 1, 0, 2},
                                                                {"200-100", -1, -2, 0, 0},
                                                                {"300", -1, -2, 0, 0},
                                                                {"5 ", -1, -2, 0, 0},
                                                                {"5-", -1, -2, 0, 0},
                                                                {"", -1, -2, 0, 0}};
    for (auto const& [text, result, first, last, moved] : rows) {
        SCOPED_TRACE(text);
        NX_DbcsInfo info(1252);
        info.chIsLead(0xF0, 0xF0, 1);
        char const* p = text;
        EXPECT_TRUE(info.dbcsLead(&p) == result && p - text == moved);
        EXPECT_FALSE(info.dbcsIsTrue()); // the flag is not the table's
        for (int c = 0; c < 256; ++c) {
            bool const inside = first >= 0 && c >= first && c <= last;
            bool const kept = c == 0xF0 && first <= last;
            EXPECT_EQ(info.chIsLead(c), inside || kept || (first == -2 && c == 0xF0)) << c;
        }
    }
}

TEST(Dbcs, JapaneseVariants) {
    std::string const variants = "a\xFA\x5B\xE5\x41z\xFA\x54", normal = "a\x81\xE6\x8E\xC7z\x81\xCA";
    std::tuple<char const*, int, std::string, std::string> const rows[] = {
        {"mixed", 932, variants, normal},
        {"not Japanese", 936, variants, variants},
        {"after a one-byte katakana", 932, "\xB1\xFA\x5B", "\xB1\x81\xE6"},
        {"variant across two characters", 932, "\x81\xFA\x5B", "\x81\xFA\x5B"},
        {"lone lead byte at the end", 932, "\xFA", "\xFA"},
        {"first and last of the table", 932, "\x98\xD4\xFA\xD0", "\x96\x99\x8D\x56"}};
    for (auto const& [name, codePage, text, result] : rows) {
        SCOPED_TRACE(name);
        NXS_CodePage const page(codePage);
        std::string terminated = text, counted = text + "\xFA\x5B";
        NxTextJapanNormal(terminated.data());
        NxTextJapanNormal(counted.data(), static_cast<unsigned int>(text.size()));
        EXPECT_EQ(terminated, result);
        EXPECT_EQ(counted, result + "\xFA\x5B");
    }
    std::string host = "\xFA.\x5B,\xFA.\x5B", copy = "--------";
    NX_DbcsInfo(1252).dbcsJapanNormalHost(host.data(), copy.data(), 7);
    EXPECT_EQ(host, "\x81.\xE6,\xFA.\x5B");
    EXPECT_EQ(copy, "\x81-\xE6-----");
}

TEST(Dbcs, SpacesToSingleBytes) {
    std::tuple<int, char const*, char const*> const rows[] = {{932, "\x81\x40\x41", "  A"},
                                                              {932, "\x82\x81\x81\x40", "\x82\x81  "},
                                                              {949, "\xA1\xA1", "  "},
                                                              {936, "\xA1\xA1", "\xA1\xA1"},
                                                              {1252, "\x81\x40", "\x81\x40"}};
    for (auto const& [codePage, wide, narrow] : rows) {
        NXS_CodePage const page(codePage);
        std::string text = wide;
        NxTextDbcsSpaceToSbcs(text.data());
        EXPECT_EQ(text, narrow) << codePage;
    }
}
