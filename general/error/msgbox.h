// general/error/msgbox.h - message boxes in front of the application's main window.
//
// The box is shown by the constructor, which waits for the user's answer; the object keeps it. An application
// must be registered to own the box; without one the box has no owner window. Texts and captions reach it
// unchanged.
#pragma once

#include "general/platform/fwd.h"
#include "general/text/stringa.h"

class NX_ErrorMan;

class NX_EXPORT NX_WinMessageBox {
public:
    // `style` is the system's message box style word.
    NX_WinMessageBox(NX_StringA const& text, NX_StringA const& caption, int style);

    int replyIsAbort() const { return reply == 3; } // 1 or 0; all are 0 after OK
    int replyIsCancel() const { return reply == 2; }
    int replyIsIgnore() const { return reply == 5; }
    int replyIsNo() const { return reply == 7; }
    int replyIsRetry() const { return reply == 4; }
    int replyIsYes() const { return reply == 6; }

private:
    int messageBox(char const* text, char const* caption, int style);

    int reply; // what the system returned; 0 when the box could not be shown
};

// A caption: "MSG", a message number of at least five digits, two blanks and the application's title.
class NX_EXPORT NX_WinMessageBoxTitle : public NX_StringA {
public:
    explicit NX_WinMessageBoxTitle(int messageNumber);
    NX_WinMessageBoxTitle(NX_StringA const& caption) : NX_StringA(caption) {}
    NX_WinMessageBoxTitle(NX_WinMessageBoxTitle const&) = default;
    NX_WinMessageBoxTitle& operator=(NX_WinMessageBoxTitle const&) = default;
    NX_WinMessageBoxTitle& operator=(NX_StringA const& caption) {
        NX_StringA::operator=(caption);
        return *this;
    }
    virtual ~NX_WinMessageBoxTitle();
};

// Shows the manager's error: its message under the number of the message's string resource, with one OK
// button.
class NX_EXPORT NX_WinMessageBoxError : public NX_WinMessageBox {
public:
    explicit NX_WinMessageBoxError(NX_ErrorMan const* manager);
};
