// general/persist/persistin.cpp - the load stream's buffer, and references to objects loaded before.
#include "general/persist/persistin.h"

#include <algorithm>
#include <cstring>

NXS_PersistIn::NXS_PersistIn() {
    pubsetbuf(memory_, sizeof memory_);
}

bool NXS_PersistIn::open(char const* name, int openMode) {
    if (std::filebuf::open(name, static_cast<std::ios_base::openmode>(openMode) | std::ios_base::in) ==
        nullptr)
        return false;
    pos_type const start = pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    pos_type const end = pubseekoff(0, std::ios_base::end, std::ios_base::in);
    if (start == pos_type(off_type(-1)) || end == pos_type(off_type(-1))) {
        isSized_ = false; // a pipe or a device: whatever comes
        return true;
    }
    size_ = static_cast<std::uint64_t>(end - start);
    pubseekpos(start, std::ios_base::in);
    return true;
}

NXS_PersistIn::int_type NXS_PersistIn::underflow() {
    if (gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    passed_ += static_cast<std::uint64_t>(egptr() - eback());
    try { // a directory, a failing disk: the stream library throws when the system cannot read
        return std::filebuf::underflow();
    } catch (...) {
        setg(eback(), eback(), eback()); // counted already
        return traits_type::eof();
    }
}

unsigned int NXS_PersistIn::lineRead(char* p, unsigned int n) {
    unsigned int done = 0;
    while (done < n && peek() >= 0) {
        auto const here = std::min<std::ptrdiff_t>(egptr() - gptr(), n - done);
        auto const* const end =
            static_cast<char const*>(std::memchr(gptr(), '\n', static_cast<std::size_t>(here)));
        auto const count = end != nullptr ? end - gptr() : here;
        std::memcpy(p + done, gptr(), static_cast<std::size_t>(count));
        gbump(static_cast<int>(count));
        done += static_cast<unsigned int>(count);
        if (end != nullptr)
            break;
    }
    return done;
}

std::uint64_t NXS_PersistIn::bytesLeft() const {
    if (!isSized_)
        return unsizedMax;
    std::uint64_t const used = passed_ + static_cast<std::uint64_t>(gptr() - eback());
    return used < size_ ? size_ - used : 0;
}

long NXS_PersistIn::position() {
    return static_cast<std::int32_t>(
        static_cast<off_type>(pubseekoff(0, std::ios_base::cur, std::ios_base::in)));
}

NXS_PersistLoader::Ref NXS_PersistLoader::refLoad(NX_PersistTextLoad& load, void* p,
                                                  NXS_PersistType const& type, void** found,
                                                  void const* openAllowed) {
    unsigned int number;
    Ref const ref = static_cast<Ref>(load.refLoad(&number));
    if (ref != refObject)
        return ref;
    void* const object = const_cast<void*>(load.table_[number].p);
    if (number != 0) {
        NXS_PersistMeta const& meta = in(load).meta.dataPConst()[number];
        NXS_PersistType const* kind = meta.type;
        bool const untyped = kind == nullptr;
        while (kind != nullptr && kind != &type)
            kind = kind->base;
        bool const usable = untyped ? !isStrict(load) : kind != nullptr;
        if (!usable || (isStrict(load) && meta.open && object != openAllowed)) {
            fail(load);
            return refFailed;
        }
    }
    if (p != nullptr) {
        if (isStrict(load)) {
            fail(load);
            return refFailed;
        }
        load.refAssert(p, object);
    }
    *found = object;
    return refObject;
}

NXS_PersistLoader::Ref NXS_PersistLoader::blockLoad(NX_PersistTextLoad& load,
                                                    std::type_info const& vectorClass, unsigned int itemSize,
                                                    NX_VecRefM** found) {
    unsigned int number;
    Ref const ref = static_cast<Ref>(load.refLoad(&number));
    if (ref != refObject)
        return ref;
    NXS_PersistMeta const& meta = in(load).meta.dataPConst()[number];
    auto* const block = static_cast<NX_VecRefM*>(const_cast<void*>(load.table_[number].p));
    bool usable = number != 0;
    if (usable && (meta.type != nullptr || isStrict(load)))
        usable = meta.type == &nxPersistBlock && block->itemSize() == itemSize;
    if (usable && isStrict(load) && itemSize != 1) {
        // Lists shared between directories would be directories that lie in two places. Empty vectors of
        // different classes share one constant block.
        usable = block->itemQty() == 0 ||
                 (*meta.items == vectorClass && !meta.open && in(load).dirOpen == nullptr);
    }
    if (!usable) {
        fail(load);
        return refFailed;
    }
    *found = block;
    return refObject;
}

bool NXS_PersistLoader::itemQtyLoad(NX_PersistTextLoad& load, unsigned int* qty) {
    NXS_PersistIn& buffer = in(load);
    *qty = 0;
    load >> *qty;
    std::uint64_t const left = buffer.bytesLeft();
    if (!load.fail() && (*qty == 0 || std::uint64_t{*qty} * buffer.itemBytesMin + buffer.bytesOwed <= left))
        return true;
    fail(load);
    return false;
}

unsigned int NXS_PersistLoader::append(NX_PersistTextLoad& load, void* p, NXS_PersistType const& type,
                                       std::type_info const* items) {
    load.pAppend(p, type.size);
    unsigned int const number = lastNumber(load);
    if (!isFailed(load))
        in(load).meta.dataPMod()[number] = {&type, items, false};
    return number;
}

void NXS_PersistLoader::markLoad(NX_PersistTextLoad& load, char mark) {
    char ch = 0;
    load >> ch;
    check(load, ch == mark);
}
