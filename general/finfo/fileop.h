// Private header. general/finfo/fileop.h - the shape of a file operation: a system call, its error, another
// try.
#pragma once

#include "general/error/errorman.h"
#include "general/platform/platform.h"

// The name under which the errors of this folder's files are recorded.
inline constexpr char nxFileSource[] = "general/finfo/file";

// The error number of a failed system call on a file: by the class of the system's code.
int nxFileErrorNum(DWORD sysCode);

// Repeats `op`, which records its error and returns -1 or returns 0, as the error manager allows. Errors of
// tries before the last one are forgotten when that one succeeds.
template <class Op>
int nxFileRetry(Op op) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    do {
        if (op() == 0)
            return scope.errorOk();
    } while (NxErrorRetry(1));
    return -1;
}
