#include "general/module/app.h"

#include "general/collm/assert.h"
#include "general/collm/mem.h"
#include "general/error/errorman.h"
#include "general/error/errortemplate.h"
#include "general/error/msgbox.h"
#include "general/finfo/env.h"
#include "general/module/resstring.h"
#include "general/platform/platform.h"
#include "general/process/thread.h"

#include <atomic>

namespace {

char const sourceFile[] = "general/module/app";

std::atomic<NX_App*> registered = nullptr;

// The message range of string resources: a missing one is answered by a built-in text and is not an error.
constexpr int errorTextFirst = 25000;
constexpr int errorTextEnd = 30000;
constexpr int errorTypeTextFirst = 29500;

constexpr int textSize = 257;

// The memory-shortage box, made before memory runs out. Text 25500 is also the resource text of error 16884,
// whose built-in text serves when the program brings none.
struct MemBox {
    NX_ResString text{errorTextFirst + (errorNumMemFull & 0x7FF)};
    NX_WinMessageBoxTitle title{errorTextFirst + (errorNumMemFull & 0x7FF)};

    MemBox() {
        if (text.itemQty() == 0)
            static_cast<NX_StringA&>(text) = nxErrorTemplateBuiltIn(errorNumMemFull);
    }
};

MemBox const& memBox() {
    static MemBox const& box = *new MemBox;
    return box;
}

} // namespace

NX_App* NxAppPDll() {
    return registered.load(std::memory_order_acquire);
}

void NxAppPInitDll(NX_App* app) {
    registered.store(app, std::memory_order_release);
}

void NxAppPUninitDll() {
    registered.store(nullptr, std::memory_order_release);
}

NX_App::NX_App(NX_MainInfo const& info)
    : argC_(info.argC), argV_(info.argV), env_(info.env), anchor_(info.anchor) {
    dirInitial_ = NX_DirCurrent();
    NxAppPInitDll(this);
    if (info.app != nullptr)
        *info.app = this;
    NxMemInit(this);
    NxErrorManInit(this);
    if (argC_ > 0 && argV_ != nullptr && argV_[0] != nullptr)
        nameFull_ = argV_[0];
    name_ = NX_StringA(nameFull_.nameBody());
    thread_ = new NX_Thread(anchor_);
    resName_ = name_ + "R";
    resLib_.resLibAppInit();
}

NX_App::~NX_App() {
    // A version check may have unregistered the application: the primary thread is known through it.
    NxAppPInitDll(this);
    // The primary thread's object leaves the registry before it is freed, while the application is still
    // known, so that an error recorded from here on finds the process-wide defaults.
    if (thread_ != nullptr) {
        NxThreadPDelete(thread_->threadId());
        delete thread_;
        thread_ = nullptr;
    }
    NxErrorManUninit();
    NxMemUninit();
    NxAppPUninitDll();
}

int NX_App::appBegin() {
    int result = appInit();
    if (result != -1)
        result = appMain();
    appUninit();
    return result;
}

int NX_App::appInit() {
    if (res_.dllOpen(resName_) == -1)
        NxErrorOk();
    int const result = lang_.dllOpen(langName_);
    memBox();
    return result;
}

int NX_App::appMain() {
    NxAssertFail(sourceFile, 210, "0");
}

int NX_App::appRun() {
    NxAssertFail(sourceFile, 218, "0");
}

void NX_App::appUninit() {
    if (thread_ != nullptr)
        NxThreadPDelete(thread_->threadId());
}

NX_StringA NX_App::appErrorString(int num) {
    char text[textSize];
    int const ids[] = {(num & 0x7FF) + errorTextFirst, ((num & 0xF800) >> 11) + errorTypeTextFirst};
    for (int const id : ids) {
        int const length = resTextLoad(text, textSize, id);
        if (length > 0)
            return NX_StringA(text, static_cast<unsigned int>(length));
    }
    return nxErrorTemplateBuiltIn(num);
}

void NX_App::appHelp(int) {}

int NX_App::appMemUnavail(unsigned int, int) {
    MemBox const& box = memBox();
    int const style = MB_TASKMODAL | MB_ICONHAND | MB_RETRYCANCEL;
    return NX_WinMessageBox(box.text, box.title, style).replyIsRetry();
}

int NX_App::resTextLoad(char* buffer, int size, int id) {
    NX_ResLib const* const libraries[] = {&res_, &lang_, &resLib_};
    for (NX_ResLib const* library : libraries) {
        int const length = library->resTextLoad(buffer, size, id);
        if (length != 0)
            return length;
    }
    if (id >= errorTextFirst && id < errorTextEnd)
        return -1;
    NxERROR(errorNumStringNotFound);
    NxErrorBufValue(id);
    return -1;
}

NX_StringA const& NX_App::appTitle() const {
    return title_.itemQty() != 0 ? title_ : name_;
}

int NX_App::appResLang(NX_StringA const& name) {
    lang_.dllClose();
    langName_ = name;
    return lang_.dllOpen(langName_);
}

NX_AppBox::NX_AppBox(NX_MainInfo const& info) : NX_App(info) {
    isBox_ = 1;
}

int NX_AppBox::appInit() {
    return NX_App::appInit() == -1 ? -1 : 0;
}

void NX_AppBox::appUninit() {
    NX_App::appUninit();
}

NX_AppNull::NX_AppNull(NX_MainInfo const& info) : NX_App(info) {}
