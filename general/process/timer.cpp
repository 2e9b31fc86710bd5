// general/process/timer.cpp - deadlines on the 32-bit tick counter. Comparisons with the end are plain on
// purpose.
#include "general/process/timer.h"

#include "general/platform/platform.h"

unsigned long NxInfoBootMs() {
    return GetTickCount();
}

void NX_Timer::timeReset(unsigned long milliSec, int enabled) {
    isEnabled = enabled;
    start = GetTickCount();
    end = start + static_cast<std::uint32_t>(milliSec);
}

int NX_Timer::timeIsExpired() const {
    return isEnabled == 0 || GetTickCount() >= end;
}

unsigned long NX_Timer::timeMilliSecElapsed() const {
    return static_cast<std::uint32_t>(GetTickCount() - start);
}

unsigned long NX_Timer::timeMilliSecRemaining() const {
    if (isEnabled == 0)
        return 0;
    std::uint32_t const now = GetTickCount();
    return now < end ? end - now : 0;
}

NX_TimerSleep::NX_TimerSleep(unsigned long milliSec, int enabled) {
    if (enabled != 0)
        Sleep(static_cast<DWORD>(milliSec));
}
