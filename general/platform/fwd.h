// general/platform/fwd.h - what public headers need of the platform: export macro, calling conventions and
// forward declarations of system types. It includes no system header and is cheap to include.
#pragma once

#if defined(_WIN32)
#if defined(VX7BASE_BUILD)
#define NX_EXPORT __declspec(dllexport)
#elif defined(VX7BASE_STATIC)
#define NX_EXPORT
#else
#define NX_EXPORT __declspec(dllimport)
#endif
#else
#define NX_EXPORT __attribute__((visibility("default")))
#endif

// Comparison callbacks take their two addresses in registers where the target has such a convention; exported
// functions of modules use the callee-cleans-up convention there.
#if defined(__i386__)
#define NX_FASTCALL __attribute__((fastcall))
#define NX_STDCALL __attribute__((stdcall))
#else
#define NX_FASTCALL
#define NX_STDCALL
#endif

// System types by the tags under which the platform declares them.
struct HINSTANCE__;
struct HWND__;
struct _WIN32_FIND_DATAA;
using HINSTANCE = HINSTANCE__*;
using HWND = HWND__*;
using WIN32_FIND_DATAA = _WIN32_FIND_DATAA;

// The no-index value: "not found" as a result, "none" or "to the end" as a position or a length.
inline constexpr unsigned int NX_NO_INDEX = 0xFFFFFFFFu;
