// general/finfo/fileinfovec.cpp - the enumeration of a directory, and lists filled by it.
#include <atomic>
#include <cstring>

#include "general/finfo/fileinfo.h"
#include "general/finfo/findpattern.h"
#include "general/text/textcompare.h"

namespace {

// The attributes of the classes in the low byte of `classes`.
DWORD attributeMask(int classes) {
    static constexpr DWORD masks[] = {FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_HIDDEN,
                                      FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_SYSTEM};
    DWORD attributes = 0;
    for (int bit = 0; bit < 5; ++bit)
        if ((classes >> bit & 1) != 0)
            attributes |= masks[bit];
    return attributes;
}

bool isLeftOut(char const* name, NX_StringVecA const& leaveOut) {
    int length = -1;
    for (unsigned int n = 0; n < leaveOut.itemQty(); ++n) {
        if (length < 0)
            length = static_cast<int>(std::strlen(name));
        NX_StringA const& pattern = leaveOut[n];
        if (NxTextCompare(name, length, pattern.dataPConst(), static_cast<int>(pattern.strLen()),
                          NX_CompareWildFold) == 0)
            return true;
    }
    return false;
}

void apply(void* context, WIN32_FIND_DATAA const* entry) {
    NX_FileInfoVec::infoAppendSys(static_cast<NX_FileInfoApply*>(context), entry);
}

std::atomic<std::uint32_t> found = 0;

} // namespace

NX_StringA nxFindPattern(NX_StringA const& where, char const* pattern) {
    bool const none = pattern == nullptr || *pattern == 0;
    if (none && where.nameIsWild())
        return where;
    char const* const text = none ? "*.*" : pattern;
    return {where, text, static_cast<unsigned int>(std::strlen(text)), NX_FileTypeFile};
}

NX_FileFindType nxFindType(NX_FileFindType find) {
    return static_cast<NX_FileFindType>(find & ~(find << 8));
}

unsigned int NxFileInfoFound() {
    return found.load(std::memory_order_relaxed);
}

NXS_FindFilter::NXS_FindFilter(NX_FileFindType find, NX_StringVecA const& leaveOut)
    : leaveOut_(leaveOut), wanted_(attributeMask(find)), refused_(attributeMask(find >> 8)) {}

bool NXS_FindFilter::passes(WIN32_FIND_DATAA const& entry) const {
    char const* const name = entry.cFileName;
    if (name[0] == '.' || (name[0] != 0 && name[1] == '.' && name[2] == 0))
        return false; // the second test also takes two-character names such as "a.": kept so
    if ((wanted_ != 0 && (entry.dwFileAttributes & wanted_) == 0) || (entry.dwFileAttributes & refused_) != 0)
        return false;
    return !isLeftOut(name, leaveOut_);
}

void NxFileInfoApplySys(void (*apply)(void* context, WIN32_FIND_DATAA const* entry), void* context,
                        NX_StringA const& pattern, NX_StringVecA const& leaveOut, NX_FileFindType find) {
    NXS_FindFilter const filter(find, leaveOut);
    WIN32_FIND_DATAA entry;
    // A hint that saves asking for the times of files nobody wants; the attributes still decide.
    FINDEX_SEARCH_OPS const kind =
        filter.isForDirectories() ? FindExSearchLimitToDirectories : FindExSearchNameMatch;
    HANDLE const search =
        FindFirstFileExA(pattern.dataPConst(), FindExInfoStandard, &entry, kind, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        if (!filter.passes(entry))
            continue;
        found.fetch_add(1, std::memory_order_relaxed);
        apply(context, &entry);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
}

NX_FileInfoVec::NX_FileInfoVec(NX_StringA const& where, NX_FileFindType find, NX_DirInfo* parent,
                               NX_FileAgeType age, char const* pattern, int withDir)
    : NX_FileInfoVec(where, NX_StringVecA(), find, parent, age, pattern, withDir) {}

NX_FileInfoVec::NX_FileInfoVec(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                               NX_DirInfo* parent, NX_FileAgeType age, char const* pattern, int withDir) {
    NX_StringA const search(nxFindPattern(where, pattern));
    NX_CharASub const dir(search.nameDir());
    NX_FileInfoApply context{this, parent, age, withDir != 0 ? &dir : nullptr};
    NxFileInfoApplySys(apply, &context, search, leaveOut, nxFindType(find));
}

void NX_FileInfoVec::infoRead(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                              NX_DirInfo* parent, NX_FileAgeType age) {
    NX_FileInfoApply context{this, parent, age, nullptr};
    bool const whole = where.strLen() == 0 || where.nameIsDir();
    NxFileInfoApplySys(apply, &context, whole ? where + "*.*" : where, leaveOut, nxFindType(find));
}

void NX_FileInfoVec::infoAppendSys(NX_FileInfoApply* apply, WIN32_FIND_DATAA const* entry) {
    *apply->coll += NX_FileInfo(apply, entry);
}

void NX_FileInfoVec::infoAdopt(NX_DirInfo* parent) {
    NX_FileInfo* const items = dataPMod();
    for (unsigned int n = 0; n < itemQty(); ++n)
        items[n].parentSet(parent);
}
