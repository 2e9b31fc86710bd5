// Private header. general/error/appup.h - what the lower floors ask of the registered application object.
// The module floor defines these functions; all of them work without an application.
#pragma once

#include "general/text/stringa.h"

// The message template of error `num`: the application's appErrorString, or the built-in tables alone when no
// application is registered.
NX_StringA nxAppErrorString(int num);

// Texts of the application, terminated: its short name and its title, empty when none is registered; its full
// name, then null. Each lives as long as the application keeps it. They are no strings, because any thread
// asks for them and copying a string counts in the one that is copied.
char const* nxAppNameP();
char const* nxAppTitleP();
char const* nxAppNameFullP();

// The application's main window, or null.
HWND nxAppWinMainHand();

// The identifier of the application's primary thread object; 0 when there is none.
unsigned int nxAppThreadId();
