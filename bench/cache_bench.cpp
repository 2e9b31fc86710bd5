// Reading a file through a cache beside the plain file, the system's positional read, and mapped memory.
#include "bench/keep.h"
#include "vx7base.h"

#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr unsigned int fileSize = 64u << 20;

// The file, made once and kept until the program ends.
struct TheFile {
    TheFile() : name((std::filesystem::temp_directory_path() / "vx7cache.dat").string()) {
        NX_File file(name.c_str(), NX_File::modeWrite | NX_File::modeCreate | NX_File::modeTrunc);
        std::string const piece(1u << 20, 'x');
        for (unsigned int pos = 0; pos < fileSize; pos += 1u << 20)
            check(file.dataWriteAt(static_cast<long>(pos), piece.data(), 1u << 20) == 0, "file made");
    }
    ~TheFile() { std::filesystem::remove(name); }
    std::string const name;
};

char const* theFile() {
    static TheFile const file;
    return file.name.c_str();
}

// A file in a cache with this budget in MiB.
template <unsigned int budget>
class Through {
public:
    Through() : cache_(budget << 20), file_(theFile(), NX_File::modeRead, &cache_) {
        NX_CacheManager::cacheManagerP()->cacheBudget(2 * fileSize);
    }
    int read(unsigned int pos, void* buf, unsigned int size) {
        return file_.dataReadAt(static_cast<long>(pos), buf, size);
    }

private:
    NX_Cache cache_;
    NX_FileData file_;
};
using Cached = Through<65>;  // the whole file
using Fetched = Through<16>; // none of it, when it is read from end to end again and again

// All blocks of the file, held.
class Held {
public:
    Held() {
        NX_CacheManager::cacheManagerP()->cacheBudget(2 * fileSize);
        for (unsigned int n = 0; n < fileSize >> blockShift; ++n)
            check(file_.dataHoldAt(static_cast<long>(n << blockShift), blocks_[n]) == 1 << blockShift,
                  "held");
    }
    int read(unsigned int pos, void* buf, unsigned int size) {
        std::memcpy(buf, blocks_[pos >> blockShift].dataPConst() + pos % (1 << blockShift), size);
        return 0;
    }

private:
    static constexpr unsigned int blockShift = 14;
    NX_Cache cache_{fileSize};
    NX_FileData file_{theFile(), NX_File::modeRead, &cache_};
    NX_FileDataPtr blocks_[fileSize >> blockShift];
};

class Plain {
public:
    int read(unsigned int pos, void* buf, unsigned int size) {
        return file_.dataReadAt(static_cast<long>(pos), buf, size);
    }

private:
    NX_File file_{theFile(), NX_File::modeRead};
};

class Posix {
public:
    ~Posix() { close(file_); }
    int read(unsigned int pos, void* buf, unsigned int size) {
        return pread(file_, buf, size, static_cast<off_t>(pos)) == static_cast<ssize_t>(size) ? 0 : -1;
    }

private:
    int file_ = open(theFile(), O_RDONLY | O_CLOEXEC);
};

class Mapped {
public:
    Mapped() {
        int const file = open(theFile(), O_RDONLY | O_CLOEXEC);
        at_ = static_cast<char const*>(mmap(nullptr, fileSize, PROT_READ, MAP_SHARED, file, 0));
        close(file);
    }
    ~Mapped() { munmap(const_cast<char*>(at_), fileSize); }
    int read(unsigned int pos, void* buf, unsigned int size) {
        std::memcpy(buf, at_ + pos, size);
        return 0;
    }

private:
    char const* at_;
};

template <class Reader>
void random64(benchmark::State& state) {
    Reader reader;
    char buffer[64];
    int result = 0;
    for (unsigned int pos = 0; pos < fileSize; pos += 4096) // everything is touched once
        result |= reader.read(pos, buffer, sizeof buffer);
    std::uint32_t random = 1;
    for (auto _ : state) {
        random ^= random << 13;
        random ^= random >> 17;
        random ^= random << 5;
        result |= reader.read(random % (fileSize / 64) * 64, buffer, sizeof buffer);
        keep(buffer);
    }
    check(result == 0 && buffer[9] == 'x', "bytes read");
}

template <class Reader>
void sequential4K(benchmark::State& state) {
    Reader reader;
    char buffer[4096];
    int result = 0;
    unsigned int pos = 0;
    for (auto _ : state) {
        result |= reader.read(pos, buffer, sizeof buffer);
        keep(buffer);
        pos = (pos + 4096) % fileSize;
    }
    check(result == 0 && buffer[9] == 'x', "bytes read");
}

BENCHMARK(random64<Cached>)->Name("cache-random-64B/vx7");
BENCHMARK(random64<Held>)->Name("cache-random-64B/vx7-held");
BENCHMARK(random64<Mapped>)->Name("cache-random-64B/mmap");
BENCHMARK(random64<Posix>)->Name("cache-random-64B/pread");
BENCHMARK(random64<Plain>)->Name("cache-random-64B/vx7-file");
BENCHMARK(sequential4K<Cached>)->Name("cache-sequential-4K/vx7");
BENCHMARK(sequential4K<Fetched>)->Name("cache-sequential-4K/vx7-not-in-memory");
BENCHMARK(sequential4K<Mapped>)->Name("cache-sequential-4K/mmap");
BENCHMARK(sequential4K<Posix>)->Name("cache-sequential-4K/pread");
BENCHMARK(sequential4K<Plain>)->Name("cache-sequential-4K/vx7-file");

} // namespace
