// general/module/resdata.h - the bytes of one resource.
//
// The bytes lie in the library, which stays open as long as an object refers to them; copies share them.
// Nobody may write them. Threads: different objects may be used from different threads. Failure: none; an
// object without a resource has no bytes.
#pragma once

#include "general/module/reslib.h"

class NX_EXPORT NX_ResData {
public:
    NX_ResData() = default; // no bytes

    unsigned char const* dataP() const { return data_; } // null without a resource
    unsigned int dataSize() const { return size_; }      // bytes

    NX_ResLib const& resLib() const { return lib_; } // the library that holds them

private:
    friend class NX_ResLib;

    NX_ResLib lib_;
    unsigned char const* data_ = nullptr;
    unsigned int size_ = 0;
};
