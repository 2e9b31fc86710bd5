// Private header. general/finfo/cachesource.h - one file in one cache: its blocks, its size, and the handles
// that are open on it.
//
// Everything here is used with the lock of the cache held, allocates nothing and records no errors.
#pragma once

#include <atomic>

#include "general/finfo/cachetable.h"
#include "general/platform/platform.h"

class NXS_CacheFile;
class NXS_CacheStore;

// How a transfer ended: with a system code, or cut short (the disk is full), or well.
struct NXS_CacheEnd {
    DWORD code = 0;
    bool cut = false;

    bool failed() const { return code != 0 || cut; }
};

// Transfers at a place in the file, which leave nothing to a handle's position. Reading ends early, without
// an error, at the end of the file; `cut` is a write's only.
NXS_CacheEnd nxCacheReadAt(HANDLE file, std::uint64_t pos, void* buf, std::uint32_t size,
                           std::uint32_t& done);
NXS_CacheEnd nxCacheWriteAt(HANDLE file, std::uint64_t pos, void const* buf, std::uint32_t size,
                            std::uint32_t& done);

// Which file it is, and its size.
struct NXS_CacheFileId {
    DWORD volume;
    DWORD indexHigh;
    DWORD indexLow;
    std::uint64_t size;

    DWORD ask(HANDLE file); // 0, or the system's code
    bool isSame(NXS_CacheFileId const& other) const {
        return volume == other.volume && indexHigh == other.indexHigh && indexLow == other.indexLow;
    }
};

class NXS_CacheSource {
public:
    NXS_CacheSource(NXS_CacheStore& holder, NXS_CacheFileId const& file)
        : store(holder), id(file), size(file.size) {}

    NXS_CacheStore& store;
    NXS_CacheFileId const id;
    NXS_CacheSource* next = nullptr; // of the cache
    NXS_CacheFile* files = nullptr;  // open handles
    NXS_CacheTable table;
    std::uint64_t size;         // of the file, once everything dirty is written
    std::uint64_t dirtyEnd = 0; // where the last dirty byte may lie
    std::uint32_t dirtyQty = 0; // blocks
    // Goes up after the file itself may have changed, and may be read without the lock: what was read from
    // the file after a look at it is good, with the lock held, if it is the same still.
    std::atomic<std::uint32_t> changes{0};
    bool stuck = false; // the last write to the file failed
    bool due = false;   // still to be written in this pass through the cache

    // A handle open for that, or null.
    NXS_CacheFile* reader() const;
    NXS_CacheFile* writer() const;

    // Takes a block out; what others hold is left to them.
    void drop(std::uint32_t block, NXS_CacheSlot& slot);
    void dropAll(bool dirtyToo);

    // Takes notice of the file's real end. A larger file is read on where its last block was in memory; of a
    // smaller one the clean blocks are given up.
    NXS_CacheEnd sizeSeen(std::uint64_t real);
    void endSeen(std::uint64_t end); // the file was found to end before `size`
    void emptied();                  // the file was made empty

    // Before bytes [from, to) are set: moves the end and clears what lies between it and `from`.
    void extend(std::uint64_t from, std::uint64_t to);
    void dirty(NXS_CacheSlot& slot, std::uint64_t pos, std::uint32_t qty);

    NXS_CacheEnd writeSlot(std::uint32_t block, NXS_CacheSlot& slot);
    NXS_CacheEnd writeBack(); // all dirty blocks; ends with the first failure
    void written(NXS_CacheEnd end);
};
