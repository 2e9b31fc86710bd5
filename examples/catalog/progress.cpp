#include "examples/catalog/progress.h"

#include "general/platform/platform.h"

#include <cstdio>

namespace {

NX_StringA formatLoad() {
    NX_StringA format;
    format.strLoad(120);
    return format;
}

} // namespace

Progress::Progress() : format_(formatLoad()), before_(NxFileInfoFound()), timer_(0, 1) {
    if (_isatty(2) != 0)
        threadCreateAndRun(0);
}

Progress::~Progress() {
    if (threadIsAlive() != 0) {
        threadCondemn(1);
        std::fputs("\r\033[K", stderr);
    }
}

void Progress::threadRun() {
    NX_StringA line;
    while (threadIsCondemned() == 0) {
        line.strPrintF(format_.dataPConst(), NxFileInfoFound() - before_,
                       timer_.timeMilliSecElapsed() / 1000);
        std::fprintf(stderr, "\r%s", line.dataPConst());
        NX_TimerSleep(100, 1);
    }
}
