// general/platform/posix/fileinfo.h - Private header: attributes and times as Win32 shows them.
#pragma once

#include <sys/stat.h>

#include "general/platform/posix/types.h"

// The attributes of a file with these type and permission bits and this name (last component): directory or
// archive, read-only when nobody may write, hidden when the name begins with a dot.
DWORD nxFileAttributes(unsigned int mode, char const* name);

// Times before 1601 are given as 0.
FILETIME nxFileTimeOf(struct statx_timestamp const& time);

// The creation time where the file system keeps one, else the time of the last write.
FILETIME nxFileTimeCreated(struct statx const& found);
