// general/platform/posix/file.cpp - reading, writing, positions and flushing of open files.
#include "general/platform/posix/file.h"

#include <errno.h>
#include <sys/stat.h>

#include <limits>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/fileinfo.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr std::int64_t positionMax = std::numeric_limits<std::int64_t>::max();

std::int64_t offsetOf(OVERLAPPED const& at) {
    return static_cast<std::int64_t>(std::uint64_t{at.OffsetHigh} << 32 | at.Offset);
}

// One call after the other until the whole buffer is done; `once` makes one call for the rest from `done` on.
template <class Once>
std::int64_t transferAll(std::size_t size, Once once) {
    std::size_t done = 0;
    while (done < size) {
        ssize_t const part = once(done);
        if (part > 0) {
            done += static_cast<std::size_t>(part);
        } else if (part == 0) {
            break;
        } else if (!nxSeamInterrupted()) {
            // What was transferred counts; the next call meets the failure again.
            return done > 0 ? static_cast<std::int64_t>(done) : -1;
        }
    }
    return static_cast<std::int64_t>(done);
}

// A transfer at the handle's position, or at the one given: checks the locks, transfers and moves the
// position after it. The bytes done; -1 with `code` set.
template <class Transfer>
std::int64_t transferAtPosition(NXS_FileObject& object, DWORD size, OVERLAPPED* at, bool write, DWORD& code,
                                Transfer transfer) {
    std::lock_guard<std::mutex> guard(object.mutex);
    std::int64_t const position = at == nullptr ? object.position : offsetOf(*at);
    if (position < 0 || position > positionMax - std::int64_t{size}) {
        code = ERROR_INVALID_PARAMETER;
        return -1;
    }
    if (!nxLockAllows(object, static_cast<std::uint64_t>(position), size, write)) {
        code = ERROR_LOCK_VIOLATION;
        return -1;
    }
    std::int64_t const done = transfer(position);
    if (done < 0) {
        code = nxErrorFromErrno(errno);
        return -1;
    }
    object.position = position + done;
    return done;
}

BOOL transferEnd(std::int64_t done, DWORD code, DWORD* doneTo, OVERLAPPED* at) {
    if (done < 0) {
        return nxFail(code);
    }
    if (doneTo != nullptr) {
        *doneTo = static_cast<DWORD>(done);
    }
    if (at != nullptr) {
        at->Internal = 0;
        at->InternalHigh = static_cast<ULONG_PTR>(done);
    }
    return TRUE;
}

} // namespace

std::int64_t nxFileReadAt(int file, void* buffer, std::size_t size, std::int64_t at) {
    return transferAll(size, [&](std::size_t done) {
        return nxSeam.readAt(file, static_cast<char*>(buffer) + done, size - done,
                             at + static_cast<std::int64_t>(done));
    });
}

std::int64_t nxFileWriteAt(int file, void const* buffer, std::size_t size, std::int64_t at) {
    return transferAll(size, [&](std::size_t done) {
        return nxSeam.writeAt(file, static_cast<char const*>(buffer) + done, size - done,
                              at + static_cast<std::int64_t>(done));
    });
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, DWORD* done, OVERLAPPED* at) {
    if (done != nullptr) {
        *done = 0;
    }
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    if (!object->mayRead()) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    if (size == 0) {
        return TRUE;
    }
    DWORD code = 0;
    std::int64_t got = 0;
    if (object->regular) {
        got = transferAtPosition(*object, size, at, false, code, [&](std::int64_t from) {
            return nxFileReadAt(object->file, buffer, size, from);
        });
    } else {
        got = nxSeamRepeat([&] { return nxSeam.read(object->file, buffer, size); });
        code = got < 0 ? nxErrorFromErrno(errno) : 0;
    }
    if (got == 0 && at != nullptr) {
        return nxFail(ERROR_HANDLE_EOF);
    }
    return transferEnd(got, code, done, at);
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, DWORD* done, OVERLAPPED* at) {
    if (done != nullptr) {
        *done = 0;
    }
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    if (!object->mayWrite()) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    if (size == 0) {
        return TRUE;
    }
    DWORD code = 0;
    std::int64_t put = 0;
    if (object->regular) {
        put = transferAtPosition(*object, size, at, true, code, [&](std::int64_t to) {
            return nxFileWriteAt(object->file, buffer, size, to);
        });
    } else {
        put = transferAll(size, [&](std::size_t from) {
            return nxSeam.write(object->file, static_cast<char const*>(buffer) + from, size - from);
        });
        code = put < 0 ? nxErrorFromErrno(errno) : 0;
    }
    return transferEnd(put, code, done, at);
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distanceHigh, DWORD method) {
    auto const refuse = [](DWORD code) {
        nxErrorSet(code);
        return INVALID_SET_FILE_POINTER;
    };
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return INVALID_SET_FILE_POINTER;
    }
    if (method > FILE_END) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    std::int64_t const offset =
        distanceHigh == nullptr
            ? std::int64_t{distance}
            : static_cast<std::int64_t>(std::uint64_t{static_cast<std::uint32_t>(*distanceHigh)} << 32 |
                                        static_cast<std::uint32_t>(distance));
    std::lock_guard<std::mutex> guard(object->mutex);
    std::int64_t position = 0;
    if (object->regular) {
        std::int64_t base = method == FILE_CURRENT ? object->position : 0;
        if (method == FILE_END) {
            struct statx found;
            if (nxSeam.stat(object->file, "", AT_EMPTY_PATH, STATX_SIZE, &found) < 0) {
                return refuse(nxErrorFromErrno(errno));
            }
            base = static_cast<std::int64_t>(found.stx_size);
        }
        if (offset > 0 && base > positionMax - offset) {
            return refuse(ERROR_INVALID_PARAMETER);
        }
        position = base + offset;
        if (position < 0) {
            return refuse(ERROR_NEGATIVE_SEEK);
        }
    } else {
        position = nxSeam.seek(object->file, offset, static_cast<int>(method));
        if (position < 0) {
            return refuse(errno == EINVAL   ? ERROR_NEGATIVE_SEEK
                          : errno == ESPIPE ? ERROR_INVALID_FUNCTION
                                            : nxErrorFromErrno(errno));
        }
    }
    if (distanceHigh == nullptr && position > std::int64_t{0xFFFFFFFF}) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    object->position = position;
    if (distanceHigh != nullptr) {
        *distanceHigh = static_cast<LONG>(position >> 32);
    }
    auto const low = static_cast<DWORD>(position & 0xFFFFFFFF);
    if (low == INVALID_SET_FILE_POINTER) {
        nxErrorSet(ERROR_SUCCESS); // tells this position from a failure
    }
    return low;
}

BOOL FlushFileBuffers(HANDLE file) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    if (!object->mayWrite()) {
        return nxFail(ERROR_ACCESS_DENIED);
    }
    if (nxSeamRepeat([&] { return nxSeam.sync(object->file); }) < 0) {
        return nxFail(nxErrorFromErrno(errno));
    }
    return TRUE;
}

BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* info) {
    auto const object = nxHandleGet<NXS_FileObject>(file);
    if (!object) {
        return FALSE;
    }
    if (!object->regular) {
        return nxFail(ERROR_INVALID_FUNCTION);
    }
    struct statx found;
    if (nxSeam.stat(object->file, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &found) < 0) {
        return nxFail(nxErrorFromErrno(errno));
    }
    info->dwFileAttributes = nxFileAttributes(found.stx_mode, "");
    info->ftCreationTime = nxFileTimeCreated(found);
    info->ftLastAccessTime = nxFileTimeOf(found.stx_atime);
    info->ftLastWriteTime = nxFileTimeOf(found.stx_mtime);
    info->dwVolumeSerialNumber = static_cast<DWORD>(object->device);
    info->nFileSizeHigh = static_cast<DWORD>(found.stx_size >> 32);
    info->nFileSizeLow = static_cast<DWORD>(found.stx_size);
    info->nNumberOfLinks = found.stx_nlink;
    info->nFileIndexHigh = static_cast<DWORD>(object->inode >> 32);
    info->nFileIndexLow = static_cast<DWORD>(object->inode);
    return TRUE;
}
