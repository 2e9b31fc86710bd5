// general/platform/posix/module.cpp - loadable modules, counted by this layer.
//
// The system's loader may keep a module that nobody holds any more, so the counts are this layer's own: a
// module whose count went back to zero is gone for its callers. Modules that the system itself loaded (the
// program, its libraries) are never unloaded; freeing them succeeds and does nothing.
#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "general/platform/platform.h"
#include "general/platform/posix/error.h"
#include "general/platform/posix/modulebase.h"
#include "general/platform/posix/modulefile.h"
#include "general/platform/posix/seam.h"

namespace {

struct Module {
    void* base;
    void* opened; // the loader's handle; null once the count is zero
    unsigned int count;
    bool permanent; // was there before it was first asked for
    std::string path;
};

struct Modules {
    std::mutex mutex; // of the list; never held around a call of the loader
    std::vector<Module> list;
    // Held while modules come and go, whose own code may load and free others: one module's end is over
    // before it begins anew, and what the loader had before is compared with what it has then.
    std::recursive_mutex loading;

    Module* find(void* base) {
        for (Module& module : list) {
            if (module.base == base)
                return &module;
        }
        return nullptr;
    }
};

Modules& modules() {
    static Modules& m = *new Modules;
    return m;
}

void* baseOf(void* opened) {
    link_map* map = nullptr;
    if (::dlinfo(opened, RTLD_DI_LINKMAP, &map) != 0)
        return nullptr;
    return nxModuleBaseOf(map->l_ld); // lies in the module's image
}

// What the loader has at an address, or under a file name.
struct Image {
    void* base = nullptr; // sought, or null to seek by name
    std::string name;     // last component sought, or empty
    bool found = false;
};

// Where an image begins. Worked out here because the loader answers no other question during its enumeration.
void* baseOfImage(dl_phdr_info const& info) {
    ElfW(Addr) const page = static_cast<ElfW(Addr)>(::getpagesize());
    ElfW(Addr) lowest = ~ElfW(Addr){0};
    for (unsigned int i = 0; i < info.dlpi_phnum; ++i) {
        if (info.dlpi_phdr[i].p_type == PT_LOAD)
            lowest = std::min(lowest, info.dlpi_phdr[i].p_vaddr);
    }
    return reinterpret_cast<void*>(info.dlpi_addr + (lowest & ~(page - 1)));
}

int imageVisit(dl_phdr_info* info, std::size_t, void* argument) {
    Image& image = *static_cast<Image*>(argument);
    void* const base = baseOfImage(*info);
    std::string_view const path = info->dlpi_name;
    bool const same = image.base != nullptr ? base == image.base
                                            : !path.empty() && path.substr(path.rfind('/') + 1) == image.name;
    if (!same)
        return 0;
    image.found = true;
    image.base = base;
    image.name = path;
    return 1;
}

Image imageAt(void* base) {
    Image image;
    image.base = base;
    if (base != nullptr)
        ::dl_iterate_phdr(imageVisit, &image);
    return image;
}

HMODULE moduleFail(DWORD code) {
    SetLastError(code);
    return nullptr;
}

// Counts the module that the loader opened, and keeps one of the loader's own references for all of ours.
HMODULE moduleAdopt(void* opened, bool wasLoaded, std::string const& path) {
    void* const base = baseOf(opened);
    Modules& m = modules();
    bool keep = false;
    {
        std::lock_guard const guard(m.mutex);
        Module* module = m.find(base);
        if (module == nullptr) {
            m.list.push_back({base, nullptr, 0, wasLoaded, path});
            module = &m.list.back();
        }
        keep = module->opened == nullptr;
        if (keep) {
            module->opened = opened;
            module->path = path;
        }
        ++module->count;
    }
    if (!keep)
        nxSeam.moduleClose(opened);
    return static_cast<HMODULE>(base);
}

// `path` is a full name, or a bare one for the loader to search. REQUIRES: the loading lock is held.
HMODULE moduleOpen(std::string const& path) {
    void* const before = nxSeam.moduleOpen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    void* const opened = nxSeam.moduleOpen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    HMODULE result = nullptr;
    if (opened != nullptr) {
        std::string full = path;
        if (path.find('/') == std::string::npos)
            full = imageAt(baseOf(opened)).name;
        result = moduleAdopt(opened, before != nullptr, full);
    } else {
        // The file itself has been looked at: something it needs is missing.
        SetLastError(ERROR_MOD_NOT_FOUND);
    }
    if (before != nullptr)
        nxSeam.moduleClose(before);
    return result;
}

HMODULE moduleOpenFile(std::string const& path) {
    DWORD const code = nxModuleFileCheck(path.c_str());
    return code != ERROR_SUCCESS ? moduleFail(code) : moduleOpen(path);
}

// Whether a module that the loader has is there for callers too.
bool moduleIsHeld(void* base) {
    Modules& m = modules();
    std::lock_guard const guard(m.mutex);
    Module const* const known = m.find(base);
    return known == nullptr || known->permanent || known->count > 0;
}

// The module whose file has this last component, if it is loaded.
void* baseOfName(std::string const& name) {
    Modules& m = modules();
    {
        std::lock_guard const guard(m.mutex);
        for (Module const& module : m.list) {
            std::string_view const path = module.path;
            if (module.count > 0 && path.substr(path.rfind('/') + 1) == name)
                return module.base;
        }
    }
    Image image;
    image.name = name;
    ::dl_iterate_phdr(imageVisit, &image);
    return image.found && moduleIsHeld(image.base) ? image.base : nullptr;
}

// The base of a full path's module, if it is loaded.
void* baseOfPath(std::string const& path) {
    std::lock_guard const guard(modules().loading);
    void* const opened = nxSeam.moduleOpen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (opened == nullptr)
        return nullptr;
    void* const base = baseOf(opened);
    nxSeam.moduleClose(opened);
    return moduleIsHeld(base) ? base : nullptr;
}

HMODULE libraryLoad(char const* name) {
    std::lock_guard const guard(modules().loading);
    NXS_ModuleNames const names = nxModuleNames(name);
    if (!names.bare) {
        for (std::string const& candidate : names.candidates) {
            std::string const path = nxModuleFullName(candidate);
            if (nxModuleFileExists(path))
                return moduleOpenFile(path);
        }
        return moduleFail(ERROR_MOD_NOT_FOUND);
    }
    for (std::string const& candidate : names.candidates) {
        if (void* const base = baseOfName(candidate))
            return moduleOpen(imageAt(base).name);
    }
    for (std::string const& directory : {nxModuleProgramDirectory(), nxModuleFullName(".")}) {
        for (std::string const& candidate : names.candidates) {
            std::string const path = nxModuleFullName(directory + "/" + candidate);
            if (nxModuleFileExists(path))
                return moduleOpenFile(path);
        }
    }
    for (std::string const& candidate : names.candidates) {
        if (HMODULE const module = moduleOpen(candidate))
            return module;
    }
    return moduleFail(ERROR_MOD_NOT_FOUND);
}

// What callers may do with a handle.
struct Known {
    bool valid = false;
    void* opened = nullptr; // null when this layer holds no reference of the loader's
    std::string path;       // empty for the program
};

Known moduleKnown(void* base) {
    Modules& m = modules();
    {
        std::lock_guard const guard(m.mutex);
        Module const* const module = m.find(base);
        if (module != nullptr && (module->count > 0 || !module->permanent))
            return {module->count > 0, module->opened, module->path};
    }
    Image image = imageAt(base);
    return {image.found, nullptr, std::move(image.name)};
}

BOOL libraryFree(void* base) {
    Modules& m = modules();
    std::lock_guard const loading(m.loading);
    void* toClose = nullptr;
    {
        std::lock_guard const guard(m.mutex);
        Module* const known = m.find(base);
        if (known != nullptr && !known->permanent) {
            if (known->count == 0) {
                SetLastError(ERROR_MOD_NOT_FOUND);
                return FALSE;
            }
            if (--known->count > 0)
                return TRUE;
            toClose = known->opened;
            known->opened = nullptr;
        }
    }
    if (toClose == nullptr) {
        if (imageAt(base).found)
            return TRUE;
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    nxSeam.moduleClose(toClose);
    if (!imageAt(base).found) {
        std::lock_guard const guard(m.mutex);
        std::erase_if(m.list, [base](Module const& known) { return known.base == base && known.count == 0; });
    }
    return TRUE;
}

// The loader also looks into what the module needs; callers ask for the module's own functions.
void* symbolOf(void* opened, void* base, char const* name) {
    void* const address = nxSeam.moduleSymbol(opened, name);
    return address != nullptr && nxModuleBaseOf(address) == base ? address : nullptr;
}

FARPROC procFind(void* base, char const* name) {
    Known const known = moduleKnown(base);
    if (!known.valid) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    if (reinterpret_cast<std::uintptr_t>(name) < 0x10000) {
        SetLastError(ERROR_INVALID_ORDINAL);
        return nullptr;
    }
    void* address = nullptr;
    if (known.opened != nullptr) {
        address = symbolOf(known.opened, base, name);
    } else if (void* const opened = nxSeam.moduleOpen(known.path.empty() ? nullptr : known.path.c_str(),
                                                      RTLD_NOW | RTLD_NOLOAD)) {
        address = symbolOf(opened, base, name);
        nxSeam.moduleClose(opened); // never the last reference: the system holds one
    }
    if (address == nullptr)
        SetLastError(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(address);
}

DWORD fileNameGive(void* base, char* buffer, DWORD size) {
    Known known;
    if (base != nullptr) {
        known = moduleKnown(base);
        if (!known.valid) {
            SetLastError(ERROR_MOD_NOT_FOUND);
            return 0;
        }
    }
    std::string const path = known.path.empty() ? nxModuleProgramPath() : known.path;
    DWORD const length = static_cast<DWORD>(path.size());
    if (length < size) {
        std::memcpy(buffer, path.c_str(), path.size() + 1);
        SetLastError(ERROR_SUCCESS);
        return length;
    }
    if (size > 0) {
        std::memcpy(buffer, path.data(), size - 1);
        buffer[size - 1] = '\0';
    }
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
}

HMODULE handleFind(char const* name) {
    NXS_ModuleNames const names = nxModuleNames(name);
    for (std::string const& candidate : names.candidates) {
        void* const base = names.bare ? baseOfName(candidate) : baseOfPath(nxModuleFullName(candidate));
        if (base != nullptr)
            return static_cast<HMODULE>(base);
    }
    return moduleFail(ERROR_MOD_NOT_FOUND);
}

} // namespace

void* nxModuleBaseOf(void const* address) {
    Dl_info info;
    return ::dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

void* nxModuleBaseOfProgram() {
    // The loader names the program first.
    static void* const base = [] {
        void* first = nullptr;
        ::dl_iterate_phdr(
            [](dl_phdr_info* info, std::size_t, void* result) {
                *static_cast<void**>(result) = baseOfImage(*info);
                return 1;
            },
            &first);
        return first;
    }();
    return base;
}

HMODULE LoadLibraryA(LPCSTR name) {
    if (name == nullptr || *name == '\0')
        return moduleFail(ERROR_MOD_NOT_FOUND);
    return nxGuarded<HMODULE>(nullptr, [name] { return libraryLoad(name); });
}

HMODULE LoadLibraryExA(LPCSTR name, HANDLE reserved, DWORD flags) {
    if (reserved != nullptr)
        return moduleFail(ERROR_INVALID_PARAMETER);
    return flags != 0 ? moduleFail(ERROR_NOT_SUPPORTED) : LoadLibraryA(name);
}

BOOL FreeLibrary(HMODULE module) {
    if (module == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return nxGuarded(FALSE, [module] { return libraryFree(module); });
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
    void* const base = module == nullptr ? nxModuleBaseOfProgram() : module;
    return nxGuarded<FARPROC>(nullptr, [base, name] { return procFind(base, name); });
}

DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size) {
    return nxGuarded<DWORD>(0, [=] { return fileNameGive(module, buffer, size); });
}

HMODULE GetModuleHandleA(LPCSTR name) {
    if (name == nullptr)
        return static_cast<HMODULE>(nxModuleBaseOfProgram());
    return nxGuarded<HMODULE>(nullptr, [name] { return handleFind(name); });
}

BOOL DisableThreadLibraryCalls(HMODULE module) {
    // Modules are told of no thread here; only the handle is looked at.
    bool const valid = nxGuarded(false, [module] { return module != nullptr && moduleKnown(module).valid; });
    if (!valid)
        SetLastError(ERROR_MOD_NOT_FOUND);
    return valid ? TRUE : FALSE;
}
