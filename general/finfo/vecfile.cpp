// general/finfo/vecfile.cpp - vectors and parts of texts read from and written to files.
#include "general/collm/v1.h"
#include "general/finfo/file.h"
#include "general/text/textvec.h"

int NX_VecM::dataRead(NX_File& file) {
    unsigned long const size = file.fileSize();
    if (size == NX_NO_INDEX)
        return -1;
    unsigned int const qty = static_cast<unsigned int>(size) / itemSize();
    itemQty(qty);
    return file.dataRead(dataPMod(), dataSize(qty));
}

int NX_VecM::dataRead(NX_File& file, unsigned int pos, unsigned int qty) {
    if (qty == 0)
        return 0;
    unsigned long const size = file.fileSize();
    if (size == NX_NO_INDEX)
        return -1;
    unsigned int const qtyNew = static_cast<unsigned int>(size) / itemSize();
    if (pos <= itemQty() && qty > itemQty() - pos)
        qty = itemQty() - pos;
    if (qty < qtyNew)
        dataCreateAt(pos, qtyNew - qty);
    else
        dataDeleteAt(pos, qty - qtyNew);
    char* const items = itemPMod(pos);
    return file.dataRead(items, dataSize(qtyNew));
}

int NX_VecM::dataWrite(NX_File& file) const {
    return dataWrite(file, 0, NX_NO_INDEX);
}

int NX_VecM::dataWrite(NX_File& file, unsigned int pos, unsigned int qty) const {
    if (qty == 0)
        return 0;
    if (pos < itemQty() && qty > itemQty() - pos)
        qty = itemQty() - pos;
    return file.dataWrite(itemPConst(pos), dataSize(qty)); // asserts pos
}

int NX_CharASub::dataRead(NX_File& file) {
    return collP()->dataRead(file, itemNum(), itemQty());
}

int NX_CharASub::dataWrite(NX_File& file) const {
    return collP()->dataWrite(file, itemNum(), itemQty());
}
