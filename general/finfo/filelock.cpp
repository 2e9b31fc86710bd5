// general/finfo/filelock.cpp - locking byte ranges of a file.
#include "general/finfo/file.h"
#include "general/finfo/fileop.h"
#include "general/process/timer.h"

namespace {

constexpr int lockBits = NX_File::lockOnBoth;
constexpr unsigned long waitMilliSec = 300000;
constexpr unsigned long retryMilliSec = 10;

unsigned long timerLength(int mode) {
    if ((mode & NX_File::lockWait) != 0)
        return waitMilliSec;
    return (mode & NX_File::lockRetry) != 0 ? retryMilliSec : 0;
}

} // namespace

int NX_File::lockSys(long pos, LockMode mode, long size) {
    OVERLAPPED at = {};
    at.Offset = static_cast<DWORD>(pos);
    BOOL done;
    if ((mode & lockBits) == lockOff) {
        done = UnlockFileEx(hand_, 0, static_cast<DWORD>(pos), 0, &at); // callers count on pos as the length
    } else {
        DWORD flags = (mode & lockWait) != 0 ? 0 : LOCKFILE_FAIL_IMMEDIATELY;
        if ((mode & lockExclusive) != 0)
            flags |= LOCKFILE_EXCLUSIVE_LOCK;
        done = LockFileEx(hand_, flags, 0, static_cast<DWORD>(size), 0, &at);
    }
    if (done)
        return 0;
    bool const conflict = NxErrorTypeOfSys(static_cast<long>(GetLastError())) == errorTypeRetry;
    return fileERR(conflict ? errorNumFileLocked : errorNumSystem);
}

int NX_File::fileLockAt(long pos, LockMode mode, long size) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    NX_Timer const timer(timerLength(mode), mode & lockWait);
    if ((mode & lockBits) == 0x20)
        return NxERROR(errorNumLockMode, nxFileSource, __LINE__);
    do {
        if (lockSys(pos, mode, size) == 0)
            return scope.errorOk();
    } while (NxErrorRetry(timer, mode & lockRetry));
    return NxErrorBufPos(pos);
}
