// general/module/respe.cpp - the directory of resources in a module's file.
//
// Format: portable executable, as publicly documented: a header, a table of sections, and in one of them a
// tree of three levels (type, id, language) whose leaves say where the bytes are in the loaded module.
#include <algorithm>

#include "general/module/resimage.h"

namespace {

constexpr std::uint32_t dosHeaderSize = 64;
constexpr std::uint32_t dosHeaderNew = 60; // where the place of the real header stands
constexpr std::uint32_t headerSize = 24;   // mark and file header
constexpr std::uint32_t sectionSize = 40;
constexpr std::uint32_t sectionQtyMax = 96; // what a loader takes
constexpr std::uint32_t sectionDiscardable = 0x02000000;
constexpr std::uint32_t directoryHeadSize = 16;
constexpr std::uint32_t directoryEntrySize = 8;
constexpr std::uint32_t leafSize = 16;
constexpr std::uint32_t highBit = 0x80000000;
constexpr std::uint32_t numberMax = 0xFFFF;
constexpr std::uint32_t levelQty = 3;
// Names may be used more than once, but all of them together have no more bytes than this many directories.
constexpr std::uint64_t nameShare = 8;

// Where the parts named by the header are.
struct Header {
    std::uint32_t resources = 0; // relative address of the directory; 0: there is none
    std::uint32_t sectionsAt = 0;
    std::uint32_t sectionQty = 0;
};

struct Section {
    std::uint32_t address; // relative to the loaded module
    std::uint32_t size;    // bytes in the file
    std::uint32_t at;      // in the file
    std::uint32_t flags;

    bool holds(std::uint32_t place) const { return place >= address && place - address < size; }
};

bool headerRead(NXS_ResBytes bytes, Header& header) {
    if (!bytes.has(0, dosHeaderSize) || bytes.u16(0) != 0x5A4D)
        return false;
    std::uint32_t const at = bytes.u32(dosHeaderNew);
    if (!bytes.has(at, headerSize + 2) || bytes.u32(at) != 0x00004550)
        return false;
    header.sectionQty = bytes.u16(at + 6);
    std::uint32_t const optionalSize = bytes.u16(at + 20);
    std::uint32_t const optional = at + headerSize;
    header.sectionsAt = optional + optionalSize; // the sum of two places in the file and 64 KiB: no wrap
    if (header.sectionQty > sectionQtyMax || !bytes.has(optional, optionalSize) ||
        !bytes.has(header.sectionsAt, header.sectionQty * sectionSize))
        return false;
    std::uint32_t const magic = bytes.u16(optional);
    if (optionalSize < 2 || (magic != 0x10B && magic != 0x20B))
        return false;
    // Pairs of address and size; the third is that of the resources.
    std::uint32_t const pairs = magic == 0x10B ? 96 : 112;
    if (optionalSize >= pairs + 3 * 8 && bytes.u32(optional + pairs - 4) >= 3)
        header.resources = bytes.u32(optional + pairs + 2 * 8);
    return true;
}

Section sectionAt(NXS_ResBytes bytes, Header const& header, std::uint32_t n) {
    std::uint32_t const at = header.sectionsAt + n * sectionSize;
    return {bytes.u32(at + 12), bytes.u32(at + 16), bytes.u32(at + 20), bytes.u32(at + 36)};
}

class Directory {
public:
    Directory(NXS_ResBytes bytes, NXS_ResEntryVec& entries) : bytes_(bytes), entries_(entries) {}

    bool read() {
        Header header;
        if (!headerRead(bytes_, header))
            return false;
        if (header.resources == 0)
            return true;
        for (std::uint32_t n = 0; n < header.sectionQty; ++n)
            sections_[n] = sectionAt(bytes_, header, n);
        sectionQty_ = header.sectionQty;
        if (!place(header.resources, 1, base_))
            return false;
        Section const& home = sections_[homeOf(header.resources)];
        // From here to the end of the section, or of the file.
        std::uint32_t const left = home.size - (header.resources - home.address);
        size_ = std::min(left, bytes_.size - base_);
        directoryLeft_ = size_;
        nameLeft_ = size_ * nameShare;
        return level(0, 0, {});
    }

private:
    std::uint32_t homeOf(std::uint32_t address) {
        if (last_ >= sectionQty_ || !sections_[last_].holds(address)) {
            last_ = 0;
            while (last_ < sectionQty_ && !sections_[last_].holds(address))
                ++last_;
        }
        return last_;
    }

    // Where in the file the bytes at an address are. They must lie in one section and in the file.
    bool place(std::uint32_t address, std::uint32_t qty, std::uint32_t& at) {
        std::uint32_t const n = homeOf(address);
        if (n == sectionQty_)
            return false;
        Section const& section = sections_[n];
        std::uint32_t const inside = address - section.address;
        if (qty > section.size - inside || !bytes_.has(section.at, inside) ||
            !bytes_.has(section.at + inside, qty))
            return false;
        at = section.at + inside;
        return true;
    }

    bool has(std::uint32_t at, std::uint32_t qty) const { return at <= size_ && qty <= size_ - at; }

    bool nameRead(std::uint32_t word, NXS_ResName& name) {
        if ((word & highBit) == 0) {
            name = {word, 0};
            return word <= numberMax;
        }
        std::uint32_t const at = word & ~highBit;
        if (!has(at, 2))
            return false;
        std::uint32_t const size = 2 + 2 * bytes_.u16(base_ + at);
        if (!has(at, size) || size > nameLeft_)
            return false;
        nameLeft_ -= size;
        name = {0, base_ + at};
        return true;
    }

    // One directory: its entries lead to directories of the next level, or on the last one to the leaves. No
    // byte is part of two directories, so that all of them together are no larger than the section.
    bool level(std::uint32_t depth, std::uint32_t at, NXS_ResEntry entry) {
        if (!has(at, directoryHeadSize))
            return false;
        std::uint32_t const qty = bytes_.u16(base_ + at + 12) + bytes_.u16(base_ + at + 14);
        std::uint32_t const size = directoryHeadSize + qty * directoryEntrySize;
        if (!has(at, size) || size > directoryLeft_)
            return false;
        directoryLeft_ -= size;
        for (std::uint32_t n = 0; n < qty; ++n) {
            std::uint32_t const item = base_ + at + directoryHeadSize + n * directoryEntrySize;
            NXS_ResName name;
            if (!nameRead(bytes_.u32(item), name))
                return false;
            std::uint32_t const next = bytes_.u32(item + 4);
            bool const isLeaf = (next & highBit) == 0;
            if (isLeaf != (depth == levelQty - 1))
                return false;
            if (isLeaf) {
                entry.lang = name.number;
                if (name.textAt != 0 || !leaf(next, entry))
                    return false;
            } else {
                (depth == 0 ? entry.type : entry.id) = name;
                if (!level(depth + 1, next & ~highBit, entry))
                    return false;
            }
        }
        return true;
    }

    bool leaf(std::uint32_t at, NXS_ResEntry& entry) {
        if (!has(at, leafSize))
            return false;
        entry.size = bytes_.u32(base_ + at + 4);
        entry.at = base_;
        if (entry.size != 0 && !place(bytes_.u32(base_ + at), entry.size, entry.at))
            return false;
        entries_ += entry;
        return true;
    }

    NXS_ResBytes const bytes_;
    NXS_ResEntryVec& entries_;
    Section sections_[sectionQtyMax] = {};
    std::uint32_t sectionQty_ = 0;
    std::uint32_t last_ = 0; // the section of the last address
    std::uint32_t base_ = 0; // of the directory in the file
    std::uint32_t size_ = 0; // from there on
    std::uint32_t directoryLeft_ = 0;
    std::uint64_t nameLeft_ = 0;
};

} // namespace

std::uint32_t nxResPeExtent(NXS_ResBytes head) {
    Header header;
    if (!headerRead(head, header))
        return NX_NO_INDEX;
    std::uint64_t extent = header.sectionsAt + header.sectionQty * sectionSize;
    for (std::uint32_t n = 0; n < header.sectionQty; ++n) {
        Section const section = sectionAt(head, header, n);
        if ((section.flags & sectionDiscardable) == 0 || section.holds(header.resources))
            extent = std::max(extent, std::uint64_t{section.at} + section.size);
    }
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(extent, NX_NO_INDEX));
}

int NXS_ResImage::peRead() {
    return Directory(bytes_, entries_).read() ? 0 : -1;
}
