#include "general/module/resobject.h"

#include "general/error/errorman.h"
#include "general/module/reslibrep.h"
#include "general/platform/platform.h"

namespace {

char const sourceFile[] = "general/module/resobject";

} // namespace

class NXS_ResHandRep : public NX_RefCountRep {
public:
    NXS_ResHandRep() : NX_RefCountRep(0) {}
    ~NXS_ResHandRep() override {
        if (made.hand != nullptr && made.release != nullptr)
            made.release(made.hand);
    }

    NXS_ResHand::Made made = {};
};

NXS_ResHand::NXS_ResHand(NXS_ResHandRep* rep) : NX_RefCountPtr(rep) {}

void NXS_ResHand::handInit() {
    *this = NXS_ResHand(new NXS_ResHandRep);
}

NXS_ResHand::Made NXS_ResHand::handGet(Made (*make)(void const*), void const* context) const {
    NXS_ResHandRep* const rep = static_cast<NXS_ResHandRep*>(repP());
    if (rep->made.hand != nullptr)
        return rep->made;
    Made const made = make(context);
    if (made.hand != nullptr)
        rep->made = made;
    return made;
}

NX_ResObject::NX_ResObject(NX_ResLib const& lib, int type, NX_ResKey const& key) : lib_(lib), key_(key) {
    int const result = key.resDesc().resType() == type ? lib.resDescFind(desc_, key.resDesc())
                       : key.resName().itemQty() != 0
                           ? lib.resDescFind(desc_, type, key.resName(), key.resLang())
                           : lib.resDescFind(desc_, type, key.resId(), key.resLang());
    if (result != 0 || lib.resDataLoad(data_, desc_) != 0)
        error_ = NxErrorNum();
    else
        hand_.handInit();
}

void NX_ResObject::resDecoded(int error) {
    if (error == 0)
        return;
    resResult(error);
    desc_ = NX_ResDesc();
    data_ = NX_ResData();
    error_ = error;
}

int NX_ResObject::resRaise(int number, unsigned long sys, char const* file, unsigned int line) const {
    nxResLibERR(number, sys, lib_.resLibName(), file, line);
    return key_.resName().itemQty() != 0 ? NxErrorBufText(key_.resName().dataPConst())
                                         : NxErrorBufValue(key_.resId());
}

int NX_ResObject::resResult(int error) const {
    return error != 0 ? resRaise(error, ERROR_NOT_SUPPORTED, sourceFile, __LINE__) : 0;
}

void* NX_ResObject::resHandP(NXS_ResHand::Made (*make)(void const*)) const {
    if (error_ != 0) {
        resResult(error_);
        return nullptr;
    }
    SetLastError(0);
    NXS_ResHand::Made const made = hand_.handGet(make, this);
    if (made.hand == nullptr && !made.isTold)
        resRaise(errorNumSystem, GetLastError(), sourceFile, __LINE__);
    return made.hand;
}

char const* NX_ResObject::sysName() const {
    NX_StringA const& name = desc_.resName();
    return name.itemQty() != 0 ? name.dataPConst() : MAKEINTRESOURCEA(desc_.resId());
}
