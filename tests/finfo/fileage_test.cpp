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
        ASSERT_EQ((NXS_Results{age.year, age.month, age.day, age.julianGet()}),
                  (NXS_Results{static_cast<int>(date.year()), unsigned{date.month()}, unsigned{date.day()},
                               number}));
    }
    EXPECT_TRUE(age.hour == 7 && age.hundredths == 10);
}

TEST(FileAge, Comparison) {
    // sign
    std::tuple<NX_FileAge8, NX_FileAge8, int> const table[] = {
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 0, 12, 0}, 0},
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 0, 14, 0}, -1},
        {{1998, 7, 4, 12, 0, 10, 1}, {1998, 7, 4, 12, 0, 14, 0}, 0},
        {{1998, 7, 4, 12, 1, 0, 0}, {1998, 7, 4, 12, 0, 58, 0}, 0},
        {{1998, 7, 4, 12, 1, 4, 0}, {1998, 7, 4, 12, 0, 58, 0}, 1},
        {{1998, 12, 31, 23, 59, 59, 50}, {1999, 1, 1, 0, 0, 0, 0}, 0},
        {{2000, 2, 28, 23, 59, 58, 0}, {2000, 2, 29, 0, 0, 0, 0}, 0},
        {{2000, 2, 28, 23, 59, 58, 0}, {2000, 3, 1, 0, 0, 0, 0}, -1},
        {{1998, 7, 4, 12, 0, 10, 0}, {1998, 7, 4, 12, 1, 10, 0}, -1},
        {{0, 0, 0, 0, 0, 0, 0}, {1980, 1, 1, 0, 0, 0, 0}, -1}};
    for (auto const& [a, b, tolerant] : table) {
        std::ostringstream text;
        text << a << " and " << b;
        SCOPED_TRACE(text.str());
        auto const sign = [](int order) { return (order > 0) - (order < 0); };
        EXPECT_EQ(sign(a.ageCompare(b)), tolerant);
        EXPECT_EQ(sign(b.ageCompare(a)), -tolerant);
        EXPECT_TRUE(a.ageCompareExact(b) != 0 && a.ageCompareExact(a) == 0);
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
    NX_FileAge8 const odd = {1998, 7, 4, 9, 5, 3, 50}, even = {1998, 7, 4, 9, 5, 2, 0};
    NX_File file("age.txt", NX_File::modeReadWrite | NX_File::modeCreate);
    NX_Age const access = file.fileAge(ageAccess);
    EXPECT_EQ((NXS_Results{file.fileAge(odd, ageWrite), file.fileAge(ageWrite).ageCompareExact(even),
                           NX_Age(file, static_cast<NX_FileAgeType>(7)).ageCompareExact(even),
                           file.fileAge(ageAccess).ageCompareExact(access),
                           file.fileAge(NX_FileAge8{2107, 12, 31, 23, 59, 58, 0}, ageAccess),
                           file.fileAge(ageAccess).year, NX_Age("age.txt", ageWrite).ageCompareExact(even),
                           NX_Age("none.txt", ageWrite).ageCompareExact(NX_Age())}),
              (NXS_Results{0, 0, 0, 0, 0, 2107, 0, 0}));
    EXPECT_EQ(file.fileAge(NX_FileAge8{1998, 13, 4, 0, 0, 0, 0}, ageWrite), -1); // no such month
    EXPECT_EQ(file.errorNum(), errorNumSystem);
    file.fileClose();
    NxErrorOk();
    EXPECT_EQ(file.fileAge(ageWrite).ageCompareExact(NX_Age()), 0);
    EXPECT_TRUE(NxErrorNum() == errorNumSystem && file.fileAge(even, ageWrite) == -1);
}
