#include "general/module/resbitmap.h"

#include "general/module/resput.h"
#include "general/platform/platform.h"

namespace {

constexpr unsigned int fileHeaderSize = 14;

void bitmapRelease(void* hand) {
    DeleteObject(hand);
}

HBITMAP bitmapCreateSys(NX_Dib const& dib) {
    HDC const dc = GetDC(nullptr);
    if (dc == nullptr)
        return nullptr;
    auto const* const info = reinterpret_cast<BITMAPINFO const*>(dib.dataP());
    HBITMAP const hand =
        CreateDIBitmap(dc, &info->bmiHeader, CBM_INIT, dib.dataP() + dib.dataOffBits(), info, DIB_RGB_COLORS);
    DWORD const code = GetLastError();
    ReleaseDC(nullptr, dc);
    SetLastError(code);
    return hand;
}

} // namespace

NX_ResBitmap::NX_ResBitmap(NX_ResLib const& lib, NX_ResKey const& key)
    : NX_ResObject(lib, resTypeBitmap, key) {
    if (resIsOk() != 0)
        resDecoded(dib_.dibOpen(resData().dataP(), resData().dataSize()));
}

int NX_ResBitmap::imagePixels(NX_Image& image) const {
    return resResult(resIsOk() != 0 ? dib_.imagePixels(image) : errorNum());
}

HBITMAP NX_ResBitmap::resHand() const {
    auto const make = [](void const* object) {
        auto const& self = *static_cast<NX_ResBitmap const*>(object);
        if (HINSTANCE const module = self.sysModule(); module != nullptr)
            return NXS_ResHand::Made{LoadBitmapA(module, self.sysName()), bitmapRelease};
        // The system is not told where the bytes end, and codes may run on: they are gone through first.
        NX_Image image;
        if (self.dib_.imageIsPacked() != 0 && self.imagePixels(image) != 0)
            return NXS_ResHand::Made{nullptr, nullptr, true};
        return NXS_ResHand::Made{bitmapCreateSys(self.dib_), bitmapRelease};
    };
    return static_cast<HBITMAP>(resHandP(make));
}

int NX_ResBitmap::fileData(NX_ByteVec& file) const {
    if (resIsOk() == 0)
        return resResult(errorNum());
    NX_ByteVec made;
    made.itemQty(fileHeaderSize + dib_.dataSize());
    NXS_ResPut put(made.dataPMod());
    put.u16(0x4D42);
    put.u32(fileHeaderSize + dib_.dataSize());
    put.u32(0);
    put.u32(fileHeaderSize + dib_.dataOffBits());
    put.bytes(dib_.dataP(), dib_.dataSize());
    file = made;
    return 0;
}
