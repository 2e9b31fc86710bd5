// general/finfo/cachestore.cpp - the body of a cache: which blocks go, memory for new ones, files that come
// and go.
#include "general/finfo/cachestore.h"

#include <algorithm>
#include <utility>

#include "general/finfo/cachefile.h"

constinit std::atomic<std::uint64_t> nxCacheTurnStart{0};

NXS_CacheStore::NXS_CacheStore(std::uint32_t budget) : NX_RefCountCacheRep(0x02), budget_(budget) {
    turnTake();
    nxCacheAdd(this);
}

void NXS_CacheStore::turnTake() {
    cachePriorityTop();
    clock_ = nxCacheTurnStart.fetch_add(nxCacheTurn, std::memory_order_relaxed) + nxCacheTurn;
}

NXS_CacheStore::~NXS_CacheStore() {
    nxCacheRemove(this);
    NxMemHeapFree(&staging_);
}

void NXS_CacheStore::victimsFind() {
    auto const younger = [](Victim const& a, Victim const& b) { return a.stamp < b.stamp; };
    victimsForget();
    for (NXS_CacheSource* source = sources_; source != nullptr; source = source->next)
        source->table.each([&](std::uint32_t block, NXS_CacheSlot& slot) {
            if (!isVictim(*source, slot))
                return true;
            if (victimQty_ == victimMost) {
                if (slot.stamp >= victims_[0].stamp)
                    return true;
                std::pop_heap(victims_, victims_ + victimQty_--, younger);
            }
            victims_[victimQty_++] = {slot.stamp, source, block};
            std::push_heap(victims_, victims_ + victimQty_, younger);
            return true;
        });
    std::sort_heap(victims_, victims_ + victimQty_, younger);
}

// Blocks found in one scan stay the oldest ones as long as nobody uses them: whatever comes in later, or is
// used later, is younger than all of them.
bool NXS_CacheStore::victimNext(Victim& victim) {
    for (bool found = false;;) {
        for (; victimAt_ < victimQty_; ++victimAt_) {
            victim = victims_[victimAt_];
            NXS_CacheSlot const* const slot = victim.source->table.find(victim.block);
            if (slot != nullptr && slot->stamp == victim.stamp && isVictim(*victim.source, *slot))
                return true;
        }
        if (found)
            return false;
        victimsFind();
        found = true;
    }
}

NXS_CacheData* NXS_CacheStore::evict() {
    Victim victim;
    while (victimNext(victim)) {
        NXS_CacheSlot& slot = *victim.source->table.find(victim.block);
        if (!slot.isDirty() || !victim.source->writeSlot(victim.block, slot).failed())
            return victim.source->table.take(victim.block);
    }
    return nullptr;
}

void NXS_CacheStore::dataFree(NXS_CacheData* data) {
    --blocks_;
    nxCacheBudgetGive();
    void* memory = data->memory;
    NxMemHeapFree(&memory);
}

void NXS_CacheStore::dataGive(NXS_CacheData* data) {
    if (data->holders == 0)
        dataFree(data);
}

void NXS_CacheStore::trim() {
    while (blocks_ > budgetBlocks()) {
        NXS_CacheData* const data = evict();
        if (data == nullptr)
            return;
        dataFree(data);
    }
}

unsigned int NXS_CacheStore::aheadMost() const {
    return std::clamp(budgetBlocks() / 4, 1u, NXS_CacheRoom::most);
}

bool NXS_CacheStore::flush(bool write) {
    if (lock.isMine())
        return false;
    Guard const guard(lock);
    bool given = staging_ != nullptr;
    NxMemHeapFree(&staging_);
    for (NXS_CacheSource* source = sources_; source != nullptr; source = source->next)
        source->table.each([&](std::uint32_t block, NXS_CacheSlot& slot) {
            if (slot.data->holders != 0)
                return true;
            if (slot.isDirty() && (!write || source->writeSlot(block, slot).failed()))
                return !write; // one failure is enough for this file
            source->drop(block, slot);
            given = true;
            return true;
        });
    return given;
}

NXS_CacheFile* NXS_CacheStore::writeDue(NXS_CacheEnd& end) {
    Guard const guard(lock);
    for (NXS_CacheSource* source = sources_; source != nullptr; source = source->next) {
        if (!std::exchange(source->due, false))
            continue;
        end = source->writeBack();
        if (end.failed()) {
            NXS_CacheFile* const file = source->writer();
            ++file->users;
            return file;
        }
    }
    return nullptr;
}

void NXS_CacheStore::writeMark() {
    Guard const guard(lock);
    for (NXS_CacheSource* source = sources_; source != nullptr; source = source->next)
        source->due = source->dirtyQty != 0;
}

int NXS_CacheStore::write() {
    writeMark();
    int result = 0;
    NXS_CacheEnd end;
    while (NXS_CacheFile* const file = writeDue(end)) {
        result = file->writeERR(end);
        file->unuse();
    }
    sweep();
    return result;
}

NXS_CacheSource* NXS_CacheStore::join(NXS_CacheFile* file, NXS_CacheFileId const& id,
                                      NXS_CacheSource* fresh) {
    NXS_CacheSource* source = sources_;
    while (source != nullptr && !source->id.isSame(id))
        source = source->next;
    if (source == nullptr) {
        source = fresh;
        source->next = sources_;
        sources_ = source;
    }
    file->next = source->files;
    source->files = file;
    file->source = source;
    return source;
}

NXS_CacheSource* NXS_CacheStore::leave(NXS_CacheFile* file) {
    NXS_CacheSource* const source = file->source;
    NXS_CacheFile** at = &source->files;
    while (*at != file)
        at = &(*at)->next;
    *at = file->next;
    file->source = nullptr;
    if (source->files != nullptr)
        return nullptr;
    source->dropAll(true);
    victimsForget();
    NXS_CacheSource** from = &sources_;
    while (*from != source)
        from = &(*from)->next;
    *from = source->next;
    return source;
}

NXS_CacheFile* NXS_CacheStore::keptTake(NXS_CacheSource*& gone) {
    Guard const guard(lock);
    for (NXS_CacheSource* source = sources_; source != nullptr; source = source->next)
        for (NXS_CacheFile* file = source->files; file != nullptr && source->dirtyQty == 0; file = file->next)
            if (file->kept) {
                gone = leave(file);
                return file;
            }
    return nullptr;
}

void NXS_CacheStore::sweep() {
    NXS_CacheSource* gone = nullptr;
    while (NXS_CacheFile* const file = keptTake(gone)) {
        delete gone;
        file->unuse();
    }
}
