// Private header. general/module/resimage.h - the resources in the bytes of one file.
//
// The bytes come from outside and are believed nothing: they are checked when they are read in, all of them
// that say where something is, so that what is found afterwards may be used without a further look. Work and
// memory are bounded by a small multiple of the number of bytes. Nothing here records errors.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"
#include "general/module/reslib.h"

// Bytes and how many; integers are little endian. The places given to u8, u16 and u32 must have been asked
// for with `has`.
struct NXS_ResBytes {
    unsigned char const* p = nullptr;
    std::uint32_t size = 0;

    bool has(std::uint32_t at, std::uint32_t qty) const { return at <= size && qty <= size - at; }
    std::uint32_t u8(std::uint32_t at) const { return p[at]; }
    std::uint32_t u16(std::uint32_t at) const { return u8(at) | u8(at + 1) << 8; }
    std::uint32_t u32(std::uint32_t at) const { return u16(at) | u16(at + 2) << 16; }
};

// A number, or the place of a counted 16-bit text in the image.
struct NXS_ResName {
    std::uint32_t number = 0;
    std::uint32_t textAt = 0; // 0: a number

    friend bool operator==(NXS_ResName const&, NXS_ResName const&) = default;
};

struct NXS_ResEntry {
    NXS_ResName type;
    NXS_ResName id;
    std::uint32_t lang;
    std::uint32_t at; // of the resource's bytes in the image
    std::uint32_t size;
};
using NXS_ResEntryVec = NX_VecT<NXS_ResEntry>;

class NX_EXPORT NXS_ResImage {
public:
    NXS_ResImage() = default;
    NXS_ResImage(NXS_ResImage const&) = delete;
    NXS_ResImage& operator=(NXS_ResImage const&) = delete;
    ~NXS_ResImage();

    // No image has more bytes.
    static constexpr std::uint32_t sizeMax = 0x20000000 - 1;

    // How many of the file's bytes count, told from its first ones; all of them when these do not tell.
    static std::uint64_t sizeNeeded(NXS_ResBytes head, std::uint64_t fileSize);

    // Room for the file's bytes, at most sizeMax; to be filled before imageRead.
    unsigned char* bytesNew(std::uint32_t size);

    // Reads the directory of resources. 0; -1 when the bytes are no file of this kind (resLibTypeFile: of any
    // kind), or damaged: the image is then empty.
    int imageRead(NX_ResLibType wanted);

    // resLibTypeModule, resLibTypeBmp or resLibTypeIco; resLibTypeNone before a successful reading.
    NX_ResLibType kind() const { return kind_; }
    NXS_ResEntryVec const& entries() const { return entries_; }
    unsigned char const* dataP(NXS_ResEntry const& entry) const { return bytes_.p + entry.at; }

    NX_StringA text(NXS_ResName const& name) const; // empty for a number

    // The entry to take for a resource, or NX_NO_INDEX: see NX_ResLib::resDescFind. A key without text is a
    // number.
    struct Key {
        std::uint32_t number = 0;
        NX_StringA text;
    };
    unsigned int find(Key const& type, Key const& id, int lang, bool isLangOnly = true) const;

    // The text resource `id` as 8-bit text: how many characters it has, at most `room` of them in `buffer`.
    unsigned int textLoad(char* buffer, unsigned int room, unsigned int id) const;

private:
    int peRead();
    int bmpRead();
    int icoRead();
    void bytesFree();
    unsigned char* bytesGrow(std::uint32_t more); // where the added ones begin
    bool isNamed(NXS_ResName const& name, Key const& key) const;

    void* block_ = nullptr;
    NXS_ResBytes bytes_;
    NX_ResLibType kind_ = resLibTypeNone;
    NXS_ResEntryVec entries_;
};

// How many of a module's bytes count: to the end of the last section that may hold resources. NX_NO_INDEX
// when the head does not tell.
std::uint32_t nxResPeExtent(NXS_ResBytes head);

// One unit of 16-bit text as a character of the system's code page, '?' when it has none.
char nxResChar(std::uint32_t unit);
