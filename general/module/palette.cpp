#include "general/module/palette.h"

#include <vector>

#include "general/error/errorman.h"
#include "general/platform/platform.h"

namespace {

constexpr unsigned int colorsMax = 256;
constexpr WORD paletteVersion = 0x300;

int raise(unsigned long sys, unsigned int line) {
    NxErrorTypeOfSys(static_cast<long>(sys)); // the generic error records it as S
    return NxERROR(errorNumSystem, "general/module/palette", line);
}

void paletteRelease(void* hand) {
    DeleteObject(hand);
}

NXS_ResHand::Made paletteMake(void const* context) {
    NX_ColorVec const& colors = *static_cast<NX_ColorVec const*>(context);
    unsigned int const qty = colors.itemQty();
    if (qty == 0 || qty > colorsMax) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    std::vector<unsigned char> block(sizeof(LOGPALETTE) + qty * sizeof(PALETTEENTRY));
    auto* const palette = reinterpret_cast<LOGPALETTE*>(block.data());
    palette->palVersion = paletteVersion;
    palette->palNumEntries = static_cast<WORD>(qty);
    PALETTEENTRY* const entries = palette->palPalEntry;
    for (unsigned int n = 0; n < qty; ++n)
        entries[n] = {static_cast<BYTE>(colors[n].colorRed()), static_cast<BYTE>(colors[n].colorGreen()),
                      static_cast<BYTE>(colors[n].colorBlue()), 0};
    return {CreatePalette(palette), paletteRelease};
}

} // namespace

NX_Palette::NX_Palette(NX_ColorVec const& colors) : colors_(colors) {
    hand_.handInit();
}

HPALETTE NX_Palette::paletteHand() const {
    SetLastError(0);
    auto const hand = static_cast<HPALETTE>(hand_.handGet(paletteMake, &colors_).hand);
    if (hand == nullptr)
        raise(GetLastError(), __LINE__);
    return hand;
}

int NX_Palette::colorNearestSys(NX_Color color, NX_Color& nearest) const {
    HPALETTE const palette = paletteHand();
    if (palette == nullptr)
        return -1;
    HDC const dc = GetDC(nullptr);
    if (dc == nullptr)
        return raise(GetLastError(), __LINE__);
    HPALETTE const before = SelectPalette(dc, palette, FALSE);
    RealizePalette(dc);
    COLORREF const found = GetNearestColor(dc, color.colorWord());
    DWORD const code = GetLastError();
    SelectPalette(dc, before, FALSE);
    ReleaseDC(nullptr, dc);
    if (found == CLR_INVALID)
        return raise(code, __LINE__);
    nearest = NX_Color::colorOfWord(found);
    return 0;
}

HBRUSH NxColorBrushSys(NX_Color color) {
    SetLastError(0);
    HBRUSH const brush = CreateSolidBrush(color.colorWord());
    if (brush == nullptr)
        raise(GetLastError(), __LINE__);
    return brush;
}
