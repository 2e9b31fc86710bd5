// The child processes that show boxes. Each leaves what it learned in notes.txt.
#include "general/collm/mem.h"
#include "general/error/errorman.h"
#include "general/error/log.h"
#include "general/error/msgbox.h"
#include "general/finfo/cacheman.h"
#include "general/module/app.h"
#include "general/platform/strings.h"
#include "tests/box/user.h"
#include "tests/support/child.h"

#include <cstdlib>
#include <cstring>
#include <fstream>

NX_STRINGS_BEGIN
#include "tests/box/box.str"
NX_STRINGS_END

namespace {

char programName[] = "payroll";
char* programArgs[] = {programName, nullptr};
NX_MainInfo const info = {nullptr, 1, programArgs, nullptr, nullptr};

std::ofstream notes() {
    return std::ofstream("notes.txt", std::ios::app | std::ios::binary);
}

// Arguments: the style of each box.
int show(int argc, char** argv) {
    NX_AppNull app(info);
    app.appTitle("Payroll");
    for (int n = 0; n < argc; ++n) {
        NX_WinMessageBox const box("First line.\nSecond: line.", NX_WinMessageBoxTitle(42),
                                   std::atoi(argv[n]));
        std::ofstream out = notes();
        out << (box.replyIsAbort() ? "abort " : "") << (box.replyIsCancel() ? "cancel " : "")
            << (box.replyIsIgnore() ? "ignore " : "") << (box.replyIsNo() ? "no " : "")
            << (box.replyIsRetry() ? "retry " : "") << (box.replyIsYes() ? "yes " : "") << "/ ";
    }
    return 10;
}

int showError(int, char**) {
    NX_AppNull app(info);
    app.appTitle("Payroll");
    NxERROR(errorNumFileNotFound);
    NxErrorBufFileName("pay.dat");
    NX_WinMessageBoxError const box(NxErrorManP());
    notes() << box.replyIsCancel() << box.replyIsRetry();
    return 10;
}

int assertion(int, char**) {
    NxAssertFail("general/some/file", 12, "a < b");
}

int mismatch(int, char**) {
    NX_BaseVersion version = NX_BASE_VERSION;
    version.minor++;
    return NxBaseDllValidate(&version, &info);
}

// Notes every question as "size failCount reserve depth flushed", asks the user as every program does, and
// gives its memory back at one of the questions.
class ShortApp : public NX_App {
public:
    explicit ShortApp(int giveBack) : NX_App(info), giveBack_(giveBack) { appInit(); }

    int appMemUnavail(unsigned int size, int failCount) override {
        NX_Mem const& mem = *NX_Mem::memP();
        int const flushed = NX_CacheManager::cacheManagerP()->cacheFlush(); // they have given all before
        notes() << size << ' ' << failCount << ' ' << mem.memReserveIsHeld() << ' ' << mem.memDepth() << ' '
                << flushed << '\n';
        int const again = NX_App::appMemUnavail(size, failCount);
        if (failCount == giveBack_)
            NxMemHeapFree(&held_);
        return again;
    }

private:
    int const giveBack_;
    void* held_ = NxMemStdAlloc(64 << 20);
};

// Arguments: "alloc" or "resize"; the question at which memory is given back, 0 for never.
int shortage(int, char** argv) {
    ShortApp const app(std::atoi(argv[1]));
    bool const resize = std::strcmp(argv[0], "resize") == 0;
    void* p = resize ? NxMemStdAlloc(10) : nullptr;
    if (!nxMemoryLimit(256u << 20))
        return 2;
    // What is left is less than a piece, so that the request finds no room and a box still does.
    void* volatile piece = nullptr;
    do {
        piece = std::malloc(32 << 20);
    } while (piece != nullptr);
    NxMemHeapRealloc(&p, 48 << 20);
    NX_Mem const& mem = *NX_Mem::memP();
    notes() << "met " << mem.memReserveIsHeld() << ' ' << mem.memDepth() << '\n';
    return NxMemStdSize(p) >= 48u << 20 ? 10 : 3;
}

NXS_ChildEntry const entries[] = {{"show", show},
                                  {"error", showError},
                                  {"assertion", assertion},
                                  {"mismatch", mismatch},
                                  {"shortage", shortage}};

} // namespace
