// Private header. general/finfo/cachelock.h - the lock inside a cache: held for moments, and cheap to take.
//
// It is not recursive. The word holds the owner's thread identifier, so that giving it up is one plain store:
// waiting threads look again, at first at once and then after short sleeps.
#pragma once

#include <atomic>
#include <cstdint>

#include "general/platform/platform.h"

class NXS_CacheLock {
public:
    void lock() {
        std::uint32_t nobody = 0;
        std::uint32_t const self = GetCurrentThreadId();
        if (!owner_.compare_exchange_strong(nobody, self, std::memory_order_acquire,
                                            std::memory_order_relaxed))
            wait(self);
    }
    void unlock() { owner_.store(0, std::memory_order_release); }
    // For a few steps that wait for nothing and cannot ask isMine: false when somebody has it.
    bool tryBriefly() {
        std::uint32_t nobody = 0;
        return owner_.compare_exchange_strong(nobody, somebody, std::memory_order_acquire,
                                              std::memory_order_relaxed);
    }
    bool isMine() const { return owner_.load(std::memory_order_relaxed) == GetCurrentThreadId(); }

private:
    static constexpr std::uint32_t somebody = 0xFFFFFFFF; // no thread's identifier

    [[gnu::noinline]] void wait(std::uint32_t self) {
        for (unsigned int looks = 0;; ++looks) {
            std::uint32_t nobody = 0;
            if (owner_.load(std::memory_order_relaxed) == 0 &&
                owner_.compare_exchange_weak(nobody, self, std::memory_order_acquire))
                return;
            if (looks >= 64)
                Sleep(looks < 256 ? 0 : 1);
        }
    }

    std::atomic<std::uint32_t> owner_{0};
};
