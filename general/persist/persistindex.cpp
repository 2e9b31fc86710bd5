// general/persist/persistindex.cpp - the object table's index by address.
#include "general/persist/persistout.h"

unsigned int NXS_PersistIndex::place(void const* p, unsigned int mask) {
    std::uint64_t const mixed = reinterpret_cast<std::uintptr_t>(p) * 0x9E3779B97F4A7C15u;
    return static_cast<unsigned int>(mixed >> 32) & mask;
}

unsigned int NXS_PersistIndex::find(void const* p, NX_PersistPVec const& table) const {
    if (slots_.itemQty() == 0)
        return NX_NO_INDEX;
    unsigned int const* const slots = slots_.dataPConst();
    NX_PersistP const* const entries = table.dataPConst();
    unsigned int const mask = slots_.itemQty() - 1;
    for (unsigned int at = place(p, mask); slots[at] != 0; at = (at + 1) & mask)
        if (entries[slots[at]].p == p)
            return slots[at];
    return NX_NO_INDEX;
}

void NXS_PersistIndex::put(void const* p, unsigned int number) {
    unsigned int* const slots = slots_.dataPMod();
    unsigned int const mask = slots_.itemQty() - 1;
    unsigned int at = place(p, mask);
    while (slots[at] != 0)
        at = (at + 1) & mask;
    slots[at] = number;
}

void NXS_PersistIndex::add(NX_PersistPVec const& table) {
    unsigned int const qty = table.itemQty();
    if (qty * 2 <= slots_.itemQty()) {
        put(table[qty - 1].p, qty - 1);
        return;
    }
    unsigned int const size = slots_.itemQty() == 0 ? 256 : slots_.itemQty() * 2;
    slots_.itemQty(size);
    slots_.dataZero();
    for (unsigned int n = 1; n < qty; ++n)
        put(table[n].p, n);
}
