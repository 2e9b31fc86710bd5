// general/finfo/cacheman.cpp - the list of caches, and the budget of the process.
#include "general/finfo/cacheman.h"

#include "general/finfo/cachefile.h"

namespace {

using Guard = std::lock_guard<NXS_CacheLock>;

// Ready before any constructor runs and after every destructor.
struct Caches {
    NXS_CacheLock lock; // of the list
    std::atomic<NXS_CacheStore*> first{nullptr};
    std::atomic<std::uint32_t> budget{NX_CacheManager::budgetDefault};
    std::atomic<std::uint32_t> used{0}; // blocks
};
constinit Caches caches;
constinit NX_CacheManager manager;

// The least recently used cache after `last`, by recency numbers; null when there is none.
NXS_CacheStore* storeAfter(std::uint64_t& last) {
    NXS_CacheStore* found = nullptr;
    std::uint64_t number = 0;
    for (NXS_CacheStore* store = caches.first; store != nullptr; store = store->next) {
        if (store->lock.isMine())
            continue;
        Guard const guard(store->lock);
        std::uint64_t const own = store->cachePriority() + std::uint64_t{1};
        if (own > last && (found == nullptr || own < number)) {
            found = store;
            number = own;
        }
    }
    last = number;
    return found;
}

// Frees the least recently used block of all caches. False: none can go.
bool oldestFree() {
    if (caches.lock.isMine())
        return false;
    Guard const list(caches.lock);
    for (;;) {
        NXS_CacheStore* oldest = nullptr;
        std::uint64_t stamp = 0;
        for (NXS_CacheStore* store = caches.first; store != nullptr; store = store->next) {
            Guard const guard(store->lock);
            NXS_CacheStore::Victim victim;
            if (store->victimNext(victim) && (oldest == nullptr || victim.stamp < stamp)) {
                oldest = store;
                stamp = victim.stamp;
            }
        }
        if (oldest == nullptr)
            return false;
        Guard const guard(oldest->lock);
        if (NXS_CacheData* const data = oldest->evict()) {
            oldest->dataFree(data);
            return true;
        } // else writing it has failed: the others are asked
    }
}

// Calls visit(store) for each cache until it returns true.
template <class Visit>
void eachUntil(Visit visit) {
    Guard const list(caches.lock);
    NXS_CacheStore* store = caches.first;
    while (store != nullptr && !visit(*store))
        store = store->next;
}

} // namespace

void nxCacheAdd(NXS_CacheStore* store) {
    Guard const list(caches.lock);
    store->next = caches.first;
    if (store->next != nullptr)
        store->next->prev = store;
    caches.first = store;
}

void nxCacheRemove(NXS_CacheStore* store) {
    Guard const list(caches.lock);
    if (store->next != nullptr)
        store->next->prev = store->prev;
    if (store->prev != nullptr)
        store->prev->next = store->next;
    else
        caches.first = store->next;
}

bool nxCacheBudgetTake(bool force) {
    for (;;) {
        if (caches.used.fetch_add(1) < caches.budget >> nxCacheBlockShift)
            return true;
        if (force && !oldestFree())
            return true;
        nxCacheBudgetGive();
        if (!force && !oldestFree())
            return false;
    }
}

void nxCacheBudgetGive() {
    caches.used.fetch_sub(1);
}

NX_CacheManager* NX_CacheManager::cacheManagerP() {
    return &manager;
}

NX_Cache* NX_CacheManager::cacheDefaultP() {
    static NX_Cache& cache = *new NX_Cache;
    return &cache;
}

int NX_CacheManager::cacheFlush() {
    if (caches.first == nullptr || caches.lock.isMine())
        return 0;
    Guard const list(caches.lock);
    for (bool const write : {false, true}) {
        std::uint64_t last = 0;
        // One visit for each cache, although those in use get new numbers meanwhile.
        for (NXS_CacheStore* visit = caches.first; visit != nullptr; visit = visit->next) {
            NXS_CacheStore* const store = storeAfter(last);
            if (store == nullptr)
                break;
            if (store->flush(write))
                return 1;
        }
    }
    return 0;
}

int NX_CacheManager::cacheWrite() {
    eachUntil([](NXS_CacheStore& store) {
        store.writeMark();
        return false;
    });
    int result = 0;
    for (;;) {
        NXS_CacheFile* file = nullptr;
        NXS_CacheEnd end;
        eachUntil([&](NXS_CacheStore& store) { return (file = store.writeDue(end)) != nullptr; });
        if (file == nullptr)
            break;
        result = file->writeERR(end); // the file keeps its cache alive
        file->unuse();
    }
    for (;;) {
        NXS_CacheFile* file = nullptr;
        NXS_CacheSource* gone = nullptr;
        eachUntil([&](NXS_CacheStore& store) { return (file = store.keptTake(gone)) != nullptr; });
        if (file == nullptr)
            return result;
        delete gone;
        file->unuse();
    }
}

unsigned int NX_CacheManager::cacheBudget() const {
    return caches.budget;
}

void NX_CacheManager::cacheBudget(unsigned int bytes) {
    caches.budget = bytes;
    while (caches.used > bytes >> nxCacheBlockShift && oldestFree()) {
    }
}

unsigned int NX_CacheManager::cacheSize() const {
    return nxCacheBytes(caches.used);
}
