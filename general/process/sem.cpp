// general/process/sem.cpp - the process-wide lock over the system's critical section.
#include "general/process/sem.h"

#include <new>

#include "general/platform/platform.h"

namespace {

CRITICAL_SECTION* sectionOf(unsigned char* room) {
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(room));
}

} // namespace

NX_SemThreadOfProcess::NX_SemThreadOfProcess() : holdCount(0) {
    static_assert(sizeof(CRITICAL_SECTION) <= sectionBytes && alignof(CRITICAL_SECTION) <= alignof(void*));
    InitializeCriticalSection(new (section) CRITICAL_SECTION);
}

NX_SemThreadOfProcess::~NX_SemThreadOfProcess() {
    DeleteCriticalSection(sectionOf(section));
}

void NX_SemThreadOfProcess::semRequest() {
    EnterCriticalSection(sectionOf(section));
    holdCount = holdCount + 1;
}

void NX_SemThreadOfProcess::semRelease() {
    holdCount = holdCount - 1;
    LeaveCriticalSection(sectionOf(section));
}
