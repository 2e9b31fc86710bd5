// general/platform/posix/calls.h - the Win32 functions that the library uses, for systems without them.
//
// Results, failure values and GetLastError codes are those of Win32; ../README.md says for each call which
// flags are honoured, ignored or refused. All may be called from any thread. Handles are inherited by no
// child process. Names are bytes in the system's code page; both separators are accepted.
#pragma once

#include "general/platform/posix/types.h"

// Last error, per thread; 0 in a new one.
NX_EXPORT DWORD GetLastError();
NX_EXPORT void SetLastError(DWORD code);
NX_EXPORT UINT SetErrorMode(UINT mode);

// Handles.
NX_EXPORT BOOL CloseHandle(HANDLE handle);

// Files by handle.
NX_EXPORT HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                             DWORD creation, DWORD flags, HANDLE templateFile);
NX_EXPORT BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, DWORD* done, OVERLAPPED* at);
NX_EXPORT BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, DWORD* done, OVERLAPPED* at);
NX_EXPORT DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distanceHigh, DWORD method);
NX_EXPORT BOOL FlushFileBuffers(HANDLE file);
NX_EXPORT BOOL LockFileEx(HANDLE file, DWORD flags, DWORD reserved, DWORD sizeLow, DWORD sizeHigh,
                          OVERLAPPED* at);
NX_EXPORT BOOL UnlockFileEx(HANDLE file, DWORD reserved, DWORD sizeLow, DWORD sizeHigh, OVERLAPPED* at);
NX_EXPORT BOOL GetFileTime(HANDLE file, FILETIME* created, FILETIME* accessed, FILETIME* written);
NX_EXPORT BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* info);
NX_EXPORT BOOL SetFileTime(HANDLE file, FILETIME const* created, FILETIME const* accessed,
                           FILETIME const* written);

// Files by name.
NX_EXPORT BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists);
NX_EXPORT BOOL MoveFileA(LPCSTR from, LPCSTR to);
NX_EXPORT BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags);
NX_EXPORT BOOL DeleteFileA(LPCSTR name);
NX_EXPORT DWORD GetFileAttributesA(LPCSTR name);
NX_EXPORT BOOL SetFileAttributesA(LPCSTR name, DWORD attributes);
NX_EXPORT BOOL CreateDirectoryA(LPCSTR name, SECURITY_ATTRIBUTES* security);
NX_EXPORT BOOL RemoveDirectoryA(LPCSTR name);
NX_EXPORT DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer);
NX_EXPORT BOOL SetCurrentDirectoryA(LPCSTR name);
NX_EXPORT DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* filePart);

// Searches. The handle is closed by FindClose.
NX_EXPORT HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* data);
NX_EXPORT HANDLE FindFirstFileExA(LPCSTR pattern, FINDEX_INFO_LEVELS level, void* data,
                                  FINDEX_SEARCH_OPS operation, void* filter, DWORD flags);
NX_EXPORT BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* data);
NX_EXPORT BOOL FindClose(HANDLE search);

// Times.
NX_EXPORT BOOL FileTimeToDosDateTime(FILETIME const* time, WORD* dosDate, WORD* dosTime);
NX_EXPORT BOOL DosDateTimeToFileTime(WORD dosDate, WORD dosTime, FILETIME* time);
NX_EXPORT LONG CompareFileTime(FILETIME const* left, FILETIME const* right);
NX_EXPORT void GetSystemTimeAsFileTime(FILETIME* time);
NX_EXPORT DWORD GetTickCount();
NX_EXPORT void Sleep(DWORD milliseconds);

// Environment, locale, code pages, system.
NX_EXPORT DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size);
NX_EXPORT BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
NX_EXPORT int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR buffer, int size);
NX_EXPORT BOOL GetCPInfo(UINT codePage, CPINFO* info);
NX_EXPORT BOOL IsDBCSLeadByte(BYTE unit);
NX_EXPORT UINT GetACP();
NX_EXPORT DWORD GetVersion();
NX_EXPORT BOOL GetVersionExA(OSVERSIONINFOA* info);
NX_EXPORT UINT GetSystemDirectoryA(LPSTR buffer, UINT size);
NX_EXPORT UINT GetWindowsDirectoryA(LPSTR buffer, UINT size);

// Modules and strings. A module's name is found as README.md says; ordinals are not supported (182).
NX_EXPORT HMODULE LoadLibraryA(LPCSTR name);
NX_EXPORT BOOL FreeLibrary(HMODULE module);
NX_EXPORT FARPROC GetProcAddress(HMODULE module, LPCSTR name);
NX_EXPORT DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
NX_EXPORT HMODULE GetModuleHandleA(LPCSTR name);
NX_EXPORT BOOL DisableThreadLibraryCalls(HMODULE module);
NX_EXPORT int LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size);

// Memory.
NX_EXPORT HGLOBAL GlobalAlloc(UINT flags, SIZE_T size);
NX_EXPORT LPVOID GlobalLock(HGLOBAL block);
NX_EXPORT BOOL GlobalUnlock(HGLOBAL block);
NX_EXPORT HGLOBAL GlobalHandle(LPCVOID address);
NX_EXPORT HGLOBAL GlobalFree(HGLOBAL block);
NX_EXPORT SIZE_T GlobalSize(HGLOBAL block);
NX_EXPORT std::size_t _msize(void* block);

// Threads and locks.
NX_EXPORT std::uintptr_t _beginthreadex(void* security, unsigned int stackSize,
                                        unsigned int(NX_STDCALL* start)(void*), void* argument,
                                        unsigned int flags, unsigned int* id);
[[noreturn]] NX_EXPORT void _endthreadex(unsigned int exitCode);
NX_EXPORT HANDLE GetCurrentThread();
NX_EXPORT DWORD GetCurrentThreadId();
NX_EXPORT DWORD GetCurrentProcessId();
NX_EXPORT void InitializeCriticalSection(CRITICAL_SECTION* section);
NX_EXPORT void EnterCriticalSection(CRITICAL_SECTION* section);
NX_EXPORT void LeaveCriticalSection(CRITICAL_SECTION* section);
NX_EXPORT void DeleteCriticalSection(CRITICAL_SECTION* section);

// Terminals: non-zero when the descriptor (0, 1, 2 are the standard streams) is one.
NX_EXPORT int _isatty(int descriptor);

// Windows and endings.
NX_EXPORT int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
NX_EXPORT HWND GetDesktopWindow();
[[noreturn]] NX_EXPORT void FatalAppExitA(UINT action, LPCSTR text);
