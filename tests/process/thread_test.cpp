// Threads from start to end, and the registry.
#include <atomic>
#include <memory>

#include "general/error/errorman.h"
#include "general/process/thread.h"
#include "general/process/timer.h"
#include "tests/support/support.h"

namespace {

// Runs `body` on its own thread.
class Worker : public NX_Thread {
public:
    explicit Worker(void (*toDo)(Worker&)) : body(toDo) {}
    ~Worker() override { threadCondemn(1); } // threadRun uses members of this class

    int start() { return threadCreateAndRun(64 * 1024); }

    void runToEnd() {
        EXPECT_EQ(start(), 0);
        threadCondemn(1);
    }

    std::atomic<unsigned int> id{0};
    bool nested = false;
    std::string text;

protected:
    void threadRun() override {
        id = threadId();
        body(*this);
    }

private:
    void (*body)(Worker&);
};

void untilCondemned(Worker& self) {
    while (self.threadIsCondemned() == 0)
        NX_TimerSleep(1, 1);
}

TEST(Thread, RunsRegisteredAndEndsWhenAsked) {
    Worker worker(untilCondemned);
    ASSERT_EQ(worker.start(), 0);
    while (worker.id == 0u)
        NX_TimerSleep(1, 1);
    unsigned int const id = worker.threadId();
    EXPECT_TRUE(id != 0u && id == worker.id && worker.threadIsAlive() == 1);
    EXPECT_TRUE(NxThreadP(id) == &worker && worker.threadP() == &worker);
    EXPECT_TRUE(worker.threadIsCurrent() == 0 && worker.threadIsPrimary() == 0);
    worker.threadCondemn(0);
    worker.threadCondemn(1);
    EXPECT_TRUE(worker.threadIsAlive() == 0 && worker.threadId() == 0u && worker.threadHand() == 0);
    EXPECT_EQ(NxThreadP(id), &worker); // the entry stays until the identifier is used again
    EXPECT_TRUE(NxThreadPDelete(id) == 1 && NxThreadP(id) == nullptr);
}

TEST(Thread, CanBeWaitedForBeforeItHasRun) {
    static std::atomic<int> runs{0};
    for (int i = 0; i < 200; ++i) {
        Worker worker([](Worker&) { ++runs; });
        ASSERT_EQ(worker.start(), 0);
    }
    EXPECT_EQ(runs, 200);
}

TEST(Thread, QuitsFromWithin) {
    static std::atomic<int> after{0};
    struct Quitter { // no exception and no unwinding could leave a destructor
        Worker& worker;
        ~Quitter() { worker.threadQuit(3); }
    };
    Worker worker([](Worker& self) {
        { Quitter const quitter{self}; }
        after = 1;
    });
    worker.runToEnd();
    EXPECT_TRUE(after == 0 && worker.threadIsAlive() == 0);
}

TEST(Thread, MustOverrideRun) {
    class Bare : public NX_Thread {
    public:
        int start() { return threadCreateAndRun(0); }
    };
    Bare bare;
    EXPECT_ASSERTION((bare.start(), bare.threadCondemn(1)), "0", "general/process/thread 274");
}

TEST(Thread, ErrorsAreTheThreadsOwn) {
    NxErrorOk();
    Worker worker([](Worker& self) {
        NX_ErrorMan* const ofProcess = NxErrorManP();
        {
            NX_ErrorMan outer;
            {
                NX_ErrorMan inner;
                self.nested = NxErrorManP() == &inner && inner.errorParentP() == &outer;
                NxERROR(errorNumFileNotFound);
                NxErrorBufFileName("f");
            }
            self.nested = self.nested && NxErrorManP() == &outer && NxErrorNum() == 14547;
            self.text = outer.errorBuf(1000).dataPConst();
            outer.errorOk();
        }
        self.nested = self.nested && NxErrorManP() == ofProcess;
    });
    worker.runToEnd();
    EXPECT_TRUE(worker.nested);
    std::string const writer = "(<" + std::to_string(worker.id) + ">) ";
    EXPECT_EQ(worker.text, writer + writer + "E=211 F=f"); // the merged block is noted like any word
    EXPECT_EQ(NxErrorNum(), 0);
}

TEST(Thread, WritersAreNotedWhenTheyChange) {
    Worker worker([](Worker&) {
        NxErrorBufText("a");
        NxErrorBufText("b");
        NxErrorBufText(nullptr);
    });
    NxErrorBufText("before");
    worker.runToEnd();
    NxErrorBufText(nullptr); // notes nothing
    NxErrorBufText("");      // notes the writer
    NxErrorBufText("c");
    std::string const text = NxErrorManP()->errorBuf(1000).dataPConst(), id = std::to_string(worker.id);
    std::size_t const at = text.find("T=before (<" + id + ">) T=a T=b (<");
    ASSERT_NE(at, std::string::npos) << text;
    EXPECT_TRUE(text.ends_with(">) T=c") && text.find("(<" + id, at + 12) == std::string::npos) << text;
}

// Errors must not reach an object that is gone, whatever the registry still says.
TEST(Thread, ErrorsWorkWhereTheRegisteredObjectIsGone) {
    unsigned int id = 0;
    {
        Worker worker([](Worker&) {});
        worker.runToEnd();
        id = NX_ThreadCurrent().threadId();
        NxThreadPInsert(id, &worker); // as if this thread had got the identifier of the ended one
        EXPECT_EQ(NxThreadP(), &worker);
        NxERROR(8402);
        EXPECT_EQ(worker.threadErrorNumP()->errorNum(), 8402);
    }
    NxERROR(12489);
    EXPECT_EQ(NxErrorNum(), 12489);
    EXPECT_EQ(NxThreadPDelete(id), 1);
    NxErrorOk();
}

TEST(ThreadRegistry, IsSortedAndReplaces) {
    Worker one(untilCondemned), two(untilCondemned);
    unsigned int const high = 0xFFFFFFF0u; // identifiers are compared without sign
    for (unsigned int const id : {high + 3, high + 1, high + 2})
        EXPECT_EQ(NxThreadPInsert(id, &one), 1);
    EXPECT_EQ(NxThreadPInsert(high + 2, &two), 0);
    EXPECT_TRUE(NxThreadP(high) == nullptr && NxThreadPDelete(high) == 0);
    for (unsigned int i = 1; i <= 3; ++i)
        EXPECT_TRUE(NxThreadP(high + i) == (i == 2 ? &two : &one) && NxThreadPDelete(high + i) == 1);
    EXPECT_EQ(NxThreadP(high + 2), nullptr);
}

TEST(ThreadRegistry, ServesManyThreadsAtOnce) {
    static std::atomic<int> wrong{0};
    auto const look = [](Worker& self) {
        for (int i = 0; i < 200; ++i) {
            if (NxThreadP() != &self || NxThreadP(self.threadId()) != &self)
                ++wrong;
            NxERROR(14547, "f.cpp", 1); // into the process-wide manager
            NxErrorBuf();
            NxThreadPInsert(self.threadId() ^ 0x80000000u, &self);
            NxThreadPDelete(self.threadId() ^ 0x80000000u);
        }
    };
    {
        std::unique_ptr<Worker> workers[6];
        for (auto& worker : workers) {
            worker = std::make_unique<Worker>(look);
            ASSERT_EQ(worker->start(), 0);
        }
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
