// Private header. general/finfo/cachelock.h - the lock inside a cache: held for moments, and cheap to take.
//
// The first thread that comes is favoured: it enters and leaves by plain stores, which cost nothing, as long
// as no other thread comes. The first other one withdraws the favour, once and for all, and waits until the
// favoured thread is outside. From then on everybody takes the word that holds the owner's identifier, by one
// exchange, and gives it up by a plain store; waiting threads look again, at first at once and then after
// short sleeps. The lock is not recursive. It allocates nothing.
#pragma once

#include <atomic>
#include <cstdint>

#include "general/platform/platform.h"

class NXS_CacheLock {
public:
    constexpr explicit NXS_CacheLock(bool favours) : withdrawn_(!favours) {}

    void lock() {
        std::uint32_t const self = GetCurrentThreadId();
        if (favoured_.load(std::memory_order_relaxed) == self) {
            inside_.store(true, std::memory_order_relaxed);
            // The withdrawing thread makes the processor keep this order; the compiler must.
            std::atomic_signal_fence(std::memory_order_seq_cst);
            if (!withdrawn_.load(std::memory_order_relaxed)) [[likely]] {
                byFavour_ = true;
                return;
            }
            inside_.store(false, std::memory_order_release);
        }
        lockSlow(self);
    }
    void unlock() {
        if (byFavour_)
            inside_.store(false, std::memory_order_release);
        else
            owner_.store(0, std::memory_order_release);
    }
    bool isMine() const {
        std::uint32_t const self = GetCurrentThreadId();
        return owner_.load(std::memory_order_relaxed) == self ||
               (favoured_.load(std::memory_order_relaxed) == self && inside_.load(std::memory_order_relaxed));
    }

private:
    void lockSlow(std::uint32_t self);

    std::atomic<std::uint32_t> owner_{0};
    std::atomic<std::uint32_t> favoured_{0}; // never changed once it is set
    std::atomic<bool> withdrawn_;
    std::atomic<bool> inside_{false}; // the favoured thread is, or is trying to be
    bool byFavour_ = false;           // how the thread that is inside came in
};
