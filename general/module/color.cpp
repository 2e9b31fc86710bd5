#include "general/module/color.h"

#include "general/error/errorman.h"
#include "general/platform/platform.h"

namespace {

struct ColorName {
    char const* name;
    NX_Color color;
};

// HTML 4.01, section 6.5; CSS 2.1, section 4.3.6; the last three are other names of the same colours in the
// CSS Color Module. The first name of a colour is the one that colorName gives.
ColorName const colorNames[] = {
    {"black", {0, 0, 0}},       {"silver", {192, 192, 192}}, {"gray", {128, 128, 128}},
    {"white", {255, 255, 255}}, {"maroon", {128, 0, 0}},     {"red", {255, 0, 0}},
    {"purple", {128, 0, 128}},  {"fuchsia", {255, 0, 255}},  {"green", {0, 128, 0}},
    {"lime", {0, 255, 0}},      {"olive", {128, 128, 0}},    {"yellow", {255, 255, 0}},
    {"navy", {0, 0, 128}},      {"blue", {0, 0, 255}},       {"teal", {0, 128, 128}},
    {"aqua", {0, 255, 255}},    {"orange", {255, 165, 0}},   {"cyan", {0, 255, 255}},
    {"grey", {128, 128, 128}},  {"magenta", {255, 0, 255}},
};

// The value of a hexadecimal digit; 16 for another character.
unsigned int digitValue(char ch) {
    if (ch >= '0' && ch <= '9')
        return static_cast<unsigned int>(ch - '0');
    char const small = static_cast<char>(ch | 0x20);
    return small >= 'a' && small <= 'f' ? static_cast<unsigned int>(small - 'a') + 10 : 16;
}

} // namespace

NX_Color NX_Color::colorOfWord(unsigned long word) {
    NX_Color color;
    color.word_ = static_cast<std::uint32_t>(word & 0x00FFFFFFu);
    return color;
}

NX_Color NX_Color::colorSys(int part) {
    return colorOfWord(GetSysColor(part));
}

int NX_Color::colorSet(NX_StringA const& text) {
    if (text.strLen() == 7 && text[0] == '#') {
        std::uint32_t value = 0;
        unsigned int n = 1;
        for (; n < 7 && digitValue(text[n]) < 16; ++n)
            value = value << 4 | digitValue(text[n]);
        if (n == 7) {
            word_ = value >> 16 | (value & 0xFF00) | (value & 0xFF) << 16;
            return 0;
        }
    }
    for (ColorName const& known : colorNames) {
        if (text.strCompare(known.name, NX_CompareFold) == 0) {
            *this = known.color;
            return 0;
        }
    }
    NxERROR(errorTypeUserInput, "general/module/color", __LINE__);
    return NxErrorBufText(text.dataPConst());
}

NX_StringA NX_Color::colorText() const {
    NX_StringA text;
    text.strPrintF("#%02X%02X%02X", colorRed(), colorGreen(), colorBlue());
    return text;
}

NX_StringA NX_Color::colorName() const {
    for (ColorName const& known : colorNames) {
        if (known.color == *this)
            return known.name;
    }
    return {};
}

unsigned long NX_Color::colorDistance(NX_Color other) const {
    auto const square = [](unsigned int a, unsigned int b) {
        int const difference = static_cast<int>(a) - static_cast<int>(b);
        return static_cast<unsigned long>(difference * difference);
    };
    return square(colorRed(), other.colorRed()) + square(colorGreen(), other.colorGreen()) +
           square(colorBlue(), other.colorBlue());
}

unsigned int NX_ColorVec::colorNearest(NX_Color color) const {
    unsigned int best = NX_NO_INDEX;
    unsigned long bestDistance = 0;
    for (unsigned int n = 0; n < itemQty(); ++n) {
        unsigned long const distance = itemPConst(n)->colorDistance(color);
        if (best == NX_NO_INDEX || distance < bestDistance) {
            best = n;
            bestDistance = distance;
        }
    }
    return best;
}
