// general/finfo/cacheman.h - the caches of the process: one budget, and memory given back when it runs short.
//
// The heap layer calls cacheFlush when a request fails, before it asks the application. The caches stand in a
// list that runs through the objects themselves: neither registering nor flushing allocates. A flush waits
// for threads that are inside a cache; they hold its lock only for copying bytes and calling the system,
// never for allocating. On a thread that is inside a cache or a flush itself it returns 0 at once. Threads:
// all operations may come from any thread.
#pragma once

#include "general/finfo/cache.h"

class NX_EXPORT NX_CacheManager {
public:
    static constexpr unsigned int budgetDefault = 64u << 20;

    static NX_CacheManager* cacheManagerP(); // the one manager of the process; never null
    static NX_Cache* cacheDefaultP();        // the cache of files that name none; never null, never destroyed

    // Asks the caches in turn, the least recently used one first, until one gives something back: clean
    // blocks from any of them before changed ones from the first. Returns non-zero when one did.
    int cacheFlush();

    int cacheWrite(); // NX_Cache::cacheWrite of every cache; -1 when one of them failed

    // For all caches together. A block that would exceed it takes the place of the least recently used one,
    // in whichever cache that is.
    unsigned int cacheBudget() const;
    void cacheBudget(unsigned int bytes);
    unsigned int cacheSize() const; // bytes of the blocks in memory, in all caches
};
