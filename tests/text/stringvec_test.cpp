// tests/text/stringvec_test.cpp - vectors of strings.
#include <sstream>

#include "general/text/stringvec.h"
#include "tests/support/support.h"

namespace {

// How many strings share this one's text.
unsigned long owners(NX_StringA const& text) {
    return text.refNo() >> 8;
}

std::string listOf(NX_StringVecA const& strings) {
    std::string list;
    for (NX_StringVecAPtrConst p(strings); p.itemIsAvail(); ++p)
        list += (list.empty() ? "" : " ") + std::string(p->dataPConst());
    return list;
}

TEST(StringVec, TextsAreSharedUntilWritten) {
    NX_StringA const text("text");
    {
        NX_StringVecA first;
        first += text;
        first.itemAppend(text);
        NX_StringVecA second(first);
        EXPECT_EQ(3u, owners(text)); // the block is shared, so the strings in it are the same
        second[0] += "!";
        EXPECT_EQ(4u, owners(text)); // the copy's block counts its strings; the first went its own way
        EXPECT_EQ("text text|text! text", listOf(first) + "|" + listOf(second));
        NX_StringA out[4];
        unsigned int copied = 0;
        first.dataCopy(out, 1, &copied); // over a string that owns nothing
        EXPECT_EQ(5u, owners(text));
        first.itemDeleteAt(0);
        EXPECT_EQ(4u, owners(text));
        second = first;
        EXPECT_EQ(3u, owners(text));
        second.dataReplace(second.dataPConst(), 1); // by itself
        EXPECT_EQ("text", listOf(second));
        second.itemQty(100);
        EXPECT_EQ("", std::string(second[99].dataPConst()));
        second.itemQty(0);
        EXPECT_EQ(3u, owners(text));
    }
    EXPECT_EQ(1u, owners(text));
}

TEST(StringVec, ViewsAndStreamOutput) {
    NX_StringVecA strings;
    for (char const* text : {"a", "b", "c"})
        strings += text;
    NX_StringVecA const kept(strings);
    strings += strings(1);
    strings += strings(5);
    strings(0, 1) = NX_StringVecA(strings(2, 2));
    *NX_StringVecAPtr(strings(1)) += "!";
    std::ostringstream os;
    os << strings << '|' << NX_StringVecA() << '|' << kept;
    EXPECT_EQ("c\nb!\nb\nc\nb\nc||a\nb\nc", os.str());
}

} // namespace
