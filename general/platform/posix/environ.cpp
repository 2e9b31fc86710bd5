// general/platform/posix/environ.cpp - environment variables, system directories, system version.
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>

#include "general/platform/platform.h"

namespace {

// The interface that this layer reproduces: NT 6.1, build 7601.
constexpr DWORD versionMajor = 6;
constexpr DWORD versionMinor = 1;
constexpr DWORD versionBuild = 7601;

// The environment of the process may move when it is written.
std::mutex& environMutex() {
    static std::mutex& mutex = *new std::mutex;
    return mutex;
}

bool nameIsUsable(char const* name) {
    return name != nullptr && *name != '\0' && std::strchr(name, '=') == nullptr;
}

// The length without terminator when the text fits with it; else the size needed, the buffer left alone.
DWORD textGive(std::string_view text, char* buffer, DWORD size) {
    DWORD const length = static_cast<DWORD>(text.size());
    if (length >= size)
        return length + 1;
    std::memcpy(buffer, text.data(), text.size());
    buffer[length] = '\0';
    return length;
}

} // namespace

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (nameIsUsable(name)) {
        std::lock_guard const guard(environMutex());
        if (char const* const value = std::getenv(name))
            return textGive(value, buffer, size);
    }
    SetLastError(ERROR_ENVVAR_NOT_FOUND);
    return 0;
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    if (!nameIsUsable(name)) {
        SetLastError(name == nullptr ? ERROR_ENVVAR_NOT_FOUND : ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::lock_guard const guard(environMutex());
    if ((value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name)) == 0)
        return TRUE;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

UINT GetSystemDirectoryA(LPSTR buffer, UINT size) {
    return textGive("/usr/lib", buffer, size);
}

UINT GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    return textGive("/usr", buffer, size);
}

DWORD GetVersion() {
    return versionBuild << 16 | versionMinor << 8 | versionMajor;
}

BOOL GetVersionExA(OSVERSIONINFOA* info) {
    if (info->dwOSVersionInfoSize != sizeof(OSVERSIONINFOA)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    *info = {sizeof(OSVERSIONINFOA), versionMajor, versionMinor, versionBuild, VER_PLATFORM_WIN32_NT, {}};
    return TRUE;
}
