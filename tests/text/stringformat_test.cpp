// tests/text/stringformat_test.cpp - the formatter, held against the C library's.
#include "general/text/stringa.h"
#include "tests/support/support.h"

#include <cstdint>
#include <cstdio>

namespace {

template <class... Values>
void expectSame(std::string const& format, Values... values) {
    char expected[4096];
    int const len = std::snprintf(expected, sizeof expected, format.c_str(), values...);
    NX_StringA s;
    EXPECT_EQ(len, s.strPrintF(format.c_str(), values...)) << format;
    EXPECT_STREQ(expected, s.dataPConst()) << format;
}

// Calls `check` with every directive made of up to all of these flags, a width and a precision.
template <class Check>
void everyDirective(std::string const& flags, Check check) {
    for (unsigned int set = 0; set < 1u << flags.size(); ++set) {
        std::string start("<%");
        for (std::size_t i = 0; i < flags.size(); ++i) {
            if (set & (1u << i))
                start += flags[i];
        }
        for (char const* width : {"", "1", "7", "30"}) {
            for (char const* precision : {"", ".", ".0", ".1", ".12"})
                check(start + width + precision);
        }
    }
}

TEST(StringFormat, wholeNumbers) {
    everyDirective("-+ 0", [](std::string const& s) {
        for (int value : {0, 7, -42, INT32_MAX, INT32_MIN}) {
            expectSame(s + "hi>", value);
            expectSame(s + "ld>", static_cast<long>(value));
            expectSame(s + "lld>", value * 0x100000000LL);
        }
    });
    everyDirective("-#0", [](std::string const& s) {
        for (unsigned int value : {0u, 0xABCDEFu, 0xFFFFFFFFu}) {
            expectSame(s + "hx>", value);
            expectSame(s + "lX>", static_cast<unsigned long>(value));
        }
    });
    everyDirective("-0", [](std::string const& s) {
        for (unsigned int value : {0u, 3000000000u})
            expectSame(s + "u> " + s + "llo>", value, value * 0x100000001ULL);
    });
    expectSame("%#o|%#8o|%-#.9o", 8u, 0u, 64u);
}

TEST(StringFormat, floatingPoint) {
    everyDirective("-+ #0", [](std::string const& s) {
        for (char const* letter : {"e>", "E>", "f>", "F>", "g>", "G>"}) {
            for (double value : {0.0, -1.5, 123456.789, 1e-7, 2.5e300})
                expectSame(s + letter, value);
        }
    });
    expectSame("%Lf %Lg", 1.25L, -3.0L);
    expectSame("%.600f|", 1e300); // past every buffer of fixed size
}

TEST(StringFormat, textAndCharacters) {
    everyDirective("-", [](std::string const& s) { expectSame(s + "s>%%", "abcdefghijklmnop"); });
    expectSame("%c <%5c> <%-5c>", 'x', 'y', 'z');
    char const open[] = {'a', 'b', 'c'}; // not terminated
    NX_StringA s;
    s.strPrintF("%.3s %s %p", open, static_cast<char const*>(nullptr), reinterpret_cast<void*>(0xAB12));
    EXPECT_STREQ("abc (null) 0xab12", s.dataPConst());
    EXPECT_EQ(3, s.strPrintF("a%cb", 0));
    std::string const large(100000, 'z');
    EXPECT_EQ(100002, s.strPrintF("<%s>", large.c_str()));
}

TEST(StringFormat, whatIsNoConversionStays) {
    std::tuple<char const*, char const*> const cases[] = {
        {"50%", "50%"}, {"%", "%"},          {"a%y%d", "a%y7"}, {"%-08.3k|%d", "%-08.3k|7"},
        {"%*d", "%*d"}, {"%[A]%d", "%[A]7"}, {"%hhd", "%hhd"},  {"%5", "%5"},
        {"%l", "%l"},   {"%-5%|", "%|"},     {"", ""}};
    for (auto const& [format, expected] : cases) {
        NX_StringA s("before");
        s.strPrintF(format, 7);
        EXPECT_STREQ(expected, s.dataPConst()) << format;
    }
    NX_StringA s;
    EXPECT_EQ(998, s.strPrintF("%5000d", 1));
    EXPECT_EQ(998, s.strPrintF("%.99999999999999d", 1));
}

} // namespace
