// general/error/log.cpp - the log file and the end by a failed assertion.

// Run-times that offer the reentrant localtime_r only on request look at this.
#if !defined(_POSIX_THREAD_SAFE_FUNCTIONS)
#define _POSIX_THREAD_SAFE_FUNCTIONS 200809L
#endif

#include "general/error/log.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>

#include "general/error/appup.h"
#include "general/platform/platform.h"
#include "general/process/sem.h"

namespace {

// Takes no memory: what is to be logged may be that none is left.
NX_SemThreadOfProcess* logLock() {
    alignas(NX_SemThreadOfProcess) static unsigned char room[sizeof(NX_SemThreadOfProcess)];
    static NX_SemThreadOfProcess& lock = *new (room) NX_SemThreadOfProcess;
    return &lock;
}

// The local time in 24 characters and a line feed: "Thu Nov  5 09:07:03 1998\n".
void timeText(char (&text)[64]) {
    std::time_t const now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    static char const days[] = "SunMonTueWedThuFriSat";
    static char const months[] = "JanFebMarAprMayJunJulAugSepOctNovDec";
    std::snprintf(text, sizeof text, "%.3s %.3s%3d %.2d:%.2d:%.2d %d\n", days + 3 * local.tm_wday,
                  months + 3 * local.tm_mon, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                  1900 + local.tm_year);
}

} // namespace

void NxLogPrint(char const* text) {
    NX_SyncThreadOfProcess const sync(logLock(), 1);
    std::FILE* const file = std::fopen("quorix.log", "a");
    if (file == nullptr)
        return;
    char room[4096]; // one write for all entries of usual length
    std::setvbuf(file, room, _IOFBF, sizeof room);
    char time[64];
    timeText(time);
    char const* const name = nxAppNameFullP();
    std::fputc('\n', file);
    std::fputs(name != nullptr ? name : "?", file);
    std::fputc(' ', file);
    std::fputs(time, file);
    std::fputs(text != nullptr ? text : "", file);
    std::fputc('\n', file);
    std::fclose(file);
}

void NxLogPrintF(char const* format, ...) {
    char text[1028];
    std::va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    NxLogPrint(text);
}

void NxAssertFail(char const* file, unsigned int line, char const* expression) {
    char text[512];
    std::snprintf(text, sizeof text, "Assert fail: %s %u : %s", file, line, expression);
    NxLogPrint(text);
    MessageBoxA(GetDesktopWindow(), text, nullptr, 0x1010); // hand icon, system-modal
    std::abort();
}
