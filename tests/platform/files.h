// tests/platform/files.h - short forms of the file calls for the tests of this folder.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "general/platform/platform.h"

// The error of a call just made: 0 when it succeeded.
inline DWORD errorOf(BOOL ok) {
    return ok ? 0 : GetLastError();
}

inline HANDLE fileOpen(char const* name, DWORD access, DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE,
                       DWORD creation = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    return CreateFileA(name, access, share, nullptr, creation, flags, nullptr);
}

// A file that is open until the end of the scope.
class NXS_Opened {
public:
    template <class... Arguments>
    explicit NXS_Opened(Arguments... arguments) : handle_(fileOpen(arguments...)) {}
    NXS_Opened(NXS_Opened const&) = delete;
    ~NXS_Opened() { CloseHandle(handle_); }
    operator HANDLE() const { return handle_; }

private:
    HANDLE handle_;
};

// The content from the file's position on, for up to `size` bytes.
inline std::string fileRead(HANDLE file, DWORD size, OVERLAPPED* where = nullptr) {
    char buffer[100];
    DWORD done = 99;
    EXPECT_EQ(errorOf(ReadFile(file, buffer, size, &done, where)), 0u);
    return std::string(buffer, done);
}

// Opens and closes again; the last error, which opening always sets.
inline DWORD fileOpenError(char const* name, DWORD access, DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE,
                           DWORD creation = OPEN_EXISTING) {
    HANDLE const file = fileOpen(name, access, share, creation);
    DWORD const error = GetLastError();
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    return error;
}

inline OVERLAPPED fileAt(std::uint64_t offset) {
    OVERLAPPED result = {};
    result.Offset = static_cast<DWORD>(offset);
    result.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return result;
}

// Locks and unlocks: 0 or the error.
inline DWORD fileLock(HANDLE file, bool exclusive, std::uint64_t offset, std::uint64_t size,
                      DWORD flags = LOCKFILE_FAIL_IMMEDIATELY) {
    OVERLAPPED where = fileAt(offset);
    return errorOf(LockFileEx(file, flags | (exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0), 0,
                              static_cast<DWORD>(size), static_cast<DWORD>(size >> 32), &where));
}

inline DWORD fileUnlock(HANDLE file, std::uint64_t offset, std::uint64_t size) {
    OVERLAPPED where = fileAt(offset);
    return errorOf(UnlockFileEx(file, 0, static_cast<DWORD>(size), static_cast<DWORD>(size >> 32), &where));
}
