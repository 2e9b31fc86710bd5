// Private header. general/finfo/fileagep.h - file times of the platform as times of the library, and back.
#pragma once

#include "general/finfo/fileage.h"
#include "general/platform/platform.h"

// Zero when the time has no DOS date: before 1980 or after 2107.
NX_FileAge8 nxFileAgeOf(FILETIME const& time);

// The entry's or, of three times given as the system gives them, the chosen one.
NX_FileAge8 nxFileAgeOf(WIN32_FIND_DATAA const& entry, NX_FileAgeType type);

// FALSE when the fields are no date. Hundredths and an odd second are dropped.
BOOL nxFileTimeOf(NX_FileAge8 const& age, FILETIME* time);
