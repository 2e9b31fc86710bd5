// general/finfo/fileagefile.cpp - the times of files, by name and of open files.
#include "general/finfo/file.h"
#include "general/error/errorman.h"
#include "general/finfo/fileagep.h"
#include "general/finfo/fileop.h"

NX_FileAge8 nxFileAgeOf(FILETIME const& time) {
    NX_FileAge8 age = {};
    WORD date;
    WORD clock;
    if (!FileTimeToDosDateTime(&time, &date, &clock))
        return age;
    age.year = static_cast<std::uint16_t>((date >> 9) + 1980);
    age.month = (date >> 5) & 15;
    age.day = date & 31;
    age.hour = static_cast<std::uint8_t>(clock >> 11);
    age.minute = (clock >> 5) & 63;
    age.second = static_cast<std::uint8_t>((clock & 31) * 2);
    return age;
}

NX_FileAge8 nxFileAgeOf(WIN32_FIND_DATAA const& entry, NX_FileAgeType type) {
    if (type == ageCreate)
        return nxFileAgeOf(entry.ftCreationTime);
    return nxFileAgeOf(type == ageAccess ? entry.ftLastAccessTime : entry.ftLastWriteTime);
}

// 16 bits hold the years 1980 to 2107, of which 60 stands for 1980: 1920 is a multiple of 128.
BOOL nxFileTimeOf(NX_FileAge8 const& age, FILETIME* time) {
    auto const date = static_cast<WORD>(((age.year - 60u) * 16 + age.month) * 32 + age.day);
    auto const clock = static_cast<WORD>((age.hour * 64u + age.minute) * 32 + age.second / 2u);
    return DosDateTimeToFileTime(date, clock, time);
}

NX_Age::NX_Age(NX_StringA const& name, NX_FileAgeType type) : NX_FileAge8{} {
    WIN32_FIND_DATAA entry;
    HANDLE const search = FindFirstFileA(name.dataPConst(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return;
    FindClose(search);
    static_cast<NX_FileAge8&>(*this) = nxFileAgeOf(entry, type);
}

NX_Age::NX_Age(NX_File const& file, NX_FileAgeType type) : NX_FileAge8{} {
    FILETIME time;
    BOOL const done =
        GetFileTime(file.fileHand(), type == ageCreate ? &time : nullptr, type == ageAccess ? &time : nullptr,
                    type == ageCreate || type == ageAccess ? nullptr : &time);
    if (done) {
        static_cast<NX_FileAge8&>(*this) = nxFileAgeOf(time);
    } else {
        NxErrorTypeOfSys(static_cast<long>(GetLastError()));
        NxERROR(errorNumSystem, nxFileSource, __LINE__);
    }
}

NX_Age NX_File::fileAge(NX_FileAgeType type) const {
    return NX_Age(*this, type);
}

int NX_File::fileAge(NX_Age const& age, NX_FileAgeType type) {
    return nxFileRetry([&] {
        FILETIME time;
        if (!nxFileTimeOf(age, &time))
            return fileERR(errorNumSystem); // no date, so nothing to ask the system
        if (!SetFileTime(hand_, type == ageCreate ? &time : nullptr, type == ageAccess ? &time : nullptr,
                         type == ageCreate || type == ageAccess ? nullptr : &time))
            return sysERR();
        return 0;
    });
}
