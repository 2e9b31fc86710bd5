// general/platform/posix/screen.h - the Win32 calls about what is on a screen, for systems without them.
//
// There is no screen behind them: colours and sizes of the system's parts are those of the default scheme,
// everything that would make a thing fails with ERROR_NOT_SUPPORTED.
#pragma once

#include "general/platform/fwdscreen.h"
#include "general/platform/posix/types.h"

using HCURSOR = HICON;
using HGDIOBJ = void*;
using COLORREF = DWORD; // 0x00BBGGRR

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

struct PALETTEENTRY {
    BYTE peRed;
    BYTE peGreen;
    BYTE peBlue;
    BYTE peFlags;
};

struct LOGPALETTE {
    WORD palVersion;
    WORD palNumEntries;
    PALETTEENTRY palPalEntry[1];
};

struct ACCEL {
    BYTE fVirt;
    WORD key;
    WORD cmd;
};
static_assert(sizeof(ACCEL) == 6);

inline constexpr DWORD CBM_INIT = 4;
inline constexpr UINT DIB_RGB_COLORS = 0;
inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFFu;
inline constexpr DWORD GDI_ERROR = 0xFFFFFFFFu;
inline constexpr int SM_CXICON = 11;
inline constexpr int SM_CYICON = 12;
inline constexpr int SM_CXCURSOR = 13;
inline constexpr int SM_CYCURSOR = 14;
inline constexpr int SM_CXSMICON = 49;
inline constexpr int SM_CYSMICON = 50;

// Answered.
NX_EXPORT DWORD GetSysColor(int part);
NX_EXPORT int GetSystemMetrics(int index); // the sizes above; 0 for others

// Refused with 50: null, FALSE, 0, or the call's own value for a failure.
NX_EXPORT HMENU LoadMenuA(HINSTANCE module, LPCSTR name);
NX_EXPORT HICON LoadIconA(HINSTANCE module, LPCSTR name);
NX_EXPORT HCURSOR LoadCursorA(HINSTANCE module, LPCSTR name);
NX_EXPORT HBITMAP LoadBitmapA(HINSTANCE module, LPCSTR name);
NX_EXPORT HICON CreateIconFromResource(BYTE* data, DWORD size, BOOL isIcon, DWORD version);
NX_EXPORT HBITMAP CreateDIBitmap(HDC dc, BITMAPINFOHEADER const* header, DWORD flags, void const* bits,
                                 BITMAPINFO const* info, UINT usage);
NX_EXPORT HACCEL CreateAcceleratorTableA(ACCEL* entries, int qty);
NX_EXPORT BOOL DestroyIcon(HICON icon);
NX_EXPORT BOOL DestroyMenu(HMENU menu);
NX_EXPORT BOOL DestroyAcceleratorTable(HACCEL table);
NX_EXPORT BOOL DeleteObject(HGDIOBJ object);
NX_EXPORT HDC GetDC(HWND window);
NX_EXPORT int ReleaseDC(HWND window, HDC dc);
NX_EXPORT HPALETTE CreatePalette(LOGPALETTE const* palette);
NX_EXPORT HPALETTE SelectPalette(HDC dc, HPALETTE palette, BOOL inBackground);
NX_EXPORT UINT RealizePalette(HDC dc);
NX_EXPORT COLORREF GetNearestColor(HDC dc, COLORREF color);
NX_EXPORT HBRUSH CreateSolidBrush(COLORREF color);
