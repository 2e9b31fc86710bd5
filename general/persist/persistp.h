// general/persist/persistp.h - the table of the objects that a persistence stream has met.
//
// An object's index in the table is the number by which the text refers to it; entry 0 is the null pointer.
// The table owns nothing.
#pragma once

#include "general/collm/v4x.h"

// One object or vector block.
struct NX_PersistP {
    void const* p;     // its address; null for entry 0
    unsigned int size; // its size in bytes, as the caller gave it; recorded only
};

class NX_EXPORT NX_PersistPVec : public NX_VecT<NX_PersistP> {
public:
    using NX_VecT<NX_PersistP>::NX_VecT;
};
