// general/module/resobject.h - what all resource objects share: where they come from, whether they are good,
// and the handle the system made of them.
//
// A resource object is made from a library that is open and the id or name of a resource. Construction finds
// the bytes and decodes them; resIsOk says whether that went well. Without a language asked for, the bytes
// are those that NX_ResLib::resDescFind chooses; for the handle of a module's resource the system chooses.
// Ownership: objects are values; copies share the library, which stays open for them, and the handle, which
// the last of them releases. Threads: an object and its copies stay within one thread; several threads make
// objects of their own from one library. Failure: an error is recorded with F (the library's name) and T (the
// resource's name) or V (its number): 14498 the library is not open or has no such resource, 22749 the
// resource is damaged, 21060 with S (the system's code) the system refuses, or (S 50) what was asked for
// cannot be done on this system or with this resource.
#pragma once

#include "general/error/errornum.h"
#include "general/module/resdata.h"
#include "general/module/resdesc.h"
#include "general/platform/fwdscreen.h"

// Which resource of a type: by number, by name, or the one described. `lang` as in NX_ResLib::resDescFind.
class NX_EXPORT NX_ResKey {
public:
    NX_ResKey(int id, int lang = -1) : id_(id), lang_(lang) {}
    NX_ResKey(char const* name, int lang = -1) : name_(name), lang_(lang) {}
    NX_ResKey(NX_StringA const& name, int lang = -1) : name_(name), lang_(lang) {}
    NX_ResKey(NX_ResDesc const& desc)
        : name_(desc.resName()), id_(desc.resId()), lang_(desc.resLang()), desc_(desc) {}

    NX_StringA const& resName() const { return name_; } // empty: the number counts
    int resId() const { return id_; }
    int resLang() const { return lang_; }
    NX_ResDesc const& resDesc() const { return desc_; } // as given, else no resource

private:
    NX_StringA name_;
    std::int32_t id_ = 0;
    std::int32_t lang_;
    NX_ResDesc desc_;
};

class NXS_ResHandRep;

// The handle that copies of an object share; made when it is first asked for.
class NX_EXPORT NXS_ResHand : private NX_RefCountPtr {
public:
    struct Made {
        void* hand;
        void (*release)(void* hand); // null: the system keeps the handle itself
        bool isTold = false;         // no handle, and the error is recorded already
    };

    NXS_ResHand() = default;
    NXS_ResHand(NXS_ResHand const& other) = default;
    NXS_ResHand& operator=(NXS_ResHand const& other) = default;
    ~NXS_ResHand() = default;

    void handInit(); // makes the part that copies share

    // The handle, which `make` makes when there is none yet.
    Made handGet(Made (*make)(void const* context), void const* context) const;

private:
    explicit NXS_ResHand(NXS_ResHandRep* rep);
};

class NX_EXPORT NX_ResObject {
public:
    // 1: found and decoded, 0: not, and everything the object tells is empty or 0.
    int resIsOk() const { return error_ == 0; }
    NX_ErrorNum errorNum() const { return error_; } // why the object is not good; 0 when it is

    NX_ResLib const& resLib() const { return lib_; }
    NX_ResDesc const& resDesc() const { return desc_; }
    NX_ResData const& resData() const { return data_; } // the bytes as they are in the library

protected:
    NX_ResObject(NX_ResLib const& lib, int type, NX_ResKey const& key);
    NX_ResObject(NX_ResObject const&) = default;
    NX_ResObject& operator=(NX_ResObject const&) = default;
    ~NX_ResObject() = default;

    // Takes the result of a decoder, which gives 0 or an error number: records it and gives up the bytes.
    void resDecoded(int error);

    // Records an error with the details of this resource; for 21060 `sys` is the system's code. Returns -1.
    int resRaise(int number, unsigned long sys, char const* file, unsigned int line) const;
    int resResult(int error) const; // 0, or -1 for an error number, which is recorded

    // The handle for the system's calls, made by `make` from this object, which leaves the system's last
    // error. Null with the error recorded.
    void* resHandP(NXS_ResHand::Made (*make)(void const* object)) const;

    // The module and the name by which the system's loading calls know this resource. Null: no module.
    HINSTANCE sysModule() const { return lib_.resLibHandSys(); }
    char const* sysName() const;

private:
    NX_ResLib lib_;
    NX_ResKey key_;
    NX_ResDesc desc_;
    NX_ResData data_;
    NX_ErrorNum error_ = 0;
    NXS_ResHand hand_; // goes before the library
};
