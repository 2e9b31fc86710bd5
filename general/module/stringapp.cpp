// general/module/stringapp.cpp - what the string asks the application and its resources.
#include "general/error/errorman.h"
#include "general/finfo/env.h"
#include "general/module/app.h"
#include "general/module/reslib.h"
#include "general/platform/platform.h"
#include "general/text/stringa.h"

namespace {

constexpr int textSize = 257; // of a string resource, with its zero

} // namespace

int NX_StringA::strLoad(int id) {
    char buffer[textSize] = {};
    NX_App* const app = NxAppPDll();
    int const len = app != nullptr ? app->resTextLoad(buffer, textSize, id) : -1;
    *this = len != -1 ? buffer : "";
    return len;
}

int NX_StringA::strLoad(NX_ResLib lib, int id) {
    char buffer[textSize] = {};
    int const len = lib.resTextLoad(buffer, textSize, id);
    *this = len != -1 ? buffer : "";
    return len;
}

int NX_StringA::nameTmp() {
    for (char const* variable : {"TMP", "TEMP", "TMPDIR"}) {
        NX_EnvString const dir(variable);
        if (dir.nameType() == NX_FileNameDir)
            return nameTmp(dir);
    }
    return nameTmp(NX_StringA());
}

int NX_StringA::nameTmp(NX_StringA const& dir) {
    constexpr unsigned int numbers = 1000;
    NX_StringA const directory(dir); // it may be this string
    NX_App const* const app = NxAppPDll();
    char const* const stem =
        app != nullptr && app->appName().strLen() > 0 ? app->appName().dataPConst() : "vx7base";
    unsigned int const start = static_cast<unsigned int>(GetCurrentProcessId());
    NX_StringA name;
    for (unsigned int i = 0; i < numbers; ++i) {
        NX_StringA last;
        last.strPrintF("%s.%03d", stem, static_cast<int>((start % numbers + i) % numbers));
        name = NX_StringA(directory, last.dataPConst(), last.strLen(), NX_FileTypeFile);
        if (name.nameType() == NX_FileNameMissing) {
            *this = name;
            return 0;
        }
    }
    NxERROR(errorNumFileExists);
    return NxErrorBufFileName(name);
}
