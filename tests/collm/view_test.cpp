// tests/collm/view_test.cpp - ranges and cursors over a vector.
#include "general/collm/v4x.h"
#include "tests/collm/rawvec.h"
#include "tests/support/support.h"

namespace {

TEST(View, CoversWhatTheVectorHas) {
    RawVec v(std::string("abcde"));
    constexpr unsigned int all = NX_NO_INDEX;
    static std::tuple<unsigned int, unsigned int, unsigned int, char const*> const rows[] = {
        {0, all, 5, "abcde"}, {2, all, 3, "cde"}, {4, 9, 1, "e"},        {5, 3, 0, ""},
        {6, 0, 0, ""},        {all, 3, 0, ""},    {6, all, all, nullptr}};
    for (auto const& [first, length, qty, text] : rows) {
        RawSub const view(&v, first, length);
        EXPECT_EQ(view.itemQty(), qty) << first << ", " << length;
        if (text == nullptr)
            EXPECT_ASSERTION(view.dataPConst(), "item_num < itemQty()", "general/collm/v1.h");
        else
            EXPECT_EQ(view.text(), text);
    }
}

TEST(View, ReplacesItemsAndKeepsItsFields) {
    RawVec v(std::string("1234"));
    RawSub view(&v, 1, 2);
    view.dataReplace("9", 1);
    EXPECT_EQ(v.text() + " " + view.text(), "194 94");
    view = RawVec(std::string("wxyz"));
    EXPECT_EQ(v.text(), "1wxyz");
    RawSub const other(&v, 0, 1), nothing(&v, 0, 0);
    view = other; // items of the same vector
    EXPECT_EQ(v.text(), "11yz");
    EXPECT_EQ(view.itemNum(), 1u);
    view = nothing;
    EXPECT_EQ(v.text(), "1z");
    EXPECT_EQ(view.itemPConst(0)[0], 'z');
}

TEST(View, SearchResultsAreCountedDownTwice) {
    RawVec v(std::string("abcdefgh"));
    RawSub view(&v, 2, 5); // cdefg
    unsigned int at = 0;
    EXPECT_TRUE(view.itemSearch("f", byteCompare, &at) == 3u - 5 && at == 3u - 2);
    EXPECT_TRUE(view.itemSearch("a", byteCompare, &at) == NX_NO_INDEX && at == 0u - 2);
    EXPECT_EQ(view.itemSearchSeq("e", byteCompare), 2u - 5);
    EXPECT_EQ(view.itemSearchSeq("h", byteCompare), NX_NO_INDEX);
    EXPECT_ASSERTION(view.itemSearchSeq("e", byteCompareContext, nullptr), "0", "general/collm/vsearchx");
    RawVec w(std::string("87654321"));
    RawSub(&w, 1, 4).dataSort(byteCompare);
    RawSub(&w, 4, NX_NO_INDEX).dataSort(byteCompareContext, nullptr);
    EXPECT_EQ(w.text(), "84561237");
    EXPECT_EQ(RawSub(&w, 1, 3).itemQty(1), 3u);
    EXPECT_EQ(w.text(), "841237");
}

TEST(Cursor, DeletingKeepsItInStep) {
    int const items[] = {10, 20, 30, 40};
    NX_IntVec v(items, 4);
    NX_IntVec const before(v);
    NX_VecPtrT<NX_IntVec> p(v);
    ++p;
    p.itemDelete();
    ++p;
    EXPECT_TRUE(*p.itemPConst() == 30 && p.itemQtyUntilEnd() == 2);
    p.itemDeleteAt(0);
    p.itemDeleteAt(1); // behind it
    EXPECT_EQ(p.itemQtyUntilEnd(), 1u);
    *p = 33;
    EXPECT_EQ(v.itemPConst(0)[0], 33);
    ++p;
    p.itemDelete(); // nothing there
    EXPECT_EQ(p.itemPConst(), nullptr);
    EXPECT_TRUE(v.itemQty() == 1 && before.itemQty() == 4);
}

} // namespace
