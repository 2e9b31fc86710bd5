// general/finfo/cachelock.cpp - the lock inside a cache, once more than one thread comes.
#include "general/finfo/cachelock.h"

namespace {

template <class Question>
void waitUntil(Question question) {
    for (unsigned int looks = 0; !question(); ++looks)
        if (looks >= 64)
            Sleep(looks < 256 ? 0 : 1);
}

} // namespace

void NXS_CacheLock::lockSlow(std::uint32_t self) {
    waitUntil([&] {
        std::uint32_t nobody = 0;
        return owner_.load(std::memory_order_relaxed) == 0 &&
               owner_.compare_exchange_strong(nobody, self, std::memory_order_acquire);
    });
    if (!withdrawn_.load(std::memory_order_relaxed)) {
        std::uint32_t const favoured = favoured_.load(std::memory_order_relaxed);
        if (favoured == 0) {
            favoured_.store(self, std::memory_order_relaxed);
        } else if (favoured != self) {
            withdrawn_.store(true, std::memory_order_relaxed);
            // From here on the favoured thread either sees that, or is seen to be inside.
            FlushProcessWriteBuffers();
            waitUntil([&] { return !inside_.load(std::memory_order_acquire); });
        }
    }
    byFavour_ = false;
}
