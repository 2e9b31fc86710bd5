// general/persist/pvec.cpp - the sharing part of every vector's persistence.
#include "general/collm/v1.h"
#include "general/persist/persistin.h"

int NX_VecM::refIsSaved(NX_PersistTextSave& save) const {
    if (save.pIsSaved(refP(), nxPersistBlock.size))
        return 1;
    save << itemQty();
    return 0;
}

int NX_VecM::refIsLoaded(NX_PersistTextLoad& load) {
    using Loader = NXS_PersistLoader;
    NX_VecRefM* found = nullptr;
    Loader::Ref const ref = Loader::blockLoad(load, typeid(*this), collManItemSize(), &found);
    if (ref == Loader::refObject && found != refP()) {
        collManDec();
        refP(found);
        collManInc();
    }
    unsigned int qty;
    if (ref != Loader::refDefinition || !Loader::itemQtyLoad(load, &qty))
        return 1;
    itemQty(0);
    itemQty(qty);
    Loader::append(load, refP(), nxPersistBlock, &typeid(*this));
    return 0;
}
