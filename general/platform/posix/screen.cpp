// general/platform/posix/screen.cpp - a system without a screen.
#include "general/platform/posix/screen.h"

#include <iterator>

#include "general/platform/posix/error.h"

namespace {

// The default scheme, by part; 0x00BBGGRR.
constexpr DWORD schemeColors[] = {
    0xFFFFFF, 0x956F25, 0xFA9632, 0x808080, 0xFFFFFF, 0xFFFFFF, 0x9E9E9E, 0x000000, //
    0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF, 0x808080, 0xFA9630, 0xFFFFFF, 0xF5F5F5, //
    0xA6A6A6, 0xA6A6A6, 0x000000, 0xC8C8C8, 0xFFFFFF, 0x6A6A6A, 0xE3E3E3, 0x000000, //
    0xFFFFFF, 0xFFFFFF, 0xE0E0E0, 0xFA9632, 0x808080, 0xFA9630, 0xFFFFFF,
};

// What no screen can show.
template <class T>
T refused(T failure = {}) {
    nxErrorSet(ERROR_NOT_SUPPORTED);
    return failure;
}

} // namespace

DWORD GetSysColor(int part) {
    return part >= 0 && part < static_cast<int>(std::size(schemeColors)) ? schemeColors[part] : 0;
}

int GetSystemMetrics(int index) {
    switch (index) {
    case SM_CXICON:
    case SM_CYICON:
    case SM_CXCURSOR:
    case SM_CYCURSOR:
        return 32;
    case SM_CXSMICON:
    case SM_CYSMICON:
        return 16;
    default:
        return 0;
    }
}

HMENU LoadMenuA(HINSTANCE, LPCSTR) {
    return refused<HMENU>();
}

HICON LoadIconA(HINSTANCE, LPCSTR) {
    return refused<HICON>();
}

HCURSOR LoadCursorA(HINSTANCE, LPCSTR) {
    return refused<HCURSOR>();
}

HBITMAP LoadBitmapA(HINSTANCE, LPCSTR) {
    return refused<HBITMAP>();
}

HICON CreateIconFromResource(BYTE*, DWORD, BOOL, DWORD) {
    return refused<HICON>();
}

HBITMAP CreateDIBitmap(HDC, BITMAPINFOHEADER const*, DWORD, void const*, BITMAPINFO const*, UINT) {
    return refused<HBITMAP>();
}

HACCEL CreateAcceleratorTableA(ACCEL*, int) {
    return refused<HACCEL>();
}

BOOL DestroyIcon(HICON) {
    return refused(FALSE);
}

BOOL DestroyMenu(HMENU) {
    return refused(FALSE);
}

BOOL DestroyAcceleratorTable(HACCEL) {
    return refused(FALSE);
}

BOOL DeleteObject(HGDIOBJ) {
    return refused(FALSE);
}

HDC GetDC(HWND) {
    return refused<HDC>();
}

int ReleaseDC(HWND, HDC) {
    return refused(0);
}

HPALETTE CreatePalette(LOGPALETTE const*) {
    return refused<HPALETTE>();
}

HPALETTE SelectPalette(HDC, HPALETTE, BOOL) {
    return refused<HPALETTE>();
}

UINT RealizePalette(HDC) {
    return refused(GDI_ERROR);
}

COLORREF GetNearestColor(HDC, COLORREF) {
    return refused(CLR_INVALID);
}

HBRUSH CreateSolidBrush(COLORREF) {
    return refused<HBRUSH>();
}
