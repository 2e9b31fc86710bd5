// general/platform/posix/memory.cpp - global memory blocks and the size of a block of the run-time's heap.
//
// A movable block's handle is the address of its record; a fixed block's handle is its address. Every live
// block is in two tables, so that freed and made-up handles are recognised without being followed.
#include <malloc.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <mutex>
#include <new>
#include <unordered_map>

#include "general/platform/platform.h"
#include "general/platform/posix/seam.h"

namespace {

struct Block {
    void* data; // null: a movable block of size 0
    SIZE_T size;
    unsigned int lockQty;
    bool movable;

    HGLOBAL handle() { return movable ? this : data; }
};

struct Blocks {
    std::mutex mutex;
    std::unordered_map<void const*, Block*> byHandle;
    std::unordered_map<void const*, Block*> byAddress;

    Block* find(std::unordered_map<void const*, Block*> const& table, void const* key) const {
        auto const found = table.find(key);
        return found == table.end() ? nullptr : found->second;
    }

    // Callers may also use the address of a movable block in place of its handle.
    Block* find(void const* key) const {
        Block* const block = find(byHandle, key);
        return block != nullptr ? block : find(byAddress, key);
    }
};

Blocks& blocks() {
    static Blocks& b = *new Blocks;
    return b;
}

template <class T>
T fail(DWORD code, T result) {
    SetLastError(code);
    return result;
}

void blockRelease(Block* block) {
    if (block->data != nullptr)
        nxSeam.free(block->data);
    nxSeam.free(block);
}

} // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T size) {
    bool const movable = (flags & GMEM_MOVEABLE) != 0;
    if (size > static_cast<SIZE_T>(std::numeric_limits<std::ptrdiff_t>::max()))
        return fail<HGLOBAL>(ERROR_NOT_ENOUGH_MEMORY, nullptr);
    void* const record = nxSeam.allocate(sizeof(Block));
    if (record == nullptr)
        return fail<HGLOBAL>(ERROR_NOT_ENOUGH_MEMORY, nullptr);
    auto* const block = new (record) Block{nullptr, size, 0, movable};
    if (!movable || size > 0) {
        block->data = nxSeam.allocate(size > 0 ? size : 1);
        if (block->data == nullptr) {
            blockRelease(block);
            return fail<HGLOBAL>(ERROR_NOT_ENOUGH_MEMORY, nullptr);
        }
        if ((flags & GMEM_ZEROINIT) != 0)
            std::memset(block->data, 0, size);
    }
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    try {
        b.byHandle.emplace(block->handle(), block);
        if (block->data != nullptr)
            b.byAddress.emplace(block->data, block);
        return block->handle();
    } catch (std::bad_alloc const&) {
        b.byHandle.erase(block->handle());
        blockRelease(block);
        return fail<HGLOBAL>(ERROR_NOT_ENOUGH_MEMORY, nullptr);
    }
}

LPVOID GlobalLock(HGLOBAL handle) {
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    Block* const block = b.find(handle);
    if (handle == nullptr)
        return nullptr;
    if (block == nullptr)
        return fail<LPVOID>(ERROR_INVALID_HANDLE, nullptr);
    if (block->data == nullptr)
        return fail<LPVOID>(ERROR_DISCARDED, nullptr);
    if (block->movable && handle == block)
        ++block->lockQty;
    return block->data;
}

BOOL GlobalUnlock(HGLOBAL handle) {
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    Block* const block = b.find(handle);
    if (block == nullptr)
        return fail(ERROR_INVALID_HANDLE, FALSE);
    if (handle == block->data)
        return TRUE;
    if (block->lockQty == 0)
        return fail(ERROR_NOT_LOCKED, FALSE);
    return --block->lockQty > 0 ? TRUE : fail(ERROR_SUCCESS, FALSE);
}

HGLOBAL GlobalHandle(LPCVOID address) {
    if (address == nullptr)
        return fail<HGLOBAL>(ERROR_INVALID_PARAMETER, nullptr);
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    Block* const block = b.find(b.byAddress, address);
    return block != nullptr ? block->handle() : fail<HGLOBAL>(ERROR_INVALID_HANDLE, nullptr);
}

HGLOBAL GlobalFree(HGLOBAL handle) {
    if (handle == nullptr)
        return nullptr;
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    Block* const block = b.find(handle);
    if (block == nullptr)
        return fail(ERROR_INVALID_HANDLE, handle);
    b.byHandle.erase(block->handle());
    b.byAddress.erase(block->data);
    blockRelease(block);
    return nullptr;
}

SIZE_T GlobalSize(HGLOBAL handle) {
    Blocks& b = blocks();
    std::lock_guard const guard(b.mutex);
    Block const* const block = b.find(handle);
    return block != nullptr ? block->size : fail(ERROR_INVALID_HANDLE, SIZE_T{0});
}

// May be larger than what was asked for: the heap may use all of it.
std::size_t _msize(void* block) {
    return ::malloc_usable_size(block);
}
