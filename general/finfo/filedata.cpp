// general/finfo/filedata.cpp - the public side of cached files: what is cached, and what failures record.
#include "general/finfo/filedata.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include "general/finfo/cachefile.h"
#include "general/finfo/cacheman.h"
#include "general/finfo/fileop.h"

NX_FileDataPtr::NX_FileDataPtr(NX_FileDataPtr const& other)
    : store_(other.store_), data_(other.data_), bytes_(other.bytes_), size_(other.size_) {
    if (data_ == nullptr)
        return;
    store_->refInc();
    NXS_CacheStore::Guard const guard(store_->lock);
    ++data_->holders;
}

NX_FileDataPtr& NX_FileDataPtr::operator=(NX_FileDataPtr const& other) {
    if (this != &other) {
        dataDrop();
        new (this) NX_FileDataPtr(other);
    }
    return *this;
}

void NX_FileDataPtr::dataDrop() {
    if (data_ == nullptr)
        return;
    {
        NXS_CacheStore::Guard const guard(store_->lock);
        if (--data_->holders == 0) {
            if (data_->slot != nullptr)
                store_->used(*data_->slot);
            else
                store_->dataFree(data_);
            store_->trim();
        }
    }
    store_->refDec();
    store_ = nullptr;
    data_ = nullptr;
    bytes_ = nullptr;
    size_ = 0;
}

NX_FileData::NX_FileData(NX_StringA const& name, NX_File::OpenMode mode, NX_Cache* cache)
    : file_(new NXS_CacheFile(name, mode,
                              (cache != nullptr ? cache : NX_CacheManager::cacheDefaultP())->store_)) {}

NX_FileData::~NX_FileData() {
    NXS_CacheEnd const end = file_->source != nullptr ? file_->leave(true) : NXS_CacheEnd{};
    if (end.failed())
        file_->writeERR(end);
    file_->unuse();
}

int NX_FileData::fileIsOpen() const {
    return file_->file.fileIsOpen();
}

int NX_FileData::fileIsOpenRead() const {
    return file_->file.fileIsOpenRead();
}

int NX_FileData::fileIsOpenWrite() const {
    return file_->file.fileIsOpenWrite();
}

NX_StringA const& NX_FileData::fileName() {
    return file_->file.fileName();
}

NX_ErrorNum NX_FileData::errorNum() const {
    return file_->file.errorNum();
}

// What is not cached, or is no position, goes to the file, which tells why it fails.
bool NX_FileData::isCached(long pos, unsigned int size) const {
    return file_->source != nullptr && size != 0 && pos >= 0 && pos <= 0x7FFFFFFF;
}

int NX_FileData::readERR(unsigned long code) {
    NX_ErrorMan scope(NX_ErrorManSysReset);
    if (code == 0)
        return file_->file.fileERR(errorNumFileShort);
    NxErrorTypeOfSys(static_cast<long>(code));
    return file_->file.fileERR(errorNumSystem);
}

int NX_FileData::dataReadAt(long pos, void* buf, unsigned int size) {
    if (file_->readHitSmall(static_cast<std::uint64_t>(pos), buf, size)) [[likely]]
        return 0;
    return readOther(pos, buf, size);
}

// What is not a few bytes in memory, of the cache used last.
int NX_FileData::readOther(long pos, void* buf, unsigned int size) {
    if (file_->readHit(static_cast<std::uint64_t>(pos), buf, size))
        return 0;
    if (!isCached(pos, size) || !file_->reads)
        return file_->file.dataReadAt(pos, buf, size);
    std::uint32_t done;
    NXS_CacheEnd const end =
        file_->read(static_cast<std::uint64_t>(pos), static_cast<char*>(buf), size, done);
    return done == size ? 0 : readERR(end.code);
}

int NX_FileData::dataReadAtEOF(long pos, void* buf, unsigned int size) {
    size = std::min(size, 0x7FFFFFFFu); // the count is returned as an int
    if (file_->readHitSmall(static_cast<std::uint64_t>(pos), buf, size) ||
        file_->readHit(static_cast<std::uint64_t>(pos), buf, size))
        return static_cast<int>(size);
    if (!isCached(pos, size) || !file_->reads)
        return file_->file.fileSeek(pos, NX_FileSeekStart) == -1 ? -1 : file_->file.dataReadEOF(buf, size);
    std::uint32_t done;
    NXS_CacheEnd const end =
        file_->read(static_cast<std::uint64_t>(pos), static_cast<char*>(buf), size, done);
    return end.failed() ? readERR(end.code) : static_cast<int>(done);
}

int NX_FileData::dataWriteAt(long pos, void const* buf, unsigned int size) {
    if (!isCached(pos, size) || !file_->writes)
        return file_->file.dataWriteAt(pos, buf, size);
    std::uint32_t done;
    NXS_CacheEnd const end =
        file_->write(static_cast<std::uint64_t>(pos), static_cast<char const*>(buf), size, done);
    return end.failed() ? file_->writeERR(end) : 0;
}

int NX_FileData::dataHoldAt(long pos, NX_FileDataPtr& held) {
    held.dataDrop();
    if (!isCached(pos, 1) || !file_->reads) {
        char byte;
        return file_->file.dataReadAt(pos, &byte, 1) == 0 ? readERR(ERROR_NOT_SUPPORTED) : -1;
    }
    std::uint32_t qty = 0;
    NXS_CacheData* data = nullptr;
    NXS_CacheEnd const end = file_->hold(static_cast<std::uint64_t>(pos), data, qty);
    if (data == nullptr)
        return end.failed() ? readERR(end.code) : 0;
    held.store_ = &file_->store;
    held.store_->refInc();
    held.data_ = data;
    held.bytes_ = data->bytes + (static_cast<std::uint32_t>(pos) & (nxCacheBlockSize - 1));
    held.size_ = qty;
    return static_cast<int>(qty);
}

void NX_FileData::dataForget() {
    if (file_->source == nullptr)
        return;
    NXS_CacheStore::Guard const guard(file_->store.lock);
    file_->source->dropAll(false);
}

unsigned long NX_FileData::fileSize() {
    if (file_->source == nullptr)
        return file_->file.fileSize();
    std::uint64_t size = 0;
    NXS_CacheEnd const end = file_->sizeAsk(size);
    if (end.failed() || size >= NX_NO_INDEX) {
        readERR(end.failed() ? end.code : DWORD{ERROR_INVALID_PARAMETER});
        return NX_NO_INDEX;
    }
    return static_cast<std::uint32_t>(size);
}

int NX_FileData::fileFlush() {
    if (file_->source != nullptr) {
        if (NXS_CacheEnd const end = file_->writeBack(); end.failed())
            return file_->writeERR(end);
        file_->store.sweep();
    }
    return file_->file.fileFlush();
}

int NX_FileData::fileClose() {
    if (file_->source != nullptr)
        if (NXS_CacheEnd const end = file_->leave(false); end.failed())
            return file_->writeERR(end);
    return file_->file.fileClose();
}
