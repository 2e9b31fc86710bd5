// general/process/sharedword.h - one word that several threads read and write without a lock.
//
// A read sees a whole value, never half of one, and everything its writer did before storing it. It is no
// lock: reading, changing and writing back is two steps. Copying copies the value.
#pragma once

#include <atomic>

template <class T>
class NXS_Shared {
public:
    constexpr NXS_Shared(T value) : value_(value) {}
    NXS_Shared(NXS_Shared const& other) : value_(T(other)) {}
    NXS_Shared& operator=(NXS_Shared const& other) { return *this = T(other); }
    NXS_Shared& operator=(T value) {
        value_.store(value, std::memory_order_release);
        return *this;
    }
    operator T() const { return value_.load(std::memory_order_acquire); }

private:
    std::atomic<T> value_;
};
