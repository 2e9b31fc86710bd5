// tests/collm/refcount_test.cpp - reference-counted objects, their pointers and recency numbers.
#include "general/collm/refcount.h"
#include "tests/support/support.h"

#include <atomic>
#include <thread>

namespace {

struct Rep : NX_RefCountCacheRep {
    explicit Rep(unsigned long info) : NX_RefCountCacheRep(info) {}
    ~Rep() override { ++deletions; }
    static inline std::atomic<int> deletions;
};

struct Ptr : NX_RefCountPtr {
    explicit Ptr(NX_RefCountRep* rep) : NX_RefCountPtr(rep) {}
    Ptr(Ptr const&) = default;
    Ptr& operator=(Ptr const&) = default;
    using NX_RefCountPtr::repP;
};

TEST(RefCount, TheLastPointerDeletes) {
    Rep::deletions = 0;
    Rep* const rep = new Rep(0);
    {
        Ptr a(rep), b(a);
        b = a;
        EXPECT_EQ(rep->refInfo(), 0x200u);
        b = Ptr(new Rep(0));
        EXPECT_TRUE(rep->refIsSole());
        b = Ptr(nullptr);
        EXPECT_EQ(Rep::deletions, 1);
    }
    EXPECT_EQ(Rep::deletions, 2);
}

TEST(RefCount, ThreadsCountUnderTheLock) {
    Rep::deletions = 0;
    {
        Ptr const shared(new Rep(2));
        std::vector<std::thread> threads;
        std::atomic<unsigned long> seen{0};
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&] {
                for (int n = 0; n < 2000 || !seen; ++n) {
                    Ptr const mine(shared);
                    mine.repP()->refIsModified(n & 1);
                }
            });
        }
        seen = shared.repP()->refInfo(); // comes back when another thread has counted
        EXPECT_EQ(seen & 0x0E, 2u);
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(Rep::deletions, 0);
    }
    EXPECT_EQ(Rep::deletions, 1);
}

__attribute__((no_sanitize("undefined"))) void throughNull(NX_RefCountCacheRep* none, Rep const& some) {
    EXPECT_EQ(none->cachePriority(), 0u);
    none->cachePriorityTop();
    EXPECT_EQ(none->cachePriorityCompare(&some), -1);
}

TEST(RefCount, RecencyNumbers) {
    Rep first(0), second(0);
    EXPECT_EQ(first.cachePriorityCompare(&second), -1);
    first.cachePriorityTop();
    EXPECT_EQ(first.cachePriorityCompare(&second), 1);
    unsigned long const top = first.cachePriority();
    first.cachePriorityTop();
    EXPECT_EQ(first.cachePriority(), top);
    Rep assigned(0x501);
    assigned = Rep(0x30D);
    EXPECT_EQ(assigned.refInfo(), 0x0Cu); // the modes alone
    EXPECT_EQ(assigned.cachePriority(), top + 3);
    EXPECT_EQ(first.cachePriorityCompare(nullptr), 1);
    NX_RefCountCacheRep* volatile none = nullptr;
    throughNull(none, first);
}

} // namespace
