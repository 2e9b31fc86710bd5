// general/module/reslibrep.cpp - the open libraries of the process.
#include "general/module/reslibrep.h"

#include "general/platform/platform.h"
#include "general/process/sem.h"

namespace {

// Counted under the process-wide lock, as holders may live on any thread.
constexpr unsigned long refMultiThread = 0x02;

NX_ResLibRep* registryFirst = nullptr;

} // namespace

NX_StringA nxResLibOwn(NX_StringA const& text) {
    return {text.dataPConst(), text.strLen()};
}

NX_SemThreadOfProcess& NX_ResLibRep::registryLock() {
    static NX_SemThreadOfProcess& lock = *new NX_SemThreadOfProcess;
    return lock;
}

NX_ResLibRep::NX_ResLibRep(NX_StringA const& givenName, NX_ResLibType givenType, HINSTANCE givenModule,
                           int isOwner)
    : NX_RefCountRep(refMultiThread), name(nxResLibOwn(givenName)), type(givenType), module(givenModule),
      key(), isOwner_(isOwner) {
    if (module != nullptr)
        enter();
}

NX_ResLibRep::NX_ResLibRep(NX_StringA const& givenName, NX_StringA const& givenFile,
                           NXS_ResFileKey const& givenKey, NXS_ResImage* givenImage)
    : NX_RefCountRep(refMultiThread), name(nxResLibOwn(givenName)), type(givenImage->kind()), module(nullptr),
      fileName(nxResLibOwn(givenFile)), key(givenKey), image(givenImage), isOwner_(0) {
    enter();
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
    if (handSys != nullptr)
        FreeLibrary(handSys);
    delete image;
}

void NX_ResLibRep::enter() {
    next_ = registryFirst;
    registryFirst = this;
}

template <class Match>
NX_ResLibRep* NX_ResLibRep::findIf(Match match) {
    NX_ResLibRep* rep = registryFirst;
    while (rep != nullptr && !match(*rep))
        rep = rep->next_;
    return rep;
}

NX_ResLibRep* NX_ResLibRep::find(HINSTANCE module) {
    return findIf([module](NX_ResLibRep const& rep) { return rep.module == module; });
}

NX_ResLibRep* NX_ResLibRep::find(NXS_ResFileKey const& key) {
    return findIf([&key](NX_ResLibRep const& rep) { return rep.isData() && rep.key == key; });
}
