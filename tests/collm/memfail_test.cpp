// tests/collm/memfail_test.cpp - what happens between a failing request and its answer, with an application
// attached.
#include "general/collm/mem.h"
#include "general/module/app.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <fstream>

namespace {

char programName[] = "memfail";
char* programArgs[] = {programName, nullptr};

// Notes every question as "size failCount reserve depth" and gives up at the third.
class GivesUpApp : public NX_AppNull {
public:
    GivesUpApp() : NX_AppNull({nullptr, 1, programArgs, nullptr, nullptr}) {}

    int appMemUnavail(unsigned int size, int failCount) override {
        NX_Mem const& mem = *NX_Mem::memP();
        std::ofstream("asked.txt", std::ios::app | std::ios::binary)
            << size << ' ' << failCount << ' ' << mem.memReserveIsHeld() << ' ' << mem.memDepth() << '\n';
        if (++asked_ == 2) { // a request from within counts its own failures
            void* p = NxMemStdAlloc(100);
            NxMemHeapFree(&p);
        }
        return asked_ < 3;
    }

private:
    int asked_ = 0;
};

void askInVain() {
    GivesUpApp app;
    void* p = NxMemStdAlloc(10);
    NxMemHeapRealloc(&p, 0xC0000000u);
}

TEST(MemFailDeath, TheApplicationIsAskedUntilItGivesUp) {
    nxFileMake("asked.txt", "");
    EXPECT_ERROR_ABORT(askInVain(), 16884);
    EXPECT_EQ(nxFileContent("asked.txt"), "3221225472 1 0 1\n3221225472 2 0 1\n3221225472 1 0 1\n");
}

#if __has_include(<sys/resource.h>)

// Takes all memory there is in pieces of one size, without an application to ask.
void takeAll(unsigned int size) {
    nxMemoryLimit(256u << 20);
    while (NxMemStdAlloc(size) != nullptr) {
    }
}

TEST(MemFailDeath, TheLastWordsNeedNoMemory) {
    if (!nxMemoryEnds)
        GTEST_SKIP() << "memory has no end here";
    for (unsigned int size : {16u, 1000u, 1000000u})
        EXPECT_ERROR_ABORT(takeAll(size), 16884);
}

#endif

} // namespace
