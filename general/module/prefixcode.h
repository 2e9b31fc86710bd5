// Private header. general/module/prefixcode.h - the codes of a deflate stream, and what they stand for.
//
// A code is told by the number of bits of each symbol: shorter codes come first, those of one length stand in
// the order of their symbols. Format: deflate, RFC 1951. Threads: a table is a value.
#pragma once

#include <array>
#include <cstdint>

// In place of a number of bits to add.
inline constexpr std::uint8_t nxKindLiteral = 0x20, nxKindEnd = 0x40, nxKindBad = 0x80;

// What a code stands for.
struct NXS_Code {
    std::uint16_t value = 0;
    std::uint8_t extra = nxKindBad; // bits that follow and are added to the value, or a kind
    std::uint8_t bits = 0;          // of the code itself; 0: not known here
};

inline constexpr unsigned int nxSymbolsMax = 288;

using NXS_Alphabet = std::array<NXS_Code, nxSymbolsMax>;

extern NXS_Alphabet const nxLengthAlphabet;   // literals, the end, lengths of copies
extern NXS_Alphabet const nxDistanceAlphabet; // how far back they begin
extern NXS_Alphabet const nxCodeAlphabet;     // lengths of codes: literals, 16 (extra 2), 17 and 18

// The codes of one alphabet. Short ones are found at once by the bits that come next, of which the first is
// the lowest; longer ones by their place among all codes of their length, which are numbers in a row.
class NXS_CodeTable {
public:
    static constexpr unsigned int lookupBitsMax = 10;

    // From the number of bits of each symbol's code, 0 for those without one. False: no code has these.
    bool build(NXS_Alphabet const& alphabet, std::uint8_t const* bits, unsigned int qty,
               unsigned int lookupBits);

    NXS_Code find(std::uint64_t bits) const {
        NXS_Code const code = lookup_[bits & mask_];
        return code.bits != 0 ? code : findLong(static_cast<std::uint32_t>(bits));
    }

private:
    static constexpr unsigned int codeBitsMax = 15;

    NXS_Code findLong(std::uint32_t bits) const;

    NXS_Code lookup_[1u << lookupBitsMax];
    std::uint32_t mask_;
    NXS_Alphabet const* alphabet_;
    std::uint32_t ends_[codeBitsMax + 1];   // behind the last code of a length, brought to 16 bits
    std::uint32_t places_[codeBitsMax + 1]; // of the first symbol of a length, less its code
    std::uint16_t symbols_[nxSymbolsMax];   // by length and value
};
