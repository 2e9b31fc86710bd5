// general/platform/posix/fileopen.cpp - CreateFileA and the end of an open file.
#include <errno.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cstring>
#include <new>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/file.h"
#include "general/platform/posix/seam.h"

namespace {

constexpr DWORD genericAll = 0x10000000u;
constexpr DWORD attributesKnown = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL |
                                  FILE_ATTRIBUTE_TEMPORARY | 0x2000; // 0x2000: not content indexed
constexpr DWORD flagsKnown =
    FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_RANDOM_ACCESS | FILE_FLAG_WRITE_THROUGH;

// A descriptor and what it can do.
struct Opened {
    int file = -1;
    bool readable = false;
    bool writable = false;
    bool existed = false;
};

bool creates(DWORD creation) {
    return creation == CREATE_NEW || creation == CREATE_ALWAYS || creation == OPEN_ALWAYS;
}

bool empties(DWORD creation) {
    return creation == CREATE_ALWAYS || creation == TRUNCATE_EXISTING;
}

// The code for opening a name that ends in a separator, which no file has.
DWORD trailingCode(NXS_Path const& path, DWORD creation) {
    struct statx found;
    if (nxSeam.stat(AT_FDCWD, path.text, 0, STATX_TYPE, &found) == 0) {
        return S_ISDIR(found.stx_mode) ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_NAME;
    }
    DWORD const code = nxPathError(path, errno);
    return code == ERROR_FILE_NOT_FOUND && creates(creation) ? DWORD{ERROR_INVALID_NAME} : code;
}

DWORD argumentsCode(NXS_FileOpenArgs const& args) {
    if (args.creation < CREATE_NEW || args.creation > TRUNCATE_EXISTING ||
        (args.share & ~(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)) != 0 ||
        (args.creation == TRUNCATE_EXISTING && (args.access & GENERIC_WRITE) == 0)) {
        return ERROR_INVALID_PARAMETER;
    }
    if ((args.access & ~(GENERIC_READ | GENERIC_WRITE)) != 0 ||
        (args.flags & ~(attributesKnown | flagsKnown)) != 0) {
        return ERROR_NOT_SUPPORTED;
    }
    return 0;
}

// Opens what is there, with the descriptor that the access and the marks of the share mode need.
bool openExisting(NXS_Path const& path, NXS_FileOpenArgs const& args, Opened& opened) {
    auto const attempt = [&](int how) {
        int const flags = how | O_CLOEXEC | O_NOCTTY |
                          ((args.flags & FILE_FLAG_WRITE_THROUGH) != 0 ? O_DSYNC : 0) |
                          (how == O_PATH ? 0 : O_NONBLOCK); // no waiting for the other end of a named pipe
        opened.file = nxSeamRepeat([&] { return nxSeam.openAt(AT_FDCWD, path.text, flags, 0); });
        opened.readable = how == O_RDONLY || how == O_RDWR;
        opened.writable = how == O_WRONLY || how == O_RDWR;
        return opened.file >= 0;
    };
    bool const write = (args.access & GENERIC_WRITE) != 0;
    opened.existed = true;
    if (write || empties(args.creation)) {
        if (attempt(O_RDWR)) {
            return true;
        }
        return errno == EACCES && write && (args.access & GENERIC_READ) == 0 && attempt(O_WRONLY);
    }
    return attempt((args.access & GENERIC_READ) != 0 ? O_RDONLY : O_PATH);
}

bool openNew(NXS_Path const& path, NXS_FileOpenArgs const& args, Opened& opened) {
    unsigned int const mode = args.mode & ((args.flags & FILE_ATTRIBUTE_READONLY) != 0 ? ~0222u : ~0u);
    int const flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY |
                      ((args.flags & FILE_FLAG_WRITE_THROUGH) != 0 ? O_DSYNC : 0);
    opened.file = nxSeamRepeat([&] { return nxSeam.openAt(AT_FDCWD, path.text, flags, mode); });
    opened.readable = opened.writable = true;
    opened.existed = false;
    return opened.file >= 0;
}

// Opens or creates by the disposition; 0 or the code.
DWORD openBy(NXS_Path const& path, NXS_FileOpenArgs const& args, Opened& opened) {
    // Another process may make or remove the file between the two attempts: try again, but not for ever (a
    // symbolic link to nowhere neither opens nor can be made).
    for (int tries = 0; tries < 10; ++tries) {
        if (args.creation != CREATE_NEW) {
            if (openExisting(path, args, opened)) {
                return 0;
            }
            if (errno != ENOENT || !creates(args.creation)) {
                return nxPathError(path, errno);
            }
        }
        if (openNew(path, args, opened)) {
            return 0;
        }
        if (errno != EEXIST || args.creation == CREATE_NEW) {
            return nxPathError(path, errno);
        }
    }
    return ERROR_FILE_NOT_FOUND;
}

// The full name for the deletion at the close: the current directory may be another one then.
DWORD eraseNameMake(NXS_Path const& path, NXS_FileObject& object) {
    char work[NX_PATH_WORK_MAX] = "";
    if (path.text[0] != '/' && nxSeam.workGet(work, sizeof work) == nullptr) {
        return nxErrorFromErrno(errno);
    }
    std::size_t const length = std::strlen(work);
    object.eraseName = static_cast<char*>(nxSeam.allocate(length + path.length + 2));
    if (object.eraseName == nullptr) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    std::memcpy(object.eraseName, work, length);
    object.eraseName[length] = '/';
    std::memcpy(object.eraseName + length + 1, path.text, path.length + 1);
    return 0;
}

// What a file that was there already permits.
DWORD existingCode(NXS_FileObject const& object, NXS_FileOpenArgs const& args) {
    if (S_ISDIR(object.mode)) {
        return ERROR_ACCESS_DENIED;
    }
    bool const changes =
        object.mayWrite() || empties(args.creation) || (args.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0;
    return changes && nxModeIsReadOnly(object.mode) ? DWORD{ERROR_ACCESS_DENIED} : 0;
}

// Claims the share mode and, once it is granted, empties an existing file.
DWORD claim(NXS_FileObject& object, NXS_FileOpenArgs const& args, bool overwrite) {
    if (object.access == 0 && !overwrite && object.eraseName == nullptr) {
        return 0;
    }
    NXS_ShareGate gate(object.file, object.device);
    DWORD const code = nxShareClaim(object, overwrite);
    if (code != 0 || !overwrite) {
        return code;
    }
    if (nxSeamRepeat([&] { return nxSeam.truncate(object.file, 0); }) < 0 ||
        ((args.flags & FILE_ATTRIBUTE_READONLY) != 0 &&
         nxSeam.mode(object.file, object.mode & 07777 & ~0222u) < 0)) {
        return nxErrorFromErrno(errno);
    }
    return 0;
}

} // namespace

NXS_FileObject* nxFileOpen(NXS_Path const& path, NXS_FileOpenArgs const& args, DWORD& code) {
    code = argumentsCode(args);
    if (code == 0 && path.trailing) {
        code = trailingCode(path, args.creation);
    }
    if (code != 0) {
        return nullptr;
    }
    NXS_FileOpenArgs taken = args;
    if (path.device) {
        taken.creation = OPEN_EXISTING;
    }
    // Made first: without memory for it no file is made either.
    NXS_HandleRef<NXS_FileObject> object(new (std::nothrow) NXS_FileObject);
    Opened opened;
    code = object ? openBy(path, taken, opened) : DWORD{ERROR_NOT_ENOUGH_MEMORY};
    if (code != 0) {
        return nullptr;
    }
    object->file = opened.file;
    struct statx found;
    if (nxSeam.stat(opened.file, "", AT_EMPTY_PATH, STATX_TYPE | STATX_MODE | STATX_INO, &found) < 0) {
        code = nxErrorFromErrno(errno);
        return nullptr;
    }
    object->readable = opened.readable;
    object->writable = opened.writable;
    object->access = taken.access;
    object->share = taken.share;
    object->mode = found.stx_mode;
    object->device = makedev(found.stx_dev_major, found.stx_dev_minor);
    object->inode = found.stx_ino;
    object->regular = S_ISREG(found.stx_mode);
    object->lockDescriptor = opened.file;
    code = opened.existed ? existingCode(*object, taken) : 0;
    if (code == 0 && (taken.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0) {
        code = object->regular ? eraseNameMake(path, *object) : DWORD{ERROR_NOT_SUPPORTED};
    }
    if (code == 0 && object->regular) {
        code = claim(*object, taken, opened.existed && empties(taken.creation));
        if (code != 0 && object->eraseName != nullptr) {
            nxSeam.free(object->eraseName);
            object->eraseName = nullptr;
        }
    }
    if (code != 0) {
        return nullptr;
    }
    if (!object->regular && taken.access != 0) {
        nxSeam.status(opened.file, 0); // reads and writes of pipes and devices do wait
    }
    if (opened.existed && (taken.creation == CREATE_ALWAYS || taken.creation == OPEN_ALWAYS)) {
        code = ERROR_ALREADY_EXISTS;
    }
    return object.detach();
}

HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES*, DWORD creation, DWORD flags,
                   HANDLE) {
    if ((access & genericAll) != 0) {
        access = (access & ~genericAll) | GENERIC_READ | GENERIC_WRITE;
    }
    HANDLE const handle = nxGuarded<HANDLE>(nullptr, [=] {
        NXS_Path path;
        NXS_FileObject* object = nullptr;
        DWORD code = nxFileName(name, path);
        if (code == 0) {
            object = nxFileOpen(path, {access, share, creation, flags, 0666}, code);
        }
        nxErrorSet(code);
        return object == nullptr ? nullptr : nxHandleOpen(object);
    });
    return handle == nullptr ? INVALID_HANDLE_VALUE : handle;
}

DWORD NXS_FileObject::finish() {
    if (finished_ || file < 0) {
        return 0;
    }
    finished_ = true;
    nxLockReleaseAll(*this);
    nxShareRelease(*this);
    DWORD code = 0;
    if (eraseName != nullptr) {
        // Another file that has taken the name meanwhile stays.
        struct statx found;
        if (nxSeam.stat(AT_FDCWD, eraseName, 0, STATX_INO, &found) == 0 && found.stx_ino == inode &&
            makedev(found.stx_dev_major, found.stx_dev_minor) == device &&
            nxSeam.unlinkAt(AT_FDCWD, eraseName, 0) < 0 && errno != ENOENT) {
            code = nxErrorFromErrno(errno);
        }
        nxSeam.free(eraseName);
    }
    if (lockFile() != file) {
        nxSeam.close(lockFile());
    }
    // An interrupted close has closed; a network file system may report a failed write only now.
    if (nxSeam.close(file) < 0 && errno != EINTR) {
        code = nxErrorFromErrno(errno);
    }
    return code;
}

DWORD NXS_FileObject::handleClosed() {
    return sole() ? finish() : 0;
}

NXS_FileObject::~NXS_FileObject() {
    finish();
}
