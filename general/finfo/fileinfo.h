// general/finfo/fileinfo.h - records of found files, lists of them, and the enumeration that fills both.
//
// A record is the file's name with its time, size and attributes; a record found in a directory tree also
// knows the directory record that holds it, which it does not own and which must outlive it. Sizes are in
// bytes, their low 32 bits only. Lists are typed vectors: copying one shares its block. Failure: reading
// records raises no errors; what cannot be found leaves zeros or an empty list.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "general/collm/v4x.h"
#include "general/finfo/fileage.h"
#include "general/text/stringa.h"

class NX_DirInfo;
class NX_FileInfoVec;
class NX_StringVecA;

// What an enumeration hands to the routine that makes records of the entries it finds.
struct NX_FileInfoApply {
    NX_FileInfoVec* coll;      // the list being filled
    NX_DirInfo* parent;        // the directory record that the new records belong to, or null
    NX_FileAgeType age;        // which time to keep
    NX_CharASub const* prefix; // what to put before the names, or null
};

// Bits of a record's type word.
enum NX_FileInfoType : unsigned int {
    NX_FileInfoArchive = 0x01,
    NX_FileInfoDir = 0x02,
    NX_FileInfoHidden = 0x04,
    NX_FileInfoReadOnly = 0x08,
    NX_FileInfoSystem = 0x10,
};

class NX_EXPORT NX_FileInfo : public NX_StringA {
public:
    NX_FileInfo() = default; // no name, everything else zero
    // The entry `name` with the chosen time. A missing one keeps the name; everything else is zero.
    NX_FileInfo(NX_StringA const& name, NX_FileAgeType type);
    // The same with a parent. With `asDir` non-zero: the directory of `name`, named by the directory part
    // ending in a separator; the current directory when there is no directory part.
    NX_FileInfo(NX_StringA const& name, NX_DirInfo* parent, NX_FileAgeType type, int asDir);
    // From one found entry.
    NX_FileInfo(NX_FileInfoApply* apply, WIN32_FIND_DATAA const* entry);

    NX_DirInfo* dirP() const { return parent_; } // null for a record made alone
    NX_FileAge8 const& fileAge() const { return age_; }
    unsigned long fileSize() const { return size_; }
    unsigned int fileType() const { return type_; } // NX_FileInfoType bits
    int typeIsDir() const { return (type_ & NX_FileInfoDir) != 0; }
    int typeIsFile() const { return (type_ & NX_FileInfoDir) == 0; }

    // Comparisons: negative, 0 or positive. Times within two seconds are equal, names compare folded;
    // dataCompare compares the files' contents as NX_File::fileCompare does, with its results.
    int ageCompare(NX_FileAge8 const& age) const { return age_.ageCompare(age); }
    int ageCompare(NX_FileInfo const& other) const { return age_.ageCompare(other.age_); }
    using NX_StringA::nameCompare;
    int nameCompare(NX_FileInfo const& other) const;
    int sizeCompare(NX_FileInfo const& other) const;
    int dataCompare(NX_FileInfo const& other) const;
    // The same as functions to sort by.
    static int NX_FASTCALL ageCompare(NX_FileInfo const* a, NX_FileInfo const* b);
    static int NX_FASTCALL nameCompare(NX_FileInfo const* a, NX_FileInfo const* b);
    static int NX_FASTCALL sizeCompare(NX_FileInfo const* a, NX_FileInfo const* b);
    static int NX_FASTCALL dataCompare(NX_FileInfo const* a, NX_FileInfo const* b);

    // The record's own contents, and the whole through the stream operators below.
    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;
    NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const override;

protected:
    friend class NX_DirInfo;
    friend class NX_FileInfoVec;

    // From one found entry, under a name other than the entry's.
    NX_FileInfo(NX_StringA const& name, NX_DirInfo* parent, NX_FileAgeType type,
                WIN32_FIND_DATAA const* entry);
    void parentSet(NX_DirInfo* parent) { parent_ = parent; }
    void infoSet(NX_FileAgeType type, WIN32_FIND_DATAA const* entry);
    bool infoReadSys(char const* name, NX_FileAgeType type);

private:
    NX_DirInfo* parent_ = nullptr;
    NX_FileAge8 age_ = {};
    std::uint32_t size_ = 0;
    std::uint32_t type_ = 0;
};
static_assert(sizeof(void*) != 4 || sizeof(NX_FileInfo) == 28);

class NX_EXPORT NX_FileInfoVec : public NX_VecT<NX_FileInfo, NXS_OwningItems> {
public:
    using NX_VecT::NX_VecT;
    NX_FileInfoVec() = default;
    // Lists what `pattern` finds in the directory `where`, in the order of the system, with `parent` as the
    // records' directory. No pattern (null or empty): `where` itself when it holds a wildcard, else
    // everything in it. With `withDir` non-zero every name carries the directory part that was searched.
    // Names that match one of `leaveOut` (wildcards, folded) are not listed.
    NX_FileInfoVec(NX_StringA const& where, NX_FileFindType find, NX_DirInfo* parent, NX_FileAgeType age,
                   char const* pattern, int withDir);
    NX_FileInfoVec(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                   NX_DirInfo* parent, NX_FileAgeType age, char const* pattern, int withDir);

    // Lists what the pattern `where` finds behind the records present; everything in it when it ends in a
    // separator.
    void infoRead(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                  NX_DirInfo* parent, NX_FileAgeType age);
    // Appends the record of one found entry to apply->coll.
    static void infoAppendSys(NX_FileInfoApply* apply, WIN32_FIND_DATAA const* entry);

    NX_VecSubT<NX_FileInfoVec> operator()(unsigned int first, unsigned int length = NX_NO_INDEX) const {
        return {this, first, length};
    }

    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;
    NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const override;

private:
    friend class NX_DirInfo;
    void infoAdopt(NX_DirInfo* parent);
};
using NX_FileInfoVecSub = NX_VecSubT<NX_FileInfoVec>;
using NX_FileInfoVecPtr = NX_VecPtrT<NX_FileInfoVec>;
using NX_FileInfoVecPtrConst = NX_VecPtrConstT<NX_FileInfoVec>;

// The one enumeration: calls `apply` for every entry that `pattern` finds and that `find` and `leaveOut` let
// pass, in the order of the system. Names that begin with a dot and names of two characters that end in one
// never pass.
NX_EXPORT void NxFileInfoApplySys(void (*apply)(void* context, WIN32_FIND_DATAA const* entry), void* context,
                                  NX_StringA const& pattern, NX_StringVecA const& leaveOut,
                                  NX_FileFindType find);

// How many entries searches have handed out since the program started, modulo 2^32: any thread may watch a
// long scan.
NX_EXPORT unsigned int NxFileInfoFound();

// One line a record: name, size, time, attributes as the letters A D H R S.
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_FileInfo const& info);
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_FileInfoVec const& coll);

// Save and load with object identity; see general/persist/persist.h.
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfo const& info);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfo const* info);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfo& info);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfo*& info);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfoVec const& coll);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_FileInfoVec const* coll);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfoVec& coll);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_FileInfoVec*& coll);
