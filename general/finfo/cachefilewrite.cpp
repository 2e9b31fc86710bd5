// general/finfo/cachefilewrite.cpp - one handle on a file in a cache: writing.
#include "general/finfo/cachefile.h"

#include <algorithm>
#include <cstring>

namespace {

// Sets bytes of a block. Who holds it keeps it as it was: the bytes go into a copy then.
void slotSet(NXS_CacheSlot& slot, std::uint64_t pos, char const* buf, std::uint32_t size,
             NXS_CacheRoom& room) {
    NXS_CacheData* const old = slot.data;
    if (old->holders != 0) {
        slot.data = room.take();
        std::memcpy(slot.data->bytes, old->bytes, nxCacheBlockSize);
        slot.data->slot = &slot;
        old->slot = nullptr;
    }
    std::memcpy(slot.data->bytes + (pos & (nxCacheBlockSize - 1)), buf, size);
}

} // namespace

// To the file at once, and into the block if it is in memory.
NXS_CacheEnd NXS_CacheFile::writeThrough(std::uint64_t pos, char const* buf, std::uint32_t size,
                                         std::uint32_t& done, NXS_CacheRoom& room) {
    std::uint32_t put = 0;
    NXS_CacheEnd const end = nxCacheWriteAt(file.fileHand(), pos, buf, size, put);
    source->written(end);
    if (put != 0) {
        source->extend(pos, pos + put);
        if (NXS_CacheSlot* const slot = source->table.find(pos >> nxCacheBlockShift))
            slotSet(*slot, pos, buf, put, room);
        done += put;
    }
    return end;
}

NXS_CacheEnd NXS_CacheFile::writeHere(std::uint64_t pos, char const* buf, std::uint32_t size,
                                      std::uint32_t& done, Write& state) {
    while (done < size) {
        std::uint64_t const at = pos + done;
        std::uint64_t const block = at >> nxCacheBlockShift;
        std::uint64_t const begin = block << nxCacheBlockShift;
        std::uint32_t const from = at & (nxCacheBlockSize - 1);
        std::uint32_t const qty = std::min(size - done, nxCacheBlockSize - from);
        NXS_CacheSlot* slot = source->table.find(block);
        state.held = slot != nullptr && slot->data->holders != 0;
        state.load.needsPage = false;
        if (state.held && state.room.qty() == 0)
            return {};
        if (!reads || state.through || block >= nxCacheBlockMost) {
            state.through = false;
            NXS_CacheEnd const end = writeThrough(at, buf + done, qty, done, state.room);
            if (end.failed())
                return end;
            continue;
        }
        if (slot == nullptr) {
            // The block's other bytes are needed, unless there are none; others may have written some.
            if (qty != nxCacheBlockSize && at + qty >= source->size)
                if (NXS_CacheEnd const end = endAsk(); end.failed())
                    return end;
            if (begin < source->size &&
                (from != 0 || at + qty < std::min(begin + nxCacheBlockSize, source->size))) {
                loadPlan(state.load, at, at + 1, 1);
                return {};
            }
            state.load.needsPage = !source->table.hasPage(static_cast<std::uint32_t>(block));
            if (state.room.qty() == 0)
                return {};
            slot = source->table.put(static_cast<std::uint32_t>(block), state.room.top(), &state.room.page);
            if (slot == nullptr)
                return {};
            std::memset(state.room.take()->bytes, 0, nxCacheBlockSize);
        }
        source->extend(at, at + qty);
        slotSet(*slot, at, buf + done, qty, state.room);
        source->dirty(*slot, at, qty);
        store.used(*slot);
        done += qty;
    }
    return {};
}

NXS_CacheEnd NXS_CacheFile::write(std::uint64_t pos, char const* buf, std::uint32_t size,
                                  std::uint32_t& done) {
    Write state{NXS_CacheRoom(store), {}};
    NXS_CacheEnd end;
    for (done = 0;;) {
        {
            NXS_CacheStore::Guard const guard(store.lock);
            if (state.load.qty != 0)
                end = loadPut(state.load, state.room);
            if (!end.failed())
                end = writeHere(pos, buf, size, done, state);
        }
        if (end.failed() || done == size)
            return end;
        // It goes on with memory for a block, and with the block's bytes where they matter; without memory
        // this piece goes to the file at once.
        state.room.make(1, state.load.needsPage, state.held);
        state.through = state.room.qty() == 0;
        if (state.through)
            state.load.qty = 0;
        else if (state.load.qty != 0)
            end = loadRead(state.load, state.room);
        if (end.failed())
            return end;
    }
}
