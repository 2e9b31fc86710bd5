// general/finfo/cache.cpp - the public side of a cache.
#include "general/finfo/cache.h"

#include "general/finfo/cachestore.h"

NX_Cache::NX_Cache(unsigned int budget) : store_(new NXS_CacheStore(budget)) {
    store_->refInc();
}

NX_Cache::~NX_Cache() {
    store_->refDec();
}

unsigned int NX_Cache::cacheBudget() const {
    NXS_CacheStore::Guard const guard(store_->lock);
    return store_->budget();
}

void NX_Cache::cacheBudget(unsigned int bytes) {
    NXS_CacheStore::Guard const guard(store_->lock);
    store_->budget(bytes);
    store_->trim();
}

unsigned int NX_Cache::cacheSize() const {
    NXS_CacheStore::Guard const guard(store_->lock);
    return store_->bytes();
}

int NX_Cache::cacheWrite() {
    return store_->write();
}

int NX_Cache::cacheFlush() {
    return store_->flush(false) || store_->flush(true);
}
