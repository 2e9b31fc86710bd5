// general/text/dbcsglobal.cpp - the process-wide double-byte information and what is done to text by it.
#include <cstdlib>
#include <cstring>

#include "general/platform/platform.h"
#include "general/text/dbcsinfo.h"

constinit std::atomic<NX_DbcsInfo*> nxDbcsInfo = nullptr;

NX_DbcsInfo* NxDbcsInfoP() {
    static NX_DbcsInfo* const info = [] {
        auto* made = new NX_DbcsInfo(0);
        nxDbcsInfo.store(made, std::memory_order_release);
        return made;
    }();
    return info;
}

int NxDbcsIsTrue() {
    NX_DbcsInfo const* info = nxDbcsInfo.load(std::memory_order_acquire);
    return info && info->dbcsIsTrue();
}

int NxDbcsIsFalse() {
    return !NxDbcsIsTrue();
}

void NxDbcsIsTrue(int isTrue) {
    NxDbcsInfoP()->dbcsIsTrue(isTrue);
}

int NxDbcsIsLead(int c) {
    return nxDbcs().chIsLead(c);
}

void NxDbcsIsLead(int first, int last, int isLead) {
    NxDbcsInfoP()->chIsLead(first, last, isLead);
}

int NxDbcsIsSpace(char const* p) {
    return nxDbcs().chIsSpace(p);
}

int NxDbcsIsUnknown(char const* p) {
    return nxDbcs().chIsUnknown(p);
}

char const* NxDbcsSpace() {
    return nxDbcs().chSpace();
}

char const* NxDbcsUnknown() {
    return nxDbcs().chUnknown();
}

int NxCodePageDefault() {
    static int const codePage = [] {
        char number[8] = {};
        return GetLocaleInfoA(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE, number, 5) > 0
                   ? std::atoi(number)
                   : 0;
    }();
    return codePage;
}

void NxTextJapanNormal(char* text) {
    if (nxDbcs().dbcsIsJapan())
        NxTextJapanNormal(text, static_cast<unsigned int>(std::strlen(text)));
}

void NxTextJapanNormal(char* text, unsigned int len) {
    NX_DbcsInfo const& info = nxDbcs();
    if (!info.dbcsIsJapan())
        return;
    char* const end = text + len;
    while (text < end) {
        char* const run = text;
        while (end - text >= 2 && info.chIsLead(*text))
            text += 2;
        info.dbcsJapanNormal(run, static_cast<unsigned int>(text - run));
        ++text;
    }
}

void NxTextDbcsSpaceToSbcs(char* text) {
    NX_DbcsInfo const& info = nxDbcs();
    if (info.dbcsIsFalse())
        return;
    while (*text) {
        if (!info.chIsLead(*text)) {
            ++text;
            continue;
        }
        if (info.chIsSpace(text))
            text[0] = text[1] = ' ';
        text += text[1] ? 2 : 1;
    }
}
