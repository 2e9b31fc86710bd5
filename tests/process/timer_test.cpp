// Timers, sleeping and the lock's guard.
#include <thread>

#include "general/process/sem.h"
#include "general/process/timer.h"
#include "tests/support/support.h"

namespace {

TEST(Timer, DisabledZeroAndRunning) {
    NX_Timer const off(60000, 0);
    EXPECT_TRUE(off.timeIsExpired() == 1 && off.timeMilliSecRemaining() == 0);
    EXPECT_EQ(NX_Timer(0, 1).timeIsExpired(), 1);
    NX_Timer timer(60000, 1);
    EXPECT_EQ(timer.timeIsExpired(), 0);
    EXPECT_GT(timer.timeMilliSecRemaining(), 50000u);
    NX_TimerSleep const sleep(60, 1);
    EXPECT_GE(timer.timeMilliSecElapsed(), 40u); // the counter may step by 16 ms
    timer.timeReset(10, 1);
    NX_TimerSleep const longer(40, 1);
    EXPECT_EQ(timer.timeIsExpired(), 1);
    NX_TimerSleep const none(60000, 0);
    EXPECT_LT(timer.timeMilliSecElapsed(), 50000u);
}

// The counter has 32 bits: an end beyond it wraps below the start and counts as reached.
TEST(Timer, AnEndPastTheCounterIsExpired) {
    auto const toWrap = 0xFFFFFFFFul - NxInfoBootMs();
    NX_Timer const timer(toWrap + 1000, 1);
    EXPECT_TRUE(timer.timeIsExpired() == 1 && timer.timeMilliSecRemaining() == 0);
    EXPECT_LT(timer.timeMilliSecElapsed(), 60000u);
}

TEST(Sem, GuardsCountAndExclude) {
    NX_SemThreadOfProcess lock;
    {
        NX_SyncThreadOfProcess const off(&lock, 0);
        EXPECT_EQ(lock.semIsHeldBySomeone(), 0);
    }
    int total = 0;
    auto const work = [&lock, &total] {
        for (int i = 0; i < 5000; ++i) {
            NX_SyncThreadOfProcess const outer(&lock, 1);
            NX_SyncThreadOfProcess const inner(&lock, 1); // recursive
            total = total + 1;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_TRUE(total == 10000 && lock.semIsHeldBySomeone() == 0);
    NX_SyncThreadOfProcess const held(&lock, 1);
    EXPECT_EQ(lock.semIsHeldBySomeone(), 1);
}

} // namespace
