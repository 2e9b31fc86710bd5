// general/platform/posix/handles.cpp - the table of handles and CloseHandle.
#include "general/platform/posix/handles.h"

#include <mutex>
#include <vector>

#include "general/platform/posix/calls.h"
#include "general/platform/posix/error.h"

namespace {

struct Entry {
    NXS_HandleObject* object;
    std::size_t nextFree; // meaningful while the entry is free; 0 ends the list
};

struct Table {
    std::mutex mutex;
    std::vector<Entry> entries{Entry{nullptr, 0}}; // entry 0 is never handed out
    std::size_t firstFree = 0;
};

// Never destroyed: handles are closed by late destructors too.
Table& table() {
    static Table& only = *new Table;
    return only;
}

HANDLE handleOf(std::size_t index) {
    return reinterpret_cast<HANDLE>(index * 4);
}

// The live entry of a handle, or null. The table's mutex is held.
Entry* entryOf(Table& handles, HANDLE handle) {
    auto const value = reinterpret_cast<std::uintptr_t>(handle);
    std::size_t const index = value / 4;
    if (value % 4 != 0 || index >= handles.entries.size() || handles.entries[index].object == nullptr) {
        return nullptr;
    }
    return &handles.entries[index];
}

// Takes the entry's object out of the table; the caller owns its reference.
NXS_HandleObject* entryTake(Table& handles, Entry& entry) {
    NXS_HandleObject* object = entry.object;
    entry.object = nullptr;
    entry.nextFree = handles.firstFree;
    handles.firstFree = static_cast<std::size_t>(&entry - handles.entries.data());
    return object;
}

template <class Accept>
DWORD handleClose(HANDLE handle, Accept accept) {
    Table& handles = table();
    NXS_HandleObject* object = nullptr;
    {
        std::lock_guard<std::mutex> guard(handles.mutex);
        Entry* entry = entryOf(handles, handle);
        if (entry == nullptr || !accept(entry->object->type())) {
            return ERROR_INVALID_HANDLE;
        }
        object = entryTake(handles, *entry);
    }
    DWORD const code = object->handleClosed();
    object->release();
    return code;
}

} // namespace

HANDLE nxHandleOpen(NXS_HandleObject* object) {
    NXS_HandleRef<NXS_HandleObject> entered(object);
    return nxGuarded<HANDLE>(nullptr, [&entered] {
        Table& handles = table();
        std::lock_guard<std::mutex> guard(handles.mutex);
        std::size_t index = handles.firstFree;
        if (index == 0) {
            index = handles.entries.size();
            handles.entries.push_back(Entry{nullptr, 0});
        } else {
            handles.firstFree = handles.entries[index].nextFree;
        }
        handles.entries[index].object = entered.detach();
        return handleOf(index);
    });
}

NXS_HandleObject* nxHandleFind(HANDLE handle, NXS_HandleType type) {
    Table& handles = table();
    std::lock_guard<std::mutex> guard(handles.mutex);
    Entry* entry = entryOf(handles, handle);
    if (entry == nullptr || entry->object->type() != type) {
        return nullptr;
    }
    entry->object->retain();
    return entry->object;
}

DWORD nxHandleClose(HANDLE handle, NXS_HandleType type) {
    return handleClose(handle, [type](NXS_HandleType found) { return found == type; });
}

BOOL CloseHandle(HANDLE handle) {
    auto const value = reinterpret_cast<std::intptr_t>(handle);
    if (value == -1 || value == -2) {
        return TRUE; // the pseudo-handles of the process and of the thread
    }
    DWORD const code =
        handleClose(handle, [](NXS_HandleType type) { return type != NXS_HandleType::search; });
    return code == 0 ? TRUE : nxFail(code);
}
