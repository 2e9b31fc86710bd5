// Compares two trees, from catalogues or from directories.
#include "examples/catalog/catalogue.h"
#include "examples/catalog/commands.h"

#include <iostream>

namespace {

NX_StringA lastNode(NX_FileInfo const& info) {
    return NX_StringA(info.nameNodeLast());
}

int NX_FASTCALL byNode(NX_FileInfo const* const* a, NX_FileInfo const* const* b) {
    return lastNode(**a).strCompare(lastNode(**b), NX_CompareExact);
}

// The records of a list in the order of their bare names.
using Names = NX_VecT<NX_FileInfo const*>;

template <class Cursor, class List>
Names sorted(List const& list) {
    Names names;
    for (Cursor item(list); item.itemIsAvail() != 0; ++item)
        names += &*item;
    names.dataSort(byNode);
    return names;
}

class Difference {
public:
    Difference(NX_DirInfo const& oldRoot, NX_DirInfo const& newRoot, bool contents)
        : oldRoot_(oldRoot.strLen()), newRoot_(newRoot.strLen()), contents_(contents) {}

    // -1 when contents could not be compared, else 0; differs() tells the rest.
    int dirs(NX_DirInfo const& oldDir, NX_DirInfo const& newDir) {
        if (merge(sorted<NX_FileInfoVecPtrConst>(oldDir.fileColl()),
                  sorted<NX_FileInfoVecPtrConst>(newDir.fileColl()), &Difference::files) == -1)
            return -1;
        return merge(sorted<NX_DirInfoVecPtrConst>(oldDir.subColl()),
                     sorted<NX_DirInfoVecPtrConst>(newDir.subColl()), &Difference::subs);
    }

    bool differs() const { return differs_; }

private:
    using Both = int (Difference::*)(NX_FileInfo const&, NX_FileInfo const&);

    int merge(Names const& oldNames, Names const& newNames, Both both) {
        unsigned int o = 0;
        unsigned int n = 0;
        while (o < oldNames.itemQty() || n < newNames.itemQty()) {
            int order = o == oldNames.itemQty() ? 1 : n == newNames.itemQty() ? -1 : 0;
            if (order == 0)
                order = byNode(oldNames.itemPConst(o), newNames.itemPConst(n));
            if (order < 0)
                tell("removed", *oldNames[o++], oldRoot_);
            else if (order > 0)
                tell("added  ", *newNames[n++], newRoot_);
            else if ((this->*both)(*oldNames[o++], *newNames[n++]) == -1)
                return -1;
        }
        return 0;
    }

    int files(NX_FileInfo const& oldFile, NX_FileInfo const& newFile) {
        int changed = NX_FileInfo::sizeCompare(&oldFile, &newFile) != 0 ||
                      NX_FileInfo::ageCompare(&oldFile, &newFile) != 0;
        if (changed == 0 && contents_)
            changed = NX_FileInfo::dataCompare(&oldFile, &newFile);
        if (changed == -1)
            return -1;
        if (changed != 0)
            tell("changed", newFile, newRoot_);
        return 0;
    }

    int subs(NX_FileInfo const& oldDir, NX_FileInfo const& newDir) {
        return dirs(static_cast<NX_DirInfo const&>(oldDir), static_cast<NX_DirInfo const&>(newDir));
    }

    // The path below the root: directories carry the whole path, files their bare name.
    void tell(char const* what, NX_FileInfo const& info, unsigned int rootLength) {
        differs_ = true;
        NX_StringA path(info);
        if (info.typeIsDir() == 0 && info.dirP() != nullptr)
            path = *info.dirP() + info;
        std::cout << what << "  " << path(rootLength < path.strLen() ? rootLength : 0) << '\n';
    }

    unsigned int const oldRoot_;
    unsigned int const newRoot_;
    bool const contents_;
    bool differs_ = false;
};

} // namespace

int commandDiff(Options const& options) {
    // A directory is read the way the catalogue beside it was, so the catalogue comes first.
    bool const newFirst = nameIsTree(options.first);
    Catalogue leader;
    if (leader.read(newFirst ? options.second : options.first) == -1)
        return -1;
    Catalogue follower(leader.choices());
    if (follower.read(newFirst ? options.first : options.second) == -1)
        return -1;
    Catalogue const& older = newFirst ? follower : leader;
    Catalogue const& newer = newFirst ? leader : follower;
    Difference difference(older.root(), newer.root(), options.contents);
    if (difference.dirs(older.root(), newer.root()) == -1)
        return -1;
    return difference.differs() ? 1 : 0;
}
