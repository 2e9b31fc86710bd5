// general/platform/posix/error.cpp - the last error of each thread, the error mode and the errno translation.
#include "general/platform/posix/error.h"

#include <errno.h>

#include <atomic>

#include "general/platform/posix/calls.h"

namespace {

constinit thread_local DWORD lastError = 0;
constinit std::atomic<UINT> errorMode{0};

} // namespace

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD code) {
    lastError = code;
}

void nxErrorSet(DWORD code) {
    lastError = code;
}

BOOL nxFail(DWORD code) {
    lastError = code;
    return FALSE;
}

UINT SetErrorMode(UINT mode) {
    return errorMode.exchange(mode, std::memory_order_relaxed);
}

DWORD nxErrorFromErrno(int error) {
    switch (error) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
    case ENXIO:
    case ENODEV:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return ERROR_ACCESS_DENIED;
    case EBADF:
        return ERROR_INVALID_HANDLE;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case EFBIG:
        return ERROR_FILE_TOO_LARGE;
    case EBUSY:
        return ERROR_BUSY;
    case ETXTBSY:
        return ERROR_SHARING_VIOLATION;
    case EAGAIN:
        return ERROR_LOCK_VIOLATION;
    case EINVAL:
    case EOVERFLOW:
        return ERROR_INVALID_PARAMETER;
    case EIO:
        return ERROR_IO_DEVICE;
    case ELOOP:
        return ERROR_CANT_RESOLVE_FILENAME;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case EXDEV:
        return ERROR_NOT_SAME_DEVICE;
    case ESPIPE:
    case ENOTTY:
    case ENOSYS:
    case EOPNOTSUPP:
        return ERROR_NOT_SUPPORTED;
    case EFAULT:
        return ERROR_NOACCESS;
    case EPIPE:
        return ERROR_BROKEN_PIPE;
    default:
        return ERROR_GEN_FAILURE;
    }
}
