// Private header. general/error/errorintern.h - what the sources of errors and threads share.
#pragma once

#include <cstdint>

class NX_ErrorMan;
class NX_Thread;

// The process-wide manager, made on first use and never freed.
NX_ErrorMan* nxErrorManOfProcess();

// The last system code, process-wide: what the generic system error records.
std::int32_t nxErrorSysLast();
void nxErrorSysLast(std::int32_t sys);

// The object registered for the calling thread, or null when it has none or the object is destroyed already:
// an entry may outlive its object, and a thread that was not started here may get the identifier of an ended
// one.
NX_Thread* nxThreadLiveP();

// Tells the registry that `thread` is destroyed. Its entry stays.
void nxThreadGone(NX_Thread const* thread);
