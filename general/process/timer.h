// general/process/timer.h - deadlines and sleeping, in milliseconds of the system's tick counter.
//
// The counter has 32 bits and wraps after 49.7 days. Only elapsed times stay right across the wrap: a timer
// whose end lies beyond it is expired at once, and one that runs when the counter wraps may expire early.
// Values may be copied freely; one timer may be read by several threads. Nothing here fails.
#pragma once

#include <cstdint>

#include "general/platform/fwd.h"

// Milliseconds since the system started.
NX_EXPORT unsigned long NxInfoBootMs();

class NX_EXPORT NX_Timer {
public:
    NX_Timer() { timeReset(0, 0); } // disabled
    // Runs for `milliSec` from now. With `enabled` 0 there is no deadline to wait for: the timer counts as
    // expired.
    NX_Timer(unsigned long milliSec, int enabled) { timeReset(milliSec, enabled); }

    // Starts anew from now.
    void timeReset(unsigned long milliSec, int enabled);

    int timeIsEnabled() const { return isEnabled; }
    unsigned long timeMilliSecOn() const { return start; } // the tick of the last start
    int timeIsExpired() const;                             // 1 when disabled or when now >= end, else 0
    unsigned long timeMilliSecElapsed() const;             // since the last start
    unsigned long timeMilliSecRemaining() const;           // 0 when disabled or expired

private:
    int isEnabled;
    std::uint32_t start;
    std::uint32_t end;
};

// Sleeps `milliSec` while it is constructed, unless `enabled` is 0.
class NX_EXPORT NX_TimerSleep {
public:
    NX_TimerSleep(unsigned long milliSec, int enabled);
};
