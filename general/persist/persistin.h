// Private header. general/persist/persistin.h - the buffer behind a load stream, and what the load operators
// of the library's types know of the objects loaded so far.
#pragma once

#include <fstream>
#include <typeinfo>

#include "general/error/errornum.h"
#include "general/persist/persist.h"

class NX_DirInfo;

// A persisted type: its size in the format, and the type whose objects its own may stand for.
struct NXS_PersistType {
    unsigned int size;
    NXS_PersistType const* base;
};

inline constexpr NXS_PersistType nxPersistBlock{16, nullptr}; // the shared block of a vector
inline constexpr NXS_PersistType nxPersistTextVec{8, nullptr};
inline constexpr NXS_PersistType nxPersistFileAge{8, nullptr};
inline constexpr NXS_PersistType nxPersistString{8, &nxPersistTextVec};
inline constexpr NXS_PersistType nxPersistFileInfo{28, &nxPersistString};
inline constexpr NXS_PersistType nxPersistDirInfo{40, &nxPersistFileInfo};
inline constexpr NXS_PersistType nxPersistFileInfoVec{8, nullptr};
inline constexpr NXS_PersistType nxPersistDirInfoVec{8, nullptr};
inline constexpr NXS_PersistType nxPersistDirSubs{
    8, &nxPersistDirInfoVec}; // the list that a directory record owns

// Beside each entry of a loader's object table.
struct NXS_PersistMeta {
    NXS_PersistType const* type; // null: registered by the program
    std::type_info const* items; // of a block: the vector class it was loaded for
    bool open;                   // still being loaded
};

// A file buffer that is read through its memory.
class NXS_PersistIn : public std::filebuf {
public:
    NXS_PersistIn();

    // Opens the file and learns its size. False on failure.
    bool open(char const* fileName, int openMode);

    // The next character, or -1 at the end; `skip` passes it.
    int peek() { return gptr() < egptr() ? static_cast<unsigned char>(*gptr()) : sgetc(); }
    void skip() { gbump(1); }
    // Reads at most `n` characters, stopping before a line feed; the number read.
    unsigned int lineRead(char* p, unsigned int n);
    // At most so many bytes can follow; of input of unknown size, the most that open counts may claim.
    std::uint64_t bytesLeft() const;
    // The stream's position, as its own tellg gives it when nothing has failed.
    long position();

    NX_StringA fileName;
    NX_VecT<NXS_PersistMeta> meta;
    NX_DirInfo* dirOpen = nullptr; // the directory whose lists are being loaded
    unsigned int depth = 0;        // of objects within objects
    unsigned int itemBytesMin = 1; // what an item of the next vector takes up at least
    std::uint64_t bytesOwed = 0;   // what the items take up at least that lists being loaded still expect

protected:
    int_type underflow() override; // a failing read is the end

private:
    static constexpr std::uint64_t unsizedMax = 8 << 20;

    bool isSized_ = true;
    std::uint64_t size_ = 0;
    std::uint64_t passed_ = 0; // before the memory's contents
    char memory_[65536];
};

// What load operators do with a stream beyond its public face. All members are static.
class NXS_PersistLoader {
public:
    enum Ref { refFailed, refDefinition, refObject };

    // Objects within objects may nest this deep: a tree of a thousand directories below each other.
    static constexpr unsigned int depthMax = 2000;

    static NXS_PersistIn& in(NX_PersistTextLoad& load) { return *load.in_; }
    // With an error handler set, everything is checked.
    static bool isStrict(NX_PersistTextLoad const& load) { return load.handler_ != nullptr; }
    static bool isFailed(NX_PersistTextLoad const& load) { return load.errorNum_ != 0; }
    static void fail(NX_PersistTextLoad& load) { load.loadERR(errorNumPersistText); }

    // Reads a reference to an object of the given type. *found: the object, null for the null pointer. When
    // `p` is not null only a definition, or itself, may come. `openAllowed` may be referred to although it is
    // being loaded.
    static Ref refLoad(NX_PersistTextLoad& load, void* p, NXS_PersistType const& type, void** found,
                       void const* openAllowed = nullptr);
    // Reads a reference to a block that a vector of this class can share.
    static Ref blockLoad(NX_PersistTextLoad& load, std::type_info const& vectorClass, unsigned int itemSize,
                         NX_VecRefM** found);
    // Reads the count of a block's items.
    static bool itemQtyLoad(NX_PersistTextLoad& load, unsigned int* qty);
    // Registers an object or a block; its number in the table.
    static unsigned int append(NX_PersistTextLoad& load, void* p, NXS_PersistType const& type,
                               std::type_info const* items = nullptr);
    static void openSet(NX_PersistTextLoad& load, unsigned int number, bool open) {
        if (!isFailed(load))
            in(load).meta.dataPMod()[number].open = open;
    }
    static unsigned int lastNumber(NX_PersistTextLoad& load) { return load.table_.itemQty() - 1; }
    // Reads a mark; checked only when everything is.
    static void markLoad(NX_PersistTextLoad& load, char mark);
    // Ends the loading when everything is checked and something could not be read.
    static void check(NX_PersistTextLoad& load, bool valid = true) {
        if (isStrict(load) && !isFailed(load) && (load.fail() || !valid))
            fail(load);
    }
};

// The pointer form of loading an object of a library type. Of a vector, every item takes up `itemBytesMin` at
// least.
template <class T>
NX_PersistTextLoad& nxPersistLoad(NX_PersistTextLoad& load, T*& p, NXS_PersistType const& type,
                                  unsigned int itemBytesMin = 1) {
    using Loader = NXS_PersistLoader;
    void* found = nullptr;
    Loader::Ref const ref = Loader::refLoad(load, p, type, &found);
    if (ref == Loader::refObject) {
        NX_ASSERT(p == nullptr, "rhs_p == 0", "general/persist/pload");
        p = static_cast<T*>(found);
    }
    if (ref != Loader::refDefinition)
        return load;
    if (++Loader::in(load).depth > Loader::depthMax) {
        Loader::fail(load);
        return load;
    }
    bool const isMade = p == nullptr;
    if (isMade)
        p = new T;
    unsigned int const number = Loader::append(load, p, type);
    Loader::openSet(load, number, true);
    if constexpr (std::is_base_of_v<NX_VecM, T>) {
        Loader::in(load).itemBytesMin = itemBytesMin;
        int const isLoaded = p->refIsLoaded(load);
        Loader::in(load).itemBytesMin = 1;
        if (!isLoaded) {
            unsigned int const block = Loader::lastNumber(load);
            Loader::openSet(load, block, true);
            p->dataLoad(load);
            Loader::openSet(load, block, false);
        }
    } else {
        p->dataLoad(load);
    }
    Loader::openSet(load, number, false);
    --Loader::in(load).depth;
    if (isMade && Loader::isFailed(load)) {
        delete p; // nothing loaded refers to it that is not part of it
        p = nullptr;
    }
    return load;
}

// The operators that every persisted type has. A reference stands for a pointer that is not null.
#define NXS_PERSIST_SAVE(T, type)                                               \
    NX_PersistTextSave& operator<<(NX_PersistTextSave& save, T const& object) { \
        return save << &object;                                                 \
    }                                                                           \
    NX_PersistTextSave& operator<<(NX_PersistTextSave& save, T const* object) { \
        if (!save.pIsSaved(object, (type).size))                                \
            object->dataSave(save);                                             \
        return save;                                                            \
    }

// What stands behind the type goes to nxPersistLoad.
#define NXS_PERSIST_LOAD(T, ...)                                           \
    NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, T& object) {  \
        T* p = &object;                                                    \
        return load >> p;                                                  \
    }                                                                      \
    NX_PersistTextLoad& operator>>(NX_PersistTextLoad& load, T*& object) { \
        return nxPersistLoad(load, object, __VA_ARGS__);                   \
    }

// The same through a collection's base.
#define NXS_PERSIST_COLL_SAVE(T)                                         \
    NX_PersistTextSave& T::collManSave(NX_PersistTextSave& save) const { \
        return save << *this;                                            \
    }
#define NXS_PERSIST_COLL_LOAD(T)                                   \
    NX_PersistTextLoad& T::collManLoad(NX_PersistTextLoad& load) { \
        return load >> *this;                                      \
    }
