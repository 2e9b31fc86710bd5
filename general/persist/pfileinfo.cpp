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

NX_PersistTextSave& NX_FileInfoVec::dataSave(NX_PersistTextSave& save) const {
    return nxInfoVecSave(save, dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_FileInfoVec::dataLoad(NX_PersistTextLoad& load) {
    return nxInfoVecLoad(load, *this);
}

NXS_PERSIST_SAVE(NX_FileInfo, nxPersistFileInfo)
NXS_PERSIST_LOAD(NX_FileInfo, nxPersistFileInfo)
NXS_PERSIST_COLL_SAVE(NX_FileInfo)
NXS_PERSIST_COLL_LOAD(NX_FileInfo)
NXS_PERSIST_SAVE(NX_FileInfoVec, nxPersistFileInfoVec)
NXS_PERSIST_LOAD(NX_FileInfoVec, nxPersistFileInfoVec, nxInfoBytesMin)
NXS_PERSIST_COLL_SAVE(NX_FileInfoVec)
NXS_PERSIST_COLL_LOAD(NX_FileInfoVec)
