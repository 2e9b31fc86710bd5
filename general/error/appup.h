// Private header. general/error/appup.h - what the lower floors ask of the registered application object.
// The module floor defines these functions; all of them work without an application.
#pragma once

#include "general/text/stringa.h"

// The message template of error `num`: the application's appErrorString, or the built-in tables alone when no
// application is registered.
NX_StringA nxAppErrorString(int num);

// The application's short name; empty when none is registered.
NX_StringA nxAppName();

// The application's full name as a terminated text, or null when none is registered. The text lives as long
// as the application keeps its name.
char const* nxAppNameFullP();

// The application's title; empty when none is registered.
NX_StringA nxAppTitle();

// The application's main window, or null.
HWND nxAppWinMainHand();

// The identifier of the application's primary thread object; 0 when there is none.
unsigned int nxAppThreadId();
