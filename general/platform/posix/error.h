// general/platform/posix/error.h - Private header: the thread's last error and the translation of errno.
#pragma once

#include <new>

#include "general/platform/posix/types.h"

// Sets the calling thread's last error.
void nxErrorSet(DWORD code);

// Sets the last error and returns FALSE, for `return nxFail(code);`.
BOOL nxFail(DWORD code);

// The Win32 code of an errno value. ENOENT gives 2: the caller decides whether a directory part is missing.
DWORD nxErrorFromErrno(int error);

// Runs the body of a call; when it runs out of memory the call fails with ERROR_NOT_ENOUGH_MEMORY.
template <class R, class Body>
R nxGuarded(R failed, Body body) {
    try {
        return body();
    } catch (std::bad_alloc const&) {
        nxErrorSet(ERROR_NOT_ENOUGH_MEMORY);
        return failed;
    }
}
