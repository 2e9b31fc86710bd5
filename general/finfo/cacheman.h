// general/finfo/cacheman.h - caches of file data that give memory back when it runs short.
//
// A cache derives from NX_Cache and is registered as long as it lives. The manager keeps the caches in a list
// that runs through the objects themselves, so that neither registering nor flushing allocates. Threads:
// registration and flushing may come from any thread. A flush calls the caches on the calling thread with the
// list locked: a cache must not register or remove another one meanwhile.
#pragma once

#include "general/platform/fwd.h"
#include "general/process/sharedword.h"

class NX_CacheManager;

class NX_EXPORT NX_Cache {
public:
    NX_Cache(); // registers
    NX_Cache(NX_Cache const&) = delete;
    NX_Cache& operator=(NX_Cache const&) = delete;
    virtual ~NX_Cache(); // removes

    // Gives back what can be spared, without allocating. Returns non-zero when something was given back.
    virtual int cacheFlush() = 0;

private:
    friend class NX_CacheManager;
    NX_Cache* next_ = nullptr;
    NX_Cache* prev_ = nullptr;
};

class NX_EXPORT NX_CacheManager {
public:
    static NX_CacheManager* cacheManagerP(); // the one manager of the process; never null

    // Flushes every registered cache. Returns non-zero when one of them gave something back.
    int cacheFlush();

private:
    friend class NX_Cache;
    void cacheAdd(NX_Cache* cache);
    void cacheRemove(NX_Cache* cache);

    NXS_Shared<NX_Cache*> first_{nullptr};
};
