// general/platform/dllmain.cpp - the entry routine of the DLL: loading the library does nothing else than
// switch off the per-thread notifications.
#include "general/platform/platform.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
