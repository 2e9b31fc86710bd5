// general/text/stringbyname.h - dictionaries from a name to a text.
//
// Three families that differ only in how names are compared: exactly (NX_StringByName), with case folded
// (Fold), with case folded and numbers by value (FoldNum). Each has its pairs (key, value), the vector of
// pairs in ascending order of keys (Base), the dictionary, which is what programs use, and cursors over both;
// the operations are documented in general/text/stringbynamet.h. An entry is found in logarithmic time;
// inserting moves the entries behind it as bytes. Ownership: dictionaries are values; copies share one block
// until they are written. Addresses of values are good until the next write. Threads and failure: as of
// NX_VecT; the word that takes insertion points is shared by all threads.
#pragma once

#include "general/text/stringbynamet.h"
#include "general/text/stringfold.h"

using NX_StringByNamePair = NXS_ByNamePair<NX_StringA, NX_CompareExact>;
using NX_StringByNameBase = NXS_ByNameBase<NX_StringA, NX_CompareExact>;
class NX_EXPORT NX_StringByName : public NXS_ByName<NX_StringA, NX_CompareExact> {
public:
    using NXS_ByName::NXS_ByName;
};
using NX_StringByNamePtrConstBase = NX_VecPtrConstT<NX_StringByNameBase>;
using NX_StringByNamePtrBase = NX_VecPtrT<NX_StringByNameBase>;
using NX_StringByNamePtrConst = NX_VecPtrConstT<NX_StringByName>;
using NX_StringByNamePtr = NX_VecPtrT<NX_StringByName>;

using NX_StringByNameFoldPair = NXS_ByNamePair<NX_StringFold, NX_CompareFold>;
using NX_StringByNameFoldBase = NXS_ByNameBase<NX_StringFold, NX_CompareFold>;
class NX_EXPORT NX_StringByNameFold : public NXS_ByName<NX_StringFold, NX_CompareFold> {
public:
    using NXS_ByName::NXS_ByName;
};
using NX_StringByNameFoldPtrConstBase = NX_VecPtrConstT<NX_StringByNameFoldBase>;
using NX_StringByNameFoldPtrBase = NX_VecPtrT<NX_StringByNameFoldBase>;
using NX_StringByNameFoldPtrConst = NX_VecPtrConstT<NX_StringByNameFold>;
using NX_StringByNameFoldPtr = NX_VecPtrT<NX_StringByNameFold>;

using NX_StringByNameFoldNumPair = NXS_ByNamePair<NX_StringFoldNum, NX_CompareFoldNum>;
using NX_StringByNameFoldNumBase = NXS_ByNameBase<NX_StringFoldNum, NX_CompareFoldNum>;
class NX_EXPORT NX_StringByNameFoldNum : public NXS_ByName<NX_StringFoldNum, NX_CompareFoldNum> {
public:
    using NXS_ByName::NXS_ByName;
};
using NX_StringByNameFoldNumPtrConstBase = NX_VecPtrConstT<NX_StringByNameFoldNumBase>;
using NX_StringByNameFoldNumPtrBase = NX_VecPtrT<NX_StringByNameFoldNumBase>;
using NX_StringByNameFoldNumPtrConst = NX_VecPtrConstT<NX_StringByNameFoldNum>;
using NX_StringByNameFoldNumPtr = NX_VecPtrT<NX_StringByNameFoldNum>;
