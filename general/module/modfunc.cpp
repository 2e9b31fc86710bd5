#include "general/module/modfunc.h"

#include "general/error/errorman.h"
#include "general/platform/platform.h"

#include <cstdint>

NX_ModFunc::NX_ModFunc(HINSTANCE module, char const* name) {
    funcP(module, name);
}

NX_ModFunc::NX_ModFunc(HINSTANCE module, short ordinal) {
    funcP(module, ordinal);
}

NX_ModFunc::NX_ModFunc(NX_Dll module, char const* name) {
    funcP(module, name);
}

NX_ModFunc::NX_ModFunc(NX_Dll module, short ordinal) {
    funcP(module, ordinal);
}

int NX_ModFunc::funcP(HINSTANCE module, char const* name) {
    return funcP(module, name, 0);
}

int NX_ModFunc::funcP(HINSTANCE module, short ordinal) {
    return funcP(module, nullptr, ordinal);
}

int NX_ModFunc::funcP(NX_Dll module, char const* name) {
    return funcP(module.dllHand(), name, 0);
}

int NX_ModFunc::funcP(NX_Dll module, short ordinal) {
    return funcP(module.dllHand(), nullptr, ordinal);
}

int NX_ModFunc::funcP(HINSTANCE module, char const* name, short ordinal) {
    address_ = nullptr;
    if (module == nullptr)
        return NxERROR(errorNumFuncUsage);
    // The system takes an ordinal in place of the name's address.
    char const* const key =
        ordinal == 0 ? name
                     : reinterpret_cast<char const*>(std::uintptr_t{static_cast<std::uint16_t>(ordinal)});
    address_ = reinterpret_cast<Address>(reinterpret_cast<void (*)()>(GetProcAddress(module, key)));
    if (address_ != nullptr)
        return 0;
    // Asking for the module's name may change the system's last error.
    DWORD const code = GetLastError();
    NxERROR(errorNumFuncNotFound);
    NxErrorBufFileName(NX_ResLib::resLibNameSys(module));
    if (name != nullptr && *name != 0)
        NxErrorBufText(name);
    return NxErrorBufSys(static_cast<long>(code));
}
