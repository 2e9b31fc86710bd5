// general/finfo/dirinfo.h - directory records and trees of them.
//
// A directory record is a file record, named with the directory's path and a separator at its end, that holds
// the list of the directory's files and owns the list of its sub-directories. A record's files and
// sub-directories point back at it. Copying a record copies the whole tree below it (names stay shared), so
// that every child points at the record it belongs to; the same holds for records that a vector has to
// duplicate, sort or move. Failure: reading a tree raises no errors; a directory that cannot be read is
// empty.
#pragma once

#include "general/finfo/fileinfo.h"

class NX_DirInfoVec;
class NXS_DirInfoSubs;

// What an enumeration hands to the routine that makes directory records.
struct NX_DirInfoApply {
    NX_DirInfoVec* coll; // the list being filled
    NX_DirInfo* parent;  // the directory searched, or null
    NX_FileAgeType age;  // which time to keep
};

class NX_EXPORT NX_DirInfo : public NX_FileInfo {
public:
    using SortType = int(NX_FASTCALL*)(NX_DirInfo const*, NX_DirInfo const*);

    NX_DirInfo() = default;
    NX_DirInfo(NX_DirInfo const& other);
    NX_DirInfo& operator=(NX_DirInfo const& other);
    ~NX_DirInfo() override;
    // Reads the tree at the directory of `name`. What follows the directory part in `name` is the pattern for
    // files, else `pattern`, else all. `find` and `leaveOut` choose among the files only: every sub-directory
    // is entered that is neither hidden nor system, nor named with a dot in front. `sort` (null: none) orders
    // each list of sub-directories before they are read.
    NX_DirInfo(NX_StringA const& name, SortType sort, NX_StringVecA const& leaveOut, NX_FileFindType find,
               NX_DirInfo* parent, NX_FileAgeType age, char const* pattern);
    // From one found entry: named by the parent's name, the entry's and a separator; nothing read below it.
    NX_DirInfo(NX_DirInfoApply* apply, WIN32_FIND_DATAA const* entry);

    NX_FileInfoVec const& fileColl() const { return files_; }
    NX_DirInfoVec const& subColl() const;  // empty when it has not been read
    NX_DirInfoVec const* subCollP() const; // null when it has not been read

    // The comparisons of file records, as functions to sort directories by.
    using NX_FileInfo::ageCompare;
    using NX_FileInfo::nameCompare;
    using NX_FileInfo::sizeCompare;
    static int NX_FASTCALL ageCompare(NX_DirInfo const* a, NX_DirInfo const* b);
    static int NX_FASTCALL nameCompare(NX_DirInfo const* a, NX_DirInfo const* b);
    static int NX_FASTCALL sizeCompare(NX_DirInfo const* a, NX_DirInfo const* b);

    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;
    NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const override;

private:
    friend class NX_DirInfoVec;
    friend struct NXS_DirInfoItems;
    struct ReadPlan;

    void listsRead(ReadPlan const& plan);
    void treeRead(ReadPlan const& plan);
    bool treeIsAdopted() const;
    void treeAdopt();

    NX_FileInfoVec files_;
    NXS_DirInfoSubs* subs_ = nullptr;
};
static_assert(sizeof(void*) != 4 || sizeof(NX_DirInfo) == 40);

// The copy constructor adopts the tree below a record; a copy of its bytes in a vector must not yet.
struct NX_EXPORT NXS_DirInfoItems : NXS_OwningItems {
    static void copied(NX_DirInfo const* items, unsigned int qty);
};

class NX_EXPORT NX_DirInfoVec : public NX_VecT<NX_DirInfo, NXS_DirInfoItems> {
public:
    using Base = NX_VecT<NX_DirInfo, NXS_DirInfoItems>;

    NX_DirInfoVec() = default;
    NX_DirInfoVec(unsigned int qty, unsigned int cap) : Base(qty, cap) {}
    NX_DirInfoVec(NX_DirInfo const* items, unsigned int qty) : Base(items, qty) { itemAdopt(); }
    // Lists the directories that `pattern` finds in `where`, as the constructors of NX_FileInfoVec do.
    // `parent`, whose name begins the records' names, may be null. Nothing below them is read.
    NX_DirInfoVec(NX_StringA const& where, NX_FileFindType find, NX_DirInfo* parent, NX_FileAgeType age,
                  char const* pattern);
    NX_DirInfoVec(NX_StringA const& where, NX_StringVecA const& leaveOut, NX_FileFindType find,
                  NX_DirInfo* parent, NX_FileAgeType age, char const* pattern);
    static void infoAppendSys(NX_DirInfoApply* apply, WIN32_FIND_DATAA const* entry);

    // Lets the children of every record point at the record where it lies now, giving each record a tree of
    // its own. The members below do so by themselves; call it after changing the vector through a view or a
    // cursor.
    void itemAdopt();

    // As in NX_VecT.
    unsigned int itemQty() const { return Base::itemQty(); }
    unsigned int itemQty(unsigned int n) { return adopted(Base::itemQty(n)); }
    unsigned int itemQtyGrow(unsigned int n) { return adopted(Base::itemQtyGrow(n)); }
    void itemQtyCap(unsigned int n) {
        Base::itemQtyCap(n);
        itemAdopt();
    }
    unsigned int itemQtyCap() const { return Base::itemQtyCap(); }
    unsigned int dataCreateAt(unsigned int pos, unsigned int n) {
        return adopted(Base::dataCreateAt(pos, n));
    }
    unsigned int dataDeleteAt(unsigned int pos, unsigned int n) {
        return adopted(Base::dataDeleteAt(pos, n));
    }
    unsigned int itemDeleteAt(unsigned int pos) { return dataDeleteAt(pos, 1); }
    unsigned int itemAppend(NX_DirInfo const& x) { return adopted(Base::itemAppend(x)); }
    unsigned int itemInsertAt(unsigned int n, NX_DirInfo const& x) {
        return adopted(Base::itemInsertAt(n, x));
    }
    void operator+=(NX_DirInfo const& x) {
        Base::operator+=(x);
        itemAdopt();
    }
    void operator+=(NX_DirInfoVec const& other) { dataAppend(other.dataPConst(), other.itemQty()); }
    unsigned int dataAppend(NX_DirInfo const* items, unsigned int qty) {
        return adopted(Base::dataAppend(items, qty));
    }
    unsigned int dataReplace(NX_DirInfo const* items, unsigned int qty) {
        return adopted(Base::dataReplace(items, qty));
    }
    void dataSort(CompareType cmp) {
        Base::dataSort(cmp);
        itemAdopt();
    }
    NX_VecSubT<NX_DirInfoVec> operator()(unsigned int first, unsigned int length = NX_NO_INDEX) const {
        return {this, first, length};
    }

    void collManClone(unsigned int cap) override;
    void collManClone() override;

    NX_PersistTextSave& dataSave(NX_PersistTextSave& save) const;
    NX_PersistTextLoad& dataLoad(NX_PersistTextLoad& load);
    NX_PersistTextLoad& collManLoad(NX_PersistTextLoad& load) override;
    NX_PersistTextSave& collManSave(NX_PersistTextSave& save) const override;

private:
    friend class NX_DirInfo;
    unsigned int adopted(unsigned int result) {
        itemAdopt();
        return result;
    }
};
using NX_DirInfoVecSub = NX_VecSubT<NX_DirInfoVec>;
using NX_DirInfoVecPtr = NX_VecPtrT<NX_DirInfoVec>;
using NX_DirInfoVecPtrConst = NX_VecPtrConstT<NX_DirInfoVec>;

// One line a record; a directory record is followed by its files and the trees below it.
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_DirInfo const& info);
NX_EXPORT std::ostream& operator<<(std::ostream& os, NX_DirInfoVec const& coll);

// Save and load with object identity; see general/persist/persist.h.
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfo const& info);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfo const* info);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfo& info);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfo*& info);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfoVec const& coll);
NX_EXPORT NX_PersistTextSave& operator<<(NX_PersistTextSave& save, NX_DirInfoVec const* coll);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfoVec& coll);
NX_EXPORT NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, NX_DirInfoVec*& coll);
