// general/finfo/cachesource.cpp - one file in one cache: what is dirty, where it ends, writing back.
#include "general/finfo/cachesource.h"

#include <algorithm>
#include <cstring>

#include "general/finfo/cachefile.h"
#include "general/finfo/cachestore.h"

namespace {

OVERLAPPED placeOf(std::uint64_t pos) {
    OVERLAPPED at = {};
    at.Offset = static_cast<DWORD>(pos);
    at.OffsetHigh = static_cast<DWORD>(pos >> 32);
    return at;
}

} // namespace

NXS_CacheEnd nxCacheReadAt(HANDLE file, std::uint64_t pos, void* buf, std::uint32_t size,
                           std::uint32_t& done) {
    OVERLAPPED at = placeOf(pos);
    DWORD count = 0;
    BOOL const read = ReadFile(file, buf, size, &count, &at);
    done = read ? count : 0;
    DWORD const code = read ? DWORD{0} : GetLastError();
    return {code == ERROR_HANDLE_EOF ? DWORD{0} : code, false};
}

NXS_CacheEnd nxCacheWriteAt(HANDLE file, std::uint64_t pos, void const* buf, std::uint32_t size,
                            std::uint32_t& done) {
    OVERLAPPED at = placeOf(pos);
    DWORD count = 0;
    BOOL const wrote = WriteFile(file, buf, size, &count, &at);
    done = wrote ? count : 0;
    return {wrote ? DWORD{0} : GetLastError(), wrote && count < size};
}

DWORD NXS_CacheFileId::ask(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION info;
    if (!GetFileInformationByHandle(file, &info))
        return GetLastError();
    *this = {info.dwVolumeSerialNumber, info.nFileIndexHigh, info.nFileIndexLow,
             std::uint64_t{info.nFileSizeHigh} << 32 | info.nFileSizeLow};
    return 0;
}

NXS_CacheFile* NXS_CacheSource::reader() const {
    NXS_CacheFile* file = files;
    while (file != nullptr && !file->reads)
        file = file->next;
    return file;
}

NXS_CacheFile* NXS_CacheSource::writer() const {
    NXS_CacheFile* file = files;
    while (file != nullptr && !file->writes)
        file = file->next;
    return file;
}

void NXS_CacheSource::drop(std::uint32_t block, NXS_CacheSlot& slot) {
    if (slot.isDirty() && --dirtyQty == 0)
        dirtyEnd = 0;
    store.dataGive(table.take(block));
}

void NXS_CacheSource::dropAll(bool dirtyToo) {
    ++changes;
    table.each([&](std::uint32_t block, NXS_CacheSlot& slot) {
        if (dirtyToo || !slot.isDirty())
            drop(block, slot);
        return true;
    });
}

NXS_CacheEnd NXS_CacheSource::sizeSeen(std::uint64_t real) {
    if (real <= size) {
        endSeen(real);
        return {};
    }
    std::uint32_t const known = size & (nxCacheBlockSize - 1);
    auto const block = static_cast<std::uint32_t>(size >> nxCacheBlockShift);
    NXS_CacheSlot* const last = known != 0 ? table.find(block) : nullptr;
    NXS_CacheFile* const file = reader();
    if (last != nullptr && file != nullptr) {
        std::uint32_t done = 0;
        NXS_CacheEnd const end = nxCacheReadAt(file->file.fileHand(), size, last->data->bytes + known,
                                               nxCacheBlockSize - known, done);
        if (end.failed())
            return end;
    } else if (last != nullptr) {
        drop(block, *last); // clean: only a handle that reads makes blocks dirty
    }
    size = real;
    ++changes;
    return {};
}

void NXS_CacheSource::endSeen(std::uint64_t end) {
    end = std::max(end, dirtyEnd); // what is dirty beyond it will make it longer
    if (end >= size)
        return;
    // Nor is a dirty block cut short that someone holds: what is cleared or read behind the end would show.
    table.each([&](std::uint32_t block, NXS_CacheSlot& slot) {
        if (slot.isDirty() && slot.data->holders != 0)
            end = std::max(end, std::min(size, std::uint64_t{block + 1} << nxCacheBlockShift));
        return true;
    });
    if (end == size)
        return;
    size = end;
    dropAll(false);
}

void NXS_CacheSource::emptied() {
    dropAll(true);
    size = 0;
    stuck = false;
}

void NXS_CacheSource::extend(std::uint64_t from, std::uint64_t to) {
    if (to <= size)
        return;
    std::uint32_t const known = size & (nxCacheBlockSize - 1);
    if (NXS_CacheSlot* const last =
            from > size && known != 0 ? table.find(size >> nxCacheBlockShift) : nullptr)
        std::memset(last->data->bytes + known, 0, nxCacheBlockSize - known);
    size = to;
}

void NXS_CacheSource::dirty(NXS_CacheSlot& slot, std::uint64_t pos, std::uint32_t qty) {
    auto const from = static_cast<std::uint16_t>(pos & (nxCacheBlockSize - 1));
    auto const to = static_cast<std::uint16_t>(from + qty);
    if (!slot.isDirty()) {
        ++dirtyQty;
        slot.dirtyFrom = from;
        slot.dirtyTo = to;
    } else {
        slot.dirtyFrom = std::min(slot.dirtyFrom, from);
        slot.dirtyTo = std::max(slot.dirtyTo, to);
    }
    dirtyEnd = std::max(dirtyEnd, pos + qty);
}

void NXS_CacheSource::written(NXS_CacheEnd end) {
    ++changes;
    if (stuck != end.failed())
        store.victimsForget();
    stuck = end.failed();
}

NXS_CacheEnd NXS_CacheSource::writeSlot(std::uint32_t block, NXS_CacheSlot& slot) {
    std::uint32_t done = 0;
    NXS_CacheEnd const end = nxCacheWriteAt(
        writer()->file.fileHand(), (std::uint64_t{block} << nxCacheBlockShift) + slot.dirtyFrom,
        slot.data->bytes + slot.dirtyFrom, std::uint32_t{slot.dirtyTo} - slot.dirtyFrom, done);
    slot.dirtyFrom = static_cast<std::uint16_t>(slot.dirtyFrom + done);
    if (!slot.isDirty() && --dirtyQty == 0)
        dirtyEnd = 0;
    written(end);
    return end;
}

NXS_CacheEnd NXS_CacheSource::writeBack() {
    NXS_CacheEnd end;
    table.each([&](std::uint32_t block, NXS_CacheSlot& slot) {
        if (dirtyQty == 0)
            return false;
        end = slot.isDirty() ? writeSlot(block, slot) : NXS_CacheEnd{};
        return !end.failed();
    });
    return end;
}
