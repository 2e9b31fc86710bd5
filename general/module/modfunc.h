// general/module/modfunc.h - functions of loaded modules, by name or by ordinal.
//
// A program derives a typed function class from NX_ModFunc. The object is one address; it does not hold the
// module loaded: whoever calls through it keeps an NX_Dll.
#pragma once

#include "general/module/dll.h"

class NX_EXPORT NX_ModFunc {
public:
    using Address = int(NX_STDCALL*)(void);

    // The function's address, or null when the last lookup failed.
    Address funcP() const { return address_; }

    // Always 0: there are no 16-bit modules.
    int funcIs16Bit() const { return 0; }

protected:
    // Each looks the function up at once.
    NX_ModFunc(HINSTANCE module, char const* name);
    NX_ModFunc(HINSTANCE module, short ordinal);
    NX_ModFunc(NX_Dll module, char const* name);
    NX_ModFunc(NX_Dll module, short ordinal);

    // 0: found. -1: the address is null and an error is recorded: 32870 without a module; 14497 when the
    // module does not export the function, with F (the module's file), T (the name, when one was given) and S
    // (system code). An ordinal is an unsigned 16-bit number; 0 means that the name counts.
    int funcP(HINSTANCE module, char const* name);
    int funcP(HINSTANCE module, short ordinal);
    int funcP(NX_Dll module, char const* name);
    int funcP(NX_Dll module, short ordinal);
    int funcP(HINSTANCE module, char const* name, short ordinal); // by name when `ordinal` is 0

private:
    Address address_ = nullptr;
};
