// general/text/dbcsinfo.h - Private header. The text routines' quick way to the process-wide double-byte
// information.
#pragma once

#include <atomic>

#include "general/text/dbcs.h"

// Null until the first use; set once.
extern std::atomic<NX_DbcsInfo*> nxDbcsInfo;

inline NX_DbcsInfo const& nxDbcs() {
    NX_DbcsInfo const* info = nxDbcsInfo.load(std::memory_order_acquire);
    return info ? *info : *NxDbcsInfoP();
}
