// tests/support/support.h - what the tests of all folders share.
//
// It brings what tables of cases are made of: strings, tuples and vectors.
//
// The main of every test executable changes into a fresh scratch directory, which is removed at the end:
// tests create files in the current directory under relative names. A death test's child runs in its parent's
// directory.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

// What several calls gave, one after the other, as numbers of any type: for one comparison of all of them.
struct NXS_Result {
    template <class Number>
    NXS_Result(Number number) : value(static_cast<long long>(number)) {}
    bool operator==(NXS_Result const&) const = default;
    friend void PrintTo(NXS_Result const& result, std::ostream* os) { *os << result.value; }
    long long value;
};
using NXS_Results = std::vector<NXS_Result>;

// The whole content of a file, byte for byte; empty when it cannot be read.
std::string nxFileContent(char const* name);

// Makes a file of exactly these bytes.
void nxFileMake(char const* name, std::string const& content);

// What decoders take.
inline unsigned char const* nxBytes(std::string const& bytes) {
    return reinterpret_cast<unsigned char const*>(bytes.data());
}
inline unsigned int nxSize(std::string const& bytes) {
    return static_cast<unsigned int>(bytes.size());
}

// Calls `use` with the bytes cut at every place, and with every byte changed, and with the place.
template <class Use>
void nxDamageEach(std::string bytes, Use use) {
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        use(bytes.substr(0, at), at);
        char const whole = bytes[at];
        for (int const change : {0x01, 0x80, 0xFF}) {
            bytes[at] = static_cast<char>(whole ^ change);
            use(bytes, at);
        }
        bytes[at] = whole;
    }
}

// Runs `statement` in a child process, which must die, and checks that the log then names the assertion's
// file and expression.
#define EXPECT_ASSERTION(statement, expression, file)                                                  \
    do {                                                                                               \
        nxLogErase();                                                                                  \
        EXPECT_DEATH(statement, "");                                                                   \
        EXPECT_TRUE(nxLogHasAssertion(file, expression)) << "logged: " << nxFileContent("quorix.log"); \
    } while (false)

// Runs `statement` in a child process, which must end through the error manager's abort with error `number`'s
// code recorded and logged.
#define EXPECT_ERROR_ABORT(statement, number)                                            \
    do {                                                                                 \
        nxLogErase();                                                                    \
        EXPECT_DEATH(statement, "");                                                     \
        EXPECT_TRUE(nxLogHasError(number)) << "logged: " << nxFileContent("quorix.log"); \
    } while (false)

void nxLogErase();
bool nxLogHasAssertion(char const* file, char const* expression);
bool nxLogHasError(int number);
