#include "general/module/png.h"

#include <array>
#include <cstring>

#include "general/collm/mem.h"
#include "general/error/errornum.h"
#include "general/module/inflate.h"

namespace {

constexpr unsigned char signature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::uint32_t headerSize = 13;
constexpr std::uint64_t pixelsMax = 1u << 24;
constexpr std::uint64_t expansionMax = 1032; // bytes that one byte of a deflate stream can stand for

constexpr std::uint32_t chunkType(char const (&name)[5]) {
    std::uint32_t type = 0;
    for (int n = 0; n < 4; ++n)
        type = type << 8 | static_cast<unsigned char>(name[n]);
    return type;
}

constexpr std::uint32_t typeHeader = chunkType("IHDR"), typePalette = chunkType("PLTE"),
                        typeTransparency = chunkType("tRNS"), typeData = chunkType("IDAT");
constexpr std::uint32_t typeAncillary = 0x20000000; // a chunk that may be left out

std::uint32_t bigEndian(unsigned char const* p) {
    return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
}

// What a byte adds to the sum, with 0 to 7 more bytes behind it.
constexpr auto crcTables = [] {
    std::array<std::array<std::uint32_t, 256>, 8> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (unsigned int bits = 0; bits < 64; ++bits) {
            sum = sum >> 1 ^ (0xEDB88320u & (0 - (sum & 1)));
            if (bits % 8 == 7)
                tables[bits / 8][byte] = sum;
        }
    }
    return tables;
}();

std::uint32_t crc32(unsigned char const* p, std::uint32_t size) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (; size >= 8; size -= 8, p += 8) {
        std::uint32_t next = 0;
        for (unsigned int n = 0; n < 8; ++n)
            next ^= crcTables[7 - n][n < 4 ? p[n] ^ (sum >> 8 * n & 0xFF) : p[n]];
        sum = next;
    }
    for (; size != 0; --size, ++p)
        sum = sum >> 8 ^ crcTables[0][(sum ^ *p) & 0xFF];
    return ~sum;
}

} // namespace

// The chunks from a place on. Each is length, type, the bytes and a sum of these and the type.
class NXS_Png::Chunks final : public NXS_InflateSource {
public:
    Chunks(NXS_ResBytes bytes, std::uint32_t at) : bytes_(bytes), at_(at) {}

    // Goes to the next chunk. False when there is none or it is damaged; then there are no more.
    bool next();

    std::uint32_t type() const { return type_; } // 0 without a chunk
    NXS_ResBytes chunk() const { return chunk_; }

    // The stream lies in the chunks of pixels that follow each other, from the present one on.
    bool pieceNext(unsigned char const*& data, std::uint32_t& size) override;

private:
    NXS_ResBytes bytes_;
    NXS_ResBytes chunk_;
    std::uint32_t at_;
    std::uint32_t type_ = 0;
    bool isTaken_ = false;
};

bool NXS_Png::Chunks::next() {
    type_ = 0;
    if (!bytes_.has(at_, 12))
        return false;
    unsigned char const* const p = bytes_.p + at_;
    std::uint32_t const size = bigEndian(p);
    if (!bytes_.has(at_ + 12, size) || (nxSumsCount && crc32(p + 4, size + 4) != bigEndian(p + 8 + size))) {
        bytes_ = {};
        return false;
    }
    type_ = bigEndian(p + 4);
    chunk_ = {p + 8, size};
    at_ += 12 + size;
    return true;
}

bool NXS_Png::Chunks::pieceNext(unsigned char const*& data, std::uint32_t& size) {
    if (isTaken_ && type_ == typeData)
        next();
    isTaken_ = true;
    data = chunk_.p;
    size = chunk_.size;
    return type_ == typeData;
}

bool NXS_Png::isPng(unsigned char const* data, std::uint32_t size) {
    return size >= sizeof(signature) && std::memcmp(data, signature, sizeof(signature)) == 0;
}

int NXS_Png::pngOpen(unsigned char const* data, std::uint32_t size) {
    static constexpr unsigned char samples[] = {1, 0, 3, 1, 2, 0, 4}; // of a pixel, by colour type
    static constexpr std::uint32_t depths[] = {1 << 1 | 1 << 2 | 1 << 4 | 1 << 8 | 1 << 16,
                                               0,
                                               1 << 8 | 1 << 16,
                                               1 << 1 | 1 << 2 | 1 << 4 | 1 << 8,
                                               1 << 8 | 1 << 16,
                                               0,
                                               1 << 8 | 1 << 16};
    bytes_ = {data, size};
    Chunks chunks(bytes_, sizeof(signature));
    if (!isPng(data, size) || !chunks.next() || chunks.type() != typeHeader ||
        chunks.chunk().size != headerSize)
        return errorNumImage;
    unsigned char const* const p = chunks.chunk().p;
    width_ = bigEndian(p);
    height_ = bigEndian(p + 4);
    bits_ = p[8];
    colorType_ = p[9];
    isInterlaced_ = p[12] != 0;
    // Behind them: one coding, one set of filters, two orders of rows.
    if (width_ - 1 >= 0x7FFFFFFFu || height_ - 1 >= 0x7FFFFFFFu || bits_ > 16 ||
        colorType_ >= sizeof(samples) || (depths[colorType_] >> bits_ & 1) == 0 || p[10] != 0 || p[11] != 0 ||
        p[12] > 1 || std::uint64_t{width_} * height_ > pixelsMax)
        return errorNumImage;
    depth_ = bits_ * samples[colorType_];
    // With that many pixels all rows have less than 2^28 bytes.
    std::uint64_t rows = 0;
    for (Pass const* pass = passBegin(); pass != passEnd(); ++pass)
        if (passWidth(*pass) != 0)
            rows += (1 + rowSize(passWidth(*pass))) * passHeight(*pass);
    rowsSize_ = static_cast<std::uint32_t>(rows);
    return rows <= expansionMax * size ? 0 : errorNumImage;
}

NXS_Png::Pass const* NXS_Png::passBegin() const {
    static constexpr Pass passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                      {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    static constexpr Pass whole = {0, 0, 1, 1};
    return isInterlaced_ ? passes : &whole;
}

NXS_Png::Pass const* NXS_Png::passEnd() const {
    return passBegin() + (isInterlaced_ ? 7 : 1);
}

std::uint32_t NXS_Png::steps(std::uint32_t size, unsigned int first, unsigned int step) {
    return size > first ? (size - first - 1) / step + 1 : 0;
}

std::uint64_t NXS_Png::rowSize(std::uint32_t width) const {
    return (std::uint64_t{width} * depth_ + 7) / 8;
}

int NXS_Png::imagePixels(NX_Image& image) const {
    Colors colors;
    Chunks chunks(bytes_, sizeof(signature) + 12 + headerSize);
    if (int const error = colorsRead(colors, chunks); error != 0)
        return error;
    NX_MemAuto const rows(static_cast<int>(rowsSize_), 1);
    auto* const p = static_cast<unsigned char*>(rows.memP());
    if (!nxInflate(chunks, p, rowsSize_))
        return errorNumImage;
    NX_Image made(width_, height_);
    int const error = rowsDecode(made, p, colors);
    if (error == 0)
        image = made;
    return error;
}

// Reads up to the first chunk of pixels.
int NXS_Png::colorsRead(Colors& colors, Chunks& chunks) const {
    bool isTransparency = false;
    grayTable(colors);
    while (chunks.next()) {
        int error = 0;
        switch (chunks.type()) {
        case typeData:
            return isIndexed() && colors.tableQty == 0 ? errorNumImage : 0;
        case typePalette:
            error = isTransparency ? errorNumImage : paletteRead(colors, chunks.chunk());
            break;
        case typeTransparency:
            error = isTransparency ? errorNumImage : transparencyRead(colors, chunks.chunk());
            isTransparency = true;
            break;
        default:
            error = (chunks.type() & typeAncillary) == 0 ? errorNumImage : 0;
        }
        if (error != 0)
            return error;
    }
    return errorNumImage;
}

// Levels of gray by their bits; black for the indexes that no palette will fill.
void NXS_Png::grayTable(Colors& colors) const {
    std::uint32_t const most = isIndexed() || bits_ > 8 ? 0 : (1u << bits_) - 1;
    for (std::uint32_t n = 0; n < 256; ++n) {
        auto const level = static_cast<unsigned char>(n <= most && n != 0 ? n * 255 / most : 0);
        colors.table[n] = {level, level, level, 255};
    }
}

// Of an image whose pixels hold their colours the palette is advice to simpler screens.
int NXS_Png::paletteRead(Colors& colors, NXS_ResBytes chunk) const {
    std::uint32_t const qty = chunk.size / 3;
    if (!isColor() || colors.tableQty != 0 || chunk.size % 3 != 0 || qty == 0 ||
        qty > (isIndexed() ? 1u << bits_ : 256))
        return errorNumImage;
    colors.tableQty = qty;
    for (std::uint32_t n = 0; isIndexed() && n < qty; ++n)
        colors.table[n] = {chunk.p[3 * n], chunk.p[3 * n + 1], chunk.p[3 * n + 2], 255};
    return 0;
}

int NXS_Png::transparencyRead(Colors& colors, NXS_ResBytes chunk) const {
    if (isIndexed()) { // in the order of the palette, which may have more
        for (std::uint32_t n = 0; n < chunk.size && n < colors.tableQty; ++n)
            colors.table[n].alpha = chunk.p[n];
        return chunk.size <= colors.tableQty ? 0 : errorNumImage;
    }
    std::uint32_t const samples = isColor() ? 3 : 1;
    if (isAlpha() || chunk.size != 2 * samples)
        return errorNumImage;
    // Each has 16 bits, of which those of a sample count.
    if (depth_ <= 8) {
        colors.table[chunk.p[1] & ((1u << bits_) - 1)].alpha = 0;
        return 0;
    }
    for (std::uint32_t n = 0; n < samples; ++n)
        std::memcpy(colors.key + n * bits_ / 8, chunk.p + 2 * n + (bits_ == 8 ? 1 : 0), bits_ / 8);
    colors.isKey = true;
    return 0;
}
