// general/platform/posix/types.h - the Win32 types and constants of the library, for systems without them.
//
// Widths are those of Win32 whatever the target: DWORD, LONG and BOOL have 32 bits, handles have the width of
// a pointer. All records are plain data in the order of the original fields.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <cstdint>

#include "general/platform/fwd.h"

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using LONG = std::int32_t;
using BOOL = int;
using CHAR = char;
using SIZE_T = std::size_t;
using ULONG_PTR = std::uintptr_t;
using LCID = DWORD;
using LCTYPE = DWORD;
using LPSTR = char*;
using LPCSTR = char const*;
using LPVOID = void*;
using LPCVOID = void const*;
using LPDWORD = DWORD*;
using LPLONG = LONG*;
using PLONG = LONG*;
using LPWORD = WORD*;
using HANDLE = void*;
using HGLOBAL = HANDLE;
using HMODULE = HINSTANCE;
using FARPROC = std::intptr_t(NX_STDCALL*)();

#define WINAPI NX_STDCALL

static_assert(sizeof(DWORD) == 4 && sizeof(LONG) == 4 && sizeof(BOOL) == 4 && sizeof(WORD) == 2);
static_assert(sizeof(HANDLE) == sizeof(void*) && sizeof(ULONG_PTR) == sizeof(void*));

#if !defined(TRUE)
#define TRUE 1
#define FALSE 0
#endif

inline constexpr DWORD INFINITE = 0xFFFFFFFFu;
inline constexpr int MAX_PATH = 260;
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))
#define MAKEINTRESOURCEA(id) (reinterpret_cast<LPSTR>(static_cast<std::uintptr_t>(static_cast<WORD>(id))))
#define MAKEINTRESOURCE MAKEINTRESOURCEA
#define LOWORD(value) (static_cast<WORD>(static_cast<std::uintptr_t>(value) & 0xFFFFu))
#define HIWORD(value) (static_cast<WORD>((static_cast<std::uintptr_t>(value) >> 16) & 0xFFFFu))
#define LOBYTE(value) (static_cast<BYTE>(static_cast<std::uintptr_t>(value) & 0xFFu))
#define HIBYTE(value) (static_cast<BYTE>((static_cast<std::uintptr_t>(value) >> 8) & 0xFFu))

// 100 ns units since 1601-01-01 UTC.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;
static_assert(sizeof(FILETIME) == 8);

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct OVERLAPPED {
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

// Volume and index together tell which file it is, as long as it is open.
struct BY_HANDLE_FILE_INFORMATION {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
};
static_assert(sizeof(BY_HANDLE_FILE_INFORMATION) == 52);

struct _WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14];
};

enum FINDEX_INFO_LEVELS { FindExInfoStandard };
enum FINDEX_SEARCH_OPS { FindExSearchNameMatch, FindExSearchLimitToDirectories };
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;
static_assert(sizeof(WIN32_FIND_DATAA) == 320);

struct CRITICAL_SECTION {
    pthread_mutex_t mutex;
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;

inline constexpr int MAX_DEFAULTCHAR = 2;
inline constexpr int MAX_LEADBYTES = 12;
struct CPINFO {
    UINT MaxCharSize;
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];
};
using LPCPINFO = CPINFO*;

struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;

// Files.
inline constexpr DWORD GENERIC_READ = 0x80000000u;
inline constexpr DWORD GENERIC_WRITE = 0x40000000u;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD TRUNCATE_EXISTING = 5;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x02;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x04;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_TEMPORARY = 0x100;
inline constexpr DWORD FILE_FLAG_DELETE_ON_CLOSE = 0x04000000u;
inline constexpr DWORD FILE_FLAG_SEQUENTIAL_SCAN = 0x08000000u;
inline constexpr DWORD FILE_FLAG_RANDOM_ACCESS = 0x10000000u;
inline constexpr DWORD FILE_FLAG_OVERLAPPED = 0x40000000u;
inline constexpr DWORD FILE_FLAG_WRITE_THROUGH = 0x80000000u;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;
inline constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFFu;
inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD FILE_END = 2;
inline constexpr DWORD LOCKFILE_FAIL_IMMEDIATELY = 1;
inline constexpr DWORD LOCKFILE_EXCLUSIVE_LOCK = 2;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr DWORD MOVEFILE_COPY_ALLOWED = 2;
inline constexpr DWORD MOVEFILE_WRITE_THROUGH = 8;

// Error modes, global memory, locale, message boxes, versions.
inline constexpr UINT SEM_FAILCRITICALERRORS = 0x0001;
inline constexpr UINT SEM_NOGPFAULTERRORBOX = 0x0002;
inline constexpr UINT SEM_NOOPENFILEERRORBOX = 0x8000;
inline constexpr UINT GMEM_FIXED = 0x0000;
inline constexpr UINT GMEM_MOVEABLE = 0x0002;
inline constexpr UINT GMEM_ZEROINIT = 0x0040;
inline constexpr UINT GMEM_DDESHARE = 0x2000;
inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x0800;
inline constexpr LCID LOCALE_USER_DEFAULT = 0x0400;
inline constexpr LCTYPE LOCALE_IDEFAULTANSICODEPAGE = 0x1004;
inline constexpr UINT CP_ACP = 0;
inline constexpr UINT MB_OK = 0x0;
inline constexpr UINT MB_OKCANCEL = 0x1;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x2;
inline constexpr UINT MB_YESNOCANCEL = 0x3;
inline constexpr UINT MB_YESNO = 0x4;
inline constexpr UINT MB_RETRYCANCEL = 0x5;
inline constexpr UINT MB_TYPEMASK = 0xF;
inline constexpr UINT MB_ICONHAND = 0x10;
inline constexpr UINT MB_ICONSTOP = 0x10;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONWARNING = 0x30;
inline constexpr UINT MB_ICONASTERISK = 0x40;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr UINT MB_DEFBUTTON1 = 0x000;
inline constexpr UINT MB_DEFBUTTON2 = 0x100;
inline constexpr UINT MB_DEFBUTTON3 = 0x200;
inline constexpr UINT MB_APPLMODAL = 0x0000;
inline constexpr UINT MB_SYSTEMMODAL = 0x1000;
inline constexpr UINT MB_TASKMODAL = 0x2000;
inline constexpr UINT MB_SETFOREGROUND = 0x10000;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
inline constexpr DWORD VER_PLATFORM_WIN32_NT = 2;
inline constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 2;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr DWORD DLL_PROCESS_DETACH = 0;

#include "general/platform/posix/errorcodes.h"
