// general/platform/posix/handles.h - Private header: the process-wide table behind HANDLE values.
//
// A handle is an index into the table times 4, never 0. Each entry holds one counted object with a type tag,
// so that a closed handle, a handle of another kind or a made-up value is recognised (ERROR_INVALID_HANDLE).
// An object found by nxHandleGet stays alive until its NXS_HandleRef ends, also when another thread closes
// the handle meanwhile. All functions may be called from any thread.
#pragma once

#include <atomic>

#include "general/platform/posix/error.h"
#include "general/platform/posix/types.h"

enum class NXS_HandleType : unsigned char { file, search, thread };

class NXS_HandleObject {
public:
    explicit NXS_HandleObject(NXS_HandleType type) : type_(type) {}
    NXS_HandleObject(NXS_HandleObject const&) = delete;
    NXS_HandleObject& operator=(NXS_HandleObject const&) = delete;

    NXS_HandleType type() const { return type_; }

    // Called once, when the handle is closed; 0 or the code that CloseHandle reports. The object itself may
    // live on until the calls that use it have returned.
    virtual DWORD handleClosed() { return 0; }

    // Whether the caller holds the only reference.
    bool sole() const { return count_.load(std::memory_order_acquire) == 1; }

    void retain() { count_.fetch_add(1, std::memory_order_relaxed); }
    void release() {
        if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

protected:
    virtual ~NXS_HandleObject() = default;

private:
    std::atomic<unsigned int> count_{1};
    NXS_HandleType type_;
};

// A counted reference to an object of the table; empty when the handle was not valid.
template <class T>
class NXS_HandleRef {
public:
    NXS_HandleRef() = default;
    explicit NXS_HandleRef(T* adopted) : object_(adopted) {}
    NXS_HandleRef(NXS_HandleRef&& other) noexcept : object_(other.object_) { other.object_ = nullptr; }
    NXS_HandleRef& operator=(NXS_HandleRef&&) = delete;
    ~NXS_HandleRef() {
        if (object_ != nullptr) {
            object_->release();
        }
    }

    explicit operator bool() const { return object_ != nullptr; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    T* get() const { return object_; }

    // Gives the reference away.
    T* detach() {
        T* object = object_;
        object_ = nullptr;
        return object;
    }

private:
    T* object_ = nullptr;
};

// Enters `object`, whose first reference the table takes over, and returns its handle. Null, with
// ERROR_NOT_ENOUGH_MEMORY set and the object released, when the table cannot grow.
HANDLE nxHandleOpen(NXS_HandleObject* object);

// The object of a handle of the given type with one reference more, or null. Sets no error.
NXS_HandleObject* nxHandleFind(HANDLE handle, NXS_HandleType type);

// Takes the handle out of the table and calls handleClosed(). 0, ERROR_INVALID_HANDLE when it is not a handle
// of that type, or what handleClosed() returned; the handle is gone in every case.
DWORD nxHandleClose(HANDLE handle, NXS_HandleType type);

// The object behind a handle; empty, with ERROR_INVALID_HANDLE set, if it is not one. T names its type tag
// as T::handleType.
template <class T>
NXS_HandleRef<T> nxHandleGet(HANDLE handle) {
    NXS_HandleRef<T> found(static_cast<T*>(nxHandleFind(handle, T::handleType)));
    if (!found) {
        nxErrorSet(ERROR_INVALID_HANDLE);
    }
    return found;
}
