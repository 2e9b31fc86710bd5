// general/collm/memshared.cpp - memory for other processes, over the system's global memory.
#include "general/collm/mem.h"

#include "general/platform/platform.h"

int NccMemSharedAlloc(void** p, char*, unsigned int size, int) {
    *p = GlobalLock(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, size));
    return *p == nullptr;
}

int NccMemSharedFree(void** p) {
    if (*p != nullptr) {
        GlobalUnlock(GlobalHandle(*p));
        GlobalFree(GlobalHandle(*p));
    }
    return 0;
}

int NccMemSharedGet(void**, char*, int) {
    return 0;
}

int NccMemSharedGive(void**, unsigned long) {
    return 999;
}
