// general/platform/posix/file.h - Private header: an open file behind a HANDLE, and what the file calls
// share.
//
// An open file owns its descriptor; it is closed, and with it its share mode and its byte-range locks, when
// the handle is closed and no call uses it any more. Whether a handle may read or write is kept here and not
// in the descriptor, which is often opened for both so that locks can be placed. The file position is kept
// here too.
#pragma once

#include <cstdint>
#include <mutex>

#include "general/platform/posix/handles.h"
#include "general/platform/posix/path.h"

class NXS_FileObject final : public NXS_HandleObject {
public:
    static constexpr NXS_HandleType handleType = NXS_HandleType::file;

    NXS_FileObject() : NXS_HandleObject(handleType) {}
    ~NXS_FileObject() override;
    DWORD handleClosed() override;

    bool mayRead() const { return (access & GENERIC_READ) != 0; }
    bool mayWrite() const { return (access & GENERIC_WRITE) != 0; }

    // The descriptor for byte-range locks and for asking about them.
    int lockFile() const { return lockDescriptor.load(std::memory_order_acquire); }

    int file = -1; // the descriptor; set once, by the opening
    std::atomic<int> lockDescriptor{-1};
    DWORD access = 0;
    DWORD share = 0;
    unsigned int mode = 0;    // type and permission bits when it was opened
    std::uint64_t device = 0; // device and inode: which file it is
    std::uint64_t inode = 0;
    bool regular = false;
    bool readable = false; // the descriptor, whatever the access is
    bool writable = false;
    bool shareInTable = false; // the share mode is kept in this process only
    bool locked = false;       // byte-range locks were asked for; guarded by the lock table
    char* eraseName = nullptr; // full name of a file to delete at the close; from nxSeam.allocate
    std::mutex mutex;          // guards position
    std::int64_t position = 0;

private:
    DWORD finish();

    bool finished_ = false;
};

struct NXS_FileOpenArgs {
    DWORD access = 0;
    DWORD share = 0;
    DWORD creation = OPEN_EXISTING;
    DWORD flags = FILE_ATTRIBUTE_NORMAL;
    unsigned int mode = 0666; // permission bits of a new file
};

// CreateFileA on a normalised name. Null with `code` set on failure; else `code` is 0 or
// ERROR_ALREADY_EXISTS.
NXS_FileObject* nxFileOpen(NXS_Path const& path, NXS_FileOpenArgs const& args, DWORD& code);

// Normalises a name of something that exists or could exist: the code, or 0.
inline DWORD nxFileName(LPCSTR name, NXS_Path& path) {
    return nxPathNormalise(name, NXS_PathPlain, path);
}

// Whether the permission bits make a file read-only for everyone.
inline bool nxModeIsReadOnly(unsigned int mode) {
    return (mode & 0222u) == 0;
}

// Transfers of a whole buffer at `at`, repeated while interrupted or short. The bytes done; -1 with errno
// when nothing was. Reading ends early at the end of the file only.
std::int64_t nxFileReadAt(int file, void* buffer, std::size_t size, std::int64_t at);
std::int64_t nxFileWriteAt(int file, void const* buffer, std::size_t size, std::int64_t at);

// Share modes (sharemode.cpp). Claim: marks the access and share mode of a freshly opened file and looks for
// conflicts; with `overwrite` also for anyone who denies writing. 0 or ERROR_SHARING_VIOLATION.
// MayDelete: whether every opener of the file behind `file` shares deletion.
DWORD nxShareClaim(NXS_FileObject& object, bool overwrite);
void nxShareRelease(NXS_FileObject& object);
bool nxShareMayDelete(int file, std::uint64_t device, std::uint64_t inode);

// While it lives, no other opener places or checks marks on the same file. It waits up to two seconds for the
// gate and goes on without it then, and at once on network file systems.
class NXS_ShareGate {
public:
    NXS_ShareGate(int file, std::uint64_t device);
    ~NXS_ShareGate();
    NXS_ShareGate(NXS_ShareGate const&) = delete;
    NXS_ShareGate& operator=(NXS_ShareGate const&) = delete;

private:
    int file_;
    bool held_ = false;
};

// Byte-range locks (filelock.cpp). Allowed: whether a transfer of `size` bytes at `at` may pass the locks of
// others, and for a write the shared ones of its own handle.
bool nxLockAllows(NXS_FileObject& object, std::uint64_t at, std::uint64_t size, bool write);
void nxLockReleaseAll(NXS_FileObject& object);

// Byte offsets from here on carry share modes; no byte-range lock is placed on them.
inline constexpr std::int64_t NX_SHARE_BASE = 0x7FFFFFFFFF000000;
