// The words of an error manager's buffer: how values are written, what is kept and what is forgotten.
#include "general/error/errorman.h"
#include "tests/support/support.h"

namespace {

constexpr unsigned int everything = 0xFFFFFFFEu;

// The buffer behind the word that names its writer, if that is still there.
std::string words(NX_ErrorMan const& man) {
    std::string const text = man.errorBuf(everything).dataPConst();
    return text.starts_with("(<") ? text.substr(text.find(' ') + 1) : text;
}

TEST(ErrorBuf, WritesValues) {
    NX_ErrorMan man(512);
    unsigned long const values[] = {0, 10, 0x80000000ul};
    EXPECT_EQ(man.errorBuf('A', -1L), -1);
    man.errorBuf('B', -1L, 16);
    man.errorBuf('C', -2147483647L - 1, 10);
    man.errorBuf('D', -2L, 2);
    man.errorBuf('F', 35L, 36);
    man.errorBuf('G', values, 3, 8);
    man.errorBuf('G', values, 0, 8); // an empty value leaves no word
    man.errorBufX(values, 3);
    man.errorBufC("dir/f.cpp", 4294967295u);
    man.errorBufC(nullptr, 7);
    man.errorBuf('N', static_cast<char const*>(nullptr));
    man.errorBufText("");
    man.errorBuf('\0', "bare");
    man.errorBuf('K', "keep this", 4);
    EXPECT_EQ(words(man),
              "A=-1 B=ffffffff C=-2147483648 D=11111111111111111111111111111110 F=z G=0,12,20000000000 "
              "X=0,a,80000000 c=dir/f.cpp,4294967295 c=,7 bare K=keep");
}

TEST(ErrorBuf, KeepsTheNewestWordsWithinItsCapacity) {
    NX_ErrorMan man(128);
    for (long i = 0; i < 10000; ++i) {
        man.errorBufVal(i * 7919);
        std::string const text = man.errorBuf(everything).dataPConst();
        ASSERT_LE(text.size(), 127u); // the terminator has its place too
        std::string const last = "V=" + std::to_string(i * 7919);
        ASSERT_TRUE(text.ends_with(last)) << text;
        ASSERT_TRUE(i < 50 || text.starts_with("V=")) << text; // whole words only
        ASSERT_TRUE(i < 50 || text.size() > 100) << text;      // and no more forgotten than needed
    }
}

TEST(ErrorBuf, MakesRoomExactly) {
    std::string const second(26, 'a');
    for (unsigned int const length : {96u, 97u, 124u}) {
        NX_ErrorMan man(128);
        man.errorBuf('\0', "f");
        man.errorBuf('\0', second.c_str());
        std::string const value(length, 'v');
        man.errorBufText(value.c_str());
        // Blank, letter, "=" and terminator must fit too; a last word without a blank cannot go.
        EXPECT_EQ(words(man), (length <= 96 ? "f " : "") + second + " T=" + value) << length;
    }
}

TEST(ErrorBuf, LongValuesKeepTheirLastWords) {
    std::string const a(90, 'a'), quoted = "\"" + std::string(30, 'q') + " " + std::string(30, 'r') + "\"";
    std::string const huge(300, 'h');
    std::tuple<std::string, std::string> const rows[] = {
        {a + " " + a, "T=" + a},
        {a + " b " + quoted, "T=b " + quoted}, // only as much goes as must
        {quoted + " " + quoted + " " + quoted, "T=" + quoted + " " + quoted},
        {huge, "T=" + huge}, // nowhere to cut: whole
        {"x " + huge, "T=" + huge}};
    for (auto const& [value, kept] : rows) {
        NX_ErrorMan man(128);
        man.errorBufText(value.c_str());
        EXPECT_EQ(words(man), kept);
    }
}

TEST(ErrorBuf, ReadsNewestWordsOrTheLastError) {
    NX_ErrorMan man;
    EXPECT_EQ(man.errorBuf(NX_NO_INDEX).strLen(), 0u);
    man.errorBuf('A', 1L);
    man.errorBufErrorNum(errorNumFileNotFound);
    man.errorBufFileName("\"a b\"");
    man.errorBufText("xyz");
    std::tuple<unsigned int, char const*> const rows[] = {
        {NX_NO_INDEX, "E=211 F=\"a b\" T=xyz"}, {18, "F=\"a b\" T=xyz"}, {5, "T=xyz"}, {4, "=xyz"}, {0, ""}};
    for (auto const& [maxLength, text] : rows)
        EXPECT_STREQ(man.errorBuf(maxLength).dataPConst(), text) << maxLength;
    man.errorBufErrorNum(10440);
    EXPECT_STREQ(man.errorBuf(NX_NO_INDEX).dataPConst(), "E=200"); // words of older errors are not in it
    man.errorOk();
}

} // namespace
