// Private header. general/persist/persistout.h - the buffer behind a save stream and the index of its object
// table.
#pragma once

#include <cstring>
#include <fstream>

#include "general/persist/persistp.h"

inline constexpr std::streamsize nxPersistBufSize = 65536;

// Finds an address in the object table: the numbers of its entries, spread by address. Entry 0 is never in
// it.
class NXS_PersistIndex {
public:
    // The number of the entry of `p`. NX_NO_INDEX: there is none; the next entry of the table must become it.
    unsigned int take(void const* p, NX_PersistPVec const& table);

private:
    static unsigned int place(void const* p, unsigned int mask);
    void grow(NX_PersistPVec const& table);

    NX_VecT<unsigned int> slots_; // a power of two of them, 0 in a free one
};

// A file buffer that is written through its memory as long as it has room.
class NXS_PersistOut : public std::filebuf {
public:
    NXS_PersistOut() { pubsetbuf(memory_, nxPersistBufSize); }

    bool write(char const* p, std::streamsize n) {
        if (n > epptr() - pptr())
            return sputn(p, n) == n;
        std::memcpy(pptr(), p, static_cast<std::size_t>(n));
        pbump(static_cast<int>(n));
        return true;
    }

    NXS_PersistIndex index;

private:
    char memory_[nxPersistBufSize];
};
