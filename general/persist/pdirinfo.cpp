// general/persist/pdirinfo.cpp - saving and loading directory records and lists of them.
#include "general/finfo/dirsubs.h"
#include "general/persist/pinfovec.h"

NX_PersistTextSave& NX_DirInfo::dataSave(NX_PersistTextSave& save) const {
    NX_FileInfo::dataSave(save);
    return save << &files_ << static_cast<NX_DirInfoVec const*>(subs_);
}

NX_PersistTextLoad& NX_DirInfo::dataLoad(NX_PersistTextLoad& load) {
    using Loader = NXS_PersistLoader;
    NX_FileInfo::dataLoad(load);
    if (subs_ != nullptr)
        subs_->ownerDec();
    subs_ = nullptr;
    NXS_PersistIn& in = Loader::in(load);
    NX_DirInfo* const outer = in.dirOpen;
    if (Loader::isStrict(load))
        in.dirOpen = this;
    load >> files_;
    NXS_DirInfoSubs* subs = nullptr;
    unsigned int const known = Loader::lastNumber(load);
    nxPersistLoad(load, subs, nxPersistDirSubs, nxInfoBytesMin);
    if (subs != nullptr && Loader::lastNumber(load) == known) { // a list that another record owns already
        if (Loader::isStrict(load)) {
            Loader::fail(load);
            subs = nullptr;
        } else {
            subs->ownerInc();
        }
    }
    subs_ = subs;
    in.dirOpen = outer;
    return load;
}

NX_PersistTextSave& NX_DirInfoVec::dataSave(NX_PersistTextSave& save) const {
    return nxInfoVecSave(save, dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_DirInfoVec::dataLoad(NX_PersistTextLoad& load) {
    return nxInfoVecLoad(load, *this);
}

NXS_PERSIST_SAVE(NX_DirInfo, nxPersistDirInfo)
NXS_PERSIST_LOAD(NX_DirInfo, nxPersistDirInfo)
NXS_PERSIST_COLL_SAVE(NX_DirInfo)
NXS_PERSIST_COLL_LOAD(NX_DirInfo)
NXS_PERSIST_SAVE(NX_DirInfoVec, nxPersistDirInfoVec)
NXS_PERSIST_LOAD(NX_DirInfoVec, nxPersistDirInfoVec, nxInfoBytesMin)
NXS_PERSIST_COLL_SAVE(NX_DirInfoVec)
NXS_PERSIST_COLL_LOAD(NX_DirInfoVec)
