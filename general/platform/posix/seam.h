// general/platform/posix/seam.h - Private header: every call from posix/ to the operating system goes through
// this one table, so that a test can put a failing function in its place.
//
// Entries have the meaning, results and errno of the system calls they are named for; offsets and times are
// 64 bits wide on every target. Tests exchange entries while no other thread is inside the layer, and put
// them back (NXS_SeamScope does).
#pragma once

#include <fcntl.h>
#include <pthread.h>
#include <sys/types.h>
#include <time.h>

#include <cstddef>
#include <cstdint>

#include "general/platform/fwd.h"

struct statx;

struct NXS_SeamTime {
    std::int64_t seconds;
    std::int64_t nanoseconds; // or UTIME_OMIT, UTIME_NOW
};

struct NXS_Seam {
    int (*openAt)(int directory, char const* name, int flags, unsigned int mode);
    int (*close)(int file);
    ssize_t (*read)(int file, void* buffer, std::size_t size);
    ssize_t (*write)(int file, void const* buffer, std::size_t size);
    ssize_t (*readAt)(int file, void* buffer, std::size_t size, std::int64_t at);
    ssize_t (*writeAt)(int file, void const* buffer, std::size_t size, std::int64_t at);
    std::int64_t (*seek)(int file, std::int64_t offset, int how);
    int (*truncate)(int file, std::int64_t size);
    int (*sync)(int file);
    ssize_t (*copyRange)(int from, int to, std::size_t size);
    int (*stat)(int directory, char const* name, int flags, unsigned int mask, struct statx* result);
    std::int64_t (*fileSystem)(int file); // the magic number of the file system, -1 with errno
    int (*lock)(int file, int command, struct flock64* range);
    int (*gate)(int file, int operation);
    int (*status)(int file, int flags); // sets the open file's status flags
    int (*unlinkAt)(int directory, char const* name, int flags);
    int (*rename)(char const* from, char const* to, unsigned int flags);
    int (*link)(char const* from, char const* to);
    int (*makeDirectory)(char const* name, unsigned int mode);
    ssize_t (*entries)(int directory, void* buffer, std::size_t size);
    int (*times)(int file, NXS_SeamTime const* accessedAndWritten);
    int (*mode)(int file, unsigned int mode);
    int (*modeOf)(char const* name, unsigned int mode);
    char* (*workGet)(char* buffer, std::size_t size);
    int (*workSet)(char const* name);
    void* (*allocate)(std::size_t size);
    void (*free)(void* block);
    int (*clock)(clockid_t clock, struct timespec* now);
    int (*sleep)(struct timespec const* howLong, struct timespec* left);
    int (*threadStart)(pthread_t* thread, pthread_attr_t const* attributes, void* (*start)(void*),
                       void* argument);
    void* (*moduleOpen)(char const* name, int flags);
    int (*moduleClose)(void* module);
    void* (*moduleSymbol)(void* module, char const* name);
    ssize_t (*linkRead)(char const* name, char* buffer, std::size_t size);
    int (*isTerminal)(int file);
};

extern NX_EXPORT NXS_Seam nxSeam;

// Saves the table and puts it back at the end.
class NXS_SeamScope {
public:
    NXS_SeamScope() : saved_(nxSeam) {}
    ~NXS_SeamScope() { nxSeam = saved_; }
    NXS_SeamScope(NXS_SeamScope const&) = delete;
    NXS_SeamScope& operator=(NXS_SeamScope const&) = delete;

private:
    NXS_Seam saved_;
};

// Whether the last call failed because a signal arrived.
bool nxSeamInterrupted();

// Repeats a call that an arriving signal interrupted.
template <class Call>
auto nxSeamRepeat(Call call) {
    auto result = call();
    while (result < 0 && nxSeamInterrupted()) {
        result = call();
    }
    return result;
}
