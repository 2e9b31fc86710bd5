// general/platform/posix/seam.cpp - the table of system calls, as the system provides them.
#include "general/platform/posix/seam.h"

#include <dlfcn.h>
#include <errno.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

int openAt(int directory, char const* name, int flags, unsigned int mode) {
    return ::openat64(directory, name, flags, mode);
}

ssize_t copyRange(int from, int to, std::size_t size) {
    return ::copy_file_range(from, nullptr, to, nullptr, size, 0);
}

std::int64_t fileSystem(int file) {
    struct statfs64 found;
    return ::fstatfs64(file, &found) < 0
               ? -1
               : static_cast<std::int64_t>(static_cast<std::uint32_t>(found.f_type));
}

int lock(int file, int command, struct flock64* range) {
    return ::fcntl64(file, command, range);
}

int status(int file, int flags) {
    return ::fcntl64(file, F_SETFL, flags);
}

ssize_t entries(int directory, void* buffer, std::size_t size) {
    return static_cast<ssize_t>(::syscall(SYS_getdents64, directory, buffer, size));
}

int times(int file, NXS_SeamTime const* both) {
#if defined(SYS_utimensat_time64)
    // The 32-bit system's own call would stop at 2038.
    return static_cast<int>(::syscall(SYS_utimensat_time64, file, nullptr, both, 0));
#else
    return static_cast<int>(::syscall(SYS_utimensat, file, nullptr, both, 0));
#endif
}

int modeOf(char const* name, unsigned int mode) {
    return ::chmod(name, mode);
}

int threadStart(pthread_t* thread, pthread_attr_t const* attributes, void* (*start)(void*), void* argument) {
    return ::pthread_create(thread, attributes, start, argument);
}

} // namespace

constinit NXS_Seam nxSeam = {
    openAt,
    ::close,
    ::read,
    ::write,
    ::pread64,
    ::pwrite64,
    ::lseek64,
    ::ftruncate64,
    ::fsync,
    copyRange,
    ::statx,
    fileSystem,
    lock,
    ::flock,
    status,
    ::unlinkat,
    [](char const* from, char const* to, unsigned int flags) {
        return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, flags);
    },
    ::link,
    ::mkdir,
    entries,
    times,
    ::fchmod,
    modeOf,
    ::getcwd,
    ::chdir,
    std::malloc,
    std::free,
    ::clock_gettime,
    ::nanosleep,
    threadStart,
    ::dlopen,
    ::dlclose,
    ::dlsym,
    ::readlink,
    ::isatty,
};

bool nxSeamInterrupted() {
    return errno == EINTR;
}
