// general/platform/posix/filestate.cpp - which file a handle stands for, and its state.
#include <errno.h>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/fileinfo.h"
#include "general/platform/posix/seam.h"

// The name is not known here, so no file is hidden. Twenty bits hold the minor numbers of devices.
BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* info) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object)
        return FALSE;
    if (!object->regular)
        return nxFail(ERROR_INVALID_FUNCTION);
    struct statx found;
    if (nxSeam.stat(object->file, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &found) < 0)
        return nxFail(nxErrorFromErrno(errno));
    info->dwFileAttributes = nxFileAttributes(found.stx_mode, "");
    info->ftCreationTime = nxFileTimeCreated(found);
    info->ftLastAccessTime = nxFileTimeOf(found.stx_atime);
    info->ftLastWriteTime = nxFileTimeOf(found.stx_mtime);
    info->dwVolumeSerialNumber = found.stx_dev_major << 20 ^ found.stx_dev_minor;
    info->nFileSizeHigh = static_cast<DWORD>(found.stx_size >> 32);
    info->nFileSizeLow = static_cast<DWORD>(found.stx_size);
    info->nNumberOfLinks = found.stx_nlink;
    info->nFileIndexHigh = static_cast<DWORD>(found.stx_ino >> 32);
    info->nFileIndexLow = static_cast<DWORD>(found.stx_ino);
    return TRUE;
}
