// general/persist/persistindex.cpp - the object table's index by address.
#include "general/persist/persistout.h"

unsigned int NXS_PersistIndex::place(void const* p, unsigned int mask) {
    std::uint64_t const mixed = reinterpret_cast<std::uintptr_t>(p) * 0x9E3779B97F4A7C15u;
    return static_cast<unsigned int>(mixed >> 32) & mask;
}

unsigned int NXS_PersistIndex::take(void const* p, NX_PersistPVec const& table) {
    unsigned int const qty = table.itemQty();
    if (qty * 2 >= slots_.itemQty())
        grow(table);
    unsigned int* const slots = slots_.dataPMod();
    NX_PersistP const* const entries = table.dataPConst();
    unsigned int const mask = slots_.itemQty() - 1;
    unsigned int at = place(p, mask);
    for (; slots[at] != 0; at = (at + 1) & mask)
        if (entries[slots[at]].p == p)
            return slots[at];
    slots[at] = qty;
    return NX_NO_INDEX;
}

void NXS_PersistIndex::grow(NX_PersistPVec const& table) {
    unsigned int const size = slots_.itemQty() == 0 ? 1024 : slots_.itemQty() * 4;
    slots_.itemQty(0);
    slots_.itemQty(size);
    slots_.dataZero();
    unsigned int* const slots = slots_.dataPMod();
    NX_PersistP const* const entries = table.dataPConst();
    for (unsigned int n = 1; n < table.itemQty(); ++n) {
        unsigned int at = place(entries[n].p, size - 1);
        while (slots[at] != 0)
            at = (at + 1) & (size - 1);
        slots[at] = n;
    }
}
