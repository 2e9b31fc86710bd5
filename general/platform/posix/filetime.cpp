// general/platform/posix/filetime.cpp - times of files and their conversion.
//
// A FILETIME counts 100 ns from 1601-01-01 UTC. The DOS form has two-second steps from 1980 to 2107 and no
// zone; odd seconds are rounded down.
#include <errno.h>
#include <sys/stat.h>
#include <time.h>

#include <limits>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/fileinfo.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr std::int64_t unitsPerSecond = 10'000'000;
constexpr std::int64_t secondsTo1970 = 11'644'473'600;
constexpr std::int64_t secondsPerDay = 86'400;
constexpr std::int64_t daysTo1970 = secondsTo1970 / secondsPerDay;
constexpr int dosYearFirst = 1980;
constexpr int dosYearLast = 2107;

FILETIME fileTimeOf(std::uint64_t units) {
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

std::uint64_t unitsOf(FILETIME const& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

struct Date {
    int year;
    int month; // 1 to 12
    int day;   // 1 to 31
};

bool isLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysOfMonth(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[month - 1] + (month == 2 && isLeap(year) ? 1 : 0);
}

// Days from 1601-01-01 to the first day of a year.
std::int64_t daysToYear(int year) {
    std::int64_t const years = year - 1601;
    return years * 365 + years / 4 - years / 100 + years / 400;
}

std::int64_t daysOf(Date const& date) {
    std::int64_t days = daysToYear(date.year) + date.day - 1;
    for (int month = 1; month < date.month; ++month) {
        days += daysOfMonth(date.year, month);
    }
    return days;
}

Date dateOf(std::int64_t days) {
    Date date{1601 + static_cast<int>(days / 366), 1, 1};
    while (daysToYear(date.year + 1) <= days) {
        ++date.year;
    }
    auto rest = static_cast<int>(days - daysToYear(date.year));
    while (rest >= daysOfMonth(date.year, date.month)) {
        rest -= daysOfMonth(date.year, date.month);
        ++date.month;
    }
    date.day = rest + 1;
    return date;
}

FILETIME fileTimeOf(std::int64_t secondsSince1970, std::int64_t nanoseconds) {
    constexpr std::int64_t unitsMost = std::numeric_limits<std::int64_t>::max();
    if (secondsSince1970 < -secondsTo1970) {
        return {0, 0};
    }
    if (secondsSince1970 >= unitsMost / unitsPerSecond - secondsTo1970) {
        return fileTimeOf(std::uint64_t{unitsMost}); // file systems may keep any number
    }
    std::int64_t const seconds = secondsSince1970 + secondsTo1970;
    return fileTimeOf(static_cast<std::uint64_t>(seconds * unitsPerSecond + nanoseconds / 100));
}

// A time to set: left alone for a null pointer, zero and all ones.
NXS_SeamTime seamTimeOf(FILETIME const* time) {
    std::uint64_t const units = time == nullptr ? 0 : unitsOf(*time);
    if (units == 0 || units == ~std::uint64_t{0}) {
        return {0, UTIME_OMIT};
    }
    return {static_cast<std::int64_t>(units / unitsPerSecond) - secondsTo1970,
            static_cast<std::int64_t>(units % unitsPerSecond) * 100};
}

} // namespace

FILETIME nxFileTimeOf(struct statx_timestamp const& time) {
    return fileTimeOf(time.tv_sec, time.tv_nsec);
}

FILETIME nxFileTimeCreated(struct statx const& found) {
    return nxFileTimeOf((found.stx_mask & STATX_BTIME) != 0 ? found.stx_btime : found.stx_mtime);
}

BOOL GetFileTime(HANDLE file, FILETIME* created, FILETIME* accessed, FILETIME* written) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    struct statx found;
    if (nxSeam.stat(object->file, "", AT_EMPTY_PATH, STATX_ATIME | STATX_MTIME | STATX_BTIME, &found) < 0) {
        return nxFail(nxErrorFromErrno(errno));
    }
    if (created != nullptr) {
        *created = nxFileTimeCreated(found);
    }
    if (accessed != nullptr) {
        *accessed = nxFileTimeOf(found.stx_atime);
    }
    if (written != nullptr) {
        *written = nxFileTimeOf(found.stx_mtime);
    }
    return TRUE;
}

BOOL SetFileTime(HANDLE file, FILETIME const*, FILETIME const* accessed, FILETIME const* written) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    if (!object->mayWrite()) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    NXS_SeamTime const both[] = {seamTimeOf(accessed), seamTimeOf(written)};
    if (both[0].nanoseconds == UTIME_OMIT && both[1].nanoseconds == UTIME_OMIT) {
        return TRUE;
    }
    if (nxSeam.times(object->file, both) < 0) {
        return nxFail(nxErrorFromErrno(errno));
    }
    return TRUE;
}

BOOL FileTimeToDosDateTime(FILETIME const* time, WORD* dosDate, WORD* dosTime) {
    if (time == nullptr || dosDate == nullptr || dosTime == nullptr) {
        return nxFail(ERROR_INVALID_PARAMETER);
    }
    std::uint64_t const units = unitsOf(*time);
    if (units >> 63 != 0) {
        return nxFail(ERROR_INVALID_PARAMETER);
    }
    auto const seconds = static_cast<std::int64_t>(units / unitsPerSecond);
    Date const date = dateOf(seconds / secondsPerDay);
    if (date.year < dosYearFirst || date.year > dosYearLast) {
        return nxFail(ERROR_INVALID_PARAMETER);
    }
    auto const second = static_cast<int>(seconds % secondsPerDay);
    *dosDate = static_cast<WORD>((date.year - dosYearFirst) << 9 | date.month << 5 | date.day);
    *dosTime = static_cast<WORD>(second / 3600 << 11 | second / 60 % 60 << 5 | second % 60 / 2);
    return TRUE;
}

BOOL DosDateTimeToFileTime(WORD dosDate, WORD dosTime, FILETIME* time) {
    Date const date{(dosDate >> 9) + dosYearFirst, dosDate >> 5 & 15, dosDate & 31};
    int const hour = dosTime >> 11;
    int const minute = dosTime >> 5 & 63;
    int const second = (dosTime & 31) * 2;
    if (time == nullptr || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > daysOfMonth(date.year, date.month) || hour > 23 || minute > 59 || second > 59) {
        return nxFail(ERROR_INVALID_PARAMETER);
    }
    std::int64_t const seconds =
        (daysOf(date) - daysTo1970) * secondsPerDay + hour * 3600 + minute * 60 + second;
    *time = fileTimeOf(seconds, 0);
    return TRUE;
}

LONG CompareFileTime(FILETIME const* left, FILETIME const* right) {
    std::uint64_t const one = unitsOf(*left);
    std::uint64_t const two = unitsOf(*right);
    return one < two ? -1 : one > two ? 1 : 0;
}

void GetSystemTimeAsFileTime(FILETIME* time) {
    struct timespec now {};
    nxSeam.clock(CLOCK_REALTIME, &now);
    *time = fileTimeOf(std::int64_t{now.tv_sec}, std::int64_t{now.tv_nsec});
}
