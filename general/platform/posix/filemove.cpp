// general/platform/posix/filemove.cpp - copying, moving and deleting files by name.
#include <errno.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cstring>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/seam.h"

namespace {

struct Found {
    unsigned int mode = 0;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool isDirectory() const { return S_ISDIR(mode); }
    bool isSame(Found const& other) const { return device == other.device && inode == other.inode; }
};

// What a name leads to; a symbolic link to nowhere counts as the file it is itself. 0 or the code.
DWORD look(NXS_Path const& path, Found& found) {
    struct statx raw;
    unsigned int const mask = STATX_TYPE | STATX_MODE | STATX_INO;
    if (nxSeam.stat(AT_FDCWD, path.text, 0, mask, &raw) < 0 &&
        (errno != ENOENT || nxSeam.stat(AT_FDCWD, path.text, AT_SYMLINK_NOFOLLOW, mask, &raw) < 0)) {
        return nxPathError(path, errno);
    }
    found = {raw.stx_mode, makedev(raw.stx_dev_major, raw.stx_dev_minor), raw.stx_ino};
    return 0;
}

// Normalises and looks; a file named with a final separator is 123.
DWORD lookExisting(LPCSTR name, NXS_Path& path, Found& found) {
    DWORD code = nxFileName(name, path);
    if (code == 0) {
        code = look(path, found);
    }
    if (code == 0 && path.trailing && !found.isDirectory()) {
        code = ERROR_INVALID_NAME;
    }
    return code;
}

// A descriptor of a file to be deleted or moved, with the gate of its share mode closed for others until the
// end.
class Removal {
public:
    Removal(NXS_Path const& path, Found const& found) {
        if (!S_ISREG(found.mode)) {
            return;
        }
        for (int const how : {O_RDONLY, O_WRONLY}) {
            file_ = nxSeamRepeat(
                [&] { return nxSeam.openAt(AT_FDCWD, path.text, how | O_CLOEXEC | O_NOCTTY, 0); });
            if (file_ >= 0) {
                break;
            }
        }
        if (file_ >= 0) {
            gate_ = new (room_) NXS_ShareGate(file_, found.device);
            allowed_ = nxShareMayDelete(file_, found.device, found.inode);
        }
    }
    ~Removal() {
        if (file_ >= 0) {
            gate_->~NXS_ShareGate();
            nxSeam.close(file_);
        }
    }
    Removal(Removal const&) = delete;
    Removal& operator=(Removal const&) = delete;

    // Whether every opener shares deletion. A file that this user may neither read nor write cannot be asked.
    bool allowed() const { return allowed_; }

private:
    int file_ = -1;
    bool allowed_ = true;
    alignas(NXS_ShareGate) unsigned char room_[sizeof(NXS_ShareGate)];
    NXS_ShareGate* gate_ = nullptr;
};

// Copies the bytes from the start of one file to the other. 0 or the code.
DWORD copyData(NXS_FileObject& from, NXS_FileObject& to) {
    struct statx found;
    if (nxSeam.stat(from.file, "", AT_EMPTY_PATH, STATX_SIZE, &found) < 0) {
        return nxErrorFromErrno(errno);
    }
    if (from.regular && to.regular) {
        if (!nxLockAllows(from, 0, found.stx_size, false) || !nxLockAllows(to, 0, found.stx_size, true)) {
            return ERROR_LOCK_VIOLATION;
        }
        ssize_t part = 0;
        do {
            part = nxSeam.copyRange(from.file, to.file, std::size_t{1} << 30);
        } while (part > 0 || (part < 0 && nxSeamInterrupted()));
        // Not every pair of file systems can do it this way: the rest is read and written.
        if (part < 0 && errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP &&
            errno != EPERM) {
            return nxErrorFromErrno(errno);
        }
    }
    char buffer[65536];
    for (;;) {
        ssize_t const got = nxSeamRepeat([&] { return nxSeam.read(from.file, buffer, sizeof buffer); });
        if (got < 0) {
            return nxErrorFromErrno(errno);
        }
        if (got == 0) {
            return 0;
        }
        for (ssize_t done = 0; done < got;) {
            ssize_t const put = nxSeamRepeat(
                [&] { return nxSeam.write(to.file, buffer + done, static_cast<std::size_t>(got - done)); });
            if (put < 0) {
                return nxErrorFromErrno(errno);
            }
            done += put;
        }
    }
}

// The write time and the read-only attribute go with the contents.
DWORD copyAttributes(NXS_FileObject& from, NXS_FileObject& to) {
    struct statx found;
    if (nxSeam.stat(from.file, "", AT_EMPTY_PATH, STATX_MODE | STATX_MTIME, &found) < 0) {
        return nxErrorFromErrno(errno);
    }
    NXS_SeamTime const both[] = {{0, UTIME_OMIT},
                                 {found.stx_mtime.tv_sec, std::int64_t{found.stx_mtime.tv_nsec}}};
    if (nxSeam.times(to.file, both) < 0 ||
        (nxModeIsReadOnly(found.stx_mode) && nxSeam.mode(to.file, to.mode & 07777 & ~0222u) < 0)) {
        return nxErrorFromErrno(errno);
    }
    return 0;
}

DWORD copyFile(NXS_Path const& from, NXS_Path const& to, bool failIfExists) {
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE;
    DWORD code = 0;
    NXS_HandleRef<NXS_FileObject> const source(
        nxFileOpen(from, {GENERIC_READ, shared, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, 0}, code));
    if (!source) {
        return code;
    }
    Found target;
    if (!failIfExists && look(to, target) == 0 &&
        target.isSame({source->mode, source->device, source->inode}) && !to.trailing) {
        return ERROR_SHARING_VIOLATION;
    }
    // The new file is no more open to others than the source is.
    unsigned int const mode = source->regular ? (source->mode & 0777) | 0200u : 0666u;
    NXS_HandleRef<NXS_FileObject> const copy(nxFileOpen(
        to, {GENERIC_WRITE, shared, failIfExists ? CREATE_NEW : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, mode},
        code));
    if (!copy) {
        return code;
    }
    code = copyData(*source, *copy);
    if (code == 0 && copy->regular && source->regular) {
        code = copyAttributes(*source, *copy);
    }
    if (code == 0) {
        code = copy->handleClosed(); // what was written may turn out lost only now
    }
    if (code != 0 && copy->regular) {
        nxSeam.unlinkAt(AT_FDCWD, to.text, 0);
    }
    return code;
}

// Whether the two names are one directory entry.
bool isSameEntry(NXS_Path const& one, NXS_Path const& two) {
    char parentOne[sizeof one.text];
    char parentTwo[sizeof two.text];
    struct statx foundOne;
    struct statx foundTwo;
    one.directory(parentOne);
    two.directory(parentTwo);
    return std::strcmp(one.lastName(), two.lastName()) == 0 &&
           nxSeam.stat(AT_FDCWD, parentOne, 0, STATX_INO, &foundOne) == 0 &&
           nxSeam.stat(AT_FDCWD, parentTwo, 0, STATX_INO, &foundTwo) == 0 &&
           foundOne.stx_ino == foundTwo.stx_ino && foundOne.stx_dev_major == foundTwo.stx_dev_major &&
           foundOne.stx_dev_minor == foundTwo.stx_dev_minor;
}

// Renames without replacing anything. 0 or errno.
int renameNew(NXS_Path const& from, NXS_Path const& to, Found const& source) {
    if (nxSeam.rename(from.text, to.text, RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // The file system lacks that kind of renaming, or a directory is to go into itself.
    if (source.isDirectory()) {
        Found there;
        if (look(to, there) == 0) {
            return EEXIST;
        }
        return nxSeam.rename(from.text, to.text, 0) == 0 ? 0 : errno;
    }
    if (nxSeam.link(from.text, to.text) < 0) {
        return errno;
    }
    if (nxSeam.unlinkAt(AT_FDCWD, from.text, 0) < 0) {
        int const error = errno;
        nxSeam.unlinkAt(AT_FDCWD, to.text, 0); // it keeps its old name and no other
        return error;
    }
    return 0;
}

// Renames and replaces what is there. 0 or errno.
int renameOver(NXS_Path const& from, NXS_Path const& to) {
    if (nxSeam.rename(from.text, to.text, 0) < 0) {
        return errno;
    }
    // Two names of one file are left as they are by the system: then the old one is still there.
    struct statx gone;
    struct statx there;
    constexpr int flags = AT_SYMLINK_NOFOLLOW;
    if (nxSeam.stat(AT_FDCWD, from.text, flags, STATX_INO, &gone) == 0 &&
        nxSeam.stat(AT_FDCWD, to.text, flags, STATX_INO, &there) == 0 && gone.stx_ino == there.stx_ino &&
        gone.stx_dev_major == there.stx_dev_major && gone.stx_dev_minor == there.stx_dev_minor &&
        nxSeam.unlinkAt(AT_FDCWD, from.text, 0) < 0) {
        return errno;
    }
    return 0;
}

// What keeps an existing target from being replaced.
DWORD replaceCode(NXS_Path const& to, Found const& target) {
    if (target.isDirectory() || nxModeIsReadOnly(target.mode)) {
        return ERROR_ACCESS_DENIED;
    }
    return Removal(to, target).allowed() ? 0 : DWORD{ERROR_ACCESS_DENIED};
}

DWORD moveAcross(NXS_Path const& from, NXS_Path const& to, Found const& source, DWORD flags) {
    if (source.isDirectory()) {
        return ERROR_ACCESS_DENIED;
    }
    if ((flags & MOVEFILE_COPY_ALLOWED) == 0) {
        return ERROR_NOT_SAME_DEVICE;
    }
    DWORD const code = copyFile(from, to, (flags & MOVEFILE_REPLACE_EXISTING) == 0);
    if (code != 0) {
        return code == ERROR_FILE_EXISTS ? DWORD{ERROR_ALREADY_EXISTS} : code;
    }
    return nxSeam.unlinkAt(AT_FDCWD, from.text, 0) < 0 ? nxErrorFromErrno(errno) : 0;
}

// Makes sure that the new name is on the disk.
DWORD directorySync(NXS_Path const& to) {
    char parent[sizeof to.text];
    to.directory(parent);
    int const file = nxSeamRepeat([&] { return nxSeam.openAt(AT_FDCWD, parent, O_RDONLY | O_CLOEXEC, 0); });
    if (file < 0) {
        return nxErrorFromErrno(errno);
    }
    DWORD const code = nxSeam.sync(file) < 0 && errno != EINVAL ? nxErrorFromErrno(errno) : 0;
    nxSeam.close(file);
    return code;
}

DWORD moveFile(LPCSTR fromName, LPCSTR toName, DWORD flags) {
    if ((flags & ~(MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH)) != 0) {
        return ERROR_NOT_SUPPORTED;
    }
    NXS_Path from;
    NXS_Path to;
    Found source;
    Found target;
    DWORD code = lookExisting(fromName, from, source);
    if (code == 0) {
        code = nxFileName(toName, to);
    }
    if (code != 0) {
        return code;
    }
    if (from.device || to.device) {
        return ERROR_ACCESS_DENIED; // a file takes the device's place neither here nor on the disk
    }
    DWORD const there = look(to, target);
    if (there != 0 && there != ERROR_FILE_NOT_FOUND) {
        return there;
    }
    if (to.trailing && !source.isDirectory()) {
        return ERROR_INVALID_NAME;
    }
    bool const replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    if (there == 0) {
        if (source.isSame(target) && isSameEntry(from, to)) {
            return 0;
        }
        if (!replace) {
            return ERROR_ALREADY_EXISTS;
        }
        code = replaceCode(to, target);
        if (code != 0) {
            return code;
        }
    }
    int error = 0;
    {
        Removal const removal(from, source);
        if (!removal.allowed()) {
            return ERROR_SHARING_VIOLATION;
        }
        error = replace ? renameOver(from, to) : renameNew(from, to, source);
    }
    if (error == EXDEV) {
        code = moveAcross(from, to, source, flags);
    } else if (error != 0) {
        code = error == EEXIST ? DWORD{ERROR_ALREADY_EXISTS} : nxPathError(to, error);
    }
    if (code == 0 && (flags & MOVEFILE_WRITE_THROUGH) != 0) {
        code = directorySync(to);
    }
    return code;
}

DWORD deleteFile(LPCSTR name) {
    NXS_Path path;
    Found found;
    DWORD const code = lookExisting(name, path, found);
    if (code != 0) {
        return code;
    }
    if (found.isDirectory() || path.device || nxModeIsReadOnly(found.mode)) {
        return ERROR_ACCESS_DENIED;
    }
    Removal const removal(path, found);
    if (!removal.allowed()) {
        return ERROR_SHARING_VIOLATION;
    }
    return nxSeam.unlinkAt(AT_FDCWD, path.text, 0) < 0 ? nxPathError(path, errno) : 0;
}

// Runs a call that ends in 0 or a code.
template <class Body>
BOOL result(Body body) {
    DWORD const code = nxGuarded<DWORD>(ERROR_NOT_ENOUGH_MEMORY, body);
    return code == 0 ? TRUE : nxFail(code);
}

} // namespace

BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) {
    return result([=] {
        NXS_Path source;
        NXS_Path target;
        DWORD code = nxFileName(from, source);
        if (code == 0) {
            code = nxFileName(to, target);
        }
        return code != 0 ? code : copyFile(source, target, failIfExists != FALSE);
    });
}

BOOL MoveFileA(LPCSTR from, LPCSTR to) {
    return MoveFileExA(from, to, MOVEFILE_COPY_ALLOWED);
}

BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
    return result([=] { return moveFile(from, to, flags); });
}

BOOL DeleteFileA(LPCSTR name) {
    return result([=] { return deleteFile(name); });
}
