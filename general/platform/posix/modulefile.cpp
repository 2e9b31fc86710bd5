// general/platform/posix/modulefile.cpp - module names to files, and a look at the file before it is loaded.
//
// The loader's own messages are for people: what is wrong with a file is told from the file.
#include "general/platform/posix/modulefile.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "general/platform/platform.h"
#include "general/platform/posix/codepage.h"
#include "general/platform/posix/modulebase.h"
#include "general/platform/posix/seam.h"

namespace {

bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

// Where the last component begins. A separator that is the second byte of a character is none.
std::size_t lastComponent(std::string const& name) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < name.size(); i += nxPlatformUnitsAt(&name[i])) {
        if (isSeparator(name[i]))
            start = i + 1;
    }
    return start;
}

bool endsInDll(std::string const& name) {
    if (name.size() < 4)
        return false;
    std::string end = name.substr(name.size() - 4);
    for (char& c : end)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return end == ".dll";
}

class File {
public:
    explicit File(char const* path)
        : number_(nxSeamRepeat([path] { return nxSeam.openAt(AT_FDCWD, path, O_RDONLY | O_CLOEXEC, 0); })) {}
    File(File const&) = delete;
    File& operator=(File const&) = delete;
    ~File() {
        if (number_ >= 0)
            nxSeam.close(number_);
    }

    int number() const { return number_; }

    bool readAt(void* buffer, std::size_t size, std::uint64_t at) const {
        ssize_t const done =
            nxSeamRepeat([&] { return nxSeam.readAt(number_, buffer, size, static_cast<std::int64_t>(at)); });
        return done == static_cast<ssize_t>(size);
    }

private:
    int number_;
};

// A module for this processor whose loadable parts all lie inside the file.
bool isModule(File const& file, std::uint64_t size) {
    ElfW(Ehdr) header;
    if (!file.readAt(&header, sizeof header, 0))
        return false;
    auto const* own = static_cast<ElfW(Ehdr) const*>(nxModuleBaseOf(&nxSeam));
    if (std::memcmp(header.e_ident, own->e_ident, EI_VERSION) != 0 || header.e_machine != own->e_machine ||
        header.e_type != ET_DYN || header.e_phentsize != sizeof(ElfW(Phdr)))
        return false;
    for (unsigned int i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) part;
        if (!file.readAt(&part, sizeof part, header.e_phoff + std::uint64_t{i} * sizeof part))
            return false;
        if (part.p_type == PT_LOAD && (part.p_offset > size || part.p_filesz > size - part.p_offset))
            return false;
    }
    return header.e_phnum > 0;
}

} // namespace

NXS_ModuleNames nxModuleNames(char const* name) {
    NXS_ModuleNames names{true, {}};
    std::string first = name;
    std::size_t const last = lastComponent(first);
    names.bare = last == 0;
    if (last == first.size())
        return names;
    if (first.find('.', last) == std::string::npos)
        first += ".dll";
    names.candidates.push_back(first);
    if (endsInDll(first))
        names.candidates.push_back(first.substr(0, first.size() - 4) + ".so");
    return names;
}

std::string nxModuleFullName(std::string const& name) {
    char buffer[4 * MAX_PATH];
    DWORD const length = GetFullPathNameA(name.c_str(), sizeof buffer, buffer, nullptr);
    return length < sizeof buffer ? std::string(buffer, length) : std::string();
}

bool nxModuleFileExists(std::string const& path) {
    struct statx found;
    return !path.empty() && nxSeam.stat(AT_FDCWD, path.c_str(), 0, STATX_TYPE, &found) == 0;
}

DWORD nxModuleFileCheck(char const* path) {
    struct statx found;
    if (nxSeam.stat(AT_FDCWD, path, 0, STATX_TYPE | STATX_SIZE, &found) != 0)
        return ERROR_MOD_NOT_FOUND;
    if (S_ISDIR(found.stx_mode))
        return ERROR_ACCESS_DENIED;
    if (!S_ISREG(found.stx_mode))
        return ERROR_BAD_EXE_FORMAT;
    File const file(path);
    if (file.number() < 0)
        return errno == EACCES || errno == EPERM ? ERROR_ACCESS_DENIED : ERROR_MOD_NOT_FOUND;
    return isModule(file, found.stx_size) ? ERROR_SUCCESS : ERROR_BAD_EXE_FORMAT;
}

std::string nxModuleProgramPath() {
    std::string path(256, '\0');
    for (;;) {
        ssize_t const length = nxSeam.linkRead("/proc/self/exe", path.data(), path.size());
        if (length < 0)
            return {};
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::string nxModuleProgramDirectory() {
    std::string const path = nxModuleProgramPath();
    std::size_t const end = path.rfind('/');
    return end == std::string::npos ? std::string() : path.substr(0, end);
}
