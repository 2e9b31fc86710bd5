// Finds files and directories of a catalogue by their names.
#include "examples/catalog/catalogue.h"
#include "examples/catalog/commands.h"
#include "examples/catalog/errors.h"

#include <iostream>

namespace {

// A wildcard, or a regular expression between slashes, which may match any part of the name.
class Pattern {
public:
    explicit Pattern(NX_StringA const& text) : text_(text) {
        unsigned int const length = text.strLen();
        isRegExp_ = length >= 2 && *text.itemPConst(0) == '/' && *text.itemPConst(length - 1) == '/';
        if (isRegExp_)
            regExp_ = NX_StringA(text.dataPConst() + 1, length - 2);
    }

    bool isOk() const { return !isRegExp_ || regExp_.expIsOk() != 0; }

    bool matches(NX_StringA const& name) const {
        return isRegExp_ ? name.itemNum(regExp_, 0) != NX_NO_INDEX
                         : name.nameWildCompare(text_, NX_CompareWild) == 0;
    }

private:
    NX_StringA const text_;
    NX_RegExpA regExp_;
    bool isRegExp_ = false;
};

void find(NX_DirInfo const& dir, Pattern const& pattern) {
    NX_StringA const& path = dir;
    for (NX_FileInfoVecPtrConst file(dir.fileColl()); file.itemIsAvail() != 0; ++file)
        if (pattern.matches(*file))
            std::cout << path + *file << '\n';
    for (NX_DirInfoVecPtrConst sub(dir.subColl()); sub.itemIsAvail() != 0; ++sub) {
        if (pattern.matches(NX_StringA(sub->nameNodeLast())))
            std::cout << static_cast<NX_StringA const&>(*sub) << '\n';
        find(*sub, pattern);
    }
}

} // namespace

int commandFind(Options const& options) {
    Pattern const pattern(options.second);
    if (!pattern.isOk()) {
        NxERROR(errorRegExp);
        return NxErrorBufText(options.second.dataPConst());
    }
    Catalogue catalogue;
    if (catalogue.fileLoad(options.first) == -1)
        return -1;
    find(catalogue.root(), pattern);
    return 0;
}
