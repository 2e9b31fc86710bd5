// Scanning a tree of 20,000 files in 500 directories, saving and loading it.
#include "bench/keep.h"
#include "vx7base.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr unsigned int dirCount = 500;
constexpr unsigned int filesPerDir = 40;

// The tree is made once, in memory where there is such a file system.
std::string const& tree() {
    static struct Tree {
        Tree() {
            fs::path const base = fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
            path = (base / ("vx7bench" + std::to_string(std::time(nullptr)))).string() + "/";
            for (unsigned int d = 0; d < dirCount; ++d) {
                fs::path const dir =
                    fs::path(path) / ("dir" + std::to_string(d % 20)) / ("sub" + std::to_string(d));
                fs::create_directories(dir);
                for (unsigned int f = 0; f < filesPerDir; ++f)
                    std::ofstream(dir / ("file" + std::to_string(f) + (f % 4 == 0 ? ".txt" : ".dat"))) << f;
            }
        }
        ~Tree() { fs::remove_all(path); }
        std::string path;
    } const made;
    return made.path;
}

unsigned int fileCount(NX_DirInfo const& dir) {
    unsigned int count = dir.fileColl().itemQty();
    for (NX_DirInfoVecPtrConst sub(dir.subColl()); sub.itemIsAvail() != 0; ++sub)
        count += fileCount(*sub);
    return count;
}

NX_DirInfo scan(char const* pattern) {
    return NX_DirInfo(tree().c_str(), nullptr, NX_StringVecA(), NX_FileFindNoDir, nullptr, ageWrite, pattern);
}

void scanOwn(benchmark::State& state, char const* pattern, unsigned int expected) {
    unsigned int count = 0;
    for (auto _ : state) {
        NX_DirInfo const root = scan(pattern);
        keep(&root);
        state.PauseTiming();
        count = fileCount(root);
        state.ResumeTiming();
    }
    check(count == expected, "number of files found");
}
BENCHMARK_CAPTURE(scanOwn, all, "*.*", dirCount* filesPerDir)
    ->Name("scan-20k-files/all/vx7")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanOwn, pattern, "*.txt", dirCount* filesPerDir / 4)
    ->Name("scan-20k-files/pattern/vx7")
    ->Unit(benchmark::kMillisecond);

// The plain walk: name, size and time of each file.
void scanStd(benchmark::State& state, char const* extension) {
    struct Entry {
        std::string name;
        std::uintmax_t size;
        fs::file_time_type time;
    };
    for (auto _ : state) {
        std::vector<Entry> entries;
        for (fs::directory_entry const& entry : fs::recursive_directory_iterator(tree()))
            if (entry.is_regular_file() && (*extension == 0 || entry.path().extension() == extension))
                entries.push_back(
                    {entry.path().filename().string(), entry.file_size(), entry.last_write_time()});
        keep(entries.data());
    }
}
BENCHMARK_CAPTURE(scanStd, all, "")
    ->Name("scan-20k-files/all/std::filesystem")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanStd, pattern, ".txt")
    ->Name("scan-20k-files/pattern/std::filesystem")
    ->Unit(benchmark::kMillisecond);

std::string const& savedName() {
    static struct Saved {
        ~Saved() {
            fs::remove(name);
            fs::remove(name + ".plain");
        }
        std::string name = tree().substr(0, tree().size() - 1) + ".saved";
    } const saved;
    return saved.name;
}

void saveTree(NX_DirInfo const& root) {
    NX_PersistTextSave save(savedName().c_str(), static_cast<int>(std::ios::binary), 0);
    save << &root;
    save.flush();
    check(save.good(), "saved");
}

void saveOwn(benchmark::State& state) {
    NX_DirInfo const root = scan("*.*");
    for (auto _ : state)
        saveTree(root);
}
BENCHMARK(saveOwn)->Name("save-20k-records/vx7")->Unit(benchmark::kMillisecond);

struct PlainRecord {
    std::string name;
    std::uintmax_t size;
    long long time;
};

// The least that keeps the same facts: one line a file, through the standard streams.
void saveStd(benchmark::State& state) {
    std::vector<PlainRecord> records;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(tree()))
        if (entry.is_regular_file())
            records.push_back({entry.path().filename().string(), entry.file_size(),
                               entry.last_write_time().time_since_epoch().count()});
    for (auto _ : state) {
        std::ofstream out(savedName() + ".plain", std::ios::binary);
        for (PlainRecord const& record : records)
            out << record.name << ' ' << record.size << ' ' << record.time << '\n';
        out.flush();
        check(out.good(), "saved");
    }
}
BENCHMARK(saveStd)->Name("save-20k-records/std::ofstream-lines")->Unit(benchmark::kMillisecond);

void loadOwn(benchmark::State& state) {
    saveTree(scan("*.*"));
    unsigned int count = 0;
    for (auto _ : state) {
        NX_PersistTextLoad load(savedName().c_str(), static_cast<int>(std::ios::binary), 0);
        NX_DirInfo* root = nullptr;
        load >> root;
        state.PauseTiming();
        count = fileCount(*root);
        state.ResumeTiming();
        delete root;
    }
    check(count == dirCount * filesPerDir, "number of files loaded");
}
BENCHMARK(loadOwn)->Name("load-20k-records/vx7")->Unit(benchmark::kMillisecond);

void loadStd(benchmark::State& state) {
    for (auto _ : state) {
        std::ifstream in(savedName() + ".plain", std::ios::binary);
        std::vector<PlainRecord> records;
        for (PlainRecord record; in >> record.name >> record.size >> record.time;)
            records.push_back(record);
        check(records.size() == dirCount * filesPerDir, "number of lines loaded");
    }
}
BENCHMARK(loadStd)->Name("load-20k-records/std::ifstream-lines")->Unit(benchmark::kMillisecond);

} // namespace
