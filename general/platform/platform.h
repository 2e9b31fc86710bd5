// general/platform/platform.h - the Win32 calls that the library uses, on every target.
//
// On Windows this is the system's own header, lean. Elsewhere posix/types.h declares exactly the types and
// constants the library needs and posix/calls.h the functions; the sources in posix/ implement them with the
// same results and the same GetLastError codes. README.md lists each call with what it honours and refuses.
// For sources only: public headers include "general/platform/fwd.h" instead.
#pragma once

#include "general/platform/fwd.h"

#if defined(_WIN32)
#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <io.h>
#include <malloc.h>
#include <process.h>
#include <windows.h>
#else
#include "general/platform/posix/calls.h"
#include "general/platform/posix/screen.h"
#include "general/platform/posix/types.h"
#endif
