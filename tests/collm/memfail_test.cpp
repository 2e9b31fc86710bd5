// tests/collm/memfail_test.cpp - what happens between a failing request and its answer, with an application
// attached.
#include "general/collm/mem.h"
#include "general/module/app.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <fstream>

#if __has_include(<sys/resource.h>) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define LIMITED_MEMORY
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

char programName[] = "memfail";
char* programArgs[] = {programName, nullptr};

// Notes every question as "size failCount reserve depth" and goes on as the derived class says.
class AskedApp : public NX_AppNull {
public:
    AskedApp() : NX_AppNull({nullptr, 1, programArgs, nullptr, nullptr}) {}

    int appMemUnavail(unsigned int size, int failCount) override {
        NX_Mem const& mem = *NX_Mem::memP();
        std::ofstream("asked.txt", std::ios::app | std::ios::binary)
            << size << ' ' << failCount << ' ' << mem.memReserveIsHeld() << ' ' << mem.memDepth() << '\n';
        return answer(++asked);
    }

    int asked = 0;

protected:
    virtual int answer(int question) = 0;
};

class GivesUpApp : public AskedApp {
    int answer(int question) override {
        if (question == 2) { // a request from within counts its own failures
            void* p = NxMemStdAlloc(100);
            NxMemHeapFree(&p);
        }
        return question < 3;
    }
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

#if defined(LIMITED_MEMORY)

class GivesBackApp : public AskedApp {
public:
    void* held = NxMemStdAlloc(64 << 20);

private:
    int answer(int) override {
        NxMemHeapFree(&held);
        return 1;
    }
};

// The address space ends 32 MiB above what is in use; 48 MiB fit once the application has given 64 back.
int retryForReal(int, char**) {
    GivesBackApp app;
    unsigned long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlim_t const most = pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE)) + (32u << 20);
    rlimit const limit = {most, most};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        return 2;
    void* p = NxMemStdAlloc(48 << 20);
    NX_Mem const& mem = *NX_Mem::memP();
    bool const right = p != nullptr && app.asked == 1 && mem.memReserveIsHeld() && mem.memDepth() == 0;
    NxMemHeapFree(&p);
    return right ? 0 : 3;
}

NXS_ChildEntry const entry("mem-retry", retryForReal);

// Takes all memory there is in pieces of one size, without an application to ask.
void takeAll(unsigned int size) {
    rlimit const limit = {256u << 20, 256u << 20};
    setrlimit(RLIMIT_AS, &limit);
    while (NxMemStdAlloc(size) != nullptr) {
    }
}

TEST(MemFailDeath, TheLastWordsNeedNoMemory) {
    for (unsigned int size : {16u, 1000u, 1000000u})
        EXPECT_ERROR_ABORT(takeAll(size), 16884);
}

TEST(MemFail, ARequestIsMetAfterMemoryHasBeenGivenBack) {
    nxFileMake("asked.txt", "");
    EXPECT_EQ(nxRunSelf("mem-retry"), 0);
    EXPECT_EQ(nxFileContent("asked.txt"), "50331648 1 0 1\n");
}

#endif

} // namespace
