#include "general/module/reslib.h"

#include "general/error/errorman.h"
#include "general/module/reslibrep.h"
#include "general/platform/platform.h"
#include "general/process/sem.h"

#include <vector>

namespace {

char const sourceFile[] = "general/module/reslib";

// A missing or damaged module is this library's business to report, not the system's in a box of its own.
class QuietErrors {
public:
    QuietErrors() : previous_(SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) {}
    ~QuietErrors() { SetErrorMode(previous_); }
    QuietErrors(QuietErrors const&) = delete;
    QuietErrors& operator=(QuietErrors const&) = delete;

private:
    UINT previous_;
};

int openFailed(NX_StringA const& name, unsigned long code, unsigned int line) {
    int number = errorNumSystem;
    switch (NxErrorTypeOfSys(static_cast<long>(code))) {
    case errorTypeRetry:
        number = errorNumFileShared;
        break;
    case errorTypeAccess:
        number = errorNumFileAccess;
        break;
    case errorTypeNotFound:
        number = errorNumResLibNotFound;
        break;
    case errorTypeData:
        number = errorNumImage;
        break;
    default:
        break;
    }
    return nxResLibERR(number, name, sourceFile, line);
}

bool isData(NX_ResLibType type) {
    return type != resLibTypeDll;
}

bool isKind(NX_ResLibType kind, NX_ResLibType wanted) {
    return wanted == resLibTypeFile || wanted == kind;
}

// A full name still means the file when the current directory has changed.
void fileNameFull(NX_StringA& name) {
    NX_ErrorMan scope;
    name.nameFull();
    scope.errorOk();
}

NX_StringA joined(NX_StringA const& name, NX_StringA const& directory) {
    return {directory, name.dataPConst(), name.strLen(), NX_FileTypeFile};
}

} // namespace

int nxResLibERR(int number, NX_StringA const& name, char const* file, unsigned int line) {
    NxERROR(number, file, line);
    return NxErrorBufFileName(name);
}

int nxResLibERR(int number, unsigned long sys, NX_StringA const& name, char const* file, unsigned int line) {
    if (number == errorNumSystem)
        NxErrorTypeOfSys(static_cast<long>(sys)); // the generic error records the last code as S
    return nxResLibERR(number, name, file, line);
}

NX_ResLib::NX_ResLib(NX_ResLibRep* rep) {
    adopt(rep);
}

NX_ResLib::NX_ResLib(NX_StringA const& name, NX_ResLibType type) : NX_ResLib(name, NX_StringA(), type) {}

NX_ResLib::NX_ResLib(NX_StringA const& name, NX_StringA const& directory, NX_ResLibType type) {
    adopt(new NX_ResLibRep(joined(name, directory), type, nullptr, 0));
}

NX_ResLib::NX_ResLib(NX_ResLib const& other) : NX_RefCountPtr() {
    adopt(other.rep());
}

NX_ResLib& NX_ResLib::operator=(NX_ResLib const& other) {
    adopt(other.rep());
    return *this;
}

NX_ResLib::~NX_ResLib() {
    adopt(nullptr);
}

NX_ResLibRep* NX_ResLib::rep() const {
    return static_cast<NX_ResLibRep*>(repP());
}

void NX_ResLib::adopt(NX_ResLibRep* newRep) {
    if (newRep == rep())
        return;
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    struct Holder : NX_RefCountPtr {
        explicit Holder(NX_ResLibRep* held) : NX_RefCountPtr(held) {}
        ~Holder() = default;
    } const holder(newRep);
    NX_RefCountPtr::operator=(holder);
}

int NX_ResLib::resLibOpen(NX_StringA const& name, NX_ResLibType type) {
    return resLibOpen(name, NX_StringA(), type);
}

int NX_ResLib::resLibOpen(NX_StringA const& name, NX_StringA const& directory, NX_ResLibType type) {
    if (name.itemQty() == 0)
        return 0;
    NX_StringA const path = joined(name, directory);
    return isData(type) ? openData(path, directory.itemQty() != 0 ? 1 : 0, type) : openModule(path);
}

int NX_ResLib::openModule(NX_StringA const& path) {
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    if (resLibHand() != nullptr && rep()->name.strCompare(path, NX_CompareExact) == 0)
        return 1;
    HINSTANCE module = nullptr;
    unsigned long code = 0;
    {
        QuietErrors const quiet;
        module = LoadLibraryA(path.dataPConst());
        code = module == nullptr ? GetLastError() : 0;
    }
    if (module == nullptr)
        return openFailed(path, code, __LINE__);
    NX_ResLibRep* shared = NX_ResLibRep::find(module);
    if (shared == nullptr)
        shared = new NX_ResLibRep(path, resLibTypeDll, module, 1);
    else
        FreeLibrary(module); // the representation holds the module loaded already
    adopt(shared);
    return 1;
}

// The file is read without the lock: two threads may read it at once, and the first one's bytes are taken.
int NX_ResLib::openData(NX_StringA const& path, int here, NX_ResLibType type) {
    if (rep() != nullptr && rep()->isData() && isKind(rep()->type, type) &&
        rep()->name.strCompare(path, NX_CompareExact) == 0)
        return 1;
    NX_StringA fileName = nxResFileFind(path, here, type);
    NXS_ResFile file(fileName);
    if (file.errorNum() != 0)
        return nxResLibERR(file.errorNum(), path, sourceFile, __LINE__);
    if (adoptData(file.key(), type) != 0)
        return 1;
    NXS_ResImage* const image = new NXS_ResImage;
    if (file.imageRead(*image, type, 0) != 0) {
        delete image;
        return nxResLibERR(file.errorNum(), path, sourceFile, __LINE__);
    }
    fileNameFull(fileName);
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    if (adoptData(file.key(), type) != 0)
        delete image;
    else
        adopt(new NX_ResLibRep(path, fileName, file.key(), image));
    return 1;
}

// Shares the open library of a file, if there is one of this type.
int NX_ResLib::adoptData(NXS_ResFileKey const& key, NX_ResLibType type) {
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    NX_ResLibRep* const shared = NX_ResLibRep::find(key);
    if (shared == nullptr || !isKind(shared->type, type))
        return 0;
    adopt(shared);
    return 1;
}

int NX_ResLib::resLibOpen() {
    return rep() == nullptr ? 0 : resLibOpen(resLibName(), rep()->type);
}

int NX_ResLib::resLibAppInit() {
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    HINSTANCE const module = GetModuleHandleA(nullptr);
    NX_ResLibRep* shared = NX_ResLibRep::find(module);
    if (shared == nullptr)
        shared = new NX_ResLibRep(resLibNameSys(nullptr), resLibTypeDll, module, 0);
    adopt(shared);
    return 0;
}

int NX_ResLib::resLibClose() {
    adopt(nullptr);
    return 0;
}

int NX_ResLib::resLibIsOpen() const {
    return rep() != nullptr && rep()->isOpen() ? 1 : 0;
}

HINSTANCE NX_ResLib::resLibHand() const {
    return rep() != nullptr ? rep()->module : nullptr;
}

HINSTANCE NX_ResLib::resLibHandSys() const {
    if (resLibHand() != nullptr)
        return resLibHand();
    if (resLibType() != resLibTypeModule) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    NX_SyncThreadOfProcess guard(&NX_ResLibRep::registryLock(), 1);
    if (rep()->handSys == nullptr) {
        // The system goes by the name: it must still stand for the file that was read, which stays open until
        // the system has it, so that it cannot be replaced before.
        NXS_ResFile const now(rep()->fileName);
        if (now.errorNum() != 0 || now.key() != rep()->key) {
            SetLastError(ERROR_FILE_NOT_FOUND);
            return nullptr;
        }
        QuietErrors const quiet;
        rep()->handSys = LoadLibraryExA(rep()->fileName.dataPConst(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    }
    return rep()->handSys;
}

NX_ResLibType NX_ResLib::resLibType() const {
    return resLibIsOpen() != 0 ? rep()->type : resLibTypeNone;
}

NX_StringA NX_ResLib::resLibName() const {
    return rep() != nullptr ? nxResLibOwn(rep()->name) : NX_StringA();
}

NX_StringA NX_ResLib::resLibNameSys(HINSTANCE module) {
    std::vector<char> buffer(1024);
    DWORD const length = GetModuleFileNameA(module, buffer.data(), static_cast<DWORD>(buffer.size()));
    return length < buffer.size() ? NX_StringA(buffer.data(), length) : NX_StringA();
}
