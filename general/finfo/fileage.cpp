// general/finfo/fileage.cpp - calendar times: clock, day numbers, comparison, display.
#include "general/finfo/fileage.h"

#include <chrono>
#include <ctime>
#include <ostream>

namespace {

// Adds fewer than 60 seconds.
void secondsAdd(NX_FileAge8& age, unsigned int n) {
    unsigned int const second = age.second + n;
    if (second <= 59) {
        age.second = static_cast<std::uint8_t>(second);
        return;
    }
    age.second = static_cast<std::uint8_t>(second - 60);
    if (++age.minute <= 59)
        return;
    age.minute = static_cast<std::uint8_t>(age.minute - 60);
    if (++age.hour <= 23)
        return;
    age.hour = static_cast<std::uint8_t>(age.hour - 24);
    age.julianPut(age.julianGet() + 1);
}

// The second as a file would keep it, rounded up to an even one; it may be 60.
int secondRounded(NX_FileAge8 const& age) {
    int const second = age.second + (age.hundredths != 0);
    return second + (second & 1);
}

NX_FileAge8 ageRounded(NX_FileAge8 age) {
    if (age.hundredths != 0)
        secondsAdd(age, 1);
    if ((age.second & 1) != 0)
        secondsAdd(age, 1);
    age.hundredths = 0;
    return age;
}

// Orders everything above the seconds.
int minuteCompare(NX_FileAge8 const& a, NX_FileAge8 const& b) {
    if (a.year != b.year)
        return a.year - b.year;
    if (a.month != b.month)
        return a.month - b.month;
    if (a.day != b.day)
        return a.day - b.day;
    if (a.hour != b.hour)
        return a.hour - b.hour;
    return a.minute - b.minute;
}

} // namespace

void NX_FileAge8::ageZero() {
    *this = NX_FileAge8{};
}

void NX_FileAge8::ageNow() {
    namespace chr = std::chrono; // as gmtime, without its shared record
    std::time_t const now = std::time(nullptr);
    if (now == std::time_t{-1}) {
        ageZero();
        return;
    }
    chr::sys_seconds const seconds{chr::seconds{now}};
    chr::sys_days const days = chr::floor<chr::days>(seconds);
    chr::year_month_day const date{days};
    chr::hh_mm_ss const clock{seconds - days};
    year = static_cast<std::uint16_t>(static_cast<int>(date.year()));
    month = static_cast<std::uint8_t>(static_cast<unsigned int>(date.month()));
    day = static_cast<std::uint8_t>(static_cast<unsigned int>(date.day()));
    hour = static_cast<std::uint8_t>(clock.hours().count());
    minute = static_cast<std::uint8_t>(clock.minutes().count());
    second = static_cast<std::uint8_t>(clock.seconds().count());
    hundredths = 0;
}

// Day numbers count with March as the first month, so that the leap day ends the year.
unsigned long NX_FileAge8::julianGet() const {
    bool const before = month < 3;
    std::uint32_t const m = before ? month + 9u : month - 3u;
    std::uint32_t const y = before ? year - 1u : year;
    std::uint32_t const c = y / 100;
    std::uint32_t const r = y - 100 * c;
    return static_cast<std::uint32_t>(146097 * c / 4 + 1461 * r / 4 + (153 * m + 2) / 5 + day + 1721119);
}

void NX_FileAge8::julianPut(unsigned long dayNumber) {
    auto const j = static_cast<std::uint32_t>(dayNumber);
    std::uint32_t const c = (4 * j - 6884477) / 146097;
    std::uint32_t const u = (4 * (j - 1721119) - 1 - 146097 * c) & ~3u;
    std::uint32_t const r = (u + 3) / 1461;
    std::uint32_t const v = 5 * ((u + 7 - 1461 * r) / 4);
    std::uint32_t const m = (v - 3) / 153;
    std::uint32_t const y = 100 * c + r;
    year = static_cast<std::uint16_t>(m >= 10 ? y + 1 : y);
    month = static_cast<std::uint8_t>(m >= 10 ? m - 9 : m + 3);
    day = static_cast<std::uint8_t>((v + 2 - 153 * m) / 5);
}

int NX_FileAge8::ageCompareExact(NX_FileAge8 const& other) const {
    if (int const order = minuteCompare(*this, other))
        return order;
    if (second != other.second)
        return second - other.second;
    return hundredths - other.hundredths;
}

int NX_FileAge8::ageCompare(NX_FileAge8 const& other) const {
    if (second < 56 && other.second < 56) {
        if (int const order = minuteCompare(*this, other))
            return order;
        if (second == other.second)
            return 0;
        int const difference = secondRounded(*this) - secondRounded(other);
        return difference >= -2 && difference <= 2 ? 0 : difference;
    }
    NX_FileAge8 a = ageRounded(*this);
    NX_FileAge8 b = ageRounded(other);
    int const order = a.ageCompareExact(b);
    if (order == 0)
        return 0;
    secondsAdd(order < 0 ? a : b, 2);
    return a.ageCompareExact(b) == 0 ? 0 : order;
}

std::ostream& operator<<(std::ostream& os, NX_FileAge8 const& age) {
    return os << age.year << '/' << int{age.month} << '/' << int{age.day} << ' ' << int{age.hour} << ':'
              << int{age.minute} << ':' << int{age.second} << '.' << int{age.hundredths};
}
