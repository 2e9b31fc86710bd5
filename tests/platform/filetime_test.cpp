// File times; the same on every target.
#include <chrono>

#include "tests/platform/files.h"
#include "tests/support/support.h"

namespace {

FILETIME timeOf(std::uint64_t units) {
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

std::uint64_t unitsOf(FILETIME const& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

void expectThereAndBack(unsigned int date, unsigned int dosTime, std::uint64_t units) {
    FILETIME time;
    WORD dateBack = 0, timeBack = 1;
    ASSERT_TRUE(DosDateTimeToFileTime(static_cast<WORD>(date), static_cast<WORD>(dosTime), &time)) << date;
    ASSERT_EQ(unitsOf(time), units) << date;
    ASSERT_TRUE(FileTimeToDosDateTime(&time, &dateBack, &timeBack));
    ASSERT_TRUE(dateBack == date && timeBack == dosTime) << date;
}

TEST(PlatformTime, everyDosDateAndTimeGoesThereAndBack) {
    namespace chr = std::chrono;
    std::uint64_t const first = 119600064000000000; // 1980-01-01
    chr::sys_days const start = chr::year{1980} / 1 / 1;
    for (chr::sys_days at = start; at < chr::sys_days(chr::year{2108} / 1 / 1); at += chr::days{1}) {
        chr::year_month_day const date{at};
        auto const year = static_cast<unsigned int>(static_cast<int>(date.year()) - 1980);
        expectThereAndBack(year << 9 | unsigned{date.month()} << 5 | unsigned{date.day()}, 0,
                           first + static_cast<std::uint64_t>((at - start).count()) * 864000000000);
    }
    for (unsigned int second = 0; second < 86400; second += 2)
        expectThereAndBack(0x21, second / 3600 << 11 | second / 60 % 60 << 5 | second % 60 / 2,
                           first + second * std::uint64_t{10000000});
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
        WORD date = 7, dosTime = 7;
        EXPECT_EQ(errorOf(FileTimeToDosDateTime(&time, &date, &dosTime)), 87u) << units;
        EXPECT_TRUE(date == 7 && dosTime == 7);
    }
}

TEST(PlatformTime, timesOfFiles) {
    nxFileMake("timed", "abc");
    HANDLE const file = fileOpen("timed", GENERIC_READ | GENERIC_WRITE);
    FILETIME now, written;
    GetSystemTimeAsFileTime(&now);
    ASSERT_TRUE(GetFileTime(file, nullptr, nullptr, &written));
    EXPECT_LT(unitsOf(now) - unitsOf(written) + 600000000, 1200000000u); // within a minute
    // Before 1970, with 100 ns, and after 2038 and 2106.
    for (std::uint64_t const units :
         {110000000000000000u, 132000000001234567u, 140000000000000000u, 162000000000000000u}) {
        FILETIME const set = timeOf(units), leave = timeOf(0), keep = timeOf(~std::uint64_t{0});
        FILETIME accessed = timeOf(0);
        EXPECT_TRUE(SetFileTime(file, nullptr, &set, &set) && SetFileTime(file, nullptr, &leave, &keep));
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
