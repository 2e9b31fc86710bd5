// Private header. general/finfo/findpattern.h - what a listing searches for, and what it takes of what it
// finds.
#pragma once

#include "general/platform/platform.h"
#include "general/text/stringvec.h"

// `pattern` in the directory `where`. Without a pattern (null or empty): `where` itself when it holds a
// wildcard, else all entries of that directory.
NX_StringA nxFindPattern(NX_StringA const& where, char const* pattern);

// Without the refused classes that are wanted as well.
NX_FileFindType nxFindType(NX_FileFindType find);

// The entries that a listing takes.
class NXS_FindFilter {
public:
    NXS_FindFilter(NX_FileFindType find, NX_StringVecA const& leaveOut);
    bool passes(WIN32_FIND_DATAA const& entry) const;
    bool isForDirectories() const { return wanted_ == FILE_ATTRIBUTE_DIRECTORY; }

private:
    NX_StringVecA const& leaveOut_;
    DWORD wanted_;
    DWORD refused_;
};
