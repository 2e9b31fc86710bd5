// general/finfo/fileinfo.cpp - file records: making, comparing and showing them.
#include "general/finfo/fileinfo.h"

#include <cstring>
#include <ostream>

#include "general/finfo/dirinfo.h"
#include "general/finfo/file.h"
#include "general/finfo/fileagep.h"

namespace {

constexpr struct {
    DWORD attribute;
    unsigned int type;
    char letter;
} attributeTypes[] = {
    {FILE_ATTRIBUTE_ARCHIVE, NX_FileInfoArchive, 'A'}, {FILE_ATTRIBUTE_DIRECTORY, NX_FileInfoDir, 'D'},
    {FILE_ATTRIBUTE_HIDDEN, NX_FileInfoHidden, 'H'},   {FILE_ATTRIBUTE_READONLY, NX_FileInfoReadOnly, 'R'},
    {FILE_ATTRIBUTE_SYSTEM, NX_FileInfoSystem, 'S'},
};

unsigned int textLength(char const* text) {
    return static_cast<unsigned int>(std::strlen(text));
}

// The name under which the system knows the record's file.
NX_StringA pathOf(NX_FileInfo const& info) {
    return info.dirP() != nullptr ? static_cast<NX_StringA const&>(*info.dirP()) + info : NX_StringA(info);
}

} // namespace

NX_FileInfo::NX_FileInfo(NX_StringA const& name, NX_FileAgeType type) : NX_StringA(name) {
    infoReadSys(dataPConst(), type);
}

NX_FileInfo::NX_FileInfo(NX_StringA const& name, NX_DirInfo* parent, NX_FileAgeType type, int asDir)
    : NX_StringA(asDir != 0 ? name.nameOfDir() : name), parent_(parent) {
    if (asDir == 0) {
        infoReadSys(dataPConst(), type);
        return;
    }
    NX_StringA entry(*this);
    unsigned int const length = strLen();
    if (length == 0 || nameIsDrive()) {
        infoReadSys((entry + ".").dataPConst(), type);
    } else if (NX_StringA::nameIsDir() != 0) { // a root has an entry only where the system lists it in itself
        if (!infoReadSys((entry + ".").dataPConst(), type)) {
            entry.strLen(length - 1, 0);
            infoReadSys((entry + ".").dataPConst(), type);
        }
    } else {
        if (length < name.strLen() && nameIsDirSep(name[length]))
            *this += name[length]; // the separator as it was written
        nameIsDir(1);
        infoReadSys(entry.dataPConst(), type);
    }
}

NX_FileInfo::NX_FileInfo(NX_FileInfoApply* apply, WIN32_FIND_DATAA const* entry)
    : NX_StringA(apply->prefix != nullptr ? apply->prefix->dataPConst() : nullptr,
                 apply->prefix != nullptr ? apply->prefix->itemQty() : 0, entry->cFileName,
                 textLength(entry->cFileName)),
      parent_(apply->parent) {
    infoSet(apply->age, entry);
}

NX_FileInfo::NX_FileInfo(NX_StringA const& name, NX_DirInfo* parent, NX_FileAgeType type,
                         WIN32_FIND_DATAA const* entry)
    : NX_StringA(name), parent_(parent) {
    infoSet(type, entry);
}

void NX_FileInfo::infoSet(NX_FileAgeType type, WIN32_FIND_DATAA const* entry) {
    age_ = nxFileAgeOf(*entry, type);
    size_ = entry->nFileSizeLow;
    type_ = 0;
    for (auto const& each : attributeTypes)
        if ((entry->dwFileAttributes & each.attribute) != 0)
            type_ |= each.type;
}

bool NX_FileInfo::infoReadSys(char const* name, NX_FileAgeType type) {
    WIN32_FIND_DATAA entry;
    HANDLE const search = FindFirstFileA(name, &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    infoSet(type, &entry);
    return true;
}

int NX_FileInfo::nameCompare(NX_FileInfo const& other) const {
    return strCompare(static_cast<NX_StringA const&>(other), NX_CompareFold);
}

int NX_FileInfo::sizeCompare(NX_FileInfo const& other) const {
    return size_ < other.size_ ? -1 : size_ > other.size_;
}

int NX_FileInfo::dataCompare(NX_FileInfo const& other) const {
    return NX_File::fileCompare(pathOf(*this), pathOf(other));
}

int NX_FileInfo::ageCompare(NX_FileInfo const* a, NX_FileInfo const* b) {
    return a->ageCompare(*b);
}

int NX_FileInfo::nameCompare(NX_FileInfo const* a, NX_FileInfo const* b) {
    return a->nameCompare(*b);
}

int NX_FileInfo::sizeCompare(NX_FileInfo const* a, NX_FileInfo const* b) {
    return a->sizeCompare(*b);
}

int NX_FileInfo::dataCompare(NX_FileInfo const* a, NX_FileInfo const* b) {
    return a->dataCompare(*b);
}

std::ostream& operator<<(std::ostream& os, NX_FileInfo const& info) {
    os << static_cast<NX_StringA const&>(info) << ' ' << info.fileSize() << ' ' << info.fileAge() << ' ';
    for (auto const& each : attributeTypes)
        os << ((info.fileType() & each.type) != 0 ? each.letter : '-');
    return os << '\n';
}

std::ostream& operator<<(std::ostream& os, NX_FileInfoVec const& coll) {
    for (unsigned int n = 0; n < coll.itemQty(); ++n)
        os << coll[n];
    return os;
}
