#include "general/module/reslib.h"

#include "general/error/errorman.h"
#include "general/module/reslibrep.h"
#include "general/platform/platform.h"
#include "general/process/sem.h"

#include <vector>

namespace {

char const sourceFile[] = "general/module/reslib";

// Counted under the process-wide lock, as holders may live on any thread.
constexpr unsigned long refMultiThread = 0x02;

// Guards the list of open representations and every change of a count, so that a module which is being opened
// cannot be unloaded by its last holder at the same moment.
NX_SemThreadOfProcess& registryLock() {
    static NX_SemThreadOfProcess& lock = *new NX_SemThreadOfProcess;
    return lock;
}

NX_ResLibRep* registryFirst = nullptr;

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
    NxERROR(number, sourceFile, line);
    return NxErrorBufFileName(name);
}

NX_StringA joined(NX_StringA const& name, NX_StringA const& directory) {
    if (directory.itemQty() == 0)
        return name;
    NX_StringA path(directory);
    path.nameDirSep();
    path += name;
    return path;
}

} // namespace

NX_ResLibRep::NX_ResLibRep(NX_StringA const& givenName, NX_ResLibType givenType, HINSTANCE givenModule,
                           int isOwner)
    : NX_RefCountRep(refMultiThread), name(givenName), type(givenType), module(givenModule),
      isOwner_(isOwner) {
    if (module != nullptr) {
        next_ = registryFirst;
        registryFirst = this;
    }
}

NX_ResLibRep::~NX_ResLibRep() {
    for (NX_ResLibRep** link = &registryFirst; *link != nullptr; link = &(*link)->next_) {
        if (*link == this) {
            *link = next_;
            break;
        }
    }
    if (module != nullptr && isOwner_ != 0)
        FreeLibrary(module);
}

NX_ResLibRep* NX_ResLibRep::find(HINSTANCE module) {
    NX_ResLibRep* rep = registryFirst;
    while (rep != nullptr && rep->module != module)
        rep = rep->next_;
    return rep;
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
    NX_SyncThreadOfProcess guard(&registryLock(), 1);
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
    NX_SyncThreadOfProcess guard(&registryLock(), 1);
    if (resLibIsOpen() != 0 && rep()->name.strCompare(path, NX_CompareExact) == 0)
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
        shared = new NX_ResLibRep(path, type, module, 1);
    else
        FreeLibrary(module); // the representation holds the module loaded already
    adopt(shared);
    return 1;
}

int NX_ResLib::resLibOpen() {
    return rep() == nullptr ? 0 : resLibOpen(rep()->name, rep()->type);
}

int NX_ResLib::resLibAppInit() {
    NX_SyncThreadOfProcess guard(&registryLock(), 1);
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
    return rep() != nullptr && rep()->module != nullptr ? 1 : 0;
}

HINSTANCE NX_ResLib::resLibHand() const {
    return rep() != nullptr ? rep()->module : nullptr;
}

NX_StringA NX_ResLib::resLibName() const {
    return rep() != nullptr ? rep()->name : NX_StringA();
}

NX_StringA NX_ResLib::resLibNameSys(HINSTANCE module) {
    std::vector<char> buffer(1024);
    DWORD const length = GetModuleFileNameA(module, buffer.data(), static_cast<DWORD>(buffer.size()));
    return length < buffer.size() ? NX_StringA(buffer.data(), length) : NX_StringA();
}

int NX_ResLib::resTextLoad(char* buffer, int size, int id) const {
    if (resLibIsOpen() == 0 || size < 2)
        return 0;
    int const length = LoadStringA(rep()->module, static_cast<UINT>(id), buffer, size);
    return length > 0 ? length : 0;
}
