// tests/text/tokenizer_test.cpp - splitting strings into words.
#include "general/text/dbcs.h"
#include "general/text/stringa.h"
#include "general/text/tokenizer.h"
#include "tests/support/support.h"

namespace {

TEST(Tokenizer, Words) {
    struct {
        char const* text;
        char const* separators; // null: the default
        char const* words;      // each with a bar behind it
    } const rows[] = {{"  ab\tcd\n", nullptr, "ab|cd|"}, {"", nullptr, ""},   {" \n\t", nullptr, ""},
                      {"a\rb c", nullptr, "a\rb|c|"},    {"a b", "", "a b|"}, {"a,b;,c", ",;", "a|b|c|"},
                      {"a\x81,b,c", ",", "a\x81,b|c|"}}; // a trail byte does not separate
    NxDbcsIsLead(0x81, 0x81, 1);
    NxDbcsIsTrue(1);
    for (auto const& row : rows) {
        NX_StringA const text(row.text);
        NX_TokenizerA next(text);
        std::string words;
        for (int calls = 0; calls < 5; ++calls) { // the end comes again and again
            NX_CharASub const word = row.separators ? next(row.separators) : next();
            if (word.itemNum() != NX_NO_INDEX)
                words += std::string(word.dataPConst(), word.itemQty()) + "|";
        }
        EXPECT_EQ(row.words, words);
    }
    NxDbcsIsLead(0x81, 0x81, 0);
    NxDbcsIsTrue(0);
}

TEST(Tokenizer, PlaceOfTheNextWord) {
    NX_StringA const text(",,x,,");
    NX_TokenizerA next(text);
    EXPECT_EQ(2u, next.itemNum(","));
    EXPECT_EQ(2u, next(",").itemNum());
    EXPECT_EQ(NX_NO_INDEX, next(",").itemNum());
    EXPECT_EQ(5u, next.itemNum(","));
}

} // namespace
