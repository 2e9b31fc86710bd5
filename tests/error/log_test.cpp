// The log file's entries, the assertion's, the dumps.
#include <cstdio>
#include <ctime>
#include <sstream>
#include <thread>

#include "general/error/connlog.h"
#include "general/error/errorman.h"
#include "general/error/hexdump.h"
#include "general/error/log.h"
#include "general/finfo/file.h"
#include "tests/support/support.h"

namespace {

std::string logText() {
    std::string text = nxFileContent("quorix.log");
    std::erase(text, '\r');
    return text;
}

TEST(Log, EntriesHaveNameDateAndText) {
    nxLogErase();
    std::time_t const before = std::time(nullptr);
    NxLogPrint("one\ntwo");
    std::time_t const after = std::time(nullptr);
    std::string const text = logText();
    auto const entry = [](std::time_t at) { return std::string("\n? ") + std::asctime(std::localtime(&at)); };
    EXPECT_TRUE(text == entry(before) + "one\ntwo\n" || text == entry(after) + "one\ntwo\n") << text;
    std::FILE* const file = std::fopen("text.txt", "w"); // line breaks are those of the system's text files
    std::fputs("\n? ", file);
    std::fclose(file);
    EXPECT_TRUE(nxFileContent("quorix.log").starts_with(nxFileContent("text.txt")));
}

TEST(Log, LongTextsAreCutNotOverrun) {
    for (unsigned int const length : {1026u, 1027u, 1028u, 5000u}) {
        nxLogErase();
        std::string const text = "x" + std::string(length - 1, 'y');
        NxLogPrintF("%s", text.c_str());
        std::string const kept = "\n" + text.substr(0, 1027) + "\n";
        EXPECT_EQ(logText().substr(3 + 24), kept) << length;
    }
    nxLogErase();
    NxLogPrint(std::string(100000, 'z').c_str()); // texts themselves have no limit
    EXPECT_EQ(logText().size(), 3u + 25 + 100000 + 1);
}

TEST(Log, EntriesOfThreadsDoNotMix) {
    nxLogErase();
    std::thread threads[4];
    for (std::thread& thread : threads)
        thread = std::thread([] {
            for (int i = 0; i < 50; ++i)
                NxLogPrintF("%s", std::string(200, 't').c_str());
        });
    for (std::thread& thread : threads)
        thread.join();
    std::string const text = logText();
    ASSERT_EQ(text.size(), 200u * (3 + 25 + 200 + 1));
    for (std::size_t at = 0; at < text.size(); at += 229)
        ASSERT_EQ(text.substr(at, 3) + text.substr(at + 28, 201), "\n? " + std::string(200, 't') + "\n");
}

TEST(Log, AssertionsNameFileLineAndCondition) {
    EXPECT_ASSERTION(NxAssertFail("general/some/file", 12, "a < b"), "a < b", "general/some/file");
    EXPECT_NE(logText().find("\nAssert fail: general/some/file 12 : a < b\n"), std::string::npos);
    std::string const longText(2000, 'e');
    EXPECT_ASSERTION(NxAssertFail("f", 1, longText.c_str()), "eee", "f");
}

TEST(HexDump, Compact) {
    char out[16];
    EXPECT_EQ(NxCharHex(out, "\x00\xAB\x10", 3), 8u);
    EXPECT_STREQ(out, "00 ab 10");
    EXPECT_TRUE(NxCharHex(out, nullptr, 0) == 0 && *out == 0);
}

std::string const ruler = "    0     2     4     6     8     A     C     E     0 2 4 6 8 A C E \n";

std::string dump(std::string const& data, long address) {
    std::ostringstream os;
    NxCharHexOut(os, data.data(), static_cast<unsigned int>(data.size()), address);
    return os.str();
}

std::string line(char const* address, std::string hex, std::string const& chars, unsigned int col = 0) {
    hex.insert(0, 3 * col, ' ');
    hex.resize(47, ' ');
    std::string text = std::string(10 - std::string(address).size(), ' ') + address + "   " + hex + "  ";
    text += std::string(col, ' ') + chars;
    text.resize(78, ' ');
    return text + "\n";
}

TEST(HexDump, StreamWithRuler) {
    std::string const note(10, ' '), zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    std::string const dots(16, '.');
    EXPECT_EQ(dump("", 5), "");
    EXPECT_EQ(dump("A\x1F\xFE", 0x1234), note + ruler + line("1230", "41 1f fe", "A.\xFE", 4));
    EXPECT_EQ(dump("ab", -2), note + ruler + line("fffffff0", "61 62", "ab", 14));
    EXPECT_EQ(dump(std::string(48, '\0'), 0),
              note + ruler + line("0", zeros, dots) + line("10", zeros, dots) + line("20", zeros, dots));
    EXPECT_EQ(dump(std::string(80, '\0'), 0),
              note + ruler + line("0", zeros, dots) + "(+48)     " + ruler + line("40", zeros, dots));
    // The last line is never left out; a first line that is not whole is no model for others.
    EXPECT_EQ(dump(std::string(79, '\0'), 0), note + ruler + line("0", zeros, dots) + "(+32)     " + ruler +
                                                  line("30", zeros, dots) +
                                                  line("40", zeros.substr(0, 44), dots.substr(1)));
    EXPECT_EQ(dump(std::string(1 + 64, '\0'), 15), note + ruler + line("0", "00", ".", 15) +
                                                       line("10", zeros, dots) + "(+32)     " + ruler +
                                                       line("40", zeros, dots));
}

TEST(HexDump, GroupedWithAddresses) {
    char const data[] = "ABCDEFGH\x01klmnopqrs\x80t";
    std::tuple<long, unsigned int, char const*> const rows[] = {
        {8, 20,
         "0x00000008                    41424344 45464748   |        ABCDEFGH|\n"
         "0x00000010  016b6c6d 6e6f7071 72738074            |~klmnopqrs\x80t    |\n"},
        {-3, 5,
         "0xfffffffd                               414243   |             ABC|\n"
         "0x00000000  4445                                  |DE              |\n"},
        {0, 0, ""}};
    for (auto const& [address, length, text] : rows) {
        std::FILE* const file = std::fopen("dump.txt", "wb");
        NxCharHexOut4(file, data, length, address);
        NxCharHexOut4(file, nullptr, 5, 0);
        std::fclose(file);
        EXPECT_EQ(nxFileContent("dump.txt"), text) << address;
    }
}

TEST(ConnLog, CollectsLinesAndWritesThemAtTheStart) {
    NX_ConnLog& log = *NX_ConnLog::connlogP();
    log.connlogClose(); // no name: nothing
    nxFileMake("conn.log", std::string(100, '-'));
    log.connlogFileName("conn.log");
    log.connlogClose(); // no text: nothing
    EXPECT_EQ(nxFileContent("conn.log"), std::string(100, '-'));
    EXPECT_TRUE(log.connlogLog(nullptr, 0, "x") == 0 && log.connlogIsStarted() == 0);
    log.connlogLogStartTime({7, 5, 9, 0, 31, 12, 1998});
    EXPECT_EQ(log.connlogIsStarted(), 1);
    log.connlogLogString("to %s!", "HOST1", "");
    log.connlogLogString("plain", "", "000042  ");
    log.connlogClose();
    std::string const text = "CONNLOG 31/12/1998 07:05:09\r\n000000  to HOST1!\r\n000042  plain\r\n";
    EXPECT_EQ(nxFileContent("conn.log"), text + std::string(100 - text.size(), '-'));
    NxErrorOk();
    log.connlogFileName("nothere/conn.log");
    log.connlogClose();
    EXPECT_EQ(NxErrorNum(), errorNumFileNotFound) << "the file's own error, not a closed one's";
    NxErrorOk();
    log.connlogFileName("");
}

} // namespace
