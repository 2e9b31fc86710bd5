// general/finfo/cache.h - memory that holds blocks of files, within a number of bytes.
//
// Files that are opened through a cache (filedata.h) keep the blocks they read and write in it. When a block
// is needed and the budget is used up, the block goes that was not used for the longest time; a changed one
// is written to its file first. What someone holds, and what could not be written, stays. The budget counts
// the bytes of blocks, 16384 each; what is known about them comes on top: 128 bytes for a block, 4 KiB for a
// file, 6 KiB for each 4 MiB of it of which something is in memory, and 128 KiB for a cache that has read
// ahead. A cache registers with NX_CacheManager, which has a budget for all of them. Ownership: files and
// held pointers keep what they need of a cache; it may be destroyed before them. Threads: all operations may
// come from any thread.
#pragma once

#include "general/platform/fwd.h"

class NXS_CacheStore;

class NX_EXPORT NX_Cache {
public:
    static constexpr unsigned int budgetDefault = 16u << 20;

    explicit NX_Cache(unsigned int budget = budgetDefault); // in bytes; below 16384 nothing is kept
    NX_Cache(NX_Cache const&) = delete;
    NX_Cache& operator=(NX_Cache const&) = delete;
    ~NX_Cache();

    unsigned int cacheBudget() const;
    void cacheBudget(unsigned int bytes); // what is above it goes at once, if it can
    unsigned int cacheSize() const;       // bytes of the blocks in memory

    // Writes all changed blocks to their files. 0, or -1 when a file failed: error 16625 when a write was
    // cut short, else 21060, with its name. What was not written stays as it was, and the next call tries
    // again.
    int cacheWrite();

    // Gives memory back: the clean blocks that nobody holds or, when there are none, the changed ones after
    // writing them. Allocates nothing and records no errors. Returns non-zero when something was given back.
    int cacheFlush();

private:
    friend class NX_FileData;
    NXS_CacheStore* store_;
};
