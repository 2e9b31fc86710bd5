// Private header. general/finfo/cachestore.h - the body of a cache: its blocks' memory, who goes first, and
// its part in the manager's list.
//
// Order of locks: the manager's list, then one cache's lock. With a cache's lock held nothing is allocated,
// no reference is counted, no error recorded and no other lock of the library taken: only the system is
// called. So the heap may wait for it from inside a failing request. Everything below wants the lock held,
// except what says that it takes it.
#pragma once

#include "general/collm/refcount.h"
#include "general/finfo/cachelock.h"
#include "general/finfo/cachesource.h"

#include <mutex>

class NXS_CacheStore;

// Caches take turns, of fewer than nxCacheTurn uses of a block. A turn begins at a number above all stamps
// before it, kept here for the newest turn, and counts on from there.
inline constexpr std::uint32_t nxCacheTurn = 1u << 16;
extern constinit std::atomic<std::uint64_t> nxCacheTurnStart;

class NXS_CacheStore final : public NX_RefCountCacheRep {
public:
    explicit NXS_CacheStore(std::uint32_t budget);
    ~NXS_CacheStore() override; // when no NX_Cache, file or held pointer uses it any more

    using Guard = std::lock_guard<NXS_CacheLock>;
    NXS_CacheLock lock;

    // Makes the block the one used last. The cache takes a new turn and a new recency number when it was not
    // the last one used, or when its turn is over.
    void used(NXS_CacheSlot& slot) {
        if (!usedInTurn(slot)) [[unlikely]] {
            turnTake();
            usedInTurn(slot);
        }
    }
    // The same if no new turn is due; else false, having done nothing.
    bool usedInTurn(NXS_CacheSlot& slot) {
        std::uint64_t const last = clock_; // before the start when the turn is another cache's
        if (last - nxCacheTurnStart.load(std::memory_order_relaxed) >= nxCacheTurn - 1)
            return false;
        slot.stamp = clock_ = last + 1;
        return true;
    }

    // A block that goes to make room.
    struct Victim {
        std::uint64_t stamp;
        NXS_CacheSource* source;
        std::uint32_t block;
    };
    // The least recently used block that is not held and has not failed to be written. False: none.
    bool victimNext(Victim& victim);
    void victimsForget() { victimQty_ = victimAt_ = 0; }
    // Takes that block out, written back if it is dirty. Null: none can go.
    NXS_CacheData* evict();

    void dataGive(NXS_CacheData* data); // frees it, or leaves it to its holders
    void dataFree(NXS_CacheData* data); // memory, budgets
    // Drops clean blocks that nobody holds; `write`: writes dirty ones back and drops them. Whether there
    // were any. Takes the lock.
    bool flush(bool write);
    // Writes back all that is dirty; records the first failure of each file and returns -1. Takes the lock.
    int write();
    // The same in steps, which take the lock: marks what is dirty as due, then writes what is due up to the
    // first file that fails; a handle of it, counted as in use, or null.
    void writeMark();
    NXS_CacheFile* writeDue(NXS_CacheEnd& end);

    std::uint32_t budget() const { return budget_; }
    void budget(std::uint32_t bytes) { budget_ = bytes; }
    std::uint32_t budgetBlocks() const { return budget_ >> nxCacheBlockShift; }
    std::uint32_t bytes() const { return nxCacheBytes(blocks_); }
    void trim();                    // down to the budget
    unsigned int aheadMost() const; // blocks that one read may fetch

    // A file joins: the source of that identity, or `fresh` if there is none.
    NXS_CacheSource* join(NXS_CacheFile* file, NXS_CacheFileId const& id, NXS_CacheSource* fresh);
    // A file leaves. Its source when it was the last, else null: to be deleted without the lock.
    NXS_CacheSource* leave(NXS_CacheFile* file);
    // Closes handles that were kept for the sake of unwritten data which is written by now. Takes the lock.
    void sweep();
    NXS_CacheFile* keptTake(NXS_CacheSource*& gone); // one of them, without its list; `gone` as from leave

    NXS_CacheStore* next = nullptr; // of the manager
    NXS_CacheStore* prev = nullptr;

private:
    friend class NXS_CacheRoom;
    bool isVictim(NXS_CacheSource const& source, NXS_CacheSlot const& slot) const {
        return slot.data->holders == 0 && !(source.stuck && slot.isDirty());
    }
    void victimsFind();
    void turnTake();

    static constexpr unsigned int victimMost = 128;

    std::uint32_t budget_;
    std::uint32_t blocks_ = 0; // all there are: in tables, held only, or promised to a room
    std::uint64_t clock_ = 0;  // the newest stamp
    NXS_CacheSource* sources_ = nullptr;
    void* staging_ = nullptr;    // for reading several blocks at once; whoever reads takes it
    Victim victims_[victimMost]; // oldest first
    unsigned int victimQty_ = 0;
    unsigned int victimAt_ = 0;
};

// Memory for blocks on their way into a cache, made without the lock.
class NXS_CacheRoom {
public:
    static constexpr unsigned int most = 8;

    explicit NXS_CacheRoom(NXS_CacheStore& store) : store_(store) {}
    NXS_CacheRoom(NXS_CacheRoom const&) = delete;
    NXS_CacheRoom& operator=(NXS_CacheRoom const&) = delete;
    ~NXS_CacheRoom(); // gives back what is left; takes the lock

    // Gets up to `want` blocks, fewer when budgets or what is held do not allow more, but one if `force` is
    // set; a page if `wantPage` is; room to read several blocks at once if there are several. Takes the lock.
    void make(unsigned int want, bool wantPage, bool force);

    unsigned int qty() const { return qty_; }
    NXS_CacheData* top() const { return data_[qty_ - 1]; }
    NXS_CacheData* take() { return data_[--qty_]; }
    char* staging() const { return static_cast<char*>(staging_); }

    NXS_CachePage* page = nullptr;

private:
    NXS_CacheStore& store_;
    NXS_CacheData* data_[most];
    unsigned int qty_ = 0;
    void* staging_ = nullptr;
};

// The manager's side, without a cache's lock. Take: counts a block against the process's budget, making room
// in whichever cache holds the oldest block; false when there is none to be made and `force` is not set.
bool nxCacheBudgetTake(bool force);
void nxCacheBudgetGive(); // any time
void nxCacheAdd(NXS_CacheStore* store);
void nxCacheRemove(NXS_CacheStore* store);
