// tests/text/textprim_test.cpp - copying, filling, tables, numbers and counters.
#include <cstring>

#include "general/collm/mem.h"
#include "general/text/stringa.h"
#include "general/text/textprim.h"
#include "tests/support/support.h"
#include "tests/text/textsupport.h"

TEST(TextPrim, CopyAndFillIn8And16Bits) {
    struct {
        char const* src;
        int size, result, padded;
        char const *copied, *field; // `field`: NxTextCopyAndPad with '+' into "........"
    } const rows[] = {{"abc", 3, 2, 3, "ab", "abc....."},       {"abc", 1, 0, 1, "", "a......."},
                      {"abc", 0, 0, 0, "........", "........"}, {"ab", 5, 2, 2, "ab", "ab+++..."},
                      {nullptr, 2, 0, 0, "", "++......"},       {"abc", 4, 3, 3, "abc", "abc+...."}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.size);
        char buffer[] = "........";
        EXPECT_EQ(NxTextCopy(buffer, row.src, row.size), row.result);
        EXPECT_STREQ(buffer, row.copied);
        char field[] = "........";
        EXPECT_EQ(NxTextCopyAndPad(field, row.src, row.size, '+'), row.padded);
        EXPECT_STREQ(field, row.field);
        NXS_Wide wide("........");
        NXS_Wide const src(row.src ? row.src : "");
        EXPECT_EQ(NxTextCopy(wide, row.src ? src : NX_TextW1PtrConst(), row.size), row.result);
        EXPECT_EQ(wide.text().substr(0, std::strlen(row.copied)), row.copied);
        EXPECT_EQ(NxTextCopyAndPad(wide, row.src ? src : NX_TextW1PtrConst(), row.size, '+'), row.padded);
    }
    char text[] = "ab\0....";
    EXPECT_EQ(NxTextPad(text, '-', 4), 2);
    EXPECT_STREQ(text, "ab--...");
    EXPECT_EQ(NxTextSet2(text, 'x', 'y', 3).textP(), text);
    EXPECT_STREQ(text, "xyx-...");
    NxTextSetSeq(text, 0xFE, 4);
    EXPECT_EQ(std::memcmp(text, "\xFE\xFF\0\x01...", 7), 0);
    EXPECT_TRUE(NxTextLen("abc", 2) == 2 && NxTextLen(NXS_Wide("abc"), -1) == 0);
}

TEST(TextPrim, Duplicates) {
    NX_TextA1Ptr const plain = NxTextDup("abc"), extra = NxTextDup("abc", 2, 'z');
    NX_TextW1Ptr const wide = NxTextDup(NXS_Wide("abc"), 3, 0);
    EXPECT_STREQ(plain, "abc");
    EXPECT_STREQ(extra, "abz");
    EXPECT_TRUE(wide[2] == 'c' && wide[4] == 0);
    for (void* block : {static_cast<void*>(plain), static_cast<void*>(extra), static_cast<void*>(wide)})
        NxMemHeapFree(&block);
    EXPECT_STREQ(NxTextStringGet("abcdef", 3).dataPConst(), "abc");
    EXPECT_EQ(NxTextStringGet(nullptr).strLen(), 0u);
}

// The ways of holding text that no other test uses.
TEST(TextPrim, OverloadsTakeWrappedPointers) {
    char text[] = "a,b";
    NX_TextA1Ptr const wrapped = text;
    EXPECT_EQ(NxTextFind(wrapped, ','), NxTextFindLast(NX_TextA1PtrConst(wrapped), 3, ","));
    EXPECT_TRUE(NxTextFind("abc", 'x') == nullptr && NxTextFind("abc", 'b')[1] == 'c');
    EXPECT_EQ(NxTextFindAndTerminate(wrapped, ','), text + 1);
    EXPECT_STREQ(text, "a");
}

TEST(TextPrim, ClassesFoldingAndDigits) {
    std::tuple<int, int> const runs[] = {
        {-4, 0x00},   {-3, 0x21},   {-2, 0x20},   {-1, 0x00},  {0x08, 0x01}, {0x0D, 0x11}, {0x1F, 0x01},
        {0x20, 0x10}, {'!', 0x88},  {'"', 0x08},  {'$', 0x88}, {'/', 0x08},  {'9', 0x06},  {'?', 0x08},
        {'@', 0x88},  {'F', 0x24},  {'Z', 0x20},  {'`', 0x88}, {'f', 0x44},  {'z', 0x40},  {'~', 0x88},
        {0x9F, 0x80}, {0xA0, 0x90}, {0xBF, 0x88}, {0xFF, 0x80}};
    int c = -4;
    for (auto const& [last, type] : runs)
        for (; c <= last; ++c)
            EXPECT_EQ(NxTextTypeP()[c + 4], type) << c;
    for (c = 0; c < 256; ++c)
        EXPECT_EQ(NxTextLowerP()[c], c >= 'A' && c <= 'Z' ? c + 32 : c == 0xAD ? 0xAC : c);
    for (char const* digit = "09afAF"; *digit; ++digit)
        EXPECT_EQ(NxTextHexToBinaryP()[*digit - '0'], std::stoi(std::string(1, *digit), nullptr, 16));
}

TEST(TextPrim, NumbersIn8And16Bits) {
    long const least = -2147483647 - 1;
    std::tuple<char const*, long, int> const rows[] = {{"  -0x1F", -31, 7},
                                                       {"+ 5", 0, 1},
                                                       {"0x", 0, 2},
                                                       {"", 0, 0},
                                                       {" \t", 0, 2},
                                                       {"12a", 12, 2},
                                                       {"0X0fFg", 255, 5},
                                                       {"--5", 0, 1},
                                                       {"\xA0\x35", 5, 2},
                                                       {"0100", 100, 4},
                                                       {"4294967295", -1, 10},
                                                       {"0x80000000", least, 10},
                                                       {"-2147483648", least, 11}};
    for (auto const& [text, value, at] : rows) {
        int const len = static_cast<int>(std::strlen(text));
        std::string const longer = std::string(text) + "99"; // the counted form must stop before it
        NXS_Wide const wide(longer);
        char const *end = nullptr, *countedEnd = nullptr;
        unsigned short const* wideEnd = nullptr;
        EXPECT_EQ((NXS_Results{NxTextLongGet(text, &end), NxTextLongGet(longer.c_str(), len, &countedEnd),
                               NxTextLongGet(longer.c_str(), len, NX_DataText),
                               NxTextLongGet(wide, len, &wideEnd)}),
                  (NXS_Results{value, value, value, value}))
            << text;
        EXPECT_EQ(
            (NXS_Results{end - text, countedEnd - longer.c_str(), wideEnd - NX_TextW1PtrConst(wide).textP()}),
            (NXS_Results{at, at, at}))
            << text;
    }
}

TEST(TextPrim, BinaryFields) {
    std::tuple<char const*, int, int, long> const rows[] = {{"\xFF\xFE", 2, 1, -2},
                                                            {"\xFF\xFE", 2, 2, 65534},
                                                            {"\xFE\xFF", 2, 4, -2},
                                                            {"\xFE\xFF", 2, 5, 65534},
                                                            {"\xFF\1\2\3\4", 5, 1, 0x1020304},
                                                            {"\1\2\3\4\xFF", 5, 4, 0x4030201},
                                                            {"\xFF\xFF\xFF\xFF", 4, 2, -1},
                                                            {"\x80", 1, 1, -128},
                                                            {"\x80", 0, 1, 0},
                                                            {"12", 2, 7, 12},
                                                            {"12", 2, 3, 0},
                                                            {"12", -1, 6, 0}};
    for (auto const& [bytes, len, type, value] : rows)
        EXPECT_EQ(NxTextLongGet(bytes, len, static_cast<NX_DataType>(type)), value)
            << type << " of " << testing::PrintToString(std::string(bytes));
    unsigned short const units[] = {0x0201, 0x0403}; // bytes 1 2 3 4
    EXPECT_EQ(NxTextLongGet(units, 2, NX_DataMsbInt), 0x01020304);
    EXPECT_EQ(NxTextLongGet(units, 2, NX_DataLsbInt), 0x04030201);
}

TEST(TextPrim, CountersIn8And16Bits) {
    std::tuple<char const*, char const*, int> const rows[] = {
        {"file9", "file0", 0}, {"file1", "file2", 1}, {"a199", "a200", 1}, {"99", "00", 0},
        {"abz", "aba", 1},     {"abZ", "abA", 1},     {"abc", "abd", 0},   {"--", "--", -1},
        {"", "", -1},          {"a9-", "a:-", 0},     {"z)", "a)", 1},     {"a9b", "a9c", 0},
        {"9\xC4", ":\xC4", 0}};
    for (auto const& [before, after, result] : rows) {
        std::string text = before;
        NXS_Wide wide(text);
        int const len = static_cast<int>(text.size());
        EXPECT_TRUE(NxTextInc(text.data(), len) == result && text == after) << before;
        EXPECT_TRUE(NxTextInc(wide, len) == result && wide.text() == after) << before;
    }
    NXS_CodePage const page(932);
    char text[] = "a9\x81z\x81\x39"; // double-byte characters count neither as letters nor as digits
    EXPECT_EQ(NxTextInc(text, 6), 0);
    EXPECT_STREQ(text, "a:\x81z\x81\x39");
}
