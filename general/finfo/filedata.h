// general/finfo/filedata.h - a file read and written through a cache.
//
// It opens as NX_File does and gives the same results and error numbers, but reads and writes blocks of the
// file in memory (cache.h). Everything is positional; positions are in bytes and 32 bits wide as for NX_File.
//
// Writing: bytes written are in the cache until they are written back, by fileFlush, fileClose or
// NX_Cache::cacheWrite, or when their block gives way to another. Only then a full disk shows. A write-back
// that fails loses nothing: the bytes stay, and the next one may succeed. What is neither written back nor
// closed when the process ends is lost. A file opened for writing only writes at once.
// Sharing: all NX_FileData of one file in one cache share its blocks and see each other's writes at once,
// under whatever names they opened it. Others do not: what an NX_File, another cache or another process
// writes is not seen in blocks that are in memory, until dataForget or the last NX_FileData's closing drops
// them; and they see what was written back only. A block is written back from its first changed byte to its
// last, with what it holds between them. Use NX_File::fileLockAt or open modes to keep them apart.
// Devices and pipes are not cached: the operations go to the file, and want one thread at a time.
// Ownership: the object owns its open file. Threads: reading, writing, holding, flushing and asking may come
// from several threads at once; closing and destroying want the object alone.
#pragma once

#include "general/finfo/cache.h"
#include "general/finfo/file.h"

class NXS_CacheFile;
struct NXS_CacheData;

// Bytes of a cached file, held in memory and never changed as long as they are held: a write to them goes to
// a copy. What is held counts in the cache's budget and stays beyond it. Valid when file and cache are gone,
// too. Threads: one object belongs to one thread at a time; copies may be used by different ones.
class NX_EXPORT NX_FileDataPtr {
public:
    NX_FileDataPtr() = default; // holds nothing
    NX_FileDataPtr(NX_FileDataPtr const& other);
    NX_FileDataPtr& operator=(NX_FileDataPtr const& other);
    ~NX_FileDataPtr() { dataDrop(); }

    char const* dataPConst() const { return bytes_; } // null when nothing is held
    unsigned int dataSize() const { return size_; }   // bytes
    void dataDrop();                                  // holds nothing any more

private:
    friend class NX_FileData;

    NXS_CacheStore* store_ = nullptr;
    NXS_CacheData* data_ = nullptr;
    char const* bytes_ = nullptr;
    unsigned int size_ = 0;
};

class NX_EXPORT NX_FileData {
public:
    // Opens the file as NX_File's constructor does, with its modes and error numbers; modeAppend changes
    // nothing. `cache`: where its blocks are kept, null for NX_CacheManager::cacheDefaultP(). With modeTrunc
    // all blocks of the file in that cache are dropped, written or not; do not write through others
    // meanwhile.
    NX_FileData(NX_StringA const& name, NX_File::OpenMode mode, NX_Cache* cache = nullptr);
    NX_FileData(NX_FileData const&) = delete;
    NX_FileData& operator=(NX_FileData const&) = delete;
    // Writes back and closes. When that fails, the failure is recorded, and data and open file stay in the
    // cache: NX_Cache::cacheWrite, NX_CacheManager::cacheWrite or another NX_FileData of the file try again.
    ~NX_FileData();

    int fileIsOpen() const; // questions: 1 or 0
    int fileIsOpenRead() const;
    int fileIsOpenWrite() const;
    NX_StringA const& fileName();
    NX_ErrorNum errorNum() const; // of the last failure of this file; 0 after opening

    // Reads exactly `size` bytes at `pos`. Fewer bytes are error 22748; the buffer then holds what there was.
    // The system's failures are error 21060. Reads that follow each other fetch up to 8 blocks at once.
    int dataReadAt(long pos, void* buf, unsigned int size);
    // Reads up to `size` bytes at `pos`. Returns the number read, 0 at the end of the file, or -1.
    int dataReadAtEOF(long pos, void* buf, unsigned int size);
    // Writes exactly `size` bytes at `pos`; between the end of the file and `pos` come zeros. Error 16625 and
    // 21060 only when the cache cannot take the bytes and they go to the file at once.
    int dataWriteAt(long pos, void const* buf, unsigned int size);
    // Holds the bytes from `pos` to the end of their block or of the file. Returns how many, 0 at the end of
    // the file, or -1 as for reading; `held` holds nothing in the last two cases.
    int dataHoldAt(long pos, NX_FileDataPtr& held);
    // Drops the file's clean blocks, so that what others have written is seen. What is held stays with its
    // holders only.
    void dataForget();

    unsigned long fileSize(); // with what is not written back yet; NX_NO_INDEX on failure
    // Writes back all changed blocks of the file, whoever changed them (error 16625 when a write was cut
    // short, else 21060, with the name), then flushes to the disk as NX_File does; needs a file open for
    // writing.
    int fileFlush();
    // Writes back if the file is open for writing; when that fails, -1, and the file is still open and can be
    // closed again later. Else closes. 0 when closed already.
    int fileClose();

private:
    bool isCached(long pos, unsigned int size) const;
    int readOther(long pos, void* buf, unsigned int size);
    int readERR(unsigned long code);

    NXS_CacheFile* file_;
};
