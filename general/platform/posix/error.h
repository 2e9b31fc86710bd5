// general/platform/posix/error.h - Private header: the thread's last error and the translation of errno.
#pragma once

#include "general/platform/posix/types.h"

// Sets the calling thread's last error.
void nxErrorSet(DWORD code);

// Sets the last error and returns FALSE, for `return nxFail(code);`.
BOOL nxFail(DWORD code);

// The Win32 code of an errno value. ENOENT gives 2: the caller decides whether a directory part is missing.
DWORD nxErrorFromErrno(int error);
