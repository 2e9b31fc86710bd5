// general/text/stringvec.h - vectors of strings: lists of names, patterns and lines.
//
// NX_StringVecA is the typed vector of NX_StringA, with view and cursors. Copying one shares its block; the
// first write through a shared handle copies the block, whose strings then share their texts until they are
// written. Ownership: the vector owns its strings; views and cursors point at the vector and must not outlive
// it. Positions and counts are in strings. Threads and failure: as of NX_VecT.
#pragma once

#include <iosfwd>

#include "general/collm/v4x.h"
#include "general/text/fileenum.h"
#include "general/text/stringa.h"

class NX_StringVecA;
struct NX_FileNameApply;

using NX_StringVecASub = NX_VecSubT<NX_StringVecA>;
using NX_StringVecAPtr = NX_VecPtrT<NX_StringVecA>;
using NX_StringVecAPtrConst = NX_VecPtrConstT<NX_StringVecA>;

class NX_EXPORT NX_StringVecA : public NX_VecT<NX_StringA, NXS_OwningItems> {
public:
    using NX_VecT::NX_VecT;
    NX_StringVecA() = default;
    NX_StringVecA(NX_StringVecASub const& view);

    // The names that a search of the file system finds, in the order of the system. `name` is a wildcard
    // pattern, or a directory, in which names matching `text` are looked for (null or empty: all names); for
    // anything else the vector stays empty. `type` says which classes of entries count. Entries matching one
    // of the folded wildcard patterns `leaveOut` are left out. With `withDir` non-zero each name carries the
    // directory part it was searched in, with its separator. A failing search gives an empty vector and
    // records no error.
    NX_StringVecA(NX_StringA const& name, NX_FileFindType type, char const* text, int withDir);
    NX_StringVecA(NX_StringA const& name, NX_StringVecA const& leaveOut, NX_FileFindType type,
                  char const* text, int withDir);

    // Append one string (growth rule), all strings of another vector, or those of a view.
    using NX_VecT::operator+=;
    void operator+=(NX_StringVecASub const& view);

    // Views of the strings from `first` on, to the end or `length` of them.
    NX_StringVecASub operator()(unsigned int first) const { return {this, first, NX_NO_INDEX}; }
    NX_StringVecASub operator()(unsigned int first, unsigned int length) const {
        return {this, first, length};
    }

private:
    void infoRead(NX_StringA const& name, NX_StringVecA const& leaveOut, NX_FileFindType type,
                  char const* text, int withDir);
    // Appends the prefix and the name of an entry found to the vector of `apply`.
    static void infoAppendSys(NX_FileNameApply* apply, WIN32_FIND_DATAA const* found);
};

// Writes the strings, std::endl between two of them and none at the end.
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_StringVecA const& strings);
