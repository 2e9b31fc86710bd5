// general/platform/posix/strings.cpp - LoadStringA over the tables that modules register.
//
// Ids lie in blocks of 16, as in a resource script: a text missing from a block that exists and a block that
// is missing as a whole are two different answers.
#include "general/platform/strings.h"

#include <algorithm>
#include <cstring>
#include <mutex>

#include "general/platform/platform.h"
#include "general/platform/posix/modulebase.h"

// The registered tables, oldest first; linked through the tables themselves, so that registering cannot fail.
struct NXS_StringRegistry {
    std::mutex mutex;
    NXS_StringTable* first = nullptr;

    static NXS_StringRegistry& ofProcess() {
        static NXS_StringRegistry& registry = *new NXS_StringRegistry;
        return registry;
    }

    void insert(NXS_StringTable* table) {
        std::lock_guard const guard(mutex);
        NXS_StringTable** link = &first;
        while (*link != nullptr)
            link = &(*link)->next_;
        *link = table;
    }

    void remove(NXS_StringTable const* table) {
        std::lock_guard const guard(mutex);
        for (NXS_StringTable** link = &first; *link != nullptr; link = &(*link)->next_) {
            if (*link == table) {
                *link = table->next_;
                return;
            }
        }
    }

    // Copies the text of `id`, "" when there is none, cut to `room` characters, and stores its length. 0 when
    // its block exists, else the error code. The lock is held over the copying: the module may be on its way
    // out.
    DWORD copy(void* base, unsigned int id, char* buffer, std::size_t room, std::size_t& length) {
        std::lock_guard const guard(mutex);
        DWORD error = ERROR_RESOURCE_DATA_NOT_FOUND;
        char const* text = nullptr;
        for (NXS_StringTable const* table = first; table != nullptr; table = table->next_) {
            if (table->base_ != base)
                continue;
            if (error == ERROR_RESOURCE_DATA_NOT_FOUND)
                error = ERROR_RESOURCE_NAME_NOT_FOUND;
            for (std::size_t i = 0; i < table->entryQty_; ++i) {
                NXS_StringEntry const& entry = table->entries_[i];
                if (entry.id / 16 == id / 16)
                    error = ERROR_SUCCESS;
                if (entry.id == id && text == nullptr)
                    text = entry.text;
            }
        }
        length = text != nullptr ? std::min(std::strlen(text), room) : 0;
        if (length > 0)
            std::memcpy(buffer, text, length);
        buffer[length] = '\0';
        return error;
    }
};

NXS_StringTable::NXS_StringTable(NXS_StringEntry const* entries, std::size_t entryQty)
    : base_(nxModuleBaseOf(entries)), entries_(entries), entryQty_(entryQty) {
    NXS_StringRegistry::ofProcess().insert(this);
}

NXS_StringTable::~NXS_StringTable() {
    NXS_StringRegistry::ofProcess().remove(this);
}

int LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size) {
    if (size == 0)
        return -1;
    void* const base = module == nullptr ? nxModuleBaseOfProgram() : module;
    // A negative size is taken for a very large one.
    std::size_t const room = static_cast<std::size_t>(static_cast<UINT>(size)) - 1;
    std::size_t length = 0;
    DWORD const error = NXS_StringRegistry::ofProcess().copy(base, LOWORD(id), buffer, room, length);
    if (error != ERROR_SUCCESS)
        SetLastError(error);
    return static_cast<int>(length);
}
