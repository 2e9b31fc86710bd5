// general/finfo/cacheman.cpp - the list of registered caches.
#include "general/finfo/cacheman.h"

#include "general/process/sem.h"

namespace {

NX_SemThreadOfProcess* cacheLock() {
    static NX_SemThreadOfProcess& lock = *new NX_SemThreadOfProcess;
    return &lock;
}

} // namespace

NX_Cache::NX_Cache() {
    NX_CacheManager::cacheManagerP()->cacheAdd(this);
}

NX_Cache::~NX_Cache() {
    NX_CacheManager::cacheManagerP()->cacheRemove(this);
}

NX_CacheManager* NX_CacheManager::cacheManagerP() {
    static NX_CacheManager manager;
    return &manager;
}

int NX_CacheManager::cacheFlush() {
    if (first_ == nullptr)
        return 0; // without a lock that would have to be made: the heap asks when it has nothing left
    NX_SyncThreadOfProcess const sync(cacheLock(), 1);
    int given = 0;
    for (NX_Cache* cache = first_; cache != nullptr; cache = cache->next_)
        given |= cache->cacheFlush() != 0;
    return given;
}

void NX_CacheManager::cacheAdd(NX_Cache* cache) {
    NX_SyncThreadOfProcess const sync(cacheLock(), 1);
    cache->next_ = first_;
    if (cache->next_ != nullptr)
        cache->next_->prev_ = cache;
    first_ = cache;
}

void NX_CacheManager::cacheRemove(NX_Cache* cache) {
    NX_SyncThreadOfProcess const sync(cacheLock(), 1);
    if (cache->next_ != nullptr)
        cache->next_->prev_ = cache->prev_;
    if (cache->prev_ != nullptr)
        cache->prev_->next_ = cache->next_;
    else
        first_ = cache->next_;
}
