// PNG images in icons: every kind of pixel, streams of every kind, and damage that the sums do not tell.
#include "general/module/iconimage.h"
#include "tests/module/imagecases.h"
#include "tests/module/restest.h"

#include <algorithm>
#include <sstream>

namespace {

std::string bigEndian(std::uint32_t value) {
    std::string const bytes = nxLe(value, 4);
    return {bytes.rbegin(), bytes.rend()};
}

std::string chunk(std::string const& type, std::string const& bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (char const ch : type + bytes) {
        sum ^= static_cast<unsigned char>(ch);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum % 2 != 0 ? 0xEDB88320 : 0);
    }
    return bigEndian(nxSize(bytes)) + type + bytes + bigEndian(~sum);
}

std::string chunkHex(std::string const& type, std::string const& digits) {
    return chunk(type, nxHex(digits));
}

// A stream of one block, as it is.
std::string packed(std::string const& bytes) {
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (char const ch : bytes) {
        a = (a + static_cast<unsigned char>(ch)) % 65521;
        b = (b + a) % 65521;
    }
    return nxHex("7801 01") + nxLe(nxSize(bytes), 2) + nxLe(~nxSize(bytes), 2) + bytes +
           bigEndian(b << 16 | a);
}

struct Head {
    std::uint32_t width, height;
    int bits, type;
    int interlace = 0;
    int coding = 0;
    int filters = 0;
};

std::string head(Head const& h) {
    std::string bytes = bigEndian(h.width) + bigEndian(h.height);
    for (int const field : {h.bits, h.type, h.coding, h.filters, h.interlace})
        bytes += static_cast<char>(field);
    return nxHex("89504E470D0A1A0A") + chunk("IHDR", bytes);
}

std::string const end = chunk("IEND", "");

// The pixels in one chunk, or a byte in each and one without any.
std::string idat(std::string const& stream, bool isSplit = false) {
    std::string chunks = isSplit ? chunk("IDAT", "") : chunk("IDAT", stream);
    for (char const ch : isSplit ? stream : "")
        chunks += chunk("IDAT", std::string(1, ch));
    return chunks;
}

std::string decoded(std::string const& bytes) {
    NX_IconImage icon;
    std::string const pixels = nxDecoded(icon, icon.imageOpen(nxBytes(bytes), nxSize(bytes), iconTypeIcon));
    EXPECT_TRUE(pixels.empty() || icon.imageIsPng() == 1);
    return pixels;
}

std::string const palette = chunkHex("PLTE", "FF0000 00FF00 0000FF");

TEST(Png, EveryKindOfPixel) {
    std::string const text = chunk("teXt", "that may be left out");
    std::tuple<char const*, Head, std::string, std::string, std::string> const rows[] = {
        {"gray, 1 bit", {9, 1, 1, 0}, text, "00 A580", "W K W K K W K W W"},
        {"gray, 2 bits", {4, 1, 2, 0}, "", "00 1B", "K 555555 AAAAAA W"},
        {"gray, 4 bits", {3, 1, 4, 0}, "", "00 0820", "K 888888 222222"},
        {"gray, 8 bits", {2, 1, 8, 0}, "", "01 80 7F", "Y W"},
        {"gray, 16 bits", {2, 1, 16, 0}, "", "01 80FF 7F01", "Y W"},
        {"colours, 8 bits", {2, 1, 8, 2}, palette + text, "01 FF0000 01FF00", "R G"},
        {"colours, 16 bits", {2, 1, 16, 2}, "", "01 FFFF00000000 0101FFFF0000", "R G"},
        {"palette, 1 bit", {2, 1, 1, 3}, chunkHex("PLTE", "FF0000 00FF00"), "00 40", "R G"},
        {"palette, index behind it", {4, 1, 2, 3}, palette, "00 1B", "R G B K"},
        {"palette, 4 bits", {3, 1, 4, 3}, palette, "00 0120", "R G B"},
        {"palette, 8 bits", {3, 1, 8, 3}, palette + chunkHex("tRNS", "8000"), "01 00 01 01", "R80 G00 B"},
        {"gray and alpha, 8 bits", {2, 1, 8, 4}, "", "01 8080 7F80", "Y80 W00"},
        {"gray and alpha, 16 bits", {2, 1, 16, 4}, "", "01 80008000 7F007FFF", "Y80 W"},
        {"colours and alpha, 8 bits", {2, 1, 8, 6}, palette, "01 FF000080 01FF0080", "R80 G00"},
        {"colours and alpha, 16 bits", {2, 1, 16, 6}, "", "01 FFFF000000008012 0101FFFF00007F00", "R80 G"},
        {"one gray is transparent", {4, 1, 2, 0}, chunkHex("tRNS", "FFFE"), "00 1B", "K 555555 AAAAAA00 W"},
        {"one gray of 16 bits", {2, 1, 16, 0}, chunkHex("tRNS", "80FF"), "00 80FF 8000", "Y00 Y"},
        {"one colour", {2, 1, 8, 2}, chunkHex("tRNS", "00FF 0000 AA00"), "00 FF0000 FF0001", "R00 FF0001"},
        {"16 bits", {2, 1, 16, 2}, chunkHex("tRNS", "0000FFFF0000"), "00 0000FFFF0000 0000FFFE0000", "G00 G"},
        {"filter 0", {3, 2, 8, 0}, "", "00 1020F0 00 3008FF", "101010 202020 F0F0F0 / 303030 080808 W"},
        {"filter 1", {3, 2, 8, 0}, "", "01 1010D0 01 30D8F7", "101010 202020 F0F0F0 / 303030 080808 W"},
        {"filter 2", {3, 2, 8, 0}, "", "02 1020F0 02 20E80F", "101010 202020 F0F0F0 / 303030 080808 W"},
        {"filter 3", {3, 2, 8, 0}, "", "03 1018E0 03 28E083", "101010 202020 F0F0F0 / 303030 080808 W"},
        {"filter 4", {3, 2, 8, 0}, "", "04 1010D0 04 20D80F", "101010 202020 F0F0F0 / 303030 080808 W"},
        {"passes", {3, 3, 2, 3, 1}, palette, "0000 0080 0080 0040 00C0 006C", "R G B / G B K / B K R"},
        {"fewer passes", {1, 5, 2, 3, 1}, palette, "0000 0000 0080 0040 00C0", "R / G / B / K / R"},
    };
    for (auto const& [name, kind, chunks, lines, pixels] : rows) {
        std::string const stream = packed(nxHex(lines));
        for (bool const isSplit : {false, true})
            EXPECT_EQ(decoded(head(kind) + chunks + idat(stream, isSplit) + end), pixels) << name << isSplit;
        std::string const few = packed(nxHex(lines).substr(1));
        EXPECT_EQ(decoded(head(kind) + chunks + idat(few) + end), "") << name;
    }
    unsigned int depths = 0; // 0 after a failure
    for (int n = 0; n < 9 * 34; ++n) {
        NX_IconImage icon;
        icon.imageOpen(nxBytes(head({1, 1, n % 34, n / 34})), 33, iconTypeIcon);
        depths += icon.imageDepth();
    }
    EXPECT_EQ(depths, 1u + 2 + 4 + 8 + 16 + 24 + 48 + 1 + 2 + 4 + 8 + 16 + 32 + 32 + 64);
}

// Streams of the pixels G G G G G G G B, behind the filter's byte, made bit by bit.
TEST(Png, EveryKindOfStream) {
    // Fixed codes and a copy of what it makes; blocks as they are, one of them empty; codes of its own, one
    // distance; codes of 15 bits, no distance; lengths that are repeated; more than the image needs, twice.
    std::istringstream good(R"(
        636084002600 000400FBFF00010101000000FFFF010500FAFF0101010102 25C0B10D0000008230F4FFA31928CB05
        05E04B9224C9B22CCBBE7BC680C4A2E691B5F6FC67F9E0FFF7FFFD7FFFDFFFF7FFFD7FFFDFFFFBFF03
        0500070D0000C4FFF48F6B80888888F4 62008C919191919191912937BF281500 010B00F4FF0001010101010101020303 )");
    // A block cut, of no kind, whose length and check differ; a copy from before the beginning; a length and
    // a distance that are none, a distance without a code; a byte too few; no end. Codes: too many, left
    // over, none for the end; distances left over; zeros past the last, a repetition of nothing; codes of
    // codes left over; 287 lengths; 31 distances.
    std::istringstream bad(R"(
        010B00F4FF0001 07 010900F6FE000101010101010102 636084202600 63601C034C00 6360843C00800900
        25C0B10D0000008230F4FFA31928EB05 63606464646464640400 63606464646464646402
        25C0B10D0000008230F0FFA31928CB05 25C0B10D0000008230F4FFA31D28CB05 25C0B10D00000082B0E2FF4767B02C17
        25C0B10D0000008230F4FFA31980E502 25C0B10D0000008230F4FFA31918582E 25000425582E 25000484E502
        F5C0B10D0000008230F4FFA319F8A32C17 25DEB10D0000008230F4FFA319E8272C17 )");
    std::string const begin = head({8, 1, 8, 3}) + palette;
    std::string const sum = nxHex("002E000A");
    int qty = 0;
    for (std::istringstream* streams : {&good, &bad})
        for (std::string stream; *streams >> stream; ++qty)
            for (bool const isSplit : {false, true})
                EXPECT_EQ(decoded(begin + idat(nxHex("7801" + stream) + sum, isSplit) + end),
                          streams == &good ? "G G G G G G G B" : "")
                    << stream;
    EXPECT_EQ(qty, 7 + 18);
    std::string const stream = nxHex("636084002600");
    for (char const* first : {"7800", "7901", "7821", "8805"}) // check, method, dictionary, window
        EXPECT_EQ(decoded(begin + idat(nxHex(first) + stream + sum)), "") << first;
    EXPECT_EQ(decoded(begin + idat(nxHex("7801") + stream + nxHex("002E000B"))), "");
}

TEST(Png, WhatBelongsTogether) {
    std::string const begin = head({1, 1, 8, 3});
    std::string const pixel = idat(packed(nxHex("0001")));
    std::string const gray = head({1, 1, 8, 0});
    std::string const half = idat(packed("").substr(0, 2));
    EXPECT_EQ(decoded(begin + palette + pixel), "G") << "no end";
    EXPECT_EQ(decoded(begin + palette + pixel + "what is this?"), "G") << "damage behind the pixels";
    EXPECT_EQ(decoded(begin + palette + chunk("tRNS", "") + pixel), "G") << "no transparency told";
    std::pair<char const*, std::vector<std::string>> const damaged[] = {
        {"no palette, two of them, none in it, part of a colour, too many, too many for the bits, for grays",
         {begin + pixel, begin + palette + palette + pixel, begin + chunk("PLTE", "") + pixel,
          begin + chunk("PLTE", "abcd") + pixel, begin + chunk("PLTE", std::string(257 * 3, 'x')) + pixel,
          head({1, 1, 1, 3}) + palette + idat(packed(nxHex("0000"))), gray + palette + pixel}},
        {"transparency before the palette, also without any, more than it, twice, of a wrong size, with "
         "alpha",
         {begin + chunk("tRNS", "x") + palette + pixel, begin + chunk("tRNS", "") + palette + pixel,
          begin + palette + chunk("tRNS", "1234") + pixel,
          gray + chunk("tRNS", "ab") + chunk("tRNS", "ab") + pixel, gray + chunk("tRNS", "abcdef") + pixel,
          head({1, 1, 8, 4}) + chunk("tRNS", "ab") + idat(packed(nxHex("000000")))}},
        {"a chunk that must be known, two headers, no pixels, behind the end, apart, filter 5",
         {begin + palette + chunk("TEXT", "") + pixel, begin + begin.substr(8) + palette + pixel,
          begin + palette + end, begin + palette + end + pixel,
          begin + palette + half + chunk("teXt", "") + pixel, begin + palette + idat(packed(nxHex("0501")))}},
        {"three orders of rows, another coding, other filters, no width, no height, sizes that wrap, to a "
         "few, cut",
         {head({1, 1, 8, 3, 2}) + palette + pixel, head({1, 1, 8, 3, 0, 1}) + palette + pixel,
          head({1, 1, 8, 3, 0, 0, 1}) + palette + pixel, head({0, 1, 8, 3}) + palette + pixel,
          head({1, 0, 8, 3}) + palette + pixel, head({0x80000000, 2, 8, 3}) + palette + pixel,
          head({0x10000001, 0x10, 8, 3}) + palette + pixel, begin.substr(0, begin.size() - 1)}}};
    for (auto const& [names, files] : damaged)
        for (std::string const& bytes : files)
            EXPECT_EQ(decoded(bytes), "") << names << ": " << testing::PrintToString(bytes);
    // 2^24 pixels, whose rows have 2101248 bytes; a byte of data makes 1032 of them at most.
    static std::tuple<std::uint32_t, unsigned int, int> const sizes[] = {
        {4096, 2037, 0}, {4096, 2036, errorNumImage}, {4097, 9000, errorNumImage}};
    for (auto const& [height, size, error] : sizes) {
        std::string bytes = head({4096, height, 1, 0});
        bytes.resize(size, 'x');
        NX_IconImage icon;
        EXPECT_EQ(icon.imageOpen(nxBytes(bytes), size, iconTypeIcon), error) << size;
    }
}

// A picture in two forms. Every cut and every changed byte of the file is noticed; of the stream, with sums
// of the chunks that fit, it is noticed or gives an image of this size.
TEST(Png, EveryCutAndEveryChangedByte) {
    std::string const file = nxResTestFile("disc.ico");
    std::size_t const second = file.rfind("\x89PNG");
    std::string const forms[] = {file.substr(38, second - 38), file.substr(second)};
    std::string const pixels = decoded(forms[0]);
    EXPECT_EQ(decoded(forms[1]), pixels);
    EXPECT_NE(pixels.find("K00 / K00 K00 K00 33224080 44224080 552240 "), std::string::npos);
    for (std::string const& form : forms) {
        nxDamageEach(form, [&](std::string const& bytes, std::size_t at) {
            EXPECT_EQ(decoded(bytes), at < form.size() - end.size() ? "" : pixels) << at;
        });
        std::string stream;
        for (std::size_t at = form.find("IDAT"); at != std::string::npos; at = form.find("IDAT", at + 4))
            stream += form.substr(at + 4, nxBytes(form)[at - 1] + 256u * nxBytes(form)[at - 2]);
        std::string const begin = form.substr(0, form.find("IDAT") - 4);
        EXPECT_EQ(decoded(begin + idat(stream)), pixels);
        nxDamageEach(stream, [&](std::string const& bytes, std::size_t at) {
            std::string const made = decoded(begin + idat(bytes));
            bool const isCut = bytes.size() == at;
            EXPECT_TRUE(made.empty() || (!isCut && std::count(made.begin(), made.end(), '/') == 15)) << at;
        });
    }
}

} // namespace
