// tests/text/string_test.cpp - the string's construction, sharing, editing, searching and fields.
#include "general/text/regexp.h"
#include "general/text/stringa.h"
#include "tests/support/support.h"

namespace {

using Numbers = std::vector<unsigned int>;

std::string text(NX_StringA const& s) {
    EXPECT_EQ(std::char_traits<char>::length(s.dataPConst()), s.strLen()) << s.dataPConst();
    return s.dataPConst();
}

int NX_FASTCALL compareKeys(char const* key, char const* entry) {
    return std::string(key).compare(entry);
}

TEST(String, construction) {
    NX_StringA cleared("x");
    NX_StringA const holder(cleared);
    cleared = "";
    NX_StringA printed;
    printed.strPrintF("");
    for (NX_StringA const& s :
         {NX_StringA(), NX_StringA(static_cast<char const*>(nullptr)), cleared, printed}) {
        EXPECT_EQ("", text(s));
        EXPECT_LT(s.refNo(), 0x100u); // nothing allocated
    }
    EXPECT_EQ("abc", text(NX_StringA("abcdef", 3)));
    EXPECT_EQ("xxxx", text(NX_StringA('x', 4)));
    std::ostrstream old;
    old << "n=" << 12;
    EXPECT_EQ("n=12", text(NX_StringA(old)));
    old << '3'; // the stream can go on
    EXPECT_EQ("n=123", text(NX_StringA(old)));
    NX_StringA const a("ab");
    EXPECT_EQ("abab|abX|Xab", text(a + a + "|" + (a + "X") + "|" + ("X" + a)));
    EXPECT_EQ(5u, NX_StringA(5, 9).itemQty()) << "two numbers are counts";
    // The zero is in place however the vector below was shortened.
    NX_StringA shorter("hello");
    shorter.itemQty(4);
    EXPECT_STREQ("hell", shorter.dataPMod());
    shorter.dataDeleteAt(0, 2);
    EXPECT_STREQ("ll", &shorter[0]);
}

// Copies share; each kind of write leaves the other handle alone, and only the written one gets a new block.
TEST(String, writesCopySharedBlocks) {
    using Write = void (*)(NX_StringA&);
    struct {
        Write write;
        char const* expected;
    } const writes[] = {{[](NX_StringA& s) { s += s; }, " ab cd  ab cd "},
                        {[](NX_StringA& s) { s += s(1, 2); }, " ab cd ab"},
                        {[](NX_StringA& s) { s = s.dataPConst() + 4; }, "cd "},
                        {[](NX_StringA& s) { s.strReplaceAt(0, 3, s.dataPConst() + 3, 4); }, " cd  cd "},
                        {[](NX_StringA& s) { s.strReplaceAt(2, 0, s); }, " a ab cd b cd "},
                        {[](NX_StringA& s) { s.strStrip(NX_StripBoth); }, "ab cd"},
                        {[](NX_StringA& s) { s.strXlate("abbacx"); }, " ba xd "},
                        {[](NX_StringA& s) { s.strLen(9, '.'); }, " ab cd .."},
                        {[](NX_StringA& s) { s(0, 4) = "#"; }, "#cd "},
                        {[](NX_StringA& s) { s.strPrintF("<%s>", s.dataPConst()); }, "< ab cd >"}};
    for (auto const& w : writes) {
        NX_StringA original(" ab cd "), copy(original);
        EXPECT_EQ(original.dataPConst(), copy.dataPConst());
        w.write(copy);
        EXPECT_EQ(std::string(w.expected) + "| ab cd ", text(copy) + "|" + text(original)) << &w - writes;
        w.write(original); // the only owner by now
        EXPECT_EQ(w.expected, text(original)) << "row " << &w - writes;
    }
}

TEST(String, searching) {
    NX_StringA s("ab,\"c,d\",b");
    unsigned int const none = NX_NO_INDEX;
    EXPECT_EQ((Numbers{9, none, 8, none}), (Numbers{s.strCharLast(), NX_StringA().strCharLast(),
                                                    s.strFindLast(",b"), s.strFindLast("ba")}));
    NX_RegExpA const pattern("b[,0-9]+");
    EXPECT_EQ((Numbers{1, 2, none}),
              (Numbers{s.itemNum(pattern, 0), s(pattern).itemQty(), s(pattern, 2).itemNum()}));
    s(pattern) = "-";
    EXPECT_EQ("a-\"c,d\",b", text(s));
    char const* const keys[] = {"alpha", "beta", "delta", "gamma"};
    EXPECT_EQ((Numbers{0, 3, none, none}), (Numbers{NX_StringA("alpha").strKeySearch(keys, 4, compareKeys),
                                                    NX_StringA("gamma").strKeySearch(keys, 4, compareKeys),
                                                    NX_StringA("betb").strKeySearch(keys, 4, compareKeys),
                                                    NX_StringA("alpha").strKeySearch(keys, 0, compareKeys)}));
}

TEST(String, numbersAndFields) {
    NX_StringA const s("  42;-0x1F ; tail ");
    EXPECT_EQ((std::vector<long>{42, -31, 0, 2147483647}),
              (std::vector<long>{s.atoInt(), s.dataLongGet(5, 6), s.dataLongGet(100, 6),
                                 NX_StringA("99999999999").atoLong()}));
    EXPECT_EQ("tail", text(s.dataStringGet(12, NX_NO_INDEX, NX_StripBoth)));
}

} // namespace
