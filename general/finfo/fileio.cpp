// general/finfo/fileio.cpp - reading, writing and positions of a file.
#include "general/finfo/file.h"

#include <algorithm>
#include <cstdint>

#include "general/finfo/fileop.h"

namespace {

constexpr unsigned int pieceSize = 1024; // of copies and zeros inside a file

// Positions are 32 bits wide and wrap.
long posAdvanced(long pos, unsigned int by) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(pos) + by);
}

// Repeats `transfer`, which tells how many bytes it has done, as nxFileRetry does. Fewer than `size` are
// error `shortNum`, at once.
template <class Transfer>
int transferAll(NX_File& file, unsigned int size, int shortNum, Transfer transfer) {
    unsigned int done = 0;
    NX_ErrorMan scope(NX_ErrorManSysReset);
    do {
        if (transfer(&done) == 0)
            return done < size ? file.fileERR(shortNum) : scope.errorOk();
    } while (NxErrorRetry(1));
    return -1;
}

} // namespace

int NX_File::readSys(void* buf, unsigned int size, unsigned int* done) {
    DWORD count = 0;
    if (!ReadFile(hand_, buf, size, &count, nullptr))
        return sysERR();
    *done = count;
    return 0;
}

int NX_File::writeSys(void const* buf, unsigned int size, unsigned int* done) {
    DWORD count = 0;
    if (!WriteFile(hand_, buf, size, &count, nullptr))
        return sysERR();
    *done = count;
    return 0;
}

int NX_File::seekSys(long offset, NX_FileSeekMode how, long* pos) {
    DWORD method = FILE_BEGIN;
    if (how == NX_FileSeekCurrent)
        method = FILE_CURRENT;
    else if (how == NX_FileSeekEnd)
        method = FILE_END;
    LONG const distance = static_cast<LONG>(offset);
    DWORD result = INVALID_SET_FILE_POINTER;
    if (distance == offset)
        result = SetFilePointer(hand_, distance, nullptr, method);
    else
        SetLastError(ERROR_NEGATIVE_SEEK); // as the distance reads in 32 bits
    if (result == INVALID_SET_FILE_POINTER)
        return sysERR();
    *pos = static_cast<std::int32_t>(result);
    return 0;
}

int NX_File::flushSys() {
    if (FlushFileBuffers(hand_))
        return 0;
    NxErrorTypeOfSys(static_cast<long>(GetLastError()));
    return NxERROR(errorNumSystem, nxFileSource, __LINE__);
}

int NX_File::dataRead(void* buf, unsigned int size) {
    return transferAll(*this, size, errorNumFileShort,
                       [&](unsigned int* done) { return readSys(buf, size, done); });
}

int NX_File::dataReadEOF(void* buf, unsigned int size) {
    if (size == 0)
        return 0;
    unsigned int done = 0;
    unsigned int const most = std::min(size, 0x7FFFFFFFu); // the count is returned as an int
    if (nxFileRetry([&] { return readSys(buf, most, &done); }) != 0)
        return -1;
    return static_cast<int>(done);
}

int NX_File::dataReadAt(long pos, void* buf, unsigned int size) {
    return transferAll(*this, size, errorNumFileShort, [&](unsigned int* done) {
        long at;
        int const result = seekSys(pos, NX_FileSeekStart, &at);
        return result != 0 || size == 0 ? result : readSys(buf, size, done);
    });
}

int NX_File::dataWrite(void const* buf, unsigned int size) {
    if (size == 0)
        return 0;
    return transferAll(*this, size, errorNumDiskFull,
                       [&](unsigned int* done) { return writeSys(buf, size, done); });
}

int NX_File::dataWriteAt(long pos, void const* buf, unsigned int size) {
    return transferAll(*this, size, errorNumDiskFull, [&](unsigned int* done) {
        long at;
        int const result = seekSys(pos, NX_FileSeekStart, &at);
        return result != 0 || size == 0 ? result : writeSys(buf, size, done);
    });
}

unsigned long NX_File::dataCopyAt(long to, long from, unsigned long size) {
    char piece[pieceSize];
    NX_ErrorMan scope(NX_ErrorManSysReset);
    for (auto left = static_cast<std::uint32_t>(size); left != 0;) {
        unsigned int const n = std::min(left, pieceSize);
        if (dataReadAt(from, piece, n) != 0 || dataWriteAt(to, piece, n) != 0)
            return NX_NO_INDEX;
        from = posAdvanced(from, n);
        to = posAdvanced(to, n);
        left -= n;
    }
    return size;
}

unsigned long NX_File::dataZeroAt(long pos, unsigned long size) {
    static constexpr char zeros[pieceSize] = {};
    NX_ErrorMan scope(NX_ErrorManSysReset);
    auto left = static_cast<std::uint32_t>(size);
    do { // a size of 0 seeks
        unsigned int const n = std::min(left, pieceSize);
        if (dataWriteAt(pos, zeros, n) != 0)
            return NX_NO_INDEX;
        pos = posAdvanced(pos, n);
        left -= n;
    } while (left != 0);
    return size;
}

long NX_File::fileSeek(long offset, NX_FileSeekMode how) {
    long pos = -1;
    return nxFileRetry([&] { return seekSys(offset, how, &pos); }) == 0 ? pos : -1;
}

long NX_File::fileTell() {
    return fileSeek(0, NX_FileSeekCurrent);
}

unsigned long NX_File::fileSize() {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    long const pos = fileTell();
    long const end = fileSeek(0, NX_FileSeekEnd);
    if (fileSeek(pos, NX_FileSeekStart) == -1)
        return NX_NO_INDEX;
    scope.errorOk();
    return static_cast<std::uint32_t>(end);
}

int NX_File::fileFlush() {
    return nxFileRetry([this] { return flushSys(); });
}
