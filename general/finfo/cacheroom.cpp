// general/finfo/cacheroom.cpp - memory for blocks, got without a lock: asking for it may flush caches.
#include "general/finfo/cachestore.h"

#include <memory>
#include <utility>

namespace {

NXS_CacheData* dataMake() {
    void* memory = nullptr;
    std::size_t room = sizeof(NXS_CacheData) + alignof(NXS_CacheData);
    NxMemHeapAlloc(&memory, static_cast<unsigned int>(room));
    void* at = memory;
    auto* const data =
        static_cast<NXS_CacheData*>(std::align(alignof(NXS_CacheData), sizeof(NXS_CacheData), at, room));
    data->memory = memory;
    return data;
}

} // namespace

NXS_CacheRoom::~NXS_CacheRoom() {
    if (qty_ != 0 || staging_ != nullptr) {
        NXS_CacheStore::Guard const guard(store_.lock);
        while (qty_ != 0)
            store_.dataFree(take());
        if (store_.staging_ == nullptr)
            store_.staging_ = std::exchange(staging_, nullptr);
    }
    NxMemHeapFree(&staging_);
    void* memory = page;
    NxMemHeapFree(&memory);
}

void NXS_CacheRoom::make(unsigned int want, bool wantPage, bool force) {
    unsigned int fresh = 0;
    {
        NXS_CacheStore::Guard const guard(store_.lock);
        store_.trim();
        while (qty_ + fresh < want) {
            if (store_.blocks_ < store_.budgetBlocks()) {
                ++fresh;
                ++store_.blocks_;
            } else if (NXS_CacheData* const data = store_.evict()) {
                data_[qty_++] = data;
            } else {
                break;
            }
        }
        if (force && qty_ + fresh == 0) {
            fresh = 1;
            ++store_.blocks_;
        }
        if (want > 1 && staging_ == nullptr)
            staging_ = std::exchange(store_.staging_, nullptr);
    }
    for (; fresh != 0; --fresh) {
        if (!nxCacheBudgetTake(force && qty_ == 0)) {
            NXS_CacheStore::Guard const guard(store_.lock);
            store_.blocks_ -= fresh;
            break;
        }
        data_[qty_++] = dataMake();
    }
    if (want > 1 && staging_ == nullptr)
        NxMemHeapAlloc(&staging_, most * nxCacheBlockSize);
    if (wantPage && page == nullptr) {
        void* memory = nullptr;
        NxMemHeapAlloc(&memory, sizeof(NXS_CachePage));
        page = static_cast<NXS_CachePage*>(memory);
    }
}
