// general/platform/posix/locale.cpp - code pages and the one question about the locale that the library asks.
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

#include "general/platform/platform.h"
#include "general/platform/posix/codepage.h"

namespace {

struct CodePage {
    unsigned int number;
    UINT charSizeMax;
    std::array<BYTE, 6> lead; // first and last of each range of lead bytes, ended by zeros
};

constexpr CodePage multiBytePages[] = {
    {932, 2, {0x81, 0x9F, 0xE0, 0xFC, 0, 0}},
    {936, 2, {0x81, 0xFE, 0, 0, 0, 0}},
    {949, 2, {0x81, 0xFE, 0, 0, 0, 0}},
    {950, 2, {0x81, 0xFE, 0, 0, 0, 0}},
    {1361, 2, {0x84, 0xD3, 0xD8, 0xDE, 0xE0, 0xF9}},
    {65000, 5, {}},
    {65001, 4, {}},
};

constexpr unsigned int singleBytePages[] = {
    437,   708,   720,   737,   775,   850,   852,   855,   857,   860,   861,   862,   863,   864,
    865,   866,   869,   874,   1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,  1258,  20127,
    20866, 21866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 28603, 28605,
};

// False when the page is unknown.
bool pageFind(unsigned int number, CodePage& page) {
    for (CodePage const& candidate : multiBytePages) {
        if (candidate.number == number) {
            page = candidate;
            return true;
        }
    }
    page = {number, 1, {}};
    return std::find(std::begin(singleBytePages), std::end(singleBytePages), number) !=
           std::end(singleBytePages);
}

// The first of the variables that is set and not empty decides.
std::string_view localeName() {
    for (char const* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        char const* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return "C";
}

unsigned int pageOfLocale(std::string_view name) {
    name = name.substr(0, name.find_first_of(".@"));
    std::string_view const language = name.substr(0, name.find('_'));
    if (language == "zh") {
        bool const traditional = name == "zh_TW" || name == "zh_HK" || name == "zh_MO";
        return traditional ? 950 : 936;
    }
    if (language == "ja")
        return 932;
    if (language == "ko")
        return 949;
    return language == "ru" ? 1251 : 1252;
}

// What the system's page may be.
bool pageIsUsable(unsigned int number) {
    CodePage page;
    return pageFind(number, page) && page.charSizeMax <= 2;
}

unsigned int pageChosen() {
    if (char const* const value = std::getenv("VX7_CODE_PAGE")) {
        unsigned long const number = std::strtoul(value, nullptr, 10);
        if (number <= 0xFFFF && pageIsUsable(static_cast<unsigned int>(number)))
            return static_cast<unsigned int>(number);
    }
    return pageOfLocale(localeName());
}

using LeadTable = std::array<bool, 256>;

constexpr LeadTable leadTableOf(CodePage const& page) {
    LeadTable table{};
    for (std::size_t i = 0; i < page.lead.size() && page.lead[i] != 0; i += 2) {
        for (unsigned int unit = page.lead[i]; unit <= page.lead[i + 1]; ++unit)
            table[unit] = true;
    }
    return table;
}

constexpr auto leadTables = [] {
    std::array<LeadTable, std::size(multiBytePages)> tables{};
    for (std::size_t i = 0; i < tables.size(); ++i)
        tables[i] = leadTableOf(multiBytePages[i]);
    return tables;
}();
constexpr LeadTable leadTableNone{};

// The page and its table change together; a page of 0 stands for "not chosen yet".
struct Current {
    std::atomic<unsigned int> page{0};
    std::atomic<LeadTable const*> lead{nullptr};
};
constinit Current current;

void currentSet(unsigned int number) {
    LeadTable const* lead = &leadTableNone;
    for (std::size_t i = 0; i < std::size(multiBytePages); ++i) {
        if (multiBytePages[i].number == number)
            lead = &leadTables[i];
    }
    current.lead.store(lead, std::memory_order_relaxed);
    current.page.store(number, std::memory_order_relaxed);
}

} // namespace

unsigned int nxPlatformCodePage() {
    if (current.page.load(std::memory_order_relaxed) == 0)
        currentSet(pageChosen());
    return current.page.load(std::memory_order_relaxed);
}

bool nxPlatformCodePageSet(unsigned int codePage) {
    if (codePage != 0 && !pageIsUsable(codePage))
        return false;
    currentSet(codePage != 0 ? codePage : pageChosen());
    return true;
}

bool nxPlatformIsLeadByte(unsigned char unit) {
    LeadTable const* lead = current.lead.load(std::memory_order_relaxed);
    if (lead == nullptr) [[unlikely]] {
        nxPlatformCodePage();
        lead = current.lead.load(std::memory_order_relaxed);
    }
    return (*lead)[unit];
}

std::size_t nxPlatformUnitsAt(char const* at) {
    constexpr unsigned char trailLeast = 0x31; // of all pages
    return static_cast<unsigned char>(at[0]) >= 0x80 && static_cast<unsigned char>(at[1]) >= trailLeast &&
                   nxPlatformIsLeadByte(static_cast<unsigned char>(at[0]))
               ? 2
               : 1;
}

UINT GetACP() {
    return nxPlatformCodePage();
}

BOOL IsDBCSLeadByte(BYTE unit) {
    return nxPlatformIsLeadByte(unit) ? TRUE : FALSE;
}

BOOL GetCPInfo(UINT codePage, CPINFO* info) {
    CodePage page;
    // Pages below 4 are names of the system's own pages; off Windows these are one and the same.
    if (info == nullptr || !pageFind(codePage < 4 ? nxPlatformCodePage() : codePage, page)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *info = {page.charSizeMax, {'?', 0}, {}};
    std::copy(page.lead.begin(), page.lead.end(), info->LeadByte);
    return TRUE;
}

int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR buffer, int size) {
    bool const known = locale == LOCALE_SYSTEM_DEFAULT || locale == LOCALE_USER_DEFAULT;
    if (size < 0 || (size > 0 && buffer == nullptr) || !known) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (type != LOCALE_IDEFAULTANSICODEPAGE) {
        SetLastError(ERROR_INVALID_FLAGS);
        return 0;
    }
    char text[12];
    int const needed = std::snprintf(text, sizeof text, "%u", nxPlatformCodePage()) + 1;
    if (size == 0)
        return needed;
    if (size < needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(buffer, text, static_cast<std::size_t>(needed));
    return needed;
}
