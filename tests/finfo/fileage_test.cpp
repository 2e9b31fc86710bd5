// File times: day numbers, tolerant comparison, times of real files.
#include "general/finfo/fileage.h"

#include <chrono>
#include <ctime>
#include <sstream>

#include "general/error/errorman.h"
#include "general/finfo/file.h"
#include "tests/support/support.h"

TEST(FileAge, DayNumbersFollowTheCalendar) {
    namespace chr = std::chrono;
    NX_FileAge8 age = {0, 0, 0, 7, 8, 9, 10};
    chr::sys_days const first = chr::year{1} / 3 / 1;
    for (chr::sys_days at = first; at < chr::sys_days(chr::year{2300} / 1 / 1); at += chr::days{1}) {
        chr::year_month_day const date{at};
        auto const number = static_cast<unsigned long>(at.time_since_epoch().count() + 2440588);
        age.julianPut(number);
        ASSERT_EQ(age.year, static_cast<int>(date.year())) << number;
        ASSERT_EQ(age.month, static_cast<unsigned int>(date.month())) << number;
        ASSERT_EQ(age.day, static_cast<unsigned int>(date.day())) << number;
        ASSERT_EQ(age.julianGet(), number);
    }
    EXPECT_EQ(age.hour, 7);
    EXPECT_EQ(age.hundredths, 10);
}

TEST(FileAge, Comparison) {
    struct {
        NX_FileAge8 a, b;
        int tolerant; // sign
    } const table[] = {
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 0, 12, 0}, 0},
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 0, 14, 0}, -1},
        {{1998, 7, 4, 12, 0, 10, 1}, {1998, 7, 4, 12, 0, 14, 0}, 0},
        {{1998, 7, 4, 12, 0, 11, 0}, {1998, 7, 4, 12, 0, 15, 0}, -1},
        {{1998, 7, 4, 12, 1, 0, 0}, {1998, 7, 4, 12, 0, 58, 0}, 0},
        {{1998, 7, 4, 12, 1, 4, 0}, {1998, 7, 4, 12, 0, 58, 0}, 1},
        {{1998, 12, 31, 23, 59, 59, 50}, {1999, 1, 1, 0, 0, 0, 0}, 0},
        {{2000, 2, 28, 23, 59, 58, 0}, {2000, 2, 29, 0, 0, 0, 0}, 0},
        {{2000, 2, 28, 23, 59, 58, 0}, {2000, 3, 1, 0, 0, 0, 0}, -1},
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 1, 10, 0}, -1},
        {{1997, 9, 9, 9, 9, 9, 9}, {1998, 1, 1, 0, 0, 0, 0}, -1},
        {{0, 0, 0, 0, 0, 0, 0}, {1980, 1, 1, 0, 0, 0, 0}, -1},
    };
    for (auto const& row : table) {
        std::ostringstream text;
        text << row.a << " and " << row.b;
        SCOPED_TRACE(text.str());
        int const order = row.a.ageCompare(row.b);
        EXPECT_EQ((order > 0) - (order < 0), row.tolerant);
        int const back = row.b.ageCompare(row.a);
        EXPECT_EQ((back > 0) - (back < 0), -row.tolerant);
        EXPECT_NE(row.a.ageCompareExact(row.b), 0);
        EXPECT_EQ(row.a.ageCompareExact(row.a), 0);
    }
    std::ostringstream shown;
    shown << NX_FileAge8{1998, 7, 4, 9, 5, 2, 0};
    EXPECT_EQ(shown.str(), "1998/7/4 9:5:2.0");
}

TEST(FileAge, NowIsUniversalTime) {
    std::time_t const before = std::time(nullptr);
    NX_FileAge8 age;
    age.ageNow();
    std::time_t const seconds = static_cast<std::time_t>(age.julianGet() - 2440588) * 86400 +
                                age.hour * 3600 + age.minute * 60 + age.second;
    EXPECT_GE(seconds, before);
    EXPECT_LE(seconds, before + 5);
}

TEST(FileAge, TimesOfFiles) {
    NX_FileAge8 const odd = {1998, 7, 4, 9, 5, 3, 50};
    NX_FileAge8 const even = {1998, 7, 4, 9, 5, 2, 0};
    NX_File file("age.txt", NX_File::modeReadWrite | NX_File::modeCreate);
    NX_Age const access = file.fileAge(ageAccess);
    EXPECT_EQ(file.fileAge(odd, ageWrite), 0);
    EXPECT_EQ(file.fileAge(ageWrite).ageCompareExact(even), 0);
    EXPECT_EQ(NX_Age(file, static_cast<NX_FileAgeType>(7)).ageCompareExact(even), 0);
    EXPECT_EQ(file.fileAge(ageAccess).ageCompareExact(access), 0);
    EXPECT_EQ(file.fileAge(NX_FileAge8{2107, 12, 31, 23, 59, 58, 0}, ageAccess), 0);
    EXPECT_EQ(file.fileAge(ageAccess).year, 2107);
    EXPECT_EQ(file.fileAge(ageWrite).ageCompareExact(even), 0);
    EXPECT_EQ(NX_Age("age.txt", ageWrite).ageCompareExact(even), 0);
    EXPECT_EQ(NX_Age("none.txt", ageWrite).ageCompareExact(NX_Age()), 0);

    EXPECT_EQ(file.fileAge(NX_FileAge8{1998, 13, 4, 0, 0, 0, 0}, ageWrite), -1); // no such month
    EXPECT_EQ(file.errorNum(), errorNumSystem);
    file.fileClose();
    NxErrorOk();
    EXPECT_EQ(file.fileAge(ageWrite).ageCompareExact(NX_Age()), 0);
    EXPECT_EQ(NxErrorNum(), errorNumSystem);
    EXPECT_EQ(file.fileAge(even, ageWrite), -1);
}
