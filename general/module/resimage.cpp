// general/module/resimage.cpp - what the readers of the formats share: bytes, names and searches.
#include "general/module/resimage.h"

#include <algorithm>

#include "general/collm/mem.h"
#include "general/module/resdesc.h"

namespace {

// The languages tried when none is asked for, best first.
constexpr std::uint32_t langsPreferred[] = {0, 0x409};

constexpr unsigned int textsPerBlock = 16;

unsigned int langRank(std::uint32_t lang) {
    return static_cast<unsigned int>(std::find(std::begin(langsPreferred), std::end(langsPreferred), lang) -
                                     std::begin(langsPreferred));
}

} // namespace

NXS_ResImage::~NXS_ResImage() {
    bytesFree();
}

void NXS_ResImage::bytesFree() {
    NxMemHeapFree(&block_);
    bytes_ = {};
}

std::uint64_t NXS_ResImage::sizeNeeded(NXS_ResBytes head, std::uint64_t fileSize) {
    bool const isModule = head.has(0, 2) && head.u8(0) == 'M' && head.u8(1) == 'Z';
    std::uint64_t const extent = isModule ? nxResPeExtent(head) : NX_NO_INDEX;
    return std::min(extent, fileSize);
}

unsigned char* NXS_ResImage::bytesNew(std::uint32_t size) {
    bytesFree();
    return bytesGrow(size);
}

unsigned char* NXS_ResImage::bytesGrow(std::uint32_t more) {
    std::uint32_t const old = bytes_.size;
    NxMemHeapRealloc(&block_, old + more);
    auto* const p = static_cast<unsigned char*>(block_);
    bytes_ = {p, old + more};
    return p + old;
}

int NXS_ResImage::imageRead(NX_ResLibType wanted) {
    struct Kind {
        NX_ResLibType type;
        unsigned char first[4];
        unsigned int firstQty;
        int (NXS_ResImage::*read)();
    };
    static constexpr Kind kinds[] = {
        {resLibTypeModule, {'M', 'Z'}, 2, &NXS_ResImage::peRead},
        {resLibTypeBmp, {'B', 'M'}, 2, &NXS_ResImage::bmpRead},
        {resLibTypeIco, {0, 0, 1, 0}, 4, &NXS_ResImage::icoRead},
        {resLibTypeIco, {0, 0, 2, 0}, 4, &NXS_ResImage::icoRead},
    };
    for (Kind const& kind : kinds) {
        if ((wanted == resLibTypeFile || wanted == kind.type) && bytes_.has(0, kind.firstQty) &&
            std::equal(kind.first, kind.first + kind.firstQty, bytes_.p) && (this->*kind.read)() == 0) {
            kind_ = kind.type;
            return 0;
        }
    }
    bytesFree();
    entries_.collDefault();
    return -1;
}

NX_StringA NXS_ResImage::text(NXS_ResName const& name) const {
    if (name.textAt == 0)
        return {};
    unsigned int const length = bytes_.u16(name.textAt);
    NX_StringA text(length, length);
    char* const p = text.dataPMod();
    for (unsigned int n = 0; n < length; ++n)
        p[n] = nxResChar(bytes_.u16(name.textAt + 2 + 2 * n));
    return text;
}

bool NXS_ResImage::isNamed(NXS_ResName const& name, Key const& key) const {
    if (key.text.itemQty() == 0)
        return name.textAt == 0 && name.number == key.number;
    if (name.textAt == 0 || bytes_.u16(name.textAt) != key.text.strLen())
        return false;
    auto const upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    char const* const p = key.text.dataPConst();
    for (unsigned int n = 0; n < key.text.strLen(); ++n) {
        if (upper(p[n]) != upper(nxResChar(bytes_.u16(name.textAt + 2 + 2 * n))))
            return false;
    }
    return true;
}

unsigned int NXS_ResImage::find(Key const& type, Key const& id, int lang, bool isLangOnly) const {
    unsigned int best = NX_NO_INDEX;
    unsigned int bestRank = NX_NO_INDEX;
    NXS_ResEntry const* const entries = entries_.dataPConst();
    // Names are long where a file wants it so: each is compared once for all that follow it with the same.
    bool typeMatches = false;
    bool idMatches = false;
    for (unsigned int n = 0; n < entries_.itemQty(); ++n) {
        NXS_ResEntry const& entry = entries[n];
        if (n == 0 || entry.type != entries[n - 1].type)
            typeMatches = isNamed(entry.type, type);
        if (n == 0 || entry.id != entries[n - 1].id)
            idMatches = isNamed(entry.id, id);
        if (!typeMatches || !idMatches)
            continue;
        if (lang != -1 && entry.lang == static_cast<std::uint32_t>(lang))
            return n;
        if (lang != -1 && isLangOnly)
            continue;
        if (unsigned int const rank = langRank(entry.lang); rank < bestRank) {
            best = n;
            bestRank = rank;
        }
    }
    return best;
}

unsigned int NXS_ResImage::textLoad(char* buffer, unsigned int room, unsigned int id) const {
    unsigned int const n = find({resTypeString, {}}, {id / textsPerBlock + 1, {}}, -1);
    if (n == NX_NO_INDEX)
        return 0;
    NXS_ResEntry const& entry = entries_.dataPConst()[n];
    NXS_ResBytes const block = {dataP(entry), entry.size};
    std::uint32_t at = 0;
    for (unsigned int skip = id % textsPerBlock;; --skip) {
        if (!block.has(at, 2) || !block.has(at + 2, 2 * block.u16(at)))
            return 0;
        if (skip == 0)
            break;
        at += 2 + 2 * block.u16(at);
    }
    unsigned int const length = std::min(block.u16(at), room);
    for (unsigned int i = 0; i < length; ++i)
        buffer[i] = nxResChar(block.u16(at + 2 + 2 * i));
    return length;
}
