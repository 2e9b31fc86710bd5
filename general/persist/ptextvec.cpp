// general/persist/ptextvec.cpp - saving and loading texts and strings.
#include "general/persist/persistin.h"
#include "general/text/stringa.h"

NX_PersistTextSave& NX_TextVecA::dataSave(NX_PersistTextSave& save) const {
    return save.dataSave(dataPConst(), itemQty());
}

NX_PersistTextLoad& NX_TextVecA::dataLoad(NX_PersistTextLoad& load) {
    return itemQty() != 0 ? load.dataLoad(dataPMod(), itemQty()) : load;
}

NX_PersistTextLoad& NX_TextVecA::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextSave& NX_TextVecA::collManSave(NX_PersistTextSave& save) const {
    return save << *this;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_TextVecA const& text) {
    return save << &text;
}

NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_TextVecA const* text) {
    if (!save.pIsSaved(text, nxPersistTextVec.size))
        text->dataSave(save);
    return save;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_TextVecA& text) {
    NX_TextVecA* p = &text;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_TextVecA*& text) {
    return nxPersistLoad(load, text, nxPersistTextVec);
}

NX_PersistTextLoad& NX_StringA::collManLoad(NX_PersistTextLoad& load) {
    return load >> *this;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_StringA& text) {
    NX_StringA* p = &text;
    return load >> p;
}

NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_StringA*& text) {
    return nxPersistLoad(load, text, nxPersistString);
}
