// general/finfo/stringfile.cpp - what the string asks the file system about the name it holds.
#include "general/error/errorman.h"
#include "general/platform/platform.h"
#include "general/text/namewalk.h"
#include "general/text/stringa.h"

namespace {

// True for the body of a name that may be a device's: con, prn, aux, nul, com1 to com9, lpt1 to lpt9.
bool isDeviceBody(NX_CharASub const& body) {
    for (char const* name : {"con", "prn", "aux", "nul"}) {
        if (body.strCompare(name, NX_CompareFold) == 0)
            return true;
    }
    if (body.itemQty() != 4 || body.dataPConst()[3] < '1' || body.dataPConst()[3] > '9')
        return false;
    NX_CharASub const three(body.collP(), body.itemNum(), 3);
    return three.strCompare("com", NX_CompareFold) == 0 || three.strCompare("lpt", NX_CompareFold) == 0;
}

// The full path of a terminated name; empty when the system refuses.
NX_StringA fullPath(char const* name) {
    char buffer[MAX_PATH + 1];
    DWORD const len = GetFullPathNameA(name, sizeof buffer, buffer, nullptr);
    if (len < sizeof buffer)
        return NX_StringA(buffer, len);
    NX_StringA large;
    large.strLen(len, 0);
    DWORD const again = GetFullPathNameA(name, len + 1, large.dataPMod(), nullptr);
    large.strLen(again <= len ? again : 0, 0);
    return large;
}

// True for a full path below \\.\, where devices are.
bool isDevicePath(NX_StringA const& path) {
    char const* p = path.dataPConst();
    return path.strLen() > 4 && nxNameIsSep(p[0]) && nxNameIsSep(p[1]) && p[2] == '.' && nxNameIsSep(p[3]);
}

} // namespace

// One question to the system: what lies under the name.
NX_FileNameType NX_StringA::nameTypeSys() const {
    constexpr DWORD attributeDevice = 0x40;
    DWORD const attributes = GetFileAttributesA(dataPConst());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return NX_FileNameMissing;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return NX_FileNameDir;
    return (attributes & attributeDevice) != 0 ? NX_FileNameDevice : NX_FileNameFile;
}

NX_FileNameType NX_StringA::nameType() const {
    if (strLen() == 0)
        return NX_FileNameEmpty;
    if (nameIsDrive())
        return NX_FileNameDevice;
    if (nameIsWild())
        return NX_FileNameWild;
    // Names of devices lead to one whatever the directory and the extension, where the system has them.
    if (isDeviceBody(nameBody()) && isDevicePath(fullPath(dataPConst())))
        return NX_FileNameDevice;
    return nameTypeSys();
}

int NX_StringA::nameIsDir(int mark) {
    int const isDir = nameType() == NX_FileNameDir;
    if (mark)
        nameDirSep();
    return isDir;
}

int NX_StringA::nameFull() {
    return nameFull(dataPConst());
}

int NX_StringA::nameFull(char const* name) {
    NX_StringA const given(name); // it may be this string's text
    SetLastError(0);
    NX_StringA const full = given.strLen() > 0 ? fullPath(given.dataPConst()) : NX_StringA();
    if (full.strLen() == 0) {
        long const code = static_cast<long>(GetLastError());
        NxERROR(code == 0 || NxErrorTypeOfSys(code) == errorTypeNotFound ? errorNumFileNotFound
                                                                         : errorNumSystem);
        return NxErrorBufFileName(given);
    }
    *this = full;
    return 0;
}
