// tests/text/stringbyname_test.cpp - dictionaries.
#include <map>
#include <random>

#include "general/text/stringbyname.h"
#include "tests/support/support.h"

namespace {

template <class Dictionary>
std::string listOf(Dictionary const& dictionary) {
    std::string list;
    for (NX_VecPtrConstT<Dictionary> p(dictionary); p.itemIsAvail(); ++p)
        list += std::string(p->key.dataPConst()) + "=" + p->value.dataPConst() + " ";
    return list;
}

template <class Dictionary>
std::string listAfter(std::initializer_list<char const*> keys) {
    Dictionary dictionary;
    for (char const* key : keys)
        dictionary.itemInsert(key, std::to_string(dictionary.itemQty()).c_str());
    return listOf(dictionary);
}

TEST(StringByName, EachFamilyHasItsOrder) {
    auto const keys = {"Path", "PATH", "file10", "File9", "a", "_"};
    EXPECT_EQ("File9=3 PATH=1 Path=0 _=5 a=4 file10=2 ", listAfter<NX_StringByName>(keys));
    EXPECT_EQ("_=4 a=3 file10=1 File9=2 PATH=1 ", listAfter<NX_StringByNameFold>(keys));
    EXPECT_EQ("_=4 a=3 File9=2 file10=1 PATH=1 ", listAfter<NX_StringByNameFoldNum>(keys));
    // Numbers with leading zeros agree as far as the digits go; what follows and then the lengths decide.
    EXPECT_EQ("a7=0 a007=1 a8=2 ", listAfter<NX_StringByNameFoldNum>({"a7", "a007", "a8"}));
}

TEST(StringByName, OverwritingTakesTheNewKeyText) {
    NX_StringByNameFold dictionary;
    unsigned int insertAt = 77;
    dictionary.itemInsert("Path", "1");
    dictionary.itemInsert("a", "2");
    NX_StringByNameFold const copy(dictionary);
    EXPECT_EQ(NX_NO_INDEX, dictionary.itemInsert("PATH", "3", &insertAt));
    EXPECT_EQ(1u, nxByNameInsertAt()); // the library's word has the place, the argument is left alone
    EXPECT_EQ(NX_NO_INDEX, dictionary.itemSearch("z", &insertAt));
    EXPECT_EQ(2u, nxByNameInsertAt());
    EXPECT_EQ(77u, insertAt);
    EXPECT_EQ("a=2 PATH=3 ", listOf(dictionary));
    EXPECT_EQ("a=2 Path=1 ", listOf(copy));
    EXPECT_EQ(1u, dictionary.itemNum(dictionary.itemPConst("path")));
    EXPECT_EQ(nullptr, dictionary.itemPConst("pat"));
}

template <class Dictionary>
void compareWithMap(int step) {
    std::mt19937 random(9);
    std::map<std::string, std::string> model;
    Dictionary dictionary;
    NX_StringA const value("value");
    for (int round = 0; round < 4000; ++round) {
        // Keys in order to begin with, then any.
        std::string const key =
            "k" + std::to_string(round < 200 ? 1000 + round * step : 1000 + random() % 1000);
        auto const place = static_cast<unsigned int>(std::distance(model.begin(), model.lower_bound(key)));
        bool const present = model.contains(key);
        unsigned int const expected = present ? place : NX_NO_INDEX;
        ASSERT_EQ(expected, dictionary.itemSearch(key.c_str()));
        if (round >= 200 && random() % 3 == 0) {
            ASSERT_EQ(expected, dictionary.itemDelete(key.c_str()));
            model.erase(key);
        } else {
            ASSERT_EQ(present ? NX_NO_INDEX : place, dictionary.itemInsert(key.c_str(), value));
            model[key] = "value";
        }
        ASSERT_EQ(model.size(), dictionary.itemQty());
        ASSERT_EQ(model.size() + 1, value.refNo() >> 8);
    }
    std::string list;
    for (auto const& [key, text] : model)
        list += key + "=" + text + " ";
    EXPECT_EQ(list, listOf(dictionary));
}

TEST(StringByName, AgreesWithAMap) {
    compareWithMap<NX_StringByName>(3);
    compareWithMap<NX_StringByNameFold>(-3);
    compareWithMap<NX_StringByNameFoldNum>(3);
}

} // namespace
