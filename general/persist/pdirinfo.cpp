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

NX_PersistTextLoad& NX_DirInfo::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextSave& NX_DirInfo::collManSave(NX_PersistTextSave& save) const {
    return save << *this;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfo const& info) {
    return save << &info;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfo const* info) {
    if (!save.pIsSaved(info, nxPersistDirInfo.size))
        info->dataSave(save);
    return save;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfo& info) {
    NX_DirInfo* p = &info;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfo*& info) {
    return nxPersistLoad(load, info, nxPersistDirInfo);
}

NX_PersistTextSave& NX_DirInfoVec::dataSave(NX_PersistTextSave& save) const {
    return nxInfoVecSave(save, dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_DirInfoVec::dataLoad(NX_PersistTextLoad& load) {
    return nxInfoVecLoad(load, *this);
}

NX_PersistTextLoad& NX_DirInfoVec::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextSave& NX_DirInfoVec::collManSave(NX_PersistTextSave& save) const {
    return save << *this;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfoVec const& coll) {
    return save << &coll;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfoVec const* coll) {
    if (!save.pIsSaved(coll, nxPersistDirInfoVec.size))
        coll->dataSave(save);
    return save;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfoVec& coll) {
    NX_DirInfoVec* p = &coll;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfoVec*& coll) {
    return nxPersistLoad(load, coll, nxPersistDirInfoVec, nxInfoBytesMin);
}
