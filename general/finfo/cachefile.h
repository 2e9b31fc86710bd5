// Private header. general/finfo/cachefile.h - one handle on a file in a cache, with its reading and writing.
//
// Threads: reading, writing and holding may come from several threads at once.
#pragma once

#include "general/finfo/cachestore.h"
#include "general/finfo/copysmall.h"
#include "general/finfo/file.h"

class NXS_CacheFile {
public:
    // Opens the file and joins the cache; a file without identity (a device, a pipe) has no source.
    NXS_CacheFile(NX_StringA const& name, NX_File::OpenMode mode, NXS_CacheStore* body);
    NXS_CacheFile(NXS_CacheFile const&) = delete;
    NXS_CacheFile& operator=(NXS_CacheFile const&) = delete;

    // Transfers at `pos`, with what the cache holds. `done`: bytes transferred; a read that ends early
    // without failing has met the end of the file.
    NXS_CacheEnd read(std::uint64_t pos, char* buf, std::uint32_t size, std::uint32_t& done);
    // The same for bytes of one block that is in memory, if nobody else is in the cache; else false, having
    // done nothing. `pos` and `size` may be anything.
    bool readHit(std::uint64_t pos, void* buf, std::uint32_t size);
    // As readHit, but for a few bytes only and if the cache is the one used last. The fewer steps a read
    // takes, the more of them a processor has under way while memory answers; so this one makes no call.
    bool readHitSmall(std::uint64_t pos, void* buf, std::uint32_t size) {
        return size <= nxCopySmallMost &&
               readHitBy(pos, size,
                         [buf, size](NXS_CacheStore& cache, NXS_CacheSlot& slot, char const* from) {
                             if (!cache.usedInTurn(slot))
                                 return false;
                             nxCopySmall(static_cast<char*>(buf), from, size);
                             return true;
                         });
    }
    NXS_CacheEnd write(std::uint64_t pos, char const* buf, std::uint32_t size, std::uint32_t& done);
    // The block at `pos`, with one holder more, and how many bytes of the file it has from there; null at the
    // end of the file and on failure.
    NXS_CacheEnd hold(std::uint64_t pos, NXS_CacheData*& data, std::uint32_t& qty);
    NXS_CacheEnd sizeAsk(std::uint64_t& size);
    NXS_CacheEnd writeBack(); // all dirty blocks of the file
    // Writes back and leaves the cache. When that fails it stays, with `keep` until the data can be written
    // and counted as in use once more.
    NXS_CacheEnd leave(bool keep);

    int writeERR(NXS_CacheEnd end); // records how a write ended with the file's name; -1
    void unuse();                   // one user less; the last one's call closes and deletes

    NX_File file;
    NXS_CacheStore& store;
    NXS_CacheSource* source = nullptr;
    NXS_CacheFile* next = nullptr; // of the source
    bool const reads;
    bool const writes;
    bool kept = false; // no NX_FileData has it any more; it waits until its data can be written
    std::uint32_t users = 1;

private:
    // Blocks on their way from the file into the cache.
    struct Load {
        std::uint32_t first = 0;
        unsigned int qty = 0;  // 0: nothing is on its way
        std::uint32_t got = 0; // bytes
        std::uint32_t changes = 0;
        bool needsPage = false;
    };

    // A write on its way through the blocks.
    struct Write {
        NXS_CacheRoom room;
        Load load;
        bool through = false; // the next piece goes to the file, there being no memory for it
        bool held = false;    // memory is needed for the copy of a held block
    };

    ~NXS_CacheFile();
    template <class Take>
    bool readHitBy(std::uint64_t pos, std::uint32_t size, Take take) {
        NXS_CacheSource const* const from = readable_;
        NXS_CacheStore& cache = store;
        if (size == 0 || from == nullptr || !cache.lock.tryBriefly())
            return false;
        NXS_CacheSlot* const slot = from->table.find(pos >> nxCacheBlockShift);
        std::uint32_t const at = pos & (nxCacheBlockSize - 1);
        bool const isHit = slot != nullptr && size <= nxCacheBlockSize - at && pos + size <= from->size &&
                           take(cache, *slot, slot->data->bytes + at);
        if (isHit) [[likely]]
            sequel_ = pos + size;
        cache.lock.unlock();
        return isHit;
    }
    void joinSource(NX_File::OpenMode mode);
    NXS_CacheEnd readDirect(std::uint64_t pos, char* buf, std::uint32_t size, std::uint32_t& done);

    // With the lock held. The first two stop where something is needed that is not in memory.
    void copyOut(std::uint64_t pos, char* buf, std::uint32_t size, std::uint32_t& done);
    NXS_CacheEnd writeHere(std::uint64_t pos, char const* buf, std::uint32_t size, std::uint32_t& done,
                           Write& state);
    NXS_CacheEnd writeThrough(std::uint64_t pos, char const* buf, std::uint32_t size, std::uint32_t& done,
                              NXS_CacheRoom& room);
    void loadPlan(Load& load, std::uint64_t pos, std::uint64_t end, unsigned int most);
    NXS_CacheEnd loadRead(Load& load, NXS_CacheRoom& room);
    NXS_CacheEnd loadPut(Load& load, NXS_CacheRoom& room);
    NXS_CacheEnd endAsk();

    NXS_CacheSource const* readable_ = nullptr; // the source, if the handle may read
    std::uint64_t sequel_ = 0;                  // where the last read ended
    bool isSequel_ = false;                     // it began where the one before it had ended
    unsigned int ahead_ = 1;                    // blocks that the next read of the file fetches
};
