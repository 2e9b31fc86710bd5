// Private header. general/finfo/cachetable.h - the blocks of one file that are in memory, by their numbers.
//
// A table has one place for each possible page, and a page places for 256 blocks; a page exists while one of
// its blocks does. Pages and blocks are made by the owner of the table, outside its lock, and handed over.
#pragma once

#include <algorithm>
#include <cstdint>

#include "general/collm/mem.h"

inline constexpr unsigned int nxCacheBlockShift = 14;
inline constexpr std::uint32_t nxCacheBlockSize = 1u << nxCacheBlockShift;
inline constexpr unsigned int nxCachePageShift = 8;
inline constexpr std::uint32_t nxCachePageQty = 1u << nxCachePageShift; // places in a page
// Blocks from here on lie past the positions of files and are never kept.
inline constexpr std::uint32_t nxCacheBlockMost = 1u << (31 - nxCacheBlockShift);

// Blocks as bytes, as far as 32 bits go. Blocks are what is counted, so that no number of them wraps.
inline std::uint32_t nxCacheBytes(std::uint32_t blocks) {
    return static_cast<std::uint32_t>(
        std::min(std::uint64_t{blocks} << nxCacheBlockShift, std::uint64_t{0xFFFFFFFF}));
}

struct NXS_CacheSlot;

// The bytes of a block, apart from what is known about it. They begin with a line of the processor's caches,
// so that a small piece of them lies in one.
struct NXS_CacheData {
    NXS_CacheSlot* slot;   // where it stands; null once it belongs to its holders only
    void* memory;          // the heap block that it lies in
    std::uint32_t holders; // pointers to it that are out
    alignas(64) char bytes[nxCacheBlockSize];
};

struct NXS_CacheSlot {
    NXS_CacheData* data;     // null: the block is not in memory
    std::uint64_t stamp;     // the larger, the more recently used; of all blocks of all caches
    std::uint16_t dirtyFrom; // what the file does not have yet; nothing when both are equal
    std::uint16_t dirtyTo;

    bool isDirty() const { return dirtyFrom != dirtyTo; }
};

struct NXS_CachePage {
    std::uint32_t qty; // blocks in it
    NXS_CacheSlot slots[nxCachePageQty];
};

class NXS_CacheTable {
public:
    NXS_CacheTable() = default;
    NXS_CacheTable(NXS_CacheTable const&) = delete;
    NXS_CacheTable& operator=(NXS_CacheTable const&) = delete;

    // The place of a block that is in memory, or null.
    NXS_CacheSlot* find(std::uint64_t block) const {
        NXS_CachePage* const page = block < nxCacheBlockMost ? pages_[block >> nxCachePageShift] : nullptr;
        if (page == nullptr)
            return nullptr;
        NXS_CacheSlot* const slot = page->slots + (block & (nxCachePageQty - 1));
        return slot->data != nullptr ? slot : nullptr;
    }

    bool hasPage(std::uint32_t block) const { return pages_[block >> nxCachePageShift] != nullptr; }

    // Puts a block in its empty place. A missing page is taken from `page`; null when there is none.
    NXS_CacheSlot* put(std::uint32_t block, NXS_CacheData* data, NXS_CachePage** page) {
        NXS_CachePage*& at = pages_[block >> nxCachePageShift];
        if (at == nullptr) {
            at = *page;
            *page = nullptr;
            if (at == nullptr)
                return nullptr;
        }
        ++at->qty;
        NXS_CacheSlot* const slot = at->slots + (block & (nxCachePageQty - 1));
        *slot = {data, 0, 0, 0};
        data->slot = slot;
        return slot;
    }

    // Takes a block out of its place. The page goes with its last block.
    NXS_CacheData* take(std::uint32_t block) {
        NXS_CachePage*& at = pages_[block >> nxCachePageShift];
        NXS_CacheSlot& slot = at->slots[block & (nxCachePageQty - 1)];
        NXS_CacheData* const data = slot.data;
        slot.data = nullptr;
        data->slot = nullptr;
        if (--at->qty == 0) {
            void* page = at;
            at = nullptr;
            NxMemHeapFree(&page);
        }
        return data;
    }

    // Calls visit(block, slot) for each block in memory, lowest first, until it returns false. The visit may
    // take its own block out. False when it ended early.
    template <class Visit>
    bool each(Visit visit) {
        for (std::uint32_t p = 0; p < nxCacheBlockMost / nxCachePageQty; ++p) {
            if (pages_[p] == nullptr)
                continue;
            std::uint32_t left = pages_[p]->qty; // the page is there until the last of them
            for (std::uint32_t n = 0; left != 0; ++n) {
                NXS_CacheSlot& slot = pages_[p]->slots[n];
                if (slot.data == nullptr)
                    continue;
                --left;
                if (!visit((p << nxCachePageShift) + n, slot))
                    return false;
            }
        }
        return true;
    }

private:
    NXS_CachePage* pages_[nxCacheBlockMost / nxCachePageQty] = {};
};
