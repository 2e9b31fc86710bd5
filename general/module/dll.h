// general/module/dll.h - dynamically loaded modules.
//
// NX_Dll is a resource library whose type is fixed: a loadable module, shared by reference with every other
// holder.
#pragma once

#include "general/module/reslib.h"

class NX_EXPORT NX_Dll : public NX_ResLib {
public:
    NX_Dll() = default;

    // Shares an existing representation; null: not open.
    explicit NX_Dll(NX_ResLibRep* rep);

    // A module with a name, not yet opened; with a directory, it is looked for there only.
    explicit NX_Dll(NX_StringA const& name);
    NX_Dll(NX_StringA const& name, NX_StringA const& directory);

    // 1: the module is open (also when it already was); 0: the name is empty, nothing is changed;
    // -1: not opened, with the error numbers of NX_ResLib::resLibOpen, the object stays as it was.
    int dllOpen(NX_StringA const& name);
    int dllOpen(NX_StringA const& name, NX_StringA const& directory);

    // Lets go of the module, which stays loaded for its other holders. 0, always.
    int dllClose();

    // Whether a module is loaded for its code.
    int dllIsOpen() const;

    // The loaded module's handle, or null.
    HINSTANCE dllHand() const;
};
