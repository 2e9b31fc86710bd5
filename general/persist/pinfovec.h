// Private header. general/persist/pinfovec.h - how lists of file and of directory records are saved and
// loaded.
#pragma once

#include "general/persist/persistin.h"

// A record takes at least a blank, two line feeds, two letters and a digit.
inline constexpr unsigned int nxInfoBytesMin = 6;

template <class Info>
NX_PersistTextSave& nxInfoVecSave(NX_PersistTextSave& save, Info const* items, unsigned int qty) {
    save << '(';
    for (; qty != 0; --qty)
        save << ' ' << items++;
    return save << ')';
}

// Into records that stay where they are: the numbers that refer to them stand for their addresses.
template <class InfoVec>
NX_PersistTextLoad& nxInfoVecLoad(NX_PersistTextLoad& load, InfoVec& coll) {
    NXS_PersistLoader::markLoad(load, '(');
    std::uint64_t& owed = NXS_PersistLoader::in(load).bytesOwed;
    owed += std::uint64_t{coll.itemQty()} * nxInfoBytesMin;
    if (unsigned int qty = coll.itemQty(); qty != 0) { // an empty list keeps its constant block
        for (auto* item = coll.dataPMod(); qty != 0 && !NXS_PersistLoader::isFailed(load); --qty) {
            owed -= nxInfoBytesMin;
            load >> *item++;
        }
    }
    NXS_PersistLoader::markLoad(load, ')');
    return load;
}
