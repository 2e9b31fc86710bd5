// general/platform/posix/sharemode.cpp - share modes between handles and between processes.
//
// Each opener places shared locks of its open file description on reserved offsets far beyond any data: one
// in the range of each access it has and one in the range of each access it denies to others. Then it asks
// whether anyone else holds a lock in the opposite range. The system drops the marks when the description
// closes, however the process ends. Where the file system has no such locks a table of this process stands
// in.
#include <errno.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <atomic>
#include <vector>

#include "general/platform/posix/file.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr std::int64_t rangeSize = 0x100000;

// The bits are those of FILE_SHARE_READ, FILE_SHARE_WRITE and FILE_SHARE_DELETE, for accesses as for denials.
constexpr unsigned int bitQty = 3;
constexpr unsigned int bitAll = 7;

std::int64_t accessRange(unsigned int bit) {
    return NX_SHARE_BASE + bit * rangeSize;
}

std::int64_t denyRange(unsigned int bit) {
    return NX_SHARE_BASE + (bitQty + bit) * rangeSize;
}

struct flock64 rangeOf(int type, std::int64_t begin, std::int64_t size) {
    struct flock64 range {};
    range.l_type = static_cast<short>(type);
    range.l_whence = SEEK_SET;
    range.l_start = begin;
    range.l_len = size;
    return range;
}

enum class Marked { done, refused, impossible };

Marked markedOf(int error) {
    return error == EAGAIN || error == EACCES ? Marked::refused : Marked::impossible;
}

Marked markPlace(NXS_FileObject const& object, std::int64_t begin) {
    if (object.readable) {
        struct flock64 range = rangeOf(F_RDLCK, begin, 1);
        return nxSeamRepeat([&] { return nxSeam.lock(object.file, F_OFD_SETLK, &range); }) == 0
                   ? Marked::done
                   : markedOf(errno);
    }
    // A descriptor that cannot read cannot share a lock: it takes a free slot of the range for itself.
    auto slot = static_cast<std::int64_t>((reinterpret_cast<std::uintptr_t>(&object) >> 4) % (rangeSize - 2));
    for (int tries = 0; tries < 1000; ++tries) {
        struct flock64 range = rangeOf(F_WRLCK, begin + 1 + slot, 1);
        if (nxSeamRepeat([&] { return nxSeam.lock(object.file, F_OFD_SETLK, &range); }) == 0) {
            return Marked::done;
        }
        if (markedOf(errno) == Marked::impossible) {
            return Marked::impossible;
        }
        slot = (slot * 5 + 12345) % (rangeSize - 2);
    }
    return Marked::refused;
}

// Whether another open file description holds a mark in the range.
bool markHeld(int file, std::int64_t begin) {
    struct flock64 range = rangeOf(F_WRLCK, begin, rangeSize);
    return nxSeamRepeat([&] { return nxSeam.lock(file, F_OFD_GETLK, &range); }) == 0 &&
           range.l_type != F_UNLCK;
}

// The stand-in where the file system has no locks.
struct TableEntry {
    NXS_FileObject const* owner;
    unsigned int accesses;
    unsigned int denials;
};

struct Table {
    std::mutex mutex;
    std::vector<TableEntry> entries;
    std::atomic<std::size_t> qty{0};
};

Table& table() {
    static Table& only = *new Table;
    return only;
}

bool tableConflicts(Table& claims, std::uint64_t device, std::uint64_t inode, unsigned int accesses,
                    unsigned int denials) {
    for (TableEntry const& entry : claims.entries) {
        if (entry.owner->device == device && entry.owner->inode == inode &&
            ((entry.accesses & denials) != 0 || (entry.denials & accesses) != 0)) {
            return true;
        }
    }
    return false;
}

DWORD tableClaim(NXS_FileObject& object, unsigned int accesses, unsigned int denials, unsigned int checked) {
    Table& claims = table();
    std::lock_guard<std::mutex> guard(claims.mutex);
    if (tableConflicts(claims, object.device, object.inode, checked, denials)) {
        return ERROR_SHARING_VIOLATION;
    }
    claims.entries.push_back(TableEntry{&object, accesses, denials});
    claims.qty.store(claims.entries.size(), std::memory_order_release);
    object.shareInTable = true;
    return 0;
}

// Whether the file system is one whose whole-file locks are ranges too, which would meet the marks.
bool isNetwork(int file) {
    switch (nxSeam.fileSystem(file)) {
    case 0x6969:     // NFS
    case 0x517B:     // SMB
    case 0xFE534D42: // SMB 2
    case 0xFF534D42: // CIFS
        return true;
    default:
        return false;
    }
}

} // namespace

NXS_ShareGate::NXS_ShareGate(int file, std::uint64_t device) : file_(file) {
    // The device asked about last, plus 1 when it was a network file system.
    static std::atomic<std::uint64_t> known{~std::uint64_t{0}};
    std::uint64_t const seen = known.load(std::memory_order_relaxed);
    bool network = (seen & 1) != 0;
    if (seen >> 1 != device) {
        network = isNetwork(file);
        known.store(device << 1 | (network ? 1u : 0u), std::memory_order_relaxed);
    }
    if (network) {
        return;
    }
    for (int waited = 0; waited < 2000; ++waited) {
        if (nxSeam.gate(file, LOCK_EX | LOCK_NB) == 0) {
            held_ = true;
            return;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return;
        }
        struct timespec const pause = {0, waited < 50 ? 20000 : 1000000};
        nxSeam.sleep(&pause, nullptr);
    }
}

NXS_ShareGate::~NXS_ShareGate() {
    if (held_) {
        nxSeam.gate(file_, LOCK_UN);
    }
}

DWORD nxShareClaim(NXS_FileObject& object, bool overwrite) {
    unsigned int const accesses = (object.mayRead() ? FILE_SHARE_READ : 0) |
                                  (object.mayWrite() ? FILE_SHARE_WRITE : 0) |
                                  (object.eraseName != nullptr ? FILE_SHARE_DELETE : 0);
    if (!object.regular || (accesses == 0 && !overwrite)) {
        return 0;
    }
    unsigned int const denials = accesses == 0 ? 0 : ~object.share & bitAll;
    unsigned int const checked = accesses | (overwrite ? FILE_SHARE_WRITE : 0);
    for (unsigned int bit = 0; bit < bitQty; ++bit) {
        for (std::int64_t begin : {(accesses >> bit & 1) != 0 ? accessRange(bit) : 0,
                                   (denials >> bit & 1) != 0 ? denyRange(bit) : 0}) {
            if (begin == 0) {
                continue;
            }
            switch (markPlace(object, begin)) {
            case Marked::done:
                break;
            case Marked::refused:
                return ERROR_SHARING_VIOLATION;
            case Marked::impossible:
                return tableClaim(object, accesses, denials, checked);
            }
        }
    }
    for (unsigned int bit = 0; bit < bitQty; ++bit) {
        if (((checked >> bit & 1) != 0 && markHeld(object.file, denyRange(bit))) ||
            ((denials >> bit & 1) != 0 && markHeld(object.file, accessRange(bit)))) {
            return ERROR_SHARING_VIOLATION;
        }
    }
    return 0;
}

void nxShareRelease(NXS_FileObject& object) {
    if (!object.shareInTable) {
        return;
    }
    Table& claims = table();
    std::lock_guard<std::mutex> guard(claims.mutex);
    std::erase_if(claims.entries, [&](TableEntry const& entry) { return entry.owner == &object; });
    claims.qty.store(claims.entries.size(), std::memory_order_release);
}

bool nxShareMayDelete(int file, std::uint64_t device, std::uint64_t inode) {
    if (markHeld(file, denyRange(2))) {
        return false;
    }
    Table& claims = table();
    if (claims.qty.load(std::memory_order_acquire) == 0) {
        return true;
    }
    std::lock_guard<std::mutex> guard(claims.mutex);
    return !tableConflicts(claims, device, inode, FILE_SHARE_DELETE, 0);
}
