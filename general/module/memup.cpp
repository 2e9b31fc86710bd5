// What the heap layer asks of the application and the cache when memory runs out.
#include "general/collm/memup.h"

#include "general/error/errorman.h"
#include "general/error/log.h"
#include "general/finfo/cacheman.h"
#include "general/module/app.h"
#include "general/platform/platform.h"

#include <atomic>
#include <cstdlib>

namespace {

// Recording and logging the end for lack of memory must not fail for lack of memory: what they need is made
// when the library is loaded, and some room is held back for their texts.
class LastWords {
public:
    LastWords() : room_(std::malloc(roomSize)) { NxErrorManP(); }
    ~LastWords() { give(); }
    LastWords(LastWords const&) = delete;
    LastWords& operator=(LastWords const&) = delete;

    void give() {
        std::free(room_);
        room_ = nullptr;
    }

private:
    static constexpr std::size_t roomSize = 16384;
    void* room_;
} lastWords;

} // namespace

void nxMemAppSet(NX_App* app, NX_Mem* mem) {
    app->appMemP(mem);
}

NX_App* nxMemAppCurrent() {
    return NxAppPDll();
}

int nxMemCacheFlush() {
    return NX_CacheManager::cacheManagerP()->cacheFlush();
}

int nxMemAppUnavail(NX_App* app, unsigned int size, int failCount) {
    return app->appMemUnavail(size, failCount);
}

void nxMemAppFatalExit(NX_App* app) {
    if (app == nullptr)
        return;
    NX_StringA const text = app->appErrorString(errorNumMemFull);
    FatalAppExitA(0, text.dataPConst());
}

void nxMemErrorAbort() {
    static std::atomic_flag entered;
    if (entered.test_and_set()) {
        // The last words themselves found no memory.
        NxLogPrint("Error: No more memory: try exiting other tasks\n  Buf: E=500");
        std::abort();
    }
    lastWords.give();
    NxERROR(errorNumMemFull);
    NxErrorAbort(nullptr);
}
