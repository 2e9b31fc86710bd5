// general/module/bytevec.h - bytes, for instance of a file; NX_VecT::dataWrite writes them.
//
// Copies share the bytes until one is written. Threads and failure: as of NX_VecT.
#pragma once

#include "general/collm/v4x.h"

class NX_EXPORT NX_ByteVec : public NX_VecT<unsigned char> {
public:
    using NX_VecT::NX_VecT;
};
