// general/module/color.h - colours: values, names, the colours of the system's parts, and lists of them.
//
// A colour is red, green and blue, 0 to 255 each; the system's word for it is 0x00BBGGRR. Ownership: values.
// Threads: as of values. Failure: only colorSet reports to the error manager.
#pragma once

#include <cstdint>

#include "general/collm/v4x.h"
#include "general/text/stringa.h"

// The system's parts that have a colour.
enum NX_ColorSys : int {
    colorSysScrollBar = 0,
    colorSysDesktop = 1,
    colorSysActiveCaption = 2,
    colorSysInactiveCaption = 3,
    colorSysMenu = 4,
    colorSysWindow = 5,
    colorSysWindowFrame = 6,
    colorSysMenuText = 7,
    colorSysWindowText = 8,
    colorSysCaptionText = 9,
    colorSysActiveBorder = 10,
    colorSysInactiveBorder = 11,
    colorSysAppWorkspace = 12,
    colorSysHighlight = 13,
    colorSysHighlightText = 14,
    colorSysButtonFace = 15,
    colorSysButtonShadow = 16,
    colorSysGrayText = 17,
    colorSysButtonText = 18,
    colorSysInactiveCaptionText = 19,
    colorSysButtonHighlight = 20,
    colorSysDarkShadow = 21,
    colorSysLight = 22,
    colorSysInfoText = 23,
    colorSysInfoBack = 24,
    colorSysHotLight = 26,
    colorSysGradientActiveCaption = 27,
    colorSysGradientInactiveCaption = 28,
    colorSysMenuHighlight = 29,
    colorSysMenuBar = 30
};

class NX_EXPORT NX_Color {
public:
    NX_Color() = default; // black
    NX_Color(unsigned char red, unsigned char green, unsigned char blue)
        : word_(red | std::uint32_t{green} << 8 | std::uint32_t{blue} << 16) {}

    static NX_Color colorOfWord(unsigned long word); // the highest byte is dropped

    // What the system paints a part with; black for a number that is no part's. Off Windows the default
    // scheme's colour.
    static NX_Color colorSys(int part);

    unsigned int colorWord() const { return word_; } // 0x00BBGGRR
    unsigned int colorRed() const { return word_ & 0xFF; }
    unsigned int colorGreen() const { return word_ >> 8 & 0xFF; }
    unsigned int colorBlue() const { return word_ >> 16; }

    // Takes "#RRGGBB" (hexadecimal) or a name, without regard to the case of letters. 0; -1 with the colour
    // unchanged and error 6144 (invalid input) with T, the text. Names are the sixteen of HTML 4.01,
    // "orange", and "cyan", "grey" and "magenta".
    int colorSet(NX_StringA const& text);

    NX_StringA colorText() const; // "#RRGGBB", capitals
    NX_StringA colorName() const; // in small letters, one of the sixteen first; empty without a name

    // The sum of the squared differences of red, green and blue.
    unsigned long colorDistance(NX_Color other) const;

    friend bool operator==(NX_Color const&, NX_Color const&) = default;

private:
    std::uint32_t word_ = 0;
};
static_assert(sizeof(NX_Color) == 4);

class NX_EXPORT NX_ColorVec : public NX_VecT<NX_Color> {
public:
    using NX_VecT::NX_VecT;

    // The index of the colour that is nearest by colorDistance, the first of several; NX_NO_INDEX in an empty
    // list.
    unsigned int colorNearest(NX_Color color) const;
};
