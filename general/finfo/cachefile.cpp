// general/finfo/cachefile.cpp - one handle on a file in a cache: joining, leaving, reading.
#include "general/finfo/cachefile.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "general/finfo/fileop.h"

NXS_CacheFile::NXS_CacheFile(NX_StringA const& name, NX_File::OpenMode mode, NXS_CacheStore* body)
    : file(name, mode), store(*body), reads(file.fileIsOpenRead() != 0), writes(file.fileIsOpenWrite() != 0) {
    store.refInc();
    joinSource(mode);
}

NXS_CacheFile::~NXS_CacheFile() {
    store.refDec();
}

void NXS_CacheFile::joinSource(NX_File::OpenMode mode) {
    NXS_CacheFileId id;
    if (!file.fileIsOpen() || id.ask(file.fileHand()) != 0)
        return;
    auto* const fresh = new NXS_CacheSource(store, id);
    bool const shared = [&] {
        NXS_CacheStore::Guard const guard(store.lock);
        NXS_CacheSource* const joined = store.join(this, id, fresh);
        if (joined != fresh && (mode & NX_File::modeTrunc) != 0)
            joined->emptied();
        return joined != fresh;
    }();
    readable_ = reads ? source : nullptr;
    if (!shared)
        return;
    delete fresh;
    // What was written back between the opening and the forgetting is emptied out again.
    if ((mode & NX_File::modeTrunc) != 0 && id.ask(file.fileHand()) == 0 && id.size != 0)
        NX_File(file.fileName(), NX_File::modeWrite | NX_File::modeTrunc);
}

NXS_CacheEnd NXS_CacheFile::leave(bool keep) {
    NXS_CacheEnd end;
    NXS_CacheSource* gone = nullptr;
    {
        NXS_CacheStore::Guard const guard(store.lock);
        if (writes)
            end = source->writeBack();
        if (!end.failed()) {
            gone = store.leave(this);
            readable_ = nullptr;
        } else if (keep) {
            kept = true;
            ++users;
        }
    }
    delete gone;
    store.sweep();
    return end;
}

void NXS_CacheFile::unuse() {
    bool last = false;
    {
        NXS_CacheStore::Guard const guard(store.lock);
        last = --users == 0;
    }
    if (last)
        delete this;
}

int NXS_CacheFile::writeERR(NXS_CacheEnd end) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    if (end.code == 0)
        return file.fileERR(errorNumDiskFull);
    NxErrorTypeOfSys(static_cast<long>(end.code));
    return file.fileERR(errorNumSystem);
}

NXS_CacheEnd NXS_CacheFile::writeBack() {
    NXS_CacheStore::Guard const guard(store.lock);
    return source->writeBack();
}

NXS_CacheEnd NXS_CacheFile::endAsk() {
    NXS_CacheFileId now;
    DWORD const code = now.ask(file.fileHand());
    return code != 0 ? NXS_CacheEnd{code, false} : source->sizeSeen(now.size);
}

NXS_CacheEnd NXS_CacheFile::sizeAsk(std::uint64_t& size) {
    NXS_CacheStore::Guard const guard(store.lock);
    NXS_CacheEnd const end = endAsk();
    size = source->size;
    return end;
}

void NXS_CacheFile::copyOut(std::uint64_t pos, char* buf, std::uint32_t size, std::uint32_t& done) {
    while (done < size && pos + done < source->size) {
        std::uint64_t const at = pos + done;
        NXS_CacheSlot* const slot = source->table.find(at >> nxCacheBlockShift);
        if (slot == nullptr)
            return;
        std::uint32_t const from = at & (nxCacheBlockSize - 1);
        auto const qty = static_cast<std::uint32_t>(
            std::min<std::uint64_t>(std::min(size - done, nxCacheBlockSize - from), source->size - at));
        std::memcpy(buf + done, slot->data->bytes + from, qty);
        store.used(*slot);
        done += qty;
    }
}

// The blocks that are missing from `pos` on: those up to `end`, and some more when reads follow each other;
// within the file, one page and `most`. None past the positions that are kept.
void NXS_CacheFile::loadPlan(Load& load, std::uint64_t pos, std::uint64_t end, unsigned int most) {
    load.first = static_cast<std::uint32_t>(pos >> nxCacheBlockShift);
    load.qty = 0;
    if (load.first >= nxCacheBlockMost)
        return;
    load.needsPage = !source->table.hasPage(load.first);
    ahead_ = isSequel_ ? std::min(ahead_ * 2, NXS_CacheRoom::most) : 1;
    std::uint64_t want = std::max<std::uint64_t>(((end - 1) >> nxCacheBlockShift) - load.first + 1, ahead_);
    want = std::min<std::uint64_t>(want, ((source->size - 1) >> nxCacheBlockShift) - load.first + 1);
    want = std::min<std::uint64_t>(want, nxCachePageQty - load.first % nxCachePageQty);
    want = std::min<std::uint64_t>(want, most);
    while (load.qty < want && source->table.find(load.first + load.qty) == nullptr)
        ++load.qty;
}

// Reads what was planned: one block into its place to be, several by one call.
NXS_CacheEnd NXS_CacheFile::loadRead(Load& load, NXS_CacheRoom& room) {
    load.changes = source->changes;
    return nxCacheReadAt(file.fileHand(), std::uint64_t{load.first} << nxCacheBlockShift,
                         load.qty == 1 ? room.top()->bytes : room.staging(), load.qty * nxCacheBlockSize,
                         load.got);
}

NXS_CacheEnd NXS_CacheFile::loadPut(Load& load, NXS_CacheRoom& room) {
    // What the file held may have changed since it was read; with the lock held it does not.
    if (load.changes != source->changes)
        if (NXS_CacheEnd const end = loadRead(load, room); end.failed())
            return end;
    std::uint64_t const start = std::uint64_t{load.first} << nxCacheBlockShift;
    unsigned int const qty = std::exchange(load.qty, 0u);
    source->endSeen(load.got < qty * nxCacheBlockSize ? start + load.got : source->size);
    for (unsigned int n = 0; n < qty; ++n) {
        std::uint32_t const from = n * nxCacheBlockSize;
        if (start + from >= source->size || source->table.find(load.first + n) != nullptr)
            continue;
        NXS_CacheData& data = *room.top();
        std::uint32_t const have = load.got > from ? std::min(load.got - from, nxCacheBlockSize) : 0;
        if (qty != 1)
            std::memcpy(data.bytes, room.staging() + from, have);
        std::memset(data.bytes + have, 0, nxCacheBlockSize - have);
        NXS_CacheSlot* const slot = source->table.put(load.first + n, &data, &room.page);
        if (slot == nullptr)
            return {}; // the page is gone: the next plan asks for one
        room.take();
        store.used(*slot);
    }
    return {};
}

// Past the cache: up to the end of the block, for want of memory or of a place for it.
NXS_CacheEnd NXS_CacheFile::readDirect(std::uint64_t pos, char* buf, std::uint32_t size,
                                       std::uint32_t& done) {
    size = std::min(size, nxCacheBlockSize - static_cast<std::uint32_t>(pos & (nxCacheBlockSize - 1)));
    std::uint32_t got = 0;
    std::uint32_t const changes = source->changes;
    NXS_CacheEnd const end = nxCacheReadAt(file.fileHand(), pos, buf, size, got);
    done += got;
    if (end.failed() || got == size)
        return end;
    NXS_CacheStore::Guard const guard(store.lock);
    if (source->changes != changes)
        return {}; // it may have grown: once more
    source->endSeen(pos + got);
    if (source->size > pos + got) { // not there yet, but it will be
        auto const zeros =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(size - got, source->size - pos - got));
        std::memset(buf + got, 0, zeros);
        done += zeros;
    }
    return {};
}

bool NXS_CacheFile::readHit(std::uint64_t pos, void* buf, std::uint32_t size) {
    return readHitBy(pos, size, [buf, size](NXS_CacheStore& cache, NXS_CacheSlot& slot, char const* from) {
        cache.used(slot);
        std::memcpy(buf, from, size);
        return true;
    });
}

NXS_CacheEnd NXS_CacheFile::read(std::uint64_t pos, char* buf, std::uint32_t size, std::uint32_t& done) {
    NXS_CacheRoom room(store);
    Load load;
    done = 0;
    for (bool first = true;; first = false) {
        {
            NXS_CacheStore::Guard const guard(store.lock);
            if (first) {
                isSequel_ = pos == sequel_;
                sequel_ = pos + size;
            }
            NXS_CacheEnd end = load.qty != 0 ? loadPut(load, room) : NXS_CacheEnd{};
            copyOut(pos, buf, size, done);
            if (end.failed() || done == size)
                return end;
            if (pos + done >= source->size) {
                end = endAsk();
                if (end.failed() || pos + done >= source->size)
                    return end;
                continue;
            }
            loadPlan(load, pos + done, pos + size, store.aheadMost());
        }
        room.make(load.qty, load.needsPage, false);
        load.qty = std::min(load.qty, room.qty());
        NXS_CacheEnd const end =
            load.qty != 0 ? loadRead(load, room) : readDirect(pos + done, buf + done, size - done, done);
        if (end.failed())
            return end;
    }
}

NXS_CacheEnd NXS_CacheFile::hold(std::uint64_t pos, NXS_CacheData*& data, std::uint32_t& qty) {
    NXS_CacheRoom room(store);
    Load load;
    for (data = nullptr;;) {
        {
            NXS_CacheStore::Guard const guard(store.lock);
            NXS_CacheEnd end = load.qty != 0 ? loadPut(load, room) : NXS_CacheEnd{};
            if (!end.failed() && pos >= source->size)
                end = endAsk();
            if (end.failed() || pos >= source->size)
                return end;
            if (NXS_CacheSlot* const slot = source->table.find(pos >> nxCacheBlockShift)) {
                std::uint32_t const from = pos & (nxCacheBlockSize - 1);
                qty = static_cast<std::uint32_t>(
                    std::min<std::uint64_t>(nxCacheBlockSize - from, source->size - pos));
                data = slot->data;
                ++data->holders;
                store.used(*slot);
                return {};
            }
            loadPlan(load, pos, pos + 1, 1);
        }
        room.make(1, load.needsPage, true);
        if (NXS_CacheEnd const end = loadRead(load, room); end.failed())
            return end;
    }
}
