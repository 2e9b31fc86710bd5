// general/finfo/stringsearch.cpp - looking for a file along directories, and for names by a wildcard pattern.
#include "general/error/appup.h"
#include "general/finfo/env.h"
#include "general/finfo/fileinfo.h"
#include "general/platform/platform.h"
#include "general/text/namewalk.h"
#include "general/text/stringa.h"

namespace {

constexpr unsigned int dirBufferSize = 1025;

// One search: a relative name, tested below one directory after the other.
class Search {
public:
    Search(NX_StringA const& wanted, int dirToo) : name(wanted), dirToo_(dirToo) {}

    bool isThere(NX_StringA const& candidate) const {
        NX_FileNameType const type = candidate.nameType();
        return type == NX_FileNameFile || (dirToo_ && type == NX_FileNameDir);
    }

    // On success the name found, with its full path, is in found().
    bool inDir(NX_StringA const& dir) {
        if (dir.strLen() == 0)
            return false;
        return accept(NX_StringA(dir, name.dataPConst(), name.strLen(), NX_FileTypeFile));
    }

    // The directories of a list; double quotes around one are taken off.
    bool inList(NX_StringA const& list) {
        for (unsigned int start = 0; start < list.strLen();) {
            unsigned int end = list(start).strCharFirst(nxNameListSep);
            if (end == NX_NO_INDEX)
                end = list.strLen();
            NX_StringA dir = list.dataStringGet(start, end - start, NX_StripBoth);
            if (dir.strLen() >= 2 && dir[0] == '"' && dir[dir.strLen() - 1] == '"')
                dir = dir.dataStringGet(1, dir.strLen() - 2, NX_StripNone);
            if (inDir(dir))
                return true;
            start = end + 1;
        }
        return false;
    }

    bool accept(NX_StringA candidate) {
        if (!isThere(candidate) || candidate.nameFull() != 0)
            return false;
        found_ = candidate;
        return true;
    }

    NX_StringA const& found() const { return found_; }

private:
    NX_StringA const& name;
    int dirToo_;
    NX_StringA found_;
};

// The directory the program was started from: that of the application's name, else that of the program's
// module.
NX_StringA appDir() {
    char const* const full = nxAppNameFullP();
    NX_StringA const dir = NX_StringA(full).nameOfDir();
    if (dir.strLen() > 0)
        return dir;
    char buffer[dirBufferSize];
    DWORD const len = GetModuleFileNameA(nullptr, buffer, sizeof buffer);
    return NX_StringA(buffer, len < sizeof buffer ? len : 0).nameOfDir();
}

template <class Ask>
NX_StringA dirOfSys(Ask ask) {
    char buffer[dirBufferSize];
    UINT const len = ask(buffer, sizeof buffer);
    return NX_StringA(buffer, len < sizeof buffer ? len : 0);
}

} // namespace

int NX_StringA::nameFind() const {
    return Search(*this, 0).isThere(*this);
}

int NX_StringA::nameFind(NX_StringA const& dir, int here) {
    return nameFind(dir, here, 0);
}

int NX_StringA::nameFind(NX_StringA const& dir, int here, int dirToo) {
    if (strLen() == 0)
        return 0;
    NX_StringA const name(*this);
    Search search(name, dirToo);
    bool found = false;
    if (name.nameIsAbs() || nxNameDriveLen(name.dataPConst(), name.strLen()) != 0)
        found = search.accept(name);
    else
        found = search.inDir(dir) || (dir.strCharFirst(nxNameListSep) != NX_NO_INDEX && search.inList(dir)) ||
                search.inDir(appDir()) || search.inDir(dirOfSys(GetSystemDirectoryA)) ||
                search.inDir(dirOfSys(GetWindowsDirectoryA)) || search.inList(NX_EnvString("PATH")) ||
                (here && search.accept(name));
    if (found)
        *this = search.found();
    return found;
}

int NX_StringA::nameFind(int(NX_FASTCALL* compare)(NX_FileInfo const*, NX_FileInfo const*),
                         NX_FileFindType find, NX_FileAgeType age, int withDir) {
    NX_FileInfoVec const names(NX_StringA(nameDir()), find, nullptr, age,
                               NX_StringA(nameBodyExt()).dataPConst(), withDir);
    if (names.itemQty() == 0)
        return 0;
    *this = names[compare != nullptr ? names.itemMin(compare) : 0];
    return 1;
}

int NX_StringA::nameFindFirst(NX_FileFindType find) {
    return nameFind(nullptr, find, ageWrite, 1);
}

int NX_StringA::nameFindNewest(NX_FileFindType find, NX_FileAgeType age) {
    NX_FileInfoVec const names(NX_StringA(nameDir()), find, nullptr, age,
                               NX_StringA(nameBodyExt()).dataPConst(), 1);
    if (names.itemQty() == 0)
        return 0;
    unsigned int newest = 0;
    for (unsigned int i = 1; i < names.itemQty(); ++i) {
        if (names[i].fileAge().ageCompareExact(names[newest].fileAge()) > 0)
            newest = i;
    }
    *this = names[newest];
    return 1;
}
