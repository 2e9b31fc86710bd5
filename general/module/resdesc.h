// general/module/resdesc.h - descriptions of the resources in a library, and lists of them.
//
// A resource is found by three things: its type, its id within the type, and its language. Type and id are
// numbers (0 to 65535) or names; a type the system knows has one of the numbers below. Names are 8-bit text
// converted as NX_ResLib::resTextLoad says. Ownership: descriptions are values and hold no library open.
// Threads: as of other values. Failure: none.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"
#include "general/text/stringa.h"

// The system's numbers.
enum NX_ResType : int {
    resTypeNone = 0,
    resTypeCursor = 1, // one image of a cursor, its hot spot (two 16-bit numbers) in front
    resTypeBitmap = 2, // a bitmap without the header of a bitmap file
    resTypeIcon = 3,   // one image of an icon
    resTypeMenu = 4,
    resTypeDialog = 5,
    resTypeString = 6, // sixteen texts; block n holds the ids from 16 * (n - 1) on
    resTypeFontDir = 7,
    resTypeFont = 8,
    resTypeAccel = 9,
    resTypeData = 10, // bytes of the program's own
    resTypeMessages = 11,
    resTypeCursorGroup = 12, // which images make up a cursor
    resTypeIconGroup = 14,   // which images make up an icon
    resTypeVersion = 16,
    resTypeManifest = 24
};

class NX_EXPORT NX_ResDesc {
public:
    NX_ResDesc() = default; // no resource: all numbers 0, both names empty

    int resType() const { return type_; } // the number; 0 when the type has a name
    NX_StringA const& resTypeName() const { return typeName_; }
    int resId() const { return id_; } // the number; 0 when the resource has a name
    NX_StringA const& resName() const { return name_; }
    int resLang() const { return lang_; }          // the system's language number; 0 neutral
    unsigned int resSize() const { return size_; } // bytes

    // For lists: "ICON GROUP" for a type the system knows, else its number or its name; the id's number or
    // the name.
    NX_StringA resTypeText() const;
    NX_StringA resIdText() const;

private:
    friend class NX_ResLib;

    bool isSame(NX_ResDesc const& other) const; // type, id and language, exactly

    NX_StringA typeName_;
    NX_StringA name_;
    std::int32_t type_ = 0;
    std::int32_t id_ = 0;
    std::int32_t lang_ = 0;
    std::uint32_t size_ = 0;
    std::uint32_t index_ = 0; // among the resources of the library it comes from
};

// Descriptions in the order in which the library's directory holds them: by type, id, language. Files made by
// the usual tools have named ones first, then numbers ascending.
class NX_EXPORT NX_ResDescVec : public NX_VecT<NX_ResDesc, NXS_OwningItems> {
public:
    using NX_VecT::NX_VecT;
    NX_ResDescVec() = default;

    NX_VecSubT<NX_ResDescVec> operator()(unsigned int first, unsigned int length = NX_NO_INDEX) const {
        return {this, first, length};
    }
};
using NX_ResDescVecSub = NX_VecSubT<NX_ResDescVec>;
using NX_ResDescVecPtr = NX_VecPtrT<NX_ResDescVec>;
using NX_ResDescVecPtrConst = NX_VecPtrConstT<NX_ResDescVec>;
