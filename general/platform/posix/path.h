// general/platform/posix/path.h - Private header: names as callers write them become names the system takes.
//
// Every name that enters the layer passes nxPathNormalise, and nothing else looks at separators. Both
// separators count and come out as '/'; runs of them are one; `.` and `..` are resolved in the text, before
// the disk is looked at; an inner component loses one trailing dot, the last one all trailing dots and
// spaces. A trail byte of a double-byte character is never a separator. There are no drives: "X:..." is not
// found. `nul`, also with an extension or in a directory, is the null device.
#pragma once

#include <cstddef>

#include "general/platform/posix/types.h"

inline constexpr std::size_t NX_PATH_GIVEN_MAX = 260;     // what a caller may pass
inline constexpr std::size_t NX_PATH_COMPONENT_MAX = 255; // what the file systems take
inline constexpr std::size_t NX_PATH_WORK_MAX = 4096;     // the current directory

enum NXS_PathFlag : unsigned int {
    NXS_PathPlain = 0,
    NXS_PathPattern = 1, // wildcards may stand in the last component
    NXS_PathFull = 2,    // put the current directory in front of a relative name
    NXS_PathLexical = 4  // nothing is refused for its characters; drives and devices are spelled out
};

struct NXS_Path {
    char text[NX_PATH_WORK_MAX + NX_PATH_GIVEN_MAX + 8]; // ready for the system, with '/'
    std::size_t length; // without the terminator and without a final separator
    std::size_t last;   // where the last component begins
    bool trailing;      // the name ended in a separator: it means a directory
    bool device;        // text is the null device
    bool wild;          // the last component holds '*' or '?'
    bool starDot;       // it was written with "*." at its end

    char const* lastName() const { return text + last; }

    // The directory part as a name of its own: what stands before the last component, "." if nothing does.
    void directory(char* buffer) const;
};

// Fills `path` from `name`. 0, or the code the name deserves: 3 for none, an empty one, a drive or a
// component that would mean the parent by accident, 206 for a too long one, 123 for reserved characters or a
// component that is too long. Flags as above.
DWORD nxPathNormalise(char const* name, unsigned int flags, NXS_Path& path);

// The code for a failed call on `path`: ENOENT becomes 3 when the directory part is missing or is not a
// directory, everything else as nxErrorFromErrno says.
DWORD nxPathError(NXS_Path const& path, int error);
