// general/finfo/fileage.h - file times as calendar times of 8 bytes.
//
// Times are universal time and come from files with a resolution of two seconds; ageCompare therefore takes
// times within two seconds of each other for equal. The value of all zeros stands for "no time" and comes
// before every real time. File times before 1980 read as zero, as do those after 2107. Plain values: no
// ownership, any thread. Reading a time by name reports no errors.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "general/platform/fwd.h"
#include "general/text/fileenum.h"

class NX_File;
class NX_PersistTextLoad;
class NX_PersistTextSave;
class NX_StringA;

struct NX_EXPORT NX_FileAge8 {
    std::uint16_t year; // in full, such as 1998
    std::uint8_t month; // 1 to 12
    std::uint8_t day;   // 1 to 31
    std::uint8_t hour;
    std::uint8_t minute;
    std::uint8_t second;     // even when taken from a file
    std::uint8_t hundredths; // 0 when taken from a file or from the clock

    void ageZero();
    void ageNow(); // the present universal time, to the second

    // The Julian day number of the date, and the date of a day number; the time of day plays no part.
    unsigned long julianGet() const;
    void julianPut(unsigned long day);

    // Negative, 0 or positive: this time before, equal to, after the other. ageCompare allows two seconds.
    int ageCompare(NX_FileAge8 const& other) const;
    int ageCompareExact(NX_FileAge8 const& other) const;

    // The fields alone; the stream operators below add identity.
    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
};
static_assert(sizeof(NX_FileAge8) == 8);

// A file time that can be read from a file.
class NX_EXPORT NX_Age : public NX_FileAge8 {
public:
    NX_Age() : NX_FileAge8{} {} // zero
    NX_Age(NX_FileAge8 const& age) : NX_FileAge8(age) {}
    // The time of the file or directory `name`; zero when there is none.
    NX_Age(NX_StringA const& name, NX_FileAgeType type);
    // The time of an open file; zero and error 21060 when it cannot be read.
    NX_Age(NX_File const& file, NX_FileAgeType type);
};

// Writes year/month/day hour:minute:second.hundredths in plain decimal, without padding.
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_FileAge8 const& age);

// Save and load. The pointer forms write an object once and refer to it afterwards; loading into a null
// pointer makes the object with new.
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileAge8 const& age);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileAge8 const* age);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileAge8& age);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileAge8*& age);
