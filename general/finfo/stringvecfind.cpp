// general/finfo/stringvecfind.cpp - string vectors filled with the names that a search of the file system
// finds.
#include "general/finfo/fileinfo.h"
#include "general/finfo/findpattern.h"
#include "general/platform/platform.h"
#include "general/text/stringvec.h"

// What the search hands back with every entry.
struct NX_FileNameApply {
    NX_StringVecA* coll;
    NX_StringA prefix;
};

NX_StringVecA::NX_StringVecA(NX_StringA const& name, NX_FileFindType type, char const* text, int withDir) {
    infoRead(name, NX_StringVecA(), type, text, withDir);
}

NX_StringVecA::NX_StringVecA(NX_StringA const& name, NX_StringVecA const& leaveOut, NX_FileFindType type,
                             char const* text, int withDir) {
    infoRead(name, leaveOut, type, text, withDir);
}

void NX_StringVecA::infoRead(NX_StringA const& name, NX_StringVecA const& leaveOut, NX_FileFindType type,
                             char const* text, int withDir) {
    NX_FileNameType const kind = name.nameType();
    if (kind != NX_FileNameDir && kind != NX_FileNameWild)
        return;
    NX_StringA const pattern = kind == NX_FileNameWild ? name : nxFindPattern(name, text);
    NX_FileNameApply apply{this, withDir ? NX_StringA(pattern.nameDir()) : NX_StringA()};
    auto const append = [](void* context, WIN32_FIND_DATAA const* found) {
        infoAppendSys(static_cast<NX_FileNameApply*>(context), found);
    };
    NxFileInfoApplySys(append, &apply, pattern, leaveOut, nxFindType(type));
}

void NX_StringVecA::infoAppendSys(NX_FileNameApply* apply, WIN32_FIND_DATAA const* found) {
    NX_StringA name(apply->prefix);
    name += found->cFileName;
    *apply->coll += name;
}
