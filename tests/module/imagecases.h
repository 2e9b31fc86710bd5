// tests/module/imagecases.h - small bitmaps made by hand, and the pixels they must have on every system.
#pragma once

#include "general/error/errornum.h"
#include "general/module/dib.h"
#include "tests/support/support.h"

// Bytes from hexadecimal digits; blanks are for the reader.
inline std::string nxHex(std::string digits) {
    std::string bytes;
    std::erase(digits, ' ');
    for (std::size_t at = 0; at < digits.size(); at += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    return bytes;
}

inline std::string nxLe(unsigned int value, int size) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes += static_cast<char>(value);
    return bytes;
}

// A header of 40 bytes, or of as many as `size` says, the rest of it zero.
inline std::string nxDibHead(int width, int height, unsigned int depth, unsigned int coding = 0,
                             unsigned int used = 0, unsigned int size = 40, unsigned int dataSize = 0) {
    std::string head = nxLe(size, 4) + nxLe(static_cast<unsigned int>(width), 4) +
                       nxLe(static_cast<unsigned int>(height), 4) + nxLe(1, 2) + nxLe(depth, 2) +
                       nxLe(coding, 4) + nxLe(dataSize, 4) + nxLe(0, 8) + nxLe(used, 4);
    return head + std::string(size - head.size(), '\0');
}

// Red, Green, Blue, blacK, White, graY or "RRGGBB" a pixel, with alpha behind it where that is not FF; "/"
// between rows, from the top.
inline std::string nxPixels(NX_Image const& image) {
    static constexpr char letters[] = "#FF0000R #00FF00G #0000FFB #000000K #FFFFFFW #808080Y";
    std::string text;
    for (unsigned int n = 0; n < image.pixels().itemQty(); ++n) {
        NX_Pixel const& p = image.pixels()[n];
        std::string one = NX_Color(p.red, p.green, p.blue).colorText().dataPConst();
        auto const known = std::string(letters).find(one);
        one = known != std::string::npos ? std::string(1, letters[known + 7]) : one.substr(1);
        NX_StringA alpha;
        alpha.strPrintF(p.alpha != 255 ? "%02X" : "", p.alpha);
        text += (n == 0 ? "" : n % image.imageWidth() == 0 ? " / " : " ") + one + alpha.dataPConst();
    }
    return text;
}

struct NXS_ImageCase {
    char const* name;
    std::string bytes;
    std::string pixels; // empty: damaged
    bool isOwn = false; // the system leaves it open
};

// The pixels of what was opened with this result; empty when it is damaged.
template <class Decoder>
std::string nxDecoded(Decoder const& decoder, int opened) {
    NX_Image image(1, 1);
    int const error = opened != 0 ? opened : decoder.imagePixels(image);
    unsigned int const width = error == 0 ? decoder.imageWidth() : 1;
    unsigned int const height = error == 0 ? decoder.imageHeight() : 1;
    EXPECT_TRUE(image.imageWidth() == width && image.imageHeight() == height);
    EXPECT_TRUE(error == 0 || error == errorNumImage) << error;
    return error == 0 ? nxPixels(image) : "";
}

inline std::vector<NXS_ImageCase> nxImageCases() {
    std::string const two = nxHex("00000000 FFFFFF00");                    // black and white
    std::string const four = nxHex("0000FF00 00FF0000 FF000000 80808000"); // red, green, blue, gray
    std::string const masks565 = nxHex("00F80000 E0070000 1F000000");
    auto const rle = [&](unsigned int depth, std::string const& codes, int width = 4, int height = 2) {
        std::string const bytes = nxHex(codes);
        unsigned int const coding = depth == 8 ? 1 : 2;
        return nxDibHead(width, height, depth, coding, 4, 40, static_cast<unsigned int>(bytes.size())) +
               four + bytes;
    };
    auto const rle8 = [&](std::string const& codes) { return rle(8, codes); };
    return {
        {"1 bit, bottom up, odd width", nxDibHead(9, 2, 1) + two + nxHex("80800000 00800000"),
         "K K K K K K K K W / W K K K K K K K W"},
        {"1 bit, top down", nxDibHead(3, -2, 1) + two + nxHex("A0000000 40000000"), "W K W / K W K"},
        {"1 bit, one colour given", nxDibHead(2, 1, 1, 0, 1) + nxHex("0000FF00 40000000"), "R K"},
        {"4 bits, odd width", nxDibHead(3, 2, 4, 0, 4) + four + nxHex("01200000 33000000"), "Y Y R / R G B"},
        {"8 bits, few colours", nxDibHead(3, 1, 8, 0, 4) + four + nxHex("02 01 03 00"), "B G Y"},
        {"8 bits, index behind the table", nxDibHead(2, 1, 8, 0, 4) + four + nxHex("04 00 0000"), "K R",
         true},
        {"16 bits, five each", nxDibHead(3, 1, 16) + nxHex("007C E003 1F84 0000"), "R G 0800FF"},
        {"16 bits, 5 6 5", nxDibHead(2, 1, 16, 3) + masks565 + nxHex("00F8 1084"), "R 848284"},
        {"24 bits", nxDibHead(3, 1, 24) + nxHex("010203 040506 070809 000000"), "030201 060504 090807"},
        {"32 bits, the fourth byte is nothing", nxDibHead(1, 2, 32) + nxHex("01020300 04050680"),
         "060504 / 030201"},
        {"32 bits, red first", nxDibHead(1, 1, 32, 3) + nxHex("FF000000 00FF0000 0000FF00 01020304"),
         "010203"},
        {"32 bits, alpha mask",
         nxDibHead(1, 1, 32, 3, 0, 108).substr(0, 40) + nxHex("0000FF00 00FF0000 FF000000 000000FF") +
             std::string(52, '\0') + nxHex("01020304"),
         "03020104", true},
        {"core header", nxHex("0C000000 0200 0200 0100 0100 0000FF 00FF00 40000000 80000000"), "G R / R G"},
        {"run-length, 8 bits", rle8("0301 0102 0000 0003 000102 00 0100 0001"), "R G B R / G G G B"},
        {"run-length, a step", rle8("0201 0002 0101 0103 0001"), "R R R Y / G G R R", true},
        {"run-length, cut at the row's end", rle8("FF02 0000 0401 0001"), "G G G G / B B B B"},
        {"run-length, full without a mark", rle8("0402 0000 0401"), "G G G G / B B B B", true},
        {"run-length, 4 bits", rle(4, "0512 0000 0005 012300 00 0001", 5), "R G B Y R / G B G B G"},
        {"run-length, ends early", rle8("0402 0000"), ""},
        {"run-length, ends in a code", rle8("0402 0000 0004 01"), ""},
        {"run-length, a step out of the image", rle8("0002 0005 0001"), ""},
        {"run-length, a row too many", rle8("0000 0000 0101 0001"), ""},
        {"run-length, larger than its codes", rle(8, "0001", 4096, 4096), ""},
        {"run-length, top down", nxDibHead(1, -1, 8, 1, 4) + four + nxHex("0100 0001"), ""},
        {"run-length of a wrong depth", nxDibHead(1, 1, 4, 1, 4) + four + nxHex("0100 0001"), ""},
        {"a row is missing", nxDibHead(3, 3, 24) + std::string(24, 'x'), ""},
        {"part of a colour table", nxDibHead(1, 1, 8) + four + nxHex("00000000"), ""},
        {"more colours than indexes", nxDibHead(1, 1, 1, 0, 3) + four + nxHex("00000000"), ""},
        {"sizes that wrap", nxDibHead(0x7FFFFFFF, 0x7FFFFFFF, 32) + std::string(64, 'x'), ""},
        {"rows that wrap to nothing", nxDibHead(0x20000000, 8, 8, 0, 4) + four + nxHex("00000000"), ""},
        {"the least height", nxDibHead(1, static_cast<int>(0x80000000), 24) + std::string(64, 'x'), ""},
        {"width 0", nxDibHead(0, 1, 24) + nxHex("00000000"), ""},
        {"width below 0", nxDibHead(-1, 1, 24) + nxHex("00000000"), ""},
        {"2 bits", nxDibHead(1, 1, 2, 0, 4) + four + nxHex("00000000"), ""},
        {"masks with a hole", nxDibHead(1, 1, 32, 3) + nxHex("05000000 00FF0000 0000FF00 01020304"), ""},
        {"masks that overlap", nxDibHead(1, 1, 32, 3) + nxHex("FF000000 FFFF0000 0000FF00 01020304"), ""},
        {"masks are missing", nxDibHead(1, 1, 32, 3) + nxHex("FF000000"), ""},
        {"mask above 16 bits", nxDibHead(1, 1, 16, 3) + nxHex("00000100 E0070000 1F000000 00000000"), ""},
        {"header of 44 bytes", nxDibHead(1, 1, 24, 0, 0, 44) + nxHex("00000000"), ""},
        {"header longer than all", nxDibHead(1, 1, 24, 0, 0, 124).substr(0, 60), ""},
    };
}
