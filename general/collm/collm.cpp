// general/collm/collm.cpp - what a collection does not provide.
#include "general/collm/coll.h"

namespace {

[[noreturn]] void notProvided(unsigned int line) {
    NxAssertFail("general/collm/collm", line, "0");
}

} // namespace

void NX_CollM::collManClone(unsigned int) {
    notProvided(__LINE__);
}

void NX_CollM::collManClone() {
    notProvided(__LINE__);
}

void NX_CollM::collManCopied(void const*, unsigned int) const {
    notProvided(__LINE__);
}

int NX_CollM::collManFlag(NX_RefFlag, int) const {
    notProvided(__LINE__);
}

void NX_CollM::collManCreate(void*, unsigned int) {
    notProvided(__LINE__);
}

void NX_CollM::collManDec() {
    notProvided(__LINE__);
}

void NX_CollM::collManDestroy(void*, unsigned int) {
    notProvided(__LINE__);
}

void NX_CollM::collManInc() const {
    notProvided(__LINE__);
}

unsigned int NX_CollM::collManItemSize() const {
    notProvided(__LINE__);
}

// These two keep the lines under which logs have always named them.
NX_PersistTextLoad& NX_CollM::collManLoad(NX_PersistTextLoad&) {
    notProvided(50);
}

NX_PersistTextSave& NX_CollM::collManSave(NX_PersistTextSave&) const {
    notProvided(53);
}
