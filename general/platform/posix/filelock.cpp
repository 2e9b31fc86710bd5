// general/platform/posix/filelock.cpp - byte-range locks, owned by handles and binding for reads and writes.
//
// The rules that the system's own locks do not know (exact unlocking, counting, an exclusive lock beside a
// shared one of the same handle, empty ranges) are kept in records, one list a file, for all handles of this
// process. Locks of the open file description carry the conflicts with other processes. A record is entered
// as pending before the system is asked, because two threads with one handle meet no conflict there. Only in
// this process: empty ranges, ranges beyond NX_SHARE_BASE, and everything on file systems without locks.
#include <errno.h>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <new>
#include <vector>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr std::uint64_t placeEnd = NX_SHARE_BASE; // the first byte no lock of the system is placed on

struct Range {
    std::uint64_t begin;
    std::uint64_t length;

    // The end, cut off where no lock of the system is placed.
    std::uint64_t end() const {
        return begin >= placeEnd ? begin : begin + std::min(length, placeEnd - begin);
    }
    bool operator==(Range const&) const = default;
};

// Two ranges clash when they share a byte; an empty one when it lies strictly inside the other.
bool clash(Range const& one, Range const& two) {
    Range const& low = one.begin <= two.begin ? one : two;
    Range const& high = one.begin <= two.begin ? two : one;
    std::uint64_t const distance = high.begin - low.begin;
    if (distance >= low.length) {
        return false;
    }
    return distance > 0 || (one.length > 0 && two.length > 0);
}

struct Record {
    Range range;
    NXS_FileObject const* owner;
    bool exclusive;
    bool pending; // the system has not granted it yet
};

struct Table {
    using Key = std::pair<std::uint64_t, std::uint64_t>;
    std::mutex mutex;
    std::condition_variable changed;
    std::map<Key, std::vector<Record>> files;
    std::atomic<std::size_t> qty{0};
};

Table& table() {
    static Table& only = *new Table;
    return only;
}

Table::Key keyOf(NXS_FileObject const& object) {
    return {object.device, object.inode};
}

bool conflicts(std::vector<Record> const& records, NXS_FileObject const& object, Range const& range,
               bool exclusive) {
    return std::any_of(records.begin(), records.end(), [&](Record const& held) {
        if (!clash(held.range, range)) {
            return false;
        }
        return held.owner == &object ? exclusive : !held.pending && (exclusive || held.exclusive);
    });
}

struct flock64 systemRange(int type, std::uint64_t begin, std::uint64_t end) {
    struct flock64 range {};
    range.l_type = static_cast<short>(type);
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<std::int64_t>(begin);
    range.l_len = static_cast<std::int64_t>(end - begin);
    return range;
}

int systemLock(NXS_FileObject const& object, int command, int type, std::uint64_t begin, std::uint64_t end) {
    struct flock64 range = systemRange(type, begin, end);
    return nxSeamRepeat([&] { return nxSeam.lock(object.lockFile(), command, &range); });
}

// How the system holds a lock of this handle.
int systemType(NXS_FileObject const& object, bool exclusive) {
    return exclusive && object.writable ? F_WRLCK : F_RDLCK;
}

// The pieces of `range` between the boundaries of the handle's own records, with what covers each of them.
struct Piece {
    std::uint64_t begin;
    std::uint64_t end;
    bool exclusive;
    bool shared;
};

std::vector<Piece> piecesOf(std::vector<Record> const& records, NXS_FileObject const& object,
                            Range const& range) {
    std::vector<std::uint64_t> bounds{range.begin, range.end()};
    for (Record const& held : records) {
        if (held.owner == &object && held.range.begin < held.range.end()) {
            for (std::uint64_t const bound : {held.range.begin, held.range.end()}) {
                if (bound > range.begin && bound < range.end()) {
                    bounds.push_back(bound);
                }
            }
        }
    }
    std::sort(bounds.begin(), bounds.end());
    std::vector<Piece> pieces;
    for (std::size_t at = 1; at < bounds.size(); ++at) {
        Piece piece{bounds[at - 1], bounds[at], false, false};
        if (piece.begin == piece.end) {
            continue;
        }
        for (Record const& held : records) {
            if (held.owner == &object && held.range.begin <= piece.begin && held.range.end() >= piece.end) {
                (held.exclusive ? piece.exclusive : piece.shared) = true;
            }
        }
        pieces.push_back(piece);
    }
    return pieces;
}

// After a record of the handle has gone: the system keeps what other records of it still cover. Going from
// exclusive to shared is one step, so that nobody gets in between.
void systemRelease(std::vector<Record> const& records, NXS_FileObject const& object, Range const& range) {
    for (Piece const& piece : piecesOf(records, object, range)) {
        if (!piece.exclusive) {
            systemLock(object, F_OFD_SETLK, piece.shared ? F_RDLCK : F_UNLCK, piece.begin, piece.end);
        }
    }
}

void recordErase(Table& locks, NXS_FileObject const& object, std::vector<Record>::iterator record) {
    auto const file = locks.files.find(keyOf(object));
    Record const gone = *record;
    file->second.erase(record);
    try {
        systemRelease(file->second, object, gone.range);
    } catch (std::bad_alloc const&) {
        file->second.push_back(gone); // there is room: the lock stays as it was
        throw;
    }
    if (file->second.empty()) {
        locks.files.erase(file);
    }
    locks.qty.fetch_sub(1, std::memory_order_relaxed);
    locks.changed.notify_all();
}

std::vector<Record>::iterator recordFind(std::vector<Record>& records, Record const& wanted) {
    return std::find_if(records.begin(), records.end(), [&](Record const& held) {
        return held.owner == wanted.owner && held.range == wanted.range &&
               held.exclusive == wanted.exclusive && held.pending == wanted.pending;
    });
}

// Locks of the system need a descriptor that can write for exclusive ones. A handle that only reads has none:
// the file is opened once more for all its locks, where permitted. The table's mutex is held.
void lockDescriptorMake(NXS_FileObject& object) {
    if (object.locked) {
        return;
    }
    object.locked = true;
    if (object.writable) {
        return;
    }
    char name[32];
    std::snprintf(name, sizeof name, "/proc/self/fd/%d", object.file);
    int const file = nxSeamRepeat(
        [&] { return nxSeam.openAt(AT_FDCWD, name, O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0); });
    if (file >= 0) {
        object.writable = object.readable = true;
        object.lockDescriptor.store(file, std::memory_order_release);
    }
}

// Asks the system for a pending record's range; waits if `wait`. 0, ERROR_LOCK_VIOLATION, or
// ERROR_NOT_SUPPORTED when there are no such locks here.
DWORD systemPlace(NXS_FileObject const& object, std::vector<Piece> const& pieces, bool exclusive, bool wait) {
    for (Piece const& piece : pieces) {
        if (!exclusive && piece.exclusive) {
            continue; // the handle's own exclusive lock stays
        }
        if (systemLock(object, wait ? F_OFD_SETLKW : F_OFD_SETLK, systemType(object, exclusive), piece.begin,
                       piece.end) < 0) {
            return errno == EAGAIN || errno == EACCES ? ERROR_LOCK_VIOLATION : ERROR_NOT_SUPPORTED;
        }
    }
    return 0;
}

DWORD lockPlace(NXS_FileObject& object, Range const& range, bool exclusive, bool wait) {
    Table& locks = table();
    std::unique_lock<std::mutex> guard(locks.mutex);
    lockDescriptorMake(object);
    for (;;) {
        while (conflicts(locks.files[keyOf(object)], object, range, exclusive)) {
            if (!wait) {
                return ERROR_LOCK_VIOLATION;
            }
            locks.changed.wait(guard);
        }
        std::vector<Record>& records = locks.files[keyOf(object)];
        std::vector<Piece> const pieces = piecesOf(records, object, range);
        Record const pending{range, &object, exclusive, true};
        records.push_back(pending);
        locks.qty.fetch_add(1, std::memory_order_relaxed);
        guard.unlock();
        DWORD const code = systemPlace(object, pieces, exclusive, wait);
        guard.lock();
        std::vector<Record>& after = locks.files[keyOf(object)];
        auto const record = recordFind(after, pending);
        if (code == 0) {
            record->pending = false;
            return 0;
        }
        if (code == ERROR_NOT_SUPPORTED) {
            // No locks of the system: the records alone decide, and another thread may have been quicker.
            Record const mine = *record;
            after.erase(record);
            bool const late = conflicts(after, object, range, exclusive);
            after.push_back(mine);
            if (!late) {
                after.back().pending = false;
                return 0;
            }
        }
        recordErase(locks, object, recordFind(after, pending));
        if (code != ERROR_NOT_SUPPORTED || !wait) {
            return ERROR_LOCK_VIOLATION;
        }
    }
}

// The handle of a lock call and its range, checked in the order of the original's refusals.
DWORD lockArguments(NXS_FileObject const& object, DWORD reserved, OVERLAPPED const* at) {
    if (object.access == 0) {
        return ERROR_ACCESS_DENIED;
    }
    if (reserved != 0 || at == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    return object.regular ? 0 : DWORD{ERROR_INVALID_FUNCTION};
}

Range rangeOf(OVERLAPPED const& at, DWORD sizeLow, DWORD sizeHigh) {
    return {std::uint64_t{at.OffsetHigh} << 32 | at.Offset, std::uint64_t{sizeHigh} << 32 | sizeLow};
}

} // namespace

BOOL LockFileEx(HANDLE file, DWORD flags, DWORD reserved, DWORD sizeLow, DWORD sizeHigh, OVERLAPPED* at) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    DWORD code = lockArguments(*object, reserved, at);
    if (code == 0 && (flags & ~(LOCKFILE_FAIL_IMMEDIATELY | LOCKFILE_EXCLUSIVE_LOCK)) != 0) {
        code = ERROR_INVALID_PARAMETER;
    }
    if (code != 0) {
        return nxFail(code);
    }
    Range const range = rangeOf(*at, sizeLow, sizeHigh);
    if (range.length > 0 && range.begin + (range.length - 1) < range.begin) {
        return nxFail(ERROR_INVALID_LOCK_RANGE);
    }
    return nxGuarded(FALSE, [&] {
        DWORD const refusal = lockPlace(*object, range, (flags & LOCKFILE_EXCLUSIVE_LOCK) != 0,
                                        (flags & LOCKFILE_FAIL_IMMEDIATELY) == 0);
        return refusal == 0 ? TRUE : nxFail(refusal);
    });
}

BOOL UnlockFileEx(HANDLE file, DWORD reserved, DWORD sizeLow, DWORD sizeHigh, OVERLAPPED* at) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    DWORD const code = lockArguments(*object, reserved, at);
    if (code != 0) {
        return nxFail(code);
    }
    Range const range = rangeOf(*at, sizeLow, sizeHigh);
    return nxGuarded(FALSE, [&] {
        Table& locks = table();
        std::lock_guard<std::mutex> guard(locks.mutex);
        auto const found = locks.files.find(keyOf(*object));
        if (found != locks.files.end()) {
            for (bool const exclusive : {true, false}) {
                auto const record = recordFind(found->second, {range, object.get(), exclusive, false});
                if (record != found->second.end()) {
                    recordErase(locks, *object, record);
                    return TRUE;
                }
            }
        }
        return nxFail(ERROR_NOT_LOCKED);
    });
}

bool nxLockAllows(NXS_FileObject& object, std::uint64_t at, std::uint64_t size, bool write) {
    Range const wanted{at, size};
    Table& locks = table();
    if (locks.qty.load(std::memory_order_relaxed) != 0) {
        std::lock_guard<std::mutex> guard(locks.mutex);
        auto const found = locks.files.find(keyOf(object));
        if (found != locks.files.end()) {
            for (Record const& held : found->second) {
                if (!held.pending && clash(held.range, wanted) &&
                    (held.exclusive ? held.owner != &object : write)) {
                    return false;
                }
            }
        }
    }
    if (object.share == 0 || wanted.begin >= wanted.end()) {
        return true; // nobody else can have the file open, or there are no locks so far out
    }
    struct flock64 range = systemRange(write ? F_WRLCK : F_RDLCK, wanted.begin, wanted.end());
    return nxSeamRepeat([&] { return nxSeam.lock(object.lockFile(), F_OFD_GETLK, &range); }) < 0 ||
           range.l_type == F_UNLCK;
}

void nxLockReleaseAll(NXS_FileObject& object) {
    if (!object.locked) {
        return;
    }
    Table& locks = table();
    std::lock_guard<std::mutex> guard(locks.mutex);
    systemLock(object, F_OFD_SETLK, F_UNLCK, 0, placeEnd);
    auto const found = locks.files.find(keyOf(object));
    if (found == locks.files.end()) {
        return;
    }
    std::size_t const gone =
        std::erase_if(found->second, [&](Record const& held) { return held.owner == &object; });
    if (found->second.empty()) {
        locks.files.erase(found);
    }
    locks.qty.fetch_sub(gone, std::memory_order_relaxed);
    locks.changed.notify_all();
}
