// general/collm/mem.h - the heap layer: every block of the library's own data comes from here.
//
// Blocks are zero-filled and never null for a non-zero size: a request succeeds or the process ends. When the
// run-time has no memory left, the emergency reserve is given back, the file data cache is flushed and the
// application is asked (NX_App::appMemUnavail); when it gives up, error 16884 is recorded and the process
// aborts. Sizes are in bytes. No block is larger than 2 GiB less one byte on any target; a larger request
// fails like any other. Ownership: the caller frees what it allocates, with NxMemHeapFree. Blocks are plain
// run-time blocks. Threads: blocks may be allocated and freed by any thread; the bookkeeping of NX_Mem has no
// lock and is only a hint.
#pragma once

#include "general/platform/fwd.h"

#include <cstdint>
#include <iosfwd>

class NX_App;

// The heap object of the process. There is one, usable before any constructor has run and after any
// destructor.
class NX_EXPORT NX_Mem {
public:
    static NX_Mem* memP();

    NX_App* memAppP() const { return app; } // who is asked when memory runs out; null: nobody
    int memReserveIsHeld() const { return reserve != nullptr; }
    int memFreeCount() const { return freeCount; } // frees, counted 1 to 1000, then 0 again
    int memDepth() const { return depth; }         // nesting of requests made from within a recovery
    int memFailCount() const { return failCount; } // failed attempts of the present request

private:
    friend class NXS_MemHeap;

    NX_App* app = nullptr;
    void* reserve = nullptr; // 256000 bytes held back, or null
    std::int32_t freeCount = 0;
    std::int32_t depth = 0;
    std::int32_t failCount = 0;
};

// One allocating call site, kept by debugging clients. Fields may be set freely; nothing here owns the texts.
struct NX_EXPORT NX_MemCall {
    NX_MemCall const* next = nullptr;
    char const* file = nullptr;
    std::int32_t line = 0;
    std::uint32_t count = 0;

    NX_MemCall const* callNextP() const { return next; }
    void callUsed() { ++count; }
    // One line: count right-aligned in 10 columns, file, line. Returns `os`.
    std::ostream& dataDump(std::ostream& os) const;
};

// Owner of one block. Copying moves the block: the source is left with null.
class NX_EXPORT NX_MemAuto {
public:
    // count * size zeroed bytes; null when the product is 0.
    NX_MemAuto(int count, int size);
    NX_MemAuto(NX_MemAuto& other) : p(other.p) { other.p = nullptr; }
    ~NX_MemAuto() { memFree(); }
    NX_MemAuto& operator=(NX_MemAuto& other);

    void memFree();
    void* memP() const { return p; }

private:
    void* p;
};

// A zeroed block of `size` bytes in *p; null for size 0.
NX_EXPORT void NxMemHeapAlloc(void** p, unsigned int size);
// Resizes *p, moving it if need be; kept bytes stay, added bytes are zero. Size 0 frees; a null *p allocates.
NX_EXPORT void NxMemHeapRealloc(void** p, unsigned int size);
// Frees *p and sets it to null; nothing for null.
NX_EXPORT void NxMemHeapFree(void** p);

// The forms of debugging clients; the record is not looked at.
NX_EXPORT void NxMemHeapAllocDebug(NX_MemCall* call, void** p, unsigned int size);
NX_EXPORT void NxMemHeapReallocDebug(NX_MemCall* call, void** p, unsigned int size);
NX_EXPORT void NxMemHeapFreeDebug(NX_MemCall* call, void** p);
NX_EXPORT void* NxMemHeapNewDebug(NX_MemCall* call,
                                  unsigned int size); // not zeroed; size 0 goes to the run-time
NX_EXPORT void NxMemHeapDeleteDebug(void* p);
NX_EXPORT void NxMemHeapContextDebug(NX_MemCall* call, void* context);            // does nothing
NX_EXPORT std::ostream& NxMemHeapDumpDebug(std::ostream& os, unsigned long what); // writes nothing

// The same by value: the (new) address is returned; null for size 0.
NX_EXPORT void* NxMemStdAlloc(unsigned int size);
NX_EXPORT void* NxMemStdRealloc(void* p, unsigned int size);
// Usable bytes of a block, at least what was asked for; 0 for null.
NX_EXPORT unsigned int NxMemStdSize(void* p);

// Attach and detach the application that is asked when memory runs out. While one is attached a reserve is
// held.
NX_EXPORT void NxMemInit(NX_App* app);
NX_EXPORT void NxMemUninit();

// Global memory for other processes. 0 is success here and any other value a code.
NX_EXPORT int NccMemSharedAlloc(void** p, char* name, unsigned int size, int flag); // 0, or 1 without memory
NX_EXPORT int NccMemSharedFree(void** p);                                           // 0; *p stays as it is
NX_EXPORT int NccMemSharedGet(void** p, char* name, int flag);                      // not provided: 0
NX_EXPORT int NccMemSharedGive(void** p, unsigned long process);                    // not provided: 999

// The end of a request whose size cannot even be stated in 32 bits: error 16884, then abort. Nobody is asked.
[[noreturn]] NX_EXPORT void nxMemExhausted();

// Grows *p from exactly `oldSize` to `size` bytes as NxMemHeapRealloc does, for owners that know what they
// asked for.
void nxMemHeapGrow(void** p, unsigned int oldSize, unsigned int size);
