// general/platform/posix/directory.cpp - attributes by name, making and removing directories.
//
// Read-only is a property of the file for every user: no write permission for anyone. Hidden goes with the
// name: it begins with a dot. Other attributes are not kept.
#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/fileinfo.h"
#include "general/platform/posix/seam.h"

namespace {

// The type and permission bits behind a name. 0 or the code.
DWORD modeOf(LPCSTR name, NXS_Path& path, unsigned int& mode) {
    DWORD const code = nxFileName(name, path);
    if (code != 0) {
        return code;
    }
    struct statx found;
    if (nxSeam.stat(AT_FDCWD, path.text, 0, STATX_TYPE | STATX_MODE, &found) < 0) {
        return nxPathError(path, errno);
    }
    mode = found.stx_mode;
    return path.trailing && !S_ISDIR(mode) ? DWORD{ERROR_INVALID_NAME} : 0;
}

} // namespace

DWORD nxFileAttributes(unsigned int mode, char const* name) {
    DWORD attributes = S_ISDIR(mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if (nxModeIsReadOnly(mode)) {
        attributes |= FILE_ATTRIBUTE_READONLY;
    }
    if (name[0] == '.' && name[1] != 0 && !(name[1] == '.' && name[2] == 0)) {
        attributes |= FILE_ATTRIBUTE_HIDDEN;
    }
    return attributes;
}

DWORD GetFileAttributesA(LPCSTR name) {
    NXS_Path path;
    unsigned int mode = 0;
    DWORD const code = modeOf(name, path, mode);
    if (code != 0) {
        nxErrorSet(code);
        return INVALID_FILE_ATTRIBUTES;
    }
    return nxFileAttributes(mode, path.lastName());
}

BOOL SetFileAttributesA(LPCSTR name, DWORD attributes) {
    NXS_Path path;
    unsigned int mode = 0;
    DWORD const code = modeOf(name, path, mode);
    if (code != 0) {
        return nxFail(code);
    }
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN;
    if ((attributes & FILE_ATTRIBUTE_SYSTEM) != 0 ||
        (attributes & kept & ~nxFileAttributes(mode, path.lastName())) != 0) {
        return nxFail(ERROR_NOT_SUPPORTED);
    }
    if (path.device) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    bool const readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly != nxModeIsReadOnly(mode)) {
        unsigned int const wanted = readOnly ? mode & ~0222u : mode | 0200u;
        if (nxSeam.modeOf(path.text, wanted & 07777) < 0) {
            return nxFail(nxPathError(path, errno));
        }
    }
    return TRUE;
}

BOOL CreateDirectoryA(LPCSTR name, SECURITY_ATTRIBUTES*) {
    NXS_Path path;
    DWORD const code = nxFileName(name, path);
    if (code != 0) {
        return nxFail(code);
    }
    if (nxSeam.makeDirectory(path.text, 0777) < 0) {
        int const error = errno;
        if (error == EEXIST) {
            return nxFail(ERROR_ALREADY_EXISTS);
        }
        return nxFail(error == ENOENT ? DWORD{ERROR_PATH_NOT_FOUND} : nxPathError(path, error));
    }
    return TRUE;
}

BOOL RemoveDirectoryA(LPCSTR name) {
    NXS_Path path;
    unsigned int mode = 0;
    DWORD const code = modeOf(name, path, mode);
    if (code != 0) {
        return nxFail(code);
    }
    if (!S_ISDIR(mode)) {
        return nxFail(ERROR_DIRECTORY);
    }
    if (nxModeIsReadOnly(mode)) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    int removed = nxSeam.unlinkAt(AT_FDCWD, path.text, AT_REMOVEDIR);
    if (removed < 0 && errno == ENOTDIR) {
        removed = nxSeam.unlinkAt(AT_FDCWD, path.text, 0); // a link to a directory goes, the directory stays
    }
    if (removed < 0) {
        return nxFail(errno == EEXIST ? DWORD{ERROR_DIR_NOT_EMPTY} : nxPathError(path, errno));
    }
    return TRUE;
}
