// general/persist/ptextvec.cpp - saving and loading texts and strings.
#include "general/persist/persistin.h"
#include "general/text/stringa.h"

NX_PersistTextSave& NX_TextVecA::dataSave(NX_PersistTextSave& save) const {
    return save.dataSave(dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_TextVecA::dataLoad(NX_PersistTextLoad& load) {
    return itemQty() != 0 ? load.dataLoad(dataPMod(), itemQty()) : load;
}

NXS_PERSIST_SAVE(NX_TextVecA, nxPersistTextVec)
NXS_PERSIST_LOAD(NX_TextVecA, nxPersistTextVec)
NXS_PERSIST_COLL_SAVE(NX_TextVecA)
NXS_PERSIST_COLL_LOAD(NX_TextVecA)
NXS_PERSIST_LOAD(NX_StringA, nxPersistString)
NXS_PERSIST_COLL_LOAD(NX_StringA)
