// general/module/menuitem.h - the items of a menu template, and the entries of an accelerator table.
//
// A menu is a flat list in the order of the template; an item that opens a popup is followed by the popup's
// items, one level deeper. Formats: menu templates (the plain and the extended one) and accelerator tables,
// the vendor's public documentation. Texts become 8-bit as NX_ResLib::resTextLoad says.
// Ownership: items and lists are values. Threads: as of values. Failure: an error number is returned, nothing
// is recorded: 22749 damaged.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"
#include "general/text/stringa.h"

// Type and state of an item, in the system's bits.
enum NX_MenuBits : unsigned int {
    menuTypeBitmap = 0x0004,
    menuTypeBarBreak = 0x0020,  // begins a new column, with a line in a popup
    menuTypeBreak = 0x0040,     // begins a new column
    menuTypeOwnerDraw = 0x0100, // drawn by the program
    menuTypeRadioCheck = 0x0200,
    menuTypeSeparator = 0x0800,
    menuTypeRightOrder = 0x2000,
    menuTypeRightJustify = 0x4000,
    menuStateGrayed = 0x0003,
    menuStateChecked = 0x0008,
    menuStateHilite = 0x0080,
    menuStateDefault = 0x1000
};

class NX_EXPORT NX_MenuItem {
public:
    NX_MenuItem() = default;

    NX_StringA const& itemText() const { return text_; } // with its "&" and tab; empty for a separator
    int itemId() const { return id_; }                   // 0: none; a popup of a plain template has none
    unsigned int itemType() const { return type_; }      // menuType... bits
    unsigned int itemState() const { return state_; }    // menuState... bits
    int itemHelpId() const { return helpId_; }           // of a popup in an extended template, else 0
    unsigned int itemDepth() const { return depth_; }    // 0: in the menu itself
    int itemIsPopup() const { return isPopup_; }         // 1 or 0
    int itemIsSeparator() const { return (type_ & menuTypeSeparator) != 0; }

private:
    friend class NXS_MenuReader;

    NX_StringA text_;
    std::int32_t id_ = 0;
    std::uint32_t type_ = 0;
    std::uint32_t state_ = 0;
    std::int32_t helpId_ = 0;
    std::uint32_t depth_ = 0;
    std::int32_t isPopup_ = 0;
};

class NX_EXPORT NX_MenuItemVec : public NX_VecT<NX_MenuItem, NXS_OwningItems> {
public:
    using NX_VecT::NX_VecT;

    // Popups within popups; a template that goes deeper counts as damaged.
    static constexpr unsigned int depthMax = 32;

    // Fills the list from the bytes of a template. 0, or 22749 and the list is empty. Bytes behind the last
    // item are not looked at. An item without text and id is a separator; separators
    // are grayed. Both are so in the system.
    int menuRead(unsigned char const* data, unsigned int size);

    // The first item with this id that is no popup and no separator; NX_NO_INDEX without one.
    unsigned int menuFind(int id) const;
};

// Which key, and what it gives.
struct NX_AccelEntry {
    std::uint16_t flags; // accel... bits
    std::uint16_t key;   // a character, or with accelVirtKey the number of a key
    std::uint16_t id;    // the command
};

enum NX_AccelBits : unsigned int {
    accelVirtKey = 0x01,
    accelNoInvert = 0x02,
    accelShift = 0x04,
    accelControl = 0x08,
    accelAlt = 0x10
};

class NX_EXPORT NX_AccelVec : public NX_VecT<NX_AccelEntry> {
public:
    using NX_VecT::NX_VecT;

    // Fills the list from the bytes of a table, up to the entry marked as the last. 0, or 22749 and the list
    // is empty; a table without such an entry is damaged.
    int accelRead(unsigned char const* data, unsigned int size);
};
