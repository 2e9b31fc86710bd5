// general/module/palette.h - the system's palettes, brushes and nearest colours.
//
// NX_ColorVec (general/module/color.h) finds nearest colours by itself on every system; what is here asks the
// screen. Ownership: a palette is a value; copies share the system's palette, which the last of them
// releases. Threads: as of values. Failure: error 21060 with S, the system's code; 50 where there is no
// screen.
#pragma once

#include "general/module/color.h"
#include "general/module/resobject.h"

class NX_EXPORT NX_Palette {
public:
    explicit NX_Palette(NX_ColorVec const& colors);

    NX_ColorVec const& paletteColors() const { return colors_; }

    // The index of the nearest colour, by NX_ColorVec::colorNearest.
    unsigned int colorNearest(NX_Color color) const { return colors_.colorNearest(color); }

    // The system's palette of these colours, of which there may be 1 to 256; the object keeps it. Null on
    // failure (S 87 for another number of colours).
    HPALETTE paletteHand() const;

    // The colour that the screen shows for `color` with this palette selected: one of the palette's on a
    // screen with a palette, else whatever the screen can show. 0; -1 with `nearest` unchanged.
    int colorNearestSys(NX_Color color, NX_Color& nearest) const;

private:
    NX_ColorVec colors_;
    NXS_ResHand hand_;
};

// A brush of one colour. The caller releases it with DeleteObject. Null on failure.
NX_EXPORT HBRUSH NxColorBrushSys(NX_Color color);
