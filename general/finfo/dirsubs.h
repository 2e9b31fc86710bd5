// Private header. general/finfo/dirsubs.h - the list of sub-directories as a directory record owns it.
#pragma once

#include "general/finfo/dirinfo.h"

// Vectors move and duplicate records as bytes. A duplicate shares the list, counted here, until its vector
// gives every record a tree of its own (NX_DirInfoVec::itemAdopt).
class NXS_DirInfoSubs : public NX_DirInfoVec {
public:
    NXS_DirInfoSubs() = default;
    explicit NXS_DirInfoSubs(NX_DirInfoVec const& coll) : NX_DirInfoVec(coll) {}
    NXS_DirInfoSubs(NXS_DirInfoSubs const& other) : NX_DirInfoVec(other) {} // with one owner
    NXS_DirInfoSubs& operator=(NXS_DirInfoSubs const&) = delete;

    void ownerInc() { ++owners_; }
    void ownerDec() {
        if (--owners_ == 0)
            delete this;
    }
    int ownerIsSole() const { return owners_ == 1; }

private:
    std::uint32_t owners_ = 1;
};
