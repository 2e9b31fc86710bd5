// tests/platform/files.h - short forms of the file calls for the tests of this folder.
#pragma once

#include "general/platform/platform.h"

// The error of a call just made: 0 when it succeeded.
inline DWORD errorOf(BOOL ok) {
    return ok ? 0 : GetLastError();
}

inline HANDLE fileOpen(char const* name, DWORD access, DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE,
                       DWORD creation = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    return CreateFileA(name, access, share, nullptr, creation, flags, nullptr);
}

// Opens and closes again; the last error, which opening always sets.
inline DWORD fileOpenError(char const* name, DWORD access, DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE,
                           DWORD creation = OPEN_EXISTING) {
    HANDLE const file = fileOpen(name, access, share, creation);
    DWORD const error = GetLastError();
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    return error;
}
