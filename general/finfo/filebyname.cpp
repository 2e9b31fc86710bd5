// general/finfo/filebyname.cpp - copying, moving, erasing and comparing files by name.
#include <cstring>

#include "general/finfo/file.h"
#include "general/finfo/fileop.h"

namespace {

int copySys(NX_StringA const& from, NX_StringA const& to) {
    if (CopyFileA(from.dataPConst(), to.dataPConst(), FALSE))
        return 0;
    return NxERROR(nxFileErrorNum(GetLastError()), nxFileSource, __LINE__);
}

int moveSys(NX_StringA const& from, NX_StringA const& to) {
    if (MoveFileA(from.dataPConst(), to.dataPConst()))
        return 0;
    return NxERROR(nxFileErrorNum(GetLastError()), nxFileSource, __LINE__);
}

int eraseSys(NX_StringA const& name) {
    if (DeleteFileA(name.dataPConst()))
        return 0;
    int const num = nxFileErrorNum(GetLastError());
    return NxERROR(num == errorNumFileExists ? errorNumSystem : num, nxFileSource, __LINE__);
}

} // namespace

int NX_File::fileCopy(NX_StringA const& from, NX_StringA const& to) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    if (nxFileRetry([&] { return copySys(from, to); }) == 0)
        return 0;
    return NxErrorBufFileName(to);
}

int NX_File::fileMove(NX_StringA const& from, NX_StringA const& to) {
    return nxFileRetry([&] { return moveSys(from, to); });
}

int NX_File::fileErase(NX_StringA const& name) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    if (nxFileRetry([&] { return eraseSys(name); }) == 0)
        return 0;
    return NxErrorBufFileName(name);
}

int NX_File::fileCompare(NX_StringA const& a, NX_StringA const& b) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    NX_File fileA(a, modeRead);
    NX_File fileB(b, modeRead);
    if (fileA.errorNum() != 0 || fileB.errorNum() != 0)
        return -1;
    char bufA[4096];
    char bufB[sizeof bufA];
    for (;;) {
        int const countA = fileA.dataReadEOF(bufA, sizeof bufA);
        if (countA <= 0)
            return countA;
        int const countB = fileB.dataReadEOF(bufB, sizeof bufB);
        if (countB == 0)
            return 0; // the first file may well go on: kept so
        if (countA != countB || std::memcmp(bufA, bufB, static_cast<unsigned int>(countA)) != 0)
            return 1;
    }
}
