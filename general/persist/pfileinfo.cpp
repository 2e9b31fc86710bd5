// general/persist/pfileinfo.cpp - saving and loading file records and lists of them.
#include "general/finfo/dirinfo.h"
#include "general/persist/persistin.h"
#include "general/persist/pinfovec.h"

NX_PersistTextSave& NX_FileInfo::dataSave(NX_PersistTextSave& save) const {
    NX_StringA::dataSave(save);
    return save << ' ' << parent_ << ' ' << &age_ << ' ' << static_cast<unsigned int>(size_) << ' '
                << static_cast<unsigned int>(type_);
}

NX_PersistTextLoad& NX_FileInfo::dataLoad(NX_PersistTextLoad& load) {
    using Loader = NXS_PersistLoader;
    NX_StringA::dataLoad(load);
    parent_ = nullptr;
    NX_DirInfo* const holder = Loader::in(load).dirOpen;
    if (holder != nullptr) { // everything is checked: a record in a directory belongs to that directory
        void* found = nullptr;
        Loader::Ref const ref = Loader::refLoad(load, nullptr, nxPersistDirInfo, &found, holder);
        if (ref != Loader::refObject || found != holder) {
            Loader::fail(load);
            return load;
        }
        parent_ = holder;
    } else {
        load >> parent_;
    }
    load >> age_;
    size_ = 0;
    type_ = 0;
    load >> size_ >> type_;
    Loader::check(load);
    return load;
}

NX_PersistTextLoad& NX_FileInfo::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextSave& NX_FileInfo::collManSave(NX_PersistTextSave& save) const {
    return save << *this;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfo const& info) {
    return save << &info;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfo const* info) {
    if (!save.pIsSaved(info, nxPersistFileInfo.size))
        info->dataSave(save);
    return save;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfo& info) {
    NX_FileInfo* p = &info;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfo*& info) {
    return nxPersistLoad(load, info, nxPersistFileInfo);
}

NX_PersistTextSave& NX_FileInfoVec::dataSave(NX_PersistTextSave& save) const {
    return nxInfoVecSave(save, dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_FileInfoVec::dataLoad(NX_PersistTextLoad& load) {
    return nxInfoVecLoad(load, *this);
}

NX_PersistTextLoad& NX_FileInfoVec::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextSave& NX_FileInfoVec::collManSave(NX_PersistTextSave& save) const {
    return save << *this;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfoVec const& coll) {
    return save << &coll;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfoVec const* coll) {
    if (!save.pIsSaved(coll, nxPersistFileInfoVec.size))
        coll->dataSave(save);
    return save;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfoVec& coll) {
    NX_FileInfoVec* p = &coll;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfoVec*& coll) {
    return nxPersistLoad(load, coll, nxPersistFileInfoVec, nxInfoBytesMin);
}
