// Private header. general/collm/memup.h - what the heap layer asks of the floors above it when memory runs
// out. The heap layer sees the application only through these functions; the module floor defines them.
#pragma once

class NX_App;
class NX_Mem;

// Tells the application which heap object is its own (null: none any more).
void nxMemAppSet(NX_App* app, NX_Mem* mem);

// The registered application, or null.
NX_App* nxMemAppCurrent();

// Asks the file data cache to give memory back. Non-zero when something was given back.
int nxMemCacheFlush();

// What the application's appMemUnavail answers: non-zero to try again, 0 to give up.
int nxMemAppUnavail(NX_App* app, unsigned int size, int failCount);

// Shows the application's text of error 16884 and leaves the process through the system's fatal exit. Does
// nothing when `app` is null. May return.
void nxMemAppFatalExit(NX_App* app);

// Records error 16884 and aborts the process through the error manager.
[[noreturn]] void nxMemErrorAbort();
