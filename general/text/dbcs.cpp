// general/text/dbcs.cpp - the description of one code page.
#include "general/text/dbcs.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "general/platform/platform.h"
#include "general/text/textprim.h"

namespace {

struct RegionOfCodePage {
    int codePage;
    int region; // 1 Chinese, 2 Japanese, 3 Korean
    char space[3];
    char unknown[3];
};

constexpr RegionOfCodePage regions[] = {
    {310, 2, "\x81\x40", "\xFC\xFC"}, {932, 2, "\x81\x40", "\xFC\xFC"},  {941, 2, "\x81\x40", "\xFC\xFC"},
    {942, 2, "\x81\x40", "\xFC\xFC"}, {1041, 2, "\x81\x40", "\xFC\xFC"}, {1351, 2, "\x81\x40", "\xFC\xFC"},
    {927, 1, "\x81\x40", "\xFC\xFC"}, {938, 1, "\x81\x40", "\xFC\xFC"},  {948, 1, "\x81\x40", "\xFC\xFC"},
    {934, 3, "\x81\x40", "\xFC\xFC"}, {944, 3, "\x81\x40", "\xFC\xFC"},  {1040, 3, "\x81\x40", "\xFC\xFC"},
    {947, 1, "\xA1\x40", "\xC8\xFE"}, {950, 1, "\xA1\x40", "\xC8\xFE"},  {949, 3, "\xA1\xA1", "\xAF\xFE"},
    {951, 3, "\xA1\xA1", "\xAF\xFE"}, {1380, 1, "\xA1\xA1", "\xAF\xFE"}, {1381, 1, "\xA1\xA1", "\xAF\xFE"},
};

constexpr int doubleByteCodePages[] = {310, 927, 930, 932, 934, 935,  937,  938,  939,  941,  942,  944,
                                       947, 948, 949, 950, 951, 1040, 1041, 1043, 1080, 1114, 1115, 1351};
static_assert(std::is_sorted(std::begin(doubleByteCodePages), std::end(doubleByteCodePages)));

// Variants of Japanese characters and their normal forms, lead * 256 + trail, by rising variant.
struct JapanVariant {
    std::uint16_t from;
    std::uint16_t to;
};

constexpr JapanVariant japanVariants[] = {
    {0x98D4, 0x9699}, {0x9AE2, 0x92D9}, {0x9D98, 0x8A68}, {0x9E77, 0x954F}, {0x9E8D, 0x938E},
    {0x9FB7, 0x9393}, {0x9FF3, 0x8AC1}, {0xE1E6, 0x8D7B}, {0xE1E8, 0x9376}, {0xE27D, 0x8A96},
    {0xE2C4, 0x9855}, {0xE541, 0x8EC7}, {0xE54D, 0x96F7}, {0xE579, 0x8A61}, {0xE5A2, 0x9488},
    {0xE67C, 0x8AD0}, {0xE6CB, 0x9147}, {0xE78E, 0x93F4}, {0xE8D5, 0x9078}, {0xE8F2, 0x8C7A},
    {0xE9CB, 0x88B1}, {0xE9F2, 0x89A7}, {0xEA9F, 0x8BC4}, {0xEAA0, 0x968A}, {0xEAA1, 0x9779},
    {0xEAA2, 0xE0F4}, {0xEAA4, 0xE086}, {0xFA54, 0x81CA}, {0xFA5B, 0x81E6}, {0xFAD0, 0x8D56},
};

// The normal form of a variant, null when the character is none.
JapanVariant const* japanVariant(char lead, char trail) {
    unsigned int const value = static_cast<unsigned char>(lead) * 256u + static_cast<unsigned char>(trail);
    auto const* found = std::lower_bound(std::begin(japanVariants), std::end(japanVariants), value,
                                         [](JapanVariant const& v, unsigned int c) { return v.from < c; });
    return found != std::end(japanVariants) && found->from == value ? found : nullptr;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

NX_DbcsInfo::NX_DbcsInfo(int codePage) : codePage_(codePage ? codePage : NxCodePageDefault()) {
    regionSet();
    isTrue_ = leadFill() > 0;
}

void NX_DbcsInfo::regionSet() {
    for (RegionOfCodePage const& row : regions) {
        if (row.codePage != codePage_)
            continue;
        region_ = row.region;
        std::copy_n(row.space, 2, space_);
        std::copy_n(row.unknown, 2, unknown_);
    }
}

// Asks the system for the lead bytes. 1 when there are some, 0 when there are none, -1 when it does not know
// the page.
int NX_DbcsInfo::leadFill() {
    if (codePage_ == 0) {
        for (unsigned int c = 0; c < 256; ++c)
            if (IsDBCSLeadByte(static_cast<BYTE>(c)))
                leadMark(c, c, 1);
    } else {
        CPINFO info = {};
        if (!GetCPInfo(static_cast<UINT>(codePage_), &info))
            return -1;
        for (int i = 0; i + 1 < MAX_LEADBYTES && (info.LeadByte[i] || info.LeadByte[i + 1]); i += 2)
            leadMark(info.LeadByte[i], info.LeadByte[i + 1], 1);
    }
    return leadKind_ != LeadNone;
}

int NX_DbcsInfo::dbcsCodePageIsDbcs(int codePage) {
    return std::binary_search(std::begin(doubleByteCodePages), std::end(doubleByteCodePages), codePage);
}

void NX_DbcsInfo::chIsLead(int first, int last, int isLead) {
    if (last >= 0 && first <= 255)
        leadMark(static_cast<unsigned int>(std::max(first, 0)),
                 static_cast<unsigned int>(std::min(last, 255)), isLead != 0);
}

void NX_DbcsInfo::leadMark(unsigned int first, unsigned int last, unsigned char isLead) {
    for (unsigned int c = first; c <= last; ++c)
        lead_[c] = isLead;
    bool const low = std::any_of(lead_, lead_ + 128, [](unsigned char entry) { return entry != 0; });
    bool const high = std::any_of(lead_ + 128, lead_ + 256, [](unsigned char entry) { return entry != 0; });
    leadKind_ = low ? LeadLow : high ? LeadHigh : LeadNone;
}

int NX_DbcsInfo::dbcsLead(char const** text) {
    char const* p = *text;
    p += NxTextSpaceLen(p);
    if (*p == '-') {
        leadMark(0, 255, 0);
        *text = p + 1;
        return 0;
    }
    if (!isDigit(*p))
        return -1;
    long const first = NxTextLongGet(p, &p);
    long last = first;
    if (*p == '-') {
        if (!isDigit(p[1]))
            return -1;
        last = NxTextLongGet(p + 1, &p);
    }
    if (*p || first < 0 || last > 255 || last < first)
        return -1;
    leadMark(static_cast<unsigned int>(first), static_cast<unsigned int>(last), 1);
    *text = p;
    return 0;
}

void NX_DbcsInfo::dbcsJapanNormal(char* text, unsigned int len) const {
    for (unsigned int i = 0; len - i >= 2; i += 2) {
        if (JapanVariant const* variant = japanVariant(text[i], text[i + 1])) {
            text[i] = static_cast<char>(variant->to >> 8);
            text[i + 1] = static_cast<char>(variant->to & 0xFF);
        }
    }
}

void NX_DbcsInfo::dbcsJapanNormalHost(char* text, char* copy, unsigned int len) const {
    for (unsigned int i = 0; len - i >= 4; i += 4) {
        if (JapanVariant const* variant = japanVariant(text[i], text[i + 2])) {
            text[i] = copy[i] = static_cast<char>(variant->to >> 8);
            text[i + 2] = copy[i + 2] = static_cast<char>(variant->to & 0xFF);
        }
    }
}
