// tests/text/textvec_test.cpp - character vectors and views of a part of them.
#include <cstring>

#include "general/text/dbcs.h"
#include "general/text/textvec.h"
#include "tests/support/support.h"

namespace {

NX_TextVecA vecOf(std::string const& text) {
    return {text.c_str(), static_cast<unsigned int>(text.size())};
}

std::string textOf(NX_CharASub const& view) {
    return view.itemQty() == 0 ? std::string() : std::string(view.dataPConst(), view.itemQty());
}

std::string textOf(NX_TextVecA const& vec) {
    return textOf(vec(0));
}

TEST(TextVec, AppendingCharactersSharesNothingAndKeepsTheZeroBehind) {
    NX_TextVecA text, copy;
    std::string model;
    for (unsigned int n = 0; n < 3000; ++n) {
        if (n % 500 == 250)
            copy = text;
        text += n < 26 ? static_cast<char>('a' + n) : *text.itemPConst(n - 26); // one of its own
        model += static_cast<char>('a' + n % 26);
        ASSERT_EQ('\0', text.dataPConst()[text.itemQty()]);
        ASSERT_LT(text.itemQty(), text.itemQtyCap());
    }
    EXPECT_EQ(model, textOf(text));
    EXPECT_EQ(model.substr(0, 2750), textOf(copy));
    text.itemQty(5); // the bytes behind stay as they were
    text.refIsDirty(0);
    text += 'b';
    EXPECT_EQ(6u, std::strlen(text.dataPConst()));
    text += text;
    text += text(10, 99);
    EXPECT_STREQ("abcdebabcdebeb", text.dataPConst());
}

TEST(TextVec, EmptyViewsHaveNoData) {
    NX_TextVecA const text = vecOf("hello");
    for (unsigned int const start : {5u, 7u, NX_NO_INDEX}) {
        NX_CharASub const view = text(start, 3);
        EXPECT_TRUE(view.itemQty() == 0 && view.dataPConst() == nullptr) << start;
        EXPECT_EQ(0, view.strCompare("", NX_CompareExact));
        EXPECT_EQ(NX_NO_INDEX, view.strCharFirst('l'));
    }
    EXPECT_ASSERTION((void)text(7).itemPConst(0), "item_num < itemQty()", "general/collm/v1.h");
}

TEST(TextVec, SearchesGiveIndexesInTheVector) {
    NX_TextVecA const text = vecOf("a,b\",\",c;\\,d");
    NX_CharASub const view = text(3); // ",",c;\,d
    EXPECT_EQ((std::vector<unsigned int>{4, 6, 10, 8, 11, 5, NX_NO_INDEX, NX_NO_INDEX}),
              (std::vector<unsigned int>{view.strCharFirst(','), view.strCharFirstXQuote(','),
                                         view.strCharLast(','), view.strCharFirst(";d"),
                                         view.strCharLast(";d"), view.strStrFirst("\",c"),
                                         view.strStrFirst("a,b"), view.strCharLast("xyz")}));
    NxDbcsIsLead(0x81, 0x81, 1);
    NX_TextVecA const wide = vecOf("a\x81\x61\x81,b\x81\x62");
    EXPECT_EQ(5u, wide(0).strCharLast("ab"));
    EXPECT_EQ(3u, wide(0).strCharLast("\x81,")); // a whole double-byte character of the set
    EXPECT_EQ(NX_NO_INDEX, wide(1).strCharFirst("a,"));
    NxDbcsIsLead(0x81, 0x81, 0);
}

TEST(TextVec, StrippingNarrowsTheView) {
    struct {
        char const* text;
        unsigned int start, length;
        int type;
        unsigned int newStart;
        char const* shown;
    } const rows[] = {
        {"  ab ", 0, NX_NO_INDEX, 3, 2, "ab"}, {"  ab ", 0, 5, 1, 2, "ab "}, {"   ", 0, 3, 3, 3, ""},
        {"  ab ", 1, 9, 2, 1, " ab"},          {"  ab ", 0, 4, 1, 2, "ab"},  {"ab", 5, 9, 3, 5, ""}};
    for (auto const& row : rows) {
        NX_TextVecA const text = vecOf(row.text);
        NX_CharASub view = text(row.start, row.length);
        view.strStrip(static_cast<NX_StripType>(row.type));
        EXPECT_EQ(row.newStart, view.itemNum()) << row.text;
        EXPECT_EQ(row.shown, textOf(view)) << row.text;
    }
}

TEST(TextVec, WritingThroughAViewLeavesCopiesAlone) {
    NX_TextVecA text = vecOf("one two three");
    NX_TextVecA const copy(text);
    NX_CharASub view = text(4, 3);
    view.strUpper();
    view = text(4, 2);
    EXPECT_EQ("one TW three", textOf(text));
    EXPECT_EQ("TW ", textOf(view)); // the view keeps its place and length
    EXPECT_EQ(3u, view.itemQty(1));
    EXPECT_EQ("one Tthree", textOf(text));
    text(5) = static_cast<char const*>(nullptr);
    EXPECT_EQ(5u, std::strlen(text.dataPConst()));
    text(0, 1) = copy;
    EXPECT_EQ("one two threene T", textOf(text));
    EXPECT_EQ("one two three", textOf(copy));
    EXPECT_DEATH(text(0, 2).itemQty(3), "");
}

TEST(TextVec, CopiesAndNumbersOfAView) {
    std::tuple<unsigned int, unsigned int, char const*> const rows[] = {
        {0, 0, "#######"}, {1, 0, ""}, {3, 2, "34"}, {4, 3, "345"}};
    NX_TextVecA const text = vecOf("23456");
    for (auto const& [size, qty, shown] : rows) {
        char out[] = "#######";
        unsigned int copied = 77;
        EXPECT_TRUE(text(1, 3).dataCopy(out, size, &copied) == out && copied == qty);
        EXPECT_STREQ(shown, out);
    }
    EXPECT_EQ(345, text(1, 3).dataLongGet());
}

} // namespace
