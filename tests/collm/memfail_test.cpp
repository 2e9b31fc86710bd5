// tests/collm/memfail_test.cpp - what happens between a failing request and its answer, with an application
// attached.
#include "general/collm/mem.h"
#include "general/module/app.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <cstdlib>
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

// Works in the room of the reserve when it is asked first, and gives memory back when it is asked again.
class GivesBackApp : public AskedApp {
public:
    void* volatile room = nullptr;

private:
    int answer(int question) override {
        if (question == 1)
            room = std::malloc(100000);
        else
            NxMemHeapFree(&held_);
        return 1;
    }

    void* held_ = NxMemStdAlloc(64 << 20);
};

// Takes all of a limited address space in small pieces. The first failure gives the reserve up to the
// application; the request is not even tried again before there is room for a new one.
int retryForReal(int, char**) {
    GivesBackApp app;
    unsigned long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlim_t const most = pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE)) + (8u << 20);
    rlimit const limit = {most, most};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        return 2;
    while (app.asked == 0)
        if (NxMemStdAlloc(4096) == nullptr)
            return 3;
    NX_Mem const& mem = *NX_Mem::memP();
    return app.room != nullptr && mem.memReserveIsHeld() && mem.memDepth() == 0 ? 0 : 4;
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

TEST(MemFail, TheReserveIsRoomToWorkInAndComesFirstAgain) {
    nxFileMake("asked.txt", "");
    EXPECT_EQ(nxRunSelf("mem-retry"), 0);
    EXPECT_EQ(nxFileContent("asked.txt"), "4096 1 0 1\n4096 2 0 1\n");
}

#endif

} // namespace
