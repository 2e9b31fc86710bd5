// general/finfo/file.cpp - opening, closing and the state of a file.
#include "general/finfo/file.h"

#include "general/finfo/fileop.h"

int nxFileErrorNum(DWORD sysCode) {
    switch (NxErrorTypeOfSys(static_cast<long>(sysCode))) {
    case errorTypeExists:
        return errorNumFileExists;
    case errorTypeRetry:
        return errorNumFileShared;
    case errorTypeAccess:
        return errorNumFileAccess;
    case errorTypeNotFound:
        return errorNumFileNotFound;
    default:
        return errorNumSystem;
    }
}

NX_File::NX_File(NX_StringA const& name, OpenMode mode)
    : error_(0), hand_(INVALID_HANDLE_VALUE), name_(name), mode_(mode) {
    fileOpen();
}

NX_File::NX_File(NX_StringA const& searchList, int searchFlag, NX_StringA const& name, OpenMode mode)
    : error_(0), hand_(INVALID_HANDLE_VALUE), name_(name), mode_(mode) {
    name_.nameFind(searchList, searchFlag);
    fileOpen();
}

NX_File::~NX_File() {
    fileClose();
}

int NX_File::fileIsOpen() const {
    return hand_ != INVALID_HANDLE_VALUE;
}

int NX_File::fileIsOpenRead() const {
    return fileIsOpen() && (mode_ & 3) != modeWrite;
}

int NX_File::fileIsOpenWrite() const {
    return fileIsOpen() && ((mode_ & 3) == modeWrite || (mode_ & 3) == modeReadWrite);
}

int NX_File::fileIsOpenTrunc() const {
    return fileIsOpen() && (mode_ & modeTrunc) != 0;
}

NX_StringA const& NX_File::fileName() {
    fileNameP();
    return name_;
}

char const* NX_File::fileNameP() {
    return name_.dataPConst(); // terminates
}

int NX_File::openSys() {
    static constexpr struct {
        DWORD access;
        DWORD share;
    } fields[4] = {{GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE},
                   {GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE},
                   {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE},
                   {GENERIC_READ, FILE_SHARE_READ}};
    DWORD const share = (mode_ & modeExclusive) != 0 ? 0 : fields[mode_ & 3].share;
    DWORD creation = OPEN_EXISTING;
    if ((mode_ & modeCreate) != 0)
        creation = (mode_ & modeTrunc) != 0 ? CREATE_ALWAYS : OPEN_ALWAYS;
    else if ((mode_ & modeTrunc) != 0)
        creation = TRUNCATE_EXISTING;
    hand_ = CreateFileA(fileNameP(), fields[mode_ & 3].access, share, nullptr, creation,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hand_ == INVALID_HANDLE_VALUE)
        return fileERR(nxFileErrorNum(GetLastError()));
    return 0;
}

int NX_File::fileOpen() {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    while (openSys() != 0)
        if (!NxErrorRetry(mode_ & modeRetry))
            return -1;
    if ((mode_ & modeAppend) != 0 && fileSeek(0, NX_FileSeekEnd) == -1) {
        fileClose();
        return -1;
    }
    error_.errorOk();
    return scope.errorOk();
}

int NX_File::closeSys() {
    if (CloseHandle(hand_))
        return 0;
    NxErrorTypeOfSys(static_cast<long>(GetLastError()));
    return NxERROR(errorNumSystem, nxFileSource, __LINE__);
}

int NX_File::fileClose() {
    if (!fileIsOpen())
        return 0;
    int const result = nxFileRetry([this] { return closeSys(); });
    hand_ = INVALID_HANDLE_VALUE;
    return result;
}

int NX_File::fileERR(int errorNum) {
    error_.errorNum(errorNum);
    NxErrorBufErrorNum(errorNum);
    return NxErrorBufFileName(name_);
}

int NX_File::fileERR(int errorNum, char const* file, unsigned int line) {
    fileERR(errorNum);
    return NxErrorBufC(file, line);
}

int NX_File::sysERR() {
    NxErrorTypeOfSys(static_cast<long>(GetLastError()));
    return fileERR(errorNumSystem);
}
