// What the lower floors ask of the registered application.
#include "general/error/appup.h"

#include "general/error/errorman.h"
#include "general/error/errortemplate.h"
#include "general/module/app.h"
#include "general/process/thread.h"

NX_StringA nxAppErrorString(int num) {
    NX_App* const app = NxAppPDll();
    return app != nullptr ? app->appErrorString(num) : nxErrorTemplateBuiltIn(num);
}

char const* nxAppNameP() {
    NX_App const* const app = NxAppPDll();
    return app != nullptr ? app->appName().dataPConst() : "";
}

char const* nxAppNameFullP() {
    NX_App const* const app = NxAppPDll();
    return app != nullptr ? app->appNameFull().dataPConst() : nullptr;
}

char const* nxAppTitleP() {
    NX_App const* const app = NxAppPDll();
    return app != nullptr ? app->appTitle().dataPConst() : "";
}

HWND nxAppWinMainHand() {
    NX_App const* const app = NxAppPDll();
    return app != nullptr ? app->appWinMainHand() : nullptr;
}

unsigned int nxAppThreadId() {
    NX_App const* const app = NxAppPDll();
    return app != nullptr && app->appThreadP() != nullptr ? app->appThreadP()->threadId() : 0;
}
