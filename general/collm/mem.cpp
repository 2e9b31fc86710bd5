// general/collm/mem.cpp - the heap layer over the run-time's allocator.
#include "general/collm/mem.h"

#include "general/collm/memup.h"
#include "general/platform/platform.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <ostream>

namespace {

constexpr std::size_t reserveSize = 256000;
// No block reaches half of a 32-bit address space, so that every target refuses the same requests.
constexpr unsigned int sizeMost = 0x7FFFFFFF;

// How the run-time is asked.
enum class Way { Raw, Zeroed, Resize };

struct Request {
    Way way;
    void* block; // the one to resize
    unsigned int size;

    void* attempt() const {
        if (size > sizeMost)
            return nullptr;
        switch (way) {
        case Way::Raw:
            return std::malloc(size);
        case Way::Zeroed:
            return std::calloc(1, size);
        default:
            return std::realloc(block, size);
        }
    }
};

constinit NX_Mem heap;

template <class T>
T get(T const& field) {
    return std::atomic_ref<T>(const_cast<T&>(field)).load(std::memory_order_relaxed);
}

template <class T>
void set(T& field, T value) {
    std::atomic_ref<T>(field).store(value, std::memory_order_relaxed);
}

// Zeroes bytes [from, to), which may lie past what was asked for but never past the usable size.
[[gnu::noinline]] void clear(void* p, unsigned int from, unsigned int to) {
    if (from < to)
        std::memset(static_cast<char*>(p) + from, 0, to - from);
}

} // namespace

// The code that works on the heap object's fields. They have no lock; each is read and written whole, and the
// reserve changes hands in one step so that it is never freed twice.
class NXS_MemHeap {
public:
    static void* request(Request const& r) {
        if (get(heap.failCount) != 0)
            set(heap.failCount, 0);
        int const outer = heap.app == nullptr ? -1 : get(heap.depth);
        if (outer == 0 && get(heap.reserve) == nullptr)
            return recover(r, outer, false);
        if (void* const p = r.attempt()) [[likely]]
            return p;
        return recover(r, outer, true);
    }

    static void free(void** p) {
        if (*p == nullptr)
            return;
        std::free(*p);
        *p = nullptr;
        std::int32_t const count = get(heap.freeCount) + 1;
        set(heap.freeCount, count > 1000 ? 0 : count);
    }

    static void init(NX_App* app) {
        heap.app = app;
        nxMemAppSet(app, &heap);
    }

    static void uninit() {
        reserveFree();
        heap.app = nullptr;
    }

    [[noreturn]] static void fatal(Way way) {
        if (way != Way::Resize)
            nxMemAppFatalExit(heap.app);
        nxMemErrorAbort();
    }

private:
    static bool reserveMake() {
        void* const block = std::malloc(reserveSize);
        void* none = nullptr;
        if (block != nullptr && !std::atomic_ref<void*>(heap.reserve).compare_exchange_strong(none, block))
            std::free(block); // another thread was first
        return block != nullptr;
    }

    static void reserveFree() { std::free(std::atomic_ref<void*>(heap.reserve).exchange(nullptr)); }

    static int recoveryAnswer(unsigned int size, int failCount) {
        if (heap.app == nullptr)
            return 0;
        return nxMemCacheFlush() != 0 ? 1 : nxMemAppUnavail(heap.app, size, failCount);
    }

    // All ways but the plain one: the reserve is missing, or the first attempt has failed. `outer` is the
    // depth of requests found at the start, -1 without an application.
    [[gnu::noinline]] static void* recover(Request const& r, int outer, bool failed) {
        if (outer >= 0)
            set(heap.depth, outer + 1);
        do {
            if (!failed && (outer != 0 || get(heap.reserve) != nullptr || reserveMake())) {
                if (void* const p = r.attempt()) {
                    if (outer >= 0)
                        set(heap.depth, outer);
                    return p;
                }
            }
            failed = false;
            reserveFree();
            set(heap.failCount, get(heap.failCount) + 1);
        } while (recoveryAnswer(r.size, get(heap.failCount)) != 0);
        fatal(r.way);
    }
};

namespace {

// The heap object itself is never destroyed, because destructors of other modules may still use it.
struct HeapEnd {
    ~HeapEnd() { NXS_MemHeap::uninit(); }
} heapEnd;

} // namespace

NX_Mem* NX_Mem::memP() {
    return &heap;
}

void NxMemHeapAlloc(void** p, unsigned int size) {
    *p = nullptr;
    if (size == 0)
        return;
    *p = NXS_MemHeap::request({Way::Zeroed, nullptr, size});
    clear(*p, size, NxMemStdSize(*p));
}

// All bytes past the size last asked for are zero in every block, so that growing shows zeros however the
// run-time rounds its blocks.
void NxMemHeapRealloc(void** p, unsigned int size) {
    if (size == 0) {
        NxMemHeapFree(p);
    } else if (*p == nullptr) {
        NxMemHeapAlloc(p, size);
    } else {
        unsigned int const old = NxMemStdSize(*p);
        nxMemHeapGrow(p, old < size ? old : size, size);
    }
}

void nxMemHeapGrow(void** p, unsigned int oldSize, unsigned int size) {
    *p = NXS_MemHeap::request({Way::Resize, *p, size});
    clear(*p, oldSize, NxMemStdSize(*p));
}

void NxMemHeapFree(void** p) {
    NXS_MemHeap::free(p);
}

void NxMemHeapAllocDebug(NX_MemCall*, void** p, unsigned int size) {
    NxMemHeapAlloc(p, size);
}

void NxMemHeapReallocDebug(NX_MemCall*, void** p, unsigned int size) {
    NxMemHeapRealloc(p, size);
}

void NxMemHeapFreeDebug(NX_MemCall*, void** p) {
    NxMemHeapFree(p);
}

void* NxMemHeapNewDebug(NX_MemCall*, unsigned int size) {
    void* const p = NXS_MemHeap::request({Way::Raw, nullptr, size});
    clear(p, size, NxMemStdSize(p)); // the bytes asked for stay as they come
    return p;
}

void NxMemHeapDeleteDebug(void* p) {
    NxMemHeapFree(&p);
}

void NxMemHeapContextDebug(NX_MemCall*, void*) {}

std::ostream& NxMemHeapDumpDebug(std::ostream& os, unsigned long) {
    return os;
}

void* NxMemStdAlloc(unsigned int size) {
    void* p = nullptr;
    NxMemHeapAlloc(&p, size);
    return p;
}

void* NxMemStdRealloc(void* p, unsigned int size) {
    NxMemHeapRealloc(&p, size);
    return p;
}

unsigned int NxMemStdSize(void* p) {
    return p == nullptr ? 0 : static_cast<unsigned int>(_msize(p));
}

void NxMemInit(NX_App* app) {
    NXS_MemHeap::init(app);
}

void NxMemUninit() {
    NXS_MemHeap::uninit();
    if (NX_App* const app = nxMemAppCurrent())
        nxMemAppSet(app, nullptr);
}

void nxMemExhausted() {
    NXS_MemHeap::fatal(Way::Raw);
}

NX_MemAuto::NX_MemAuto(int count, int size) : p(nullptr) {
    std::int64_t const bytes = std::int64_t{count} * size;
    if (bytes < 0 || bytes > 0xFFFFFFFF)
        nxMemExhausted();
    NxMemHeapAlloc(&p, static_cast<unsigned int>(bytes));
}

NX_MemAuto& NX_MemAuto::operator=(NX_MemAuto& other) {
    if (this != &other) {
        memFree();
        p = other.p;
        other.p = nullptr;
    }
    return *this;
}

void NX_MemAuto::memFree() {
    NxMemHeapFree(&p);
}

std::ostream& NX_MemCall::dataDump(std::ostream& os) const {
    return os << std::setw(10) << count << ' ' << (file != nullptr ? file : "") << ' ' << line << '\n';
}
