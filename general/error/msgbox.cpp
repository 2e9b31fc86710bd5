// general/error/msgbox.cpp - message boxes.
#include "general/error/msgbox.h"

#include "general/error/appup.h"
#include "general/error/errorman.h"
#include "general/platform/platform.h"

NX_WinMessageBox::NX_WinMessageBox(NX_StringA const& text, NX_StringA const& caption, int style)
    : reply(messageBox(text.dataPConst(), caption.dataPConst(), style)) {}

int NX_WinMessageBox::messageBox(char const* text, char const* caption, int style) {
    return MessageBoxA(nxAppWinMainHand(), text, caption, static_cast<UINT>(style));
}

NX_WinMessageBoxTitle::NX_WinMessageBoxTitle(int messageNumber) {
    strPrintF("MSG%05ld  %s", static_cast<long>(messageNumber), nxAppTitleP());
}

NX_WinMessageBoxTitle::~NX_WinMessageBoxTitle() = default;

// Hand icon, task-modal, one OK button.
NX_WinMessageBoxError::NX_WinMessageBoxError(NX_ErrorMan const* manager)
    : NX_WinMessageBox(manager->errorString(), NX_WinMessageBoxTitle((manager->errorNum() & 0x7FF) + 25000),
                       8208) {}
