// general/error/hexdump.cpp - hexadecimal dumps.
#include "general/error/hexdump.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <ostream>

namespace {

constexpr unsigned int lineBytes = 16;

char* hexPut(char* to, unsigned char unit) {
    static char const digits[] = "0123456789abcdef";
    *to++ = digits[unit >> 4];
    *to++ = digits[unit & 0x0F];
    return to;
}

// Column numbers above the digits and above the characters, behind a note of ten characters. A longer note,
// of a run of ten million bytes and more, moves them to the right.
void rulerOut(std::ostream& os, char const* note) {
    char text[128];
    int const length = std::snprintf(text, sizeof text, "%-10s%50s%18s\n", note,
                                     " 0     2     4     6     8     A     C     E   ", "0 2 4 6 8 A C E ");
    os.write(text, length);
}

void lineOut(std::ostream& os, std::uint32_t address, unsigned int col, unsigned char const* data,
             unsigned int qty) {
    constexpr unsigned int addressWidth = 10;
    char line[addressWidth + 68 + 1];
    std::memset(line, ' ', sizeof line);
    char* to = line + addressWidth;
    std::uint32_t rest = address;
    do
        *--to = "0123456789abcdef"[rest & 0x0F];
    while ((rest >>= 4) != 0);
    char* const bytes = line + addressWidth;
    for (unsigned int i = 0; i < qty; ++i) {
        unsigned int const c = col + i;
        hexPut(bytes + 3 + 3 * c, data[i]);
        bytes[52 + c] = data[i] < 32 ? '.' : static_cast<char>(data[i]);
    }
    line[sizeof line - 1] = '\n';
    os.write(line, sizeof line);
}

} // namespace

unsigned int NxCharHex(char* out, void const* data, unsigned int length) {
    auto const* p = static_cast<unsigned char const*>(data);
    char* to = out;
    for (unsigned int i = 0; i < length; ++i) {
        if (i != 0)
            *to++ = ' ';
        to = hexPut(to, p[i]);
    }
    *to = 0;
    return static_cast<unsigned int>(to - out);
}

void NxCharHexOut(std::ostream& os, char const* data, unsigned int length, long address) {
    auto const* p = reinterpret_cast<unsigned char const*>(data);
    auto at = static_cast<std::uint32_t>(address);
    unsigned char const* full = nullptr; // the line just written, when it was a whole one
    char note[32] = "";
    bool noteIsDue = true;
    while (length > 0) {
        unsigned int skipped = 0;
        if (full != nullptr) {
            while (length - skipped >= 2 * lineBytes && std::memcmp(p + skipped, full, lineBytes) == 0)
                skipped += lineBytes;
            if (skipped > lineBytes) {
                p += skipped;
                length -= skipped;
                at += skipped;
                std::snprintf(note, sizeof note, "(+%u)", skipped);
                noteIsDue = true;
            }
        }
        if (noteIsDue)
            rulerOut(os, note);
        noteIsDue = false;

        unsigned int const col = at % lineBytes;
        unsigned int const qty = std::min(lineBytes - col, length);
        at -= col;
        lineOut(os, at, col, p, qty);
        full = qty == lineBytes ? p : nullptr;
        p += qty;
        length -= qty;
        at += lineBytes;
    }
}

void NxCharHexOut4(std::FILE* file, void const* data, unsigned int length, long address) {
    if (data == nullptr)
        return;
    auto const* p = static_cast<unsigned char const*>(data);
    auto at = static_cast<std::uint32_t>(address);
    while (length > 0) {
        unsigned int const col = at % lineBytes; // of a negative address too
        unsigned int const count = std::min(lineBytes - col, length);
        char hex[2 * lineBytes + 3 + 1];
        char chars[lineBytes + 1];
        std::memset(hex, ' ', sizeof hex);
        std::memset(chars, ' ', sizeof chars);
        hex[sizeof hex - 1] = 0;
        chars[sizeof chars - 1] = 0;
        for (unsigned int i = 0; i < count; ++i) {
            unsigned int const c = col + i;
            hexPut(hex + 2 * c + c / 4, p[i]);
            chars[c] = p[i] < 32 ? '~' : static_cast<char>(p[i]);
        }
        std::fprintf(file, "0x%08lx  %s   |%s|\n", static_cast<unsigned long>(at), hex, chars);
        p += count;
        length -= count;
        at += count;
    }
}
