// general/finfo/dirinfovec.cpp - lists of directory records, and how records keep their trees in them.
#include <new>

#include "general/finfo/dirsubs.h"
#include "general/finfo/findpattern.h"
#include "general/platform/platform.h"
#include "general/text/stringvec.h"

namespace {

void apply(void* context, WIN32_FIND_DATAA const* entry) {
    NX_DirInfoVec::infoAppendSys(static_cast<NX_DirInfoApply*>(context), entry);
}

} // namespace

void NXS_DirInfoItems::copied(NX_DirInfo const* items, unsigned int qty) {
    for (; qty != 0; --qty, ++items) {
        items->collManInc();
        items->files_.collManInc();
        if (items->subs_ != nullptr)
            items->subs_->ownerInc();
    }
}

NX_DirInfoVec::NX_DirInfoVec(NX_StringA const& where, NX_FileFindType find, NX_DirInfo* parent,
                             NX_FileAgeType age, char const* pattern)
    : NX_DirInfoVec(where, NX_StringVecA(), find, parent, age, pattern) {}

NX_DirInfoVec::NX_DirInfoVec(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                             NX_DirInfo* parent, NX_FileAgeType age, char const* pattern) {
    NX_DirInfoApply context{this, parent, age};
    NxFileInfoApplySys(apply, &context, nxFindPattern(where, pattern), leaveOut, nxFindType(find));
}

// Makes the record in its place: nothing lies below it yet that would have to point there.
void NX_DirInfoVec::infoAppendSys(NX_DirInfoApply* apply, WIN32_FIND_DATAA const* entry) {
    NX_DirInfoVec& coll = *apply->coll;
    unsigned int const n = coll.itemQty();
    coll.Base::itemQtyGrow(1);
    NX_DirInfo* const item = coll.dataPMod() + n;
    item->~NX_DirInfo();
    new (item) NX_DirInfo(apply, entry);
}

void NX_DirInfoVec::itemAdopt() {
    unsigned int const qty = itemQty();
    unsigned int n = 0;
    while (n < qty && dataPConst()[n].treeIsAdopted())
        ++n;
    if (n == qty)
        return;
    if (!refP()->refIsModifiable()) {
        collManClone(); // which adopts
        return;
    }
    NX_DirInfo* const items =
        reinterpret_cast<NX_DirInfo*>(refP()->dataPMod()); // no mark of a change by the caller
    for (; n < qty; ++n)
        items[n].treeAdopt();
}

void NX_DirInfoVec::collManClone(unsigned int cap) {
    refManClone(cap);
    itemAdopt();
}

void NX_DirInfoVec::collManClone() {
    refManClone(itemQty());
    itemAdopt();
}
