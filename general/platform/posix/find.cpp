// general/platform/posix/find.cpp - searching directories: FindFirstFileA, FindNextFileA, FindClose.
//
// The first call opens the directory once, reads all of its names, keeps those that match and orders them by
// upper-cased name, `.` and `..` first. Size, times and attributes are asked for when an entry is handed out,
// relative to the open directory; an entry that has gone by then is passed over.
#include <errno.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <new>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/fileinfo.h"
#include "general/platform/posix/pattern.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr DWORD attributeReparsePoint = 0x400;
constexpr unsigned int statMask =
    STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_ATIME | STATX_MTIME | STATX_BTIME | STATX_INO;

// A record of the system's directory listing.
struct Listed {
    std::uint64_t inode;
    std::int64_t next;
    std::uint16_t size;
    std::uint8_t type;
    char name[1];
};
constexpr std::size_t listedName = offsetof(Listed, name);
constexpr std::uint8_t listedUnknown = 0;
constexpr std::uint8_t listedDirectory = 4;
constexpr std::uint8_t listedLink = 10;

// A name that matched: the first eight upper-cased units as a number, for fast comparison, and where it
// stands.
struct Entry {
    std::uint64_t key;
    char const* name;
};

unsigned char upper(char unit) {
    return static_cast<unsigned char>(unit >= 'a' && unit <= 'z' ? unit - ('a' - 'A') : unit);
}

std::uint64_t keyOf(char const* name) {
    std::uint64_t key = 0;
    for (int shift = 56; shift >= 0 && *name != 0; shift -= 8, ++name) {
        key |= std::uint64_t{upper(*name)} << shift;
    }
    return key;
}

bool isDots(char const* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

bool before(Entry const& one, Entry const& two) {
    if (one.key != two.key) {
        return one.key < two.key;
    }
    for (std::size_t at = 0;; ++at) {
        unsigned char const left = upper(one.name[at]);
        unsigned char const right = upper(two.name[at]);
        if (left != right) {
            return left < right;
        }
        if (left == 0) {
            return std::strcmp(one.name, two.name) < 0;
        }
    }
}

bool isSame(struct statx const& one, struct statx const& two) {
    return one.stx_ino == two.stx_ino && one.stx_dev_major == two.stx_dev_major &&
           one.stx_dev_minor == two.stx_dev_minor;
}

// A block from the seam's allocator.
class Block {
public:
    Block() = default;
    ~Block() { nxSeam.free(data_); }
    Block(Block const&) = delete;
    Block& operator=(Block const&) = delete;

    // Makes room for `size` bytes and keeps the first `kept`.
    bool resize(std::size_t size, std::size_t kept) {
        void* data = nxSeam.allocate(size);
        if (data == nullptr) {
            return false;
        }
        if (kept > 0) {
            std::memcpy(data, data_, kept);
        }
        nxSeam.free(data_);
        data_ = data;
        return true;
    }
    void* data() const { return data_; }

private:
    void* data_ = nullptr;
};

class Search final : public NXS_HandleObject {
public:
    static constexpr NXS_HandleType handleType = NXS_HandleType::search;

    Search() : NXS_HandleObject(handleType) {}
    ~Search() override { close(); }

    // Searches for a pattern with wildcards. With `directories`, entries that the listing already shows to be
    // nothing of the kind are left out, so that nobody has to ask for their times. 0 or the code.
    DWORD begin(NXS_Path const& path, bool directories) {
        path.directory(directory_);
        file_ = nxSeamRepeat(
            [&] { return nxSeam.openAt(AT_FDCWD, directory_, O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
        if (file_ < 0) {
            return openError(errno);
        }
        std::size_t size = 0;
        std::size_t qty = 0;
        DWORD code = list(size, qty);
        if (code == 0) {
            code = choose(path, directories, size, qty);
        }
        return code;
    }

    // The next entry, or ERROR_NO_MORE_FILES.
    DWORD next(WIN32_FIND_DATAA& data) {
        std::lock_guard<std::mutex> guard(mutex_);
        while (at_ < qty_) {
            if (fill(entries()[at_++].name, data)) {
                return 0;
            }
        }
        close();
        return ERROR_NO_MORE_FILES;
    }

private:
    Entry const* entries() const { return static_cast<Entry const*>(entryBlock_.data()); }

    DWORD openError(int error) const {
        struct statx found;
        if (error == ENOENT) {
            return ERROR_PATH_NOT_FOUND;
        }
        if (error == ENOTDIR) {
            return nxSeam.stat(AT_FDCWD, directory_, 0, STATX_TYPE, &found) == 0 ? ERROR_DIRECTORY
                                                                                 : ERROR_PATH_NOT_FOUND;
        }
        return nxErrorFromErrno(error);
    }

    // Reads the whole directory into the list block.
    DWORD list(std::size_t& size, std::size_t& qty) {
        std::size_t room = 32768;
        if (!listBlock_.resize(room, 0)) {
            return ERROR_NOT_ENOUGH_MEMORY;
        }
        for (;;) {
            if (room - size < 4096) {
                room *= 2;
                if (!listBlock_.resize(room, size)) {
                    return ERROR_NOT_ENOUGH_MEMORY;
                }
            }
            char* const data = static_cast<char*>(listBlock_.data());
            ssize_t const got = nxSeamRepeat([&] { return nxSeam.entries(file_, data + size, room - size); });
            if (got < 0) {
                return nxErrorFromErrno(errno);
            }
            if (got == 0) {
                return 0;
            }
            std::size_t const end = size + static_cast<std::size_t>(got);
            for (; size < end; ++qty) {
                size += listedAt(size).size;
            }
        }
    }

    Listed const& listedAt(std::size_t at) const {
        return *reinterpret_cast<Listed const*>(static_cast<char const*>(listBlock_.data()) + at);
    }

    // Keeps the names that match, in order.
    DWORD choose(NXS_Path const& path, bool directories, std::size_t size, std::size_t qty) {
        if (!entryBlock_.resize((qty + 1) * sizeof(Entry), 0)) {
            return ERROR_NOT_ENOUGH_MEMORY;
        }
        bool const root = directory_[0] == '/' && directory_[1] == 0;
        NXS_Pattern const pattern(path.lastName(), path.length - path.last, path.starDot);
        auto* const entries = static_cast<Entry*>(entryBlock_.data());
        for (std::size_t at = 0; at < size; at += listedAt(at).size) {
            std::uint8_t const type = listedAt(at).type;
            if (directories && type != listedDirectory && type != listedLink && type != listedUnknown) {
                continue;
            }
            char const* const name = reinterpret_cast<char const*>(&listedAt(at)) + listedName;
            bool const dots = isDots(name);
            if ((!dots || !root) && pattern.matches(name)) {
                // Only the two names of dots have the key 0 or 1.
                entries[qty_++] = {dots ? (name[1] == 0 ? 0u : 1u) : keyOf(name), name};
            }
        }
        std::sort(entries, entries + qty_, before);
        return qty_ == 0 ? DWORD{ERROR_FILE_NOT_FOUND} : 0;
    }

    bool fill(char const* name, WIN32_FIND_DATAA& data) const;
    bool leadsBack(struct statx const& target) const;

    void close() {
        if (file_ >= 0) {
            nxSeam.close(file_);
            file_ = -1;
        }
    }

    std::mutex mutex_; // guards at_ and file_
    int file_ = -1;
    std::size_t at_ = 0;
    std::size_t qty_ = 0;
    Block listBlock_;
    Block entryBlock_;
    char directory_[sizeof(NXS_Path::text)];
};

void dataOf(struct statx const& found, char const* name, bool link, WIN32_FIND_DATAA& data) {
    bool const directory = S_ISDIR(found.stx_mode);
    data.dwFileAttributes =
        nxFileAttributes(found.stx_mode, name) | (link && directory ? attributeReparsePoint : 0);
    data.ftCreationTime = nxFileTimeCreated(found);
    data.ftLastAccessTime = nxFileTimeOf(found.stx_atime);
    data.ftLastWriteTime = nxFileTimeOf(found.stx_mtime);
    std::uint64_t const size = directory ? 0 : found.stx_size;
    data.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    data.nFileSizeLow = static_cast<DWORD>(size);
    data.dwReserved0 = 0;
    data.dwReserved1 = 0;
    std::size_t const length = std::min<std::size_t>(std::strlen(name), MAX_PATH - 1);
    std::memcpy(data.cFileName, name, length);
    data.cFileName[length] = 0;
    data.cAlternateFileName[0] = 0;
}

// The information behind a name; a symbolic link to nowhere is described itself. False when nothing is there.
bool lookAt(int directory, char const* name, struct statx& found) {
    return nxSeam.stat(directory, name, AT_NO_AUTOMOUNT, statMask, &found) == 0 ||
           nxSeam.stat(directory, name, AT_NO_AUTOMOUNT | AT_SYMLINK_NOFOLLOW, statMask, &found) == 0;
}

bool Search::fill(char const* name, WIN32_FIND_DATAA& data) const {
    struct statx found;
    if (!lookAt(file_, name, found)) {
        return false;
    }
    auto const type = static_cast<std::uint8_t>(name[-1]);
    bool const link = type == listedLink || (type == 0 && S_ISDIR(found.stx_mode));
    if (link && S_ISDIR(found.stx_mode) && !isDots(name)) {
        struct statx own;
        bool const isLink =
            type == listedLink ||
            (nxSeam.stat(file_, name, AT_SYMLINK_NOFOLLOW, STATX_TYPE, &own) == 0 && S_ISLNK(own.stx_mode));
        if (isLink && leadsBack(found)) {
            return false;
        }
        dataOf(found, name, isLink, data);
        return true;
    }
    dataOf(found, name, false, data);
    return true;
}

// Whether a link's target is a directory on the way here: following it, a walk through the tree would never
// end. The way is both the written one and the real one up to the root.
bool Search::leadsBack(struct statx const& target) const {
    struct statx found;
    char prefix[sizeof directory_];
    std::strcpy(prefix, directory_);
    for (char* end = prefix + std::strlen(prefix); end != prefix;) {
        *end = 0;
        if (nxSeam.stat(AT_FDCWD, prefix, 0, STATX_INO, &found) == 0 && isSame(found, target)) {
            return true;
        }
        do {
            --end;
        } while (end != prefix && *end != '/');
    }
    char up[NX_PATH_WORK_MAX] = ".";
    struct statx below {};
    for (std::size_t length = 1; length + 4 < sizeof up; length += 3) {
        if (nxSeam.stat(file_, up, 0, STATX_INO, &found) < 0 || isSame(found, below)) {
            return false; // the root is its own parent
        }
        if (isSame(found, target)) {
            return true;
        }
        below = found;
        std::memcpy(up + length, "/..", 4);
    }
    return false;
}

// A name without wildcards: the one entry, found exactly as it is written.
DWORD findOne(NXS_Path const& path, WIN32_FIND_DATAA& data) {
    struct statx found;
    if (path.device) {
        return ERROR_FILE_NOT_FOUND;
    }
    if (!lookAt(AT_FDCWD, path.text, found)) {
        int const error = errno;
        if (path.trailing && error == ENOENT) {
            return ERROR_PATH_NOT_FOUND;
        }
        return nxPathError(path, error);
    }
    if (path.trailing) {
        return S_ISDIR(found.stx_mode) ? ERROR_FILE_NOT_FOUND : ERROR_DIRECTORY;
    }
    dataOf(found, path.last < path.length ? path.lastName() : path.text, false, data);
    return 0;
}

HANDLE refuse(DWORD code) {
    nxErrorSet(code);
    return INVALID_HANDLE_VALUE;
}

} // namespace

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* data) {
    return FindFirstFileExA(pattern, FindExInfoStandard, data, FindExSearchNameMatch, nullptr, 0);
}

HANDLE FindFirstFileExA(LPCSTR pattern, FINDEX_INFO_LEVELS level, void* found, FINDEX_SEARCH_OPS operation,
                        void* filter, DWORD flags) {
    if (level != FindExInfoStandard || operation > FindExSearchLimitToDirectories || filter != nullptr ||
        flags != 0) {
        return refuse(ERROR_NOT_SUPPORTED);
    }
    auto* const data = static_cast<WIN32_FIND_DATAA*>(found);
    NXS_Path path;
    DWORD code = nxPathNormalise(pattern, NXS_PathPattern, path);
    if (code != 0) {
        return refuse(code);
    }
    NXS_HandleRef<Search> search(new (std::nothrow) Search);
    if (!search) {
        return refuse(ERROR_NOT_ENOUGH_MEMORY);
    }
    if (path.wild) {
        code = search->begin(path, operation == FindExSearchLimitToDirectories);
        if (code == 0) {
            code = search->next(*data);
            code = code == ERROR_NO_MORE_FILES ? DWORD{ERROR_FILE_NOT_FOUND} : code;
        }
    } else {
        code = findOne(path, *data);
    }
    if (code != 0) {
        return refuse(code);
    }
    HANDLE const handle = nxHandleOpen(search.detach());
    return handle == nullptr ? INVALID_HANDLE_VALUE : handle;
}

BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* data) {
    auto const object = nxHandleGet<Search>(search);
    if (!object) {
        return FALSE;
    }
    DWORD const code = object->next(*data);
    return code == 0 ? TRUE : nxFail(code);
}

BOOL FindClose(HANDLE search) {
    DWORD const code = nxHandleClose(search, Search::handleType);
    return code == 0 ? TRUE : nxFail(code);
}
