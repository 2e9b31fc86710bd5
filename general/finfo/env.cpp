// general/finfo/env.cpp - current directory and environment variables.
#include "general/finfo/env.h"

#include <cstdlib>

#include "general/platform/platform.h"

NX_DirCurrent::NX_DirCurrent() {
    nameFull(".");
}

NX_EnvString::NX_EnvString(char const* name) {
    envStrSys(name);
}

NX_EnvString::NX_EnvString(NX_StringA const& name) {
    envStrSys(name.dataPConst());
}

NX_EnvString::NX_EnvString(NX_CharASub const& name) {
    *this = name;
}

NX_EnvString& NX_EnvString::operator=(char const* name) {
    return *this = NX_StringA(name);
}

NX_EnvString& NX_EnvString::operator=(NX_StringA const& name) {
    NX_StringA const own(name); // may be this string
    envStrSys(own.dataPConst());
    return *this;
}

NX_EnvString& NX_EnvString::operator=(NX_CharASub const& name) {
    char text[256];
    name.dataCopy(text, sizeof text, nullptr);
    envStrSys(text);
    return *this;
}

void NX_EnvString::envStrSys(char const* name) {
    DWORD length = GetEnvironmentVariableA(name, nullptr, 0);
    if (length != 0) {
        itemQtyCap(length);
        char* const buffer = NX_TextVecA::dataPMod();
        buffer[itemQtyCap() - 1] = 0;
        length = GetEnvironmentVariableA(name, buffer, itemQtyCap());
        if (length >= itemQtyCap())
            length = 0; // grown meanwhile; the buffer is untouched
    }
    if (itemQty() != length)
        itemQty(length);
    strTerminate();
}

char const* NxEnvOrDefault(char const* name, char const* fallback) {
    char const* const value = std::getenv(name);
    return value != nullptr ? value : fallback;
}
