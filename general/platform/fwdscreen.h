// general/platform/fwdscreen.h - the handles of things on the screen, for public headers.
//
// Off Windows no such thing can be made, so that these handles are null there.
#pragma once

struct HACCEL__;
struct HBITMAP__;
struct HBRUSH__;
struct HDC__;
struct HICON__;
struct HMENU__;
struct HPALETTE__;
using HACCEL = HACCEL__*;
using HBITMAP = HBITMAP__*;
using HBRUSH = HBRUSH__*;
using HDC = HDC__*;
using HICON = HICON__*; // cursors have handles of the same type
using HMENU = HMENU__*;
using HPALETTE = HPALETTE__*;
