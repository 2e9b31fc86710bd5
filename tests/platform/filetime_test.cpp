// File times; the same on every target.
#include "tests/platform/files.h"
#include "tests/support/support.h"
#include <tuple>

namespace {

FILETIME timeOf(std::uint64_t units) {
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

std::uint64_t unitsOf(FILETIME const& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

constexpr std::uint64_t day = 864000000000;

TEST(PlatformTime, everyDosDateAndTimeGoesThereAndBack) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::uint64_t expected = 119600064000000000; // 1980-01-01
    for (unsigned int year = 1980; year <= 2107; ++year) {
        for (unsigned int month = 1; month <= 12; ++month) {
            bool const leap = year % 4 == 0 && year != 2100;
            for (int n = 1; n <= days[month - 1] + (month == 2 && leap); ++n, expected += day) {
                auto const date =
                    static_cast<WORD>((year - 1980) << 9 | month << 5 | static_cast<unsigned int>(n));
                FILETIME time;
                WORD dateBack = 0;
                WORD timeBack = 1;
                ASSERT_TRUE(DosDateTimeToFileTime(date, 0, &time)) << date;
                ASSERT_EQ(unitsOf(time), expected) << date;
                ASSERT_TRUE(FileTimeToDosDateTime(&time, &dateBack, &timeBack));
                ASSERT_TRUE(dateBack == date && timeBack == 0);
            }
        }
    }
    for (unsigned int second = 0; second < 86400; second += 2) {
        auto const dosTime = static_cast<WORD>(second / 3600 << 11 | second / 60 % 60 << 5 | second % 60 / 2);
        FILETIME time;
        WORD date = 0;
        WORD back = 0;
        ASSERT_TRUE(DosDateTimeToFileTime(0x21, dosTime, &time));
        ASSERT_EQ(unitsOf(time), 119600064000000000 + second * std::uint64_t{10000000});
        ASSERT_TRUE(FileTimeToDosDateTime(&time, &date, &back));
        ASSERT_EQ(back, dosTime);
    }
}

TEST(PlatformTime, conversionRefusals) {
    std::tuple<WORD, WORD> const wrong[] = {{0x01, 0},        {0x1A1, 0},      {0x20, 0}, {0x9F, 0},
                                            {0x21, 24 << 11}, {0x21, 60 << 5}, {0x21, 30}};
    for (auto const& [wrongDate, wrongTime] : wrong) {
        FILETIME time;
        EXPECT_FALSE(DosDateTimeToFileTime(wrongDate, wrongTime, &time)) << wrongDate << ' ' << wrongTime;
    }
    for (std::uint64_t const units : {0ull, 119600063999999999ull, ~0ull}) {
        FILETIME const time = timeOf(units);
        WORD date = 7;
        WORD dosTime = 7;
        EXPECT_EQ(errorOf(FileTimeToDosDateTime(&time, &date, &dosTime)), 87u) << units;
        EXPECT_TRUE(date == 7 && dosTime == 7);
    }
}

TEST(PlatformTime, timesOfFiles) {
    nxFileMake("timed", "abc");
    HANDLE const file = fileOpen("timed", GENERIC_READ | GENERIC_WRITE);
    FILETIME now;
    FILETIME written;
    GetSystemTimeAsFileTime(&now);
    ASSERT_TRUE(GetFileTime(file, nullptr, nullptr, &written));
    EXPECT_LT(unitsOf(now) - unitsOf(written) + 600000000, 1200000000u); // within a minute
    // Before 1970, with 100 ns, and after 2038 and 2106.
    for (std::uint64_t const units :
         {110000000000000000u, 132000000001234567u, 140000000000000000u, 162000000000000000u}) {
        FILETIME const set = timeOf(units);
        FILETIME const leave = timeOf(0);
        FILETIME const keep = timeOf(~std::uint64_t{0});
        FILETIME accessed = timeOf(0);
        EXPECT_TRUE(SetFileTime(file, nullptr, &set, &set));
        EXPECT_TRUE(SetFileTime(file, nullptr, &leave, &keep));
        EXPECT_TRUE(GetFileTime(file, nullptr, &accessed, &written));
        EXPECT_TRUE(unitsOf(written) == units && unitsOf(accessed) == units) << units;
    }
    CloseHandle(file);
    EXPECT_EQ(errorOf(GetFileTime(file, nullptr, nullptr, &written)), 6u);
    WIN32_FIND_DATAA found;
    FindClose(FindFirstFileA("timed", &found));
    EXPECT_EQ(unitsOf(found.ftLastWriteTime), 162000000000000000u);
}

} // namespace
