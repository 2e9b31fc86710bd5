// general/collm/refcountcache.cpp - recency numbers. This source is compiled so that checks for a null object
// stay.
#include "general/collm/refcount.h"

namespace {

std::atomic<std::uint32_t> lastPriority; // the last number handed out

// A check that the compiler does not drop because an object's address is never null: it reads the address
// from memory.
bool isNull(void const* object) {
    void const* volatile address = object;
    return address == nullptr;
}

} // namespace

NX_RefCountCacheRep::NX_RefCountCacheRep(unsigned long infoWord)
    : NX_RefCountRep(infoWord), priority(~lastPriority.load(std::memory_order_relaxed)) {
    cachePriorityTop();
}

NX_RefCountCacheRep::NX_RefCountCacheRep(NX_RefCountCacheRep const& other)
    : NX_RefCountRep(other), priority(~lastPriority.load(std::memory_order_relaxed)) {
    cachePriorityTop();
}

NX_RefCountCacheRep::~NX_RefCountCacheRep() = default;

NX_RefCountCacheRep& NX_RefCountCacheRep::operator=(NX_RefCountCacheRep const& other) {
    NX_RefCountRep::operator=(other);
    cachePriorityTop();
    return *this;
}

unsigned long NX_RefCountCacheRep::cachePriority() const {
    return isNull(this) ? 0 : priority;
}

void NX_RefCountCacheRep::cachePriorityTop() {
    if (isNull(this) || priority == lastPriority.load(std::memory_order_relaxed))
        return;
    priority = lastPriority.fetch_add(1, std::memory_order_relaxed) + 1;
}

int NX_RefCountCacheRep::cachePriorityCompare(NX_RefCountCacheRep const* other) const {
    unsigned long const mine = isNull(this) ? 0 : priority;
    unsigned long const others = isNull(other) ? 0 : other->priority;
    return others > mine ? -1 : mine > others;
}
