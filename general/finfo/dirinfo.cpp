// general/finfo/dirinfo.cpp - directory records: reading a tree, copying one, comparing and showing records.
#include "general/finfo/dirinfo.h"

#include <cstring>
#include <ostream>

#include "general/finfo/dirsubs.h"
#include "general/finfo/findpattern.h"

// What holds for all directories of a tree while it is read.
struct NX_DirInfo::ReadPlan {
    NX_StringA pattern;
    SortType sort;
    NX_StringVecA const& leaveOut;
    NX_FileFindType find;
    NX_FileAgeType age;
};

namespace {

NX_StringA filePattern(NX_StringA const& name, char const* pattern) {
    NX_CharASub const own(name.nameBodyExt());
    if (own.itemQty() != 0)
        return NX_StringA(own);
    return pattern != nullptr && *pattern != 0 ? pattern : "*.*";
}

// Of an entry of `dir` (null: of the current directory), ending in a separator.
NX_StringA subName(NX_DirInfo const* dir, char const* entry) {
    auto const length = static_cast<unsigned int>(std::strlen(entry));
    if (dir == nullptr) {
        NX_StringA name(entry, length);
        name.nameDirSep();
        return name;
    }
    NX_StringA name(0u, dir->strLen() + length + 2);
    name.NX_TextVecA::dataAppend(dir->dataPConst(), dir->strLen());
    name.NX_TextVecA::dataAppend(entry, length);
    name.nameDirSep();
    return name;
}

} // namespace

NX_DirInfo::NX_DirInfo(NX_StringA const& name, SortType sort, NX_StringVecA const& leaveOut,
                       NX_FileFindType find, NX_DirInfo* parent, NX_FileAgeType age, char const* pattern)
    : NX_FileInfo(name, parent, age, 1) {
    treeRead({filePattern(name, pattern), sort, leaveOut, find, age});
}

NX_DirInfo::NX_DirInfo(NX_DirInfoApply* apply, WIN32_FIND_DATAA const* entry)
    : NX_FileInfo(subName(apply->parent, entry->cFileName), apply->parent, apply->age, entry) {}

NX_DirInfo::NX_DirInfo(NX_DirInfo const& other)
    : NX_FileInfo(other), files_(other.files_), subs_(other.subs_) {
    if (subs_ != nullptr)
        subs_->ownerInc();
    treeAdopt();
}

NX_DirInfo& NX_DirInfo::operator=(NX_DirInfo const& other) {
    if (this == &other)
        return *this;
    if (other.subs_ != nullptr)
        other.subs_->ownerInc();
    NXS_DirInfoSubs* const old = subs_; // may hold `other`
    subs_ = other.subs_;
    files_ = other.files_;
    NX_FileInfo::operator=(other);
    if (old != nullptr)
        old->ownerDec();
    treeAdopt();
    return *this;
}

NX_DirInfo::~NX_DirInfo() {
    if (subs_ != nullptr)
        subs_->ownerDec();
}

// Fills both lists by one search: each takes of its entries what a search of its own would find.
void NX_DirInfo::listsRead(ReadPlan const& plan) {
    struct Lists {
        NXS_FindFilter fileFilter, subFilter;
        NX_FileInfoApply files;
        NX_DirInfoApply subs;
    };
    NX_StringVecA const none;
    subs_ = new NXS_DirInfoSubs;
    Lists lists{{nxFindType(plan.find), plan.leaveOut},
                {NX_FileFindSubDir, none},
                {&files_, this, plan.age, nullptr},
                {subs_, this, plan.age}};
    auto const apply = [](void* context, WIN32_FIND_DATAA const* entry) {
        auto& into = *static_cast<Lists*>(context);
        if (into.fileFilter.passes(*entry))
            NX_FileInfoVec::infoAppendSys(&into.files, entry);
        if (into.subFilter.passes(*entry))
            NX_DirInfoVec::infoAppendSys(&into.subs, entry);
    };
    NxFileInfoApplySys(apply, &lists, *this + plan.pattern, none, NX_FileFindAll);
}

// The record stays where it is until its whole tree is read, so its children can point at it.
void NX_DirInfo::treeRead(ReadPlan const& plan) {
    if (!typeIsDir())
        return;
    if (plan.pattern.strCompare("*.*", NX_CompareExact) == 0) {
        listsRead(plan);
    } else {
        files_.infoRead(*this + plan.pattern, plan.leaveOut, plan.find, this, plan.age);
        subs_ = new NXS_DirInfoSubs(NX_DirInfoVec(*this, NX_FileFindSubDir, this, plan.age, "*.*"));
    }
    if (subs_->itemQty() == 0)
        return;
    if (plan.sort != nullptr)
        subs_->Base::dataSort(plan.sort);
    NX_DirInfo* const subs = subs_->dataPMod();
    for (unsigned int n = 0; n < subs_->itemQty(); ++n)
        subs[n].treeRead(plan);
}

// Whether the children already point here; all children of a record point at the same place.
bool NX_DirInfo::treeIsAdopted() const {
    if (files_.itemQty() != 0 && files_[0].dirP() != this)
        return false;
    if (subs_ == nullptr)
        return true;
    return subs_->ownerIsSole() && (subs_->itemQty() == 0 || subs_->itemPConst(0)->dirP() == this);
}

void NX_DirInfo::treeAdopt() {
    if (files_.itemQty() != 0 && files_.itemPConst(0)->dirP() != this)
        files_.infoAdopt(this);
    if (subs_ == nullptr)
        return;
    if (!subs_->ownerIsSole()) {
        auto* const own = new NXS_DirInfoSubs(*subs_);
        subs_->ownerDec();
        subs_ = own;
    }
    if (subs_->itemQty() == 0 || subs_->itemPConst(0)->dirP() == this)
        return;
    NX_DirInfo* const subs = subs_->dataPMod(); // a private copy, whose records have their own trees
    for (unsigned int n = 0; n < subs_->itemQty(); ++n)
        subs[n].parentSet(this);
}

NX_DirInfoVec const& NX_DirInfo::subColl() const {
    static NX_DirInfoVec const& none = *new NX_DirInfoVec;
    return subs_ != nullptr ? *subs_ : none;
}

NX_DirInfoVec const* NX_DirInfo::subCollP() const {
    return subs_;
}

int NX_DirInfo::ageCompare(NX_DirInfo const* a, NX_DirInfo const* b) {
    return a->ageCompare(*b);
}

int NX_DirInfo::nameCompare(NX_DirInfo const* a, NX_DirInfo const* b) {
    return a->nameCompare(*b);
}

int NX_DirInfo::sizeCompare(NX_DirInfo const* a, NX_DirInfo const* b) {
    return a->sizeCompare(*b);
}

std::ostream& operator<<(std::ostream& os, NX_DirInfo const& info) {
    return os << static_cast<NX_FileInfo const&>(info) << info.fileColl() << info.subColl();
}

std::ostream& operator<<(std::ostream& os, NX_DirInfoVec const& coll) {
    for (unsigned int n = 0; n < coll.itemQty(); ++n)
        os << coll[n];
    return os;
}
