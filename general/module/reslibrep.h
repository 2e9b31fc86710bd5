// Private header. general/module/reslibrep.h - the shared part of resource libraries.
#pragma once

#include "general/collm/refcount.h"
#include "general/module/reslib.h"

class NX_ResLibRep : public NX_RefCountRep {
public:
    NX_ResLibRep(NX_StringA const& name, NX_ResLibType type, HINSTANCE module, int isOwner);
    ~NX_ResLibRep() override;

    // The open representation of `module`, or null. The caller holds the registry's lock.
    static NX_ResLibRep* find(HINSTANCE module);

    NX_StringA const name;
    NX_ResLibType const type;
    HINSTANCE const module; // null while not opened

private:
    int const isOwner_; // unloads the module at the end
    NX_ResLibRep* next_ = nullptr;
};
