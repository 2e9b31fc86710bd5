// What the heap layer asks of the application and the cache when memory runs out.
#include "general/collm/memup.h"

#include "general/error/errorman.h"
#include "general/finfo/cacheman.h"
#include "general/module/app.h"
#include "general/platform/platform.h"

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
    NxERROR(errorNumMemFull);
    NxErrorAbort(nullptr);
    for (;;) {
    }
}
