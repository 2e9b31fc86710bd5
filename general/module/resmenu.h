// general/module/resmenu.h - menus and accelerator tables of resource libraries.
//
// Ownership, threads and failure: see general/module/resobject.h; items and entries:
// general/module/menuitem.h.
#pragma once

#include "general/module/menuitem.h"
#include "general/module/resobject.h"

class NX_EXPORT NX_ResMenu : public NX_ResObject {
public:
    NX_ResMenu(NX_ResLib const& lib, NX_ResKey const& key);

    NX_MenuItemVec const& menuItems() const { return items_; }

    // The system's menu; the object keeps it. A window that takes it over destroys it too: give a window a
    // menu of its own. Null on failure.
    HMENU resHand() const;

private:
    NX_MenuItemVec items_;
};

class NX_EXPORT NX_ResAccel : public NX_ResObject {
public:
    NX_ResAccel(NX_ResLib const& lib, NX_ResKey const& key);

    NX_AccelVec const& accelEntries() const { return entries_; }

    // The system's table; the object keeps it. Null on failure.
    HACCEL resHand() const;

private:
    NX_AccelVec entries_;
};
