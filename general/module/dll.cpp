#include "general/module/dll.h"

NX_Dll::NX_Dll(NX_ResLibRep* rep) : NX_ResLib(rep) {}

NX_Dll::NX_Dll(NX_StringA const& name) : NX_ResLib(name, resLibTypeDll) {}

NX_Dll::NX_Dll(NX_StringA const& name, NX_StringA const& directory)
    : NX_ResLib(name, directory, resLibTypeDll) {}

int NX_Dll::dllOpen(NX_StringA const& name) {
    return resLibOpen(name, resLibTypeDll);
}

int NX_Dll::dllOpen(NX_StringA const& name, NX_StringA const& directory) {
    return resLibOpen(name, directory, resLibTypeDll);
}

int NX_Dll::dllClose() {
    return resLibClose();
}

int NX_Dll::dllIsOpen() const {
    return resLibHand() != nullptr ? 1 : 0;
}

HINSTANCE NX_Dll::dllHand() const {
    return resLibHand();
}
