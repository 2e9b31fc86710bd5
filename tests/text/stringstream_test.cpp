// tests/text/stringstream_test.cpp - the string read from and written to streams, and variables in it.
#include "general/error/errorman.h"
#include "general/text/dbcs.h"
#include "general/text/stringa.h"
#include "general/text/stringbyname.h"
#include "tests/support/support.h"

#include <iomanip>
#include <sstream>

namespace {

// All fields that `read` gives, each with a bar behind it. The end of the input is an error.
template <class Read>
std::string fields(Read read) {
    std::string all;
    NX_StringA s;
    NxErrorOk();
    while (read(s) == 0)
        all += s.dataPConst() + std::string("|");
    EXPECT_EQ(errorNumStringRead, NxErrorNum());
    EXPECT_EQ(0u, s.strLen());
    return all;
}

template <class Source, class Rewind>
void expectFields(Source&& in, Rewind rewind) {
    EXPECT_EQ("a|\"b|c\"||wxyz|last|",
              fields([&](NX_StringA& s) { return s.strRead(in, ',', NX_StripBoth, 0); }));
    rewind();
    EXPECT_EQ("a|\"b,c\"||wxyz|last|",
              fields([&](NX_StringA& s) { return s.strRead(in, ',', NX_StripBoth, 1); }));
    rewind();
    EXPECT_EQ("a|\"b|c\"||wxy|z|las|t|",
              fields([&](NX_StringA& s) { return s.strRead(in, 3, ',', NX_StripBoth, 0); }));
}

TEST(StringStream, fields) {
    char const input[] = " a ,\"b,c\",,wxyz,last";
    std::istringstream in(input);
    expectFields(in, [&] {
        EXPECT_TRUE(in.eof() && in.fail());
        in.clear();
        in.seekg(0);
    });
    NxDbcsIsLead(0x81, 0x9F, 1);
    std::istringstream doubleByte("\x83|x|y"); // a trail byte is no delimiter
    EXPECT_EQ("\x83|x|y|",
              fields([&](NX_StringA& s) { return s.strRead(doubleByte, '|', NX_StripNone, 0); }));
    NxDbcsIsLead(0x81, 0x9F, 0);
    nxFileMake("fields", input);
    std::FILE* const file = std::fopen("fields", "rb");
    ASSERT_NE(nullptr, file);
    expectFields(file, [&] { std::rewind(file); });
    std::fclose(file);
}

TEST(StringStream, rawAndTokens) {
    NX_StringA const bytes = NX_StringA("a\r\nb") + NX_StringA('\0', 1);
    std::FILE* file = std::fopen("raw", "w+b");
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, bytes.strWrite(file));
    std::rewind(file);
    NX_StringA s;
    EXPECT_EQ(0, s.strReadRaw(file, 5));
    EXPECT_EQ(0, s.strCompare(bytes, NX_CompareExact));
    std::rewind(file);
    EXPECT_EQ(-1, s.strReadRaw(file, 2000000000));
    EXPECT_EQ(5u, s.strLen());
    std::fclose(file);
    std::istringstream in("  one\ttwo");
    NX_StringA next;
    EXPECT_TRUE(s.strTokenRead(in) == 0 && in >> next);
    EXPECT_EQ("one two", s.dataPConst() + std::string(" ") + next.dataPConst());
    std::ostringstream out;
    out << std::setw(5) << std::left << NX_StringA("ab") << '|' << NX_StringA();
    EXPECT_EQ("ab   |", out.str());
}

TEST(StringVariables, references) {
    unsigned int insertAt = 0;
    NX_StringByName dict;
    dict.itemInsert("A", "%[B]", &insertAt);
    dict.itemInsert("B", "", &insertAt);
    dict.itemInsert("long_Name1", "a longer value", &insertAt);
    std::tuple<char const*, char const*> const table[] = {
        {"<%[A]>", "<%[B]>"}, // what was inserted is not looked at again
        {"%[long_Name1]%[long_Name1]", "a longer valuea longer value"},
        {"%[none]-%[A]", "%[none]-%[B]"},
        {"%[]%[a b]%[A", "%[]%[a b]%[A"},
        {"%[%[B]]", "%[]"}};
    for (auto const& [text, expected] : table) {
        NX_StringA s(text);
        EXPECT_STREQ(expected, s.strVarReplace(dict).dataPConst()) << text;
    }
    NX_StringA s("%[B]x");
    NxStrVarDict().itemInsert("B", "default", &insertAt);
    EXPECT_STREQ("defaultx", s.strVarReplace().dataPConst());
    NxStrVarDict() = NX_StringByName();
}

} // namespace
