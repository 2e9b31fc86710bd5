// Private header. general/module/reslibrep.h - the shared part of resource libraries.
#pragma once

#include "general/collm/refcount.h"
#include "general/module/resfile.h"
#include "general/module/reslib.h"

class NX_SemThreadOfProcess;

// A module loaded for its code, a file opened as data, or neither while not opened.
class NX_ResLibRep : public NX_RefCountRep {
public:
    NX_ResLibRep(NX_StringA const& name, NX_ResLibType type, HINSTANCE module, int isOwner);
    // A file as data; takes the image over. `fileName` is its full name.
    NX_ResLibRep(NX_StringA const& name, NX_StringA const& fileName, NXS_ResFileKey const& key,
                 NXS_ResImage* image);
    ~NX_ResLibRep() override;

    // The open representation, or null. The caller holds the registry's lock.
    static NX_ResLibRep* find(HINSTANCE module);
    static NX_ResLibRep* find(NXS_ResFileKey const& key);

    // Guards the list of open representations, every change of a count and what is made at first use, so that
    // a library which is being opened cannot be given up by its last holder at the same moment.
    static NX_SemThreadOfProcess& registryLock();

    bool isData() const { return module == nullptr && image != nullptr; }
    bool isOpen() const { return module != nullptr || image != nullptr; }

    NX_StringA const name; // shares no block: holders on several threads read it
    NX_ResLibType const type;
    HINSTANCE const module;        // null while not opened, and of data
    NX_StringA const fileName;     // of data
    NXS_ResFileKey const key;      // of data
    NXS_ResImage* image = nullptr; // of a loaded module made at first use
    HINSTANCE handSys = nullptr;   // of data, made at first use

private:
    template <class Match>
    static NX_ResLibRep* findIf(Match match);
    void enter();

    int const isOwner_; // unloads the module at the end
    NX_ResLibRep* next_ = nullptr;
};

// The same text in a block of its own: blocks are counted without a lock.
NX_StringA nxResLibOwn(NX_StringA const& text);

// Records `number`, with the system's code where it is the generic one, and the name as F. Returns -1.
int nxResLibERR(int number, NX_StringA const& name, char const* file, unsigned int line);
// The same; `sys` is the system's code for the generic error.
int nxResLibERR(int number, unsigned long sys, NX_StringA const& name, char const* file, unsigned int line);
