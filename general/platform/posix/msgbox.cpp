// general/platform/posix/msgbox.cpp - message boxes on standard error.
//
// The box is printed; the answer comes from the list in VX7_MESSAGE_REPLY (names of buttons, with commas
// between, used up one a box), else from the person at the terminal, else it is the button that refuses. A
// listed answer that the box does not offer is reported and counts as a refusal. Nothing here takes memory: a
// box may be about its running short.
#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <mutex>
#include <string_view>

#include "general/platform/platform.h"
#include "general/platform/posix/seam.h"

namespace {

struct Button {
    int id;
    std::string_view name;
};

constexpr Button ok{IDOK, "ok"}, cancel{IDCANCEL, "cancel"}, abortButton{IDABORT, "abort"},
    retry{IDRETRY, "retry"}, ignore{IDIGNORE, "ignore"}, yes{IDYES, "yes"}, no{IDNO, "no"};

// By MB_TYPEMASK. `refuses` is the position of the button that agrees to nothing.
struct Box {
    Button buttons[3];
    unsigned int buttonQty;
    unsigned int refuses;
};
constexpr Box boxes[] = {
    {{ok}, 1, 0},
    {{ok, cancel}, 2, 1},
    {{abortButton, retry, ignore}, 3, 0},
    {{yes, no, cancel}, 3, 2},
    {{yes, no}, 2, 1},
    {{retry, cancel}, 2, 1},
};

void print(std::string_view text) {
    while (!text.empty()) {
        ssize_t const done =
            nxSeamRepeat([text] { return nxSeam.write(STDERR_FILENO, text.data(), text.size()); });
        if (done <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(done));
    }
}

// One line from standard input, in lower case and without blanks; of a long one the beginning. False at the
// end of the input.
struct Line {
    char text[16];
    std::size_t length = 0;

    bool read() {
        length = 0;
        for (;;) {
            char c = 0;
            if (nxSeamRepeat([&c] { return nxSeam.read(STDIN_FILENO, &c, 1); }) <= 0)
                return false;
            if (c == '\n')
                return true;
            if (std::isspace(static_cast<unsigned char>(c)) == 0 && length < sizeof text)
                text[length++] = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }

    std::string_view view() const { return {text, length}; }
};

// The listed answer for the next box; false when there is no list or it is used up. A list with another text
// than before starts anew.
bool replyTake(std::string_view& reply) {
    static std::size_t listHash = 0;
    static std::size_t used = 0;
    char const* const value = std::getenv("VX7_MESSAGE_REPLY");
    std::string_view const list = value != nullptr ? value : "";
    if (std::size_t const hash = std::hash<std::string_view>()(list); hash != listHash) {
        listHash = hash;
        used = 0;
    }
    if (used >= list.size())
        return false;
    std::size_t const end = list.find(',', used);
    reply = list.substr(used, end - used);
    used = end == std::string_view::npos ? list.size() : end + 1;
    return true;
}

// The position of the button with this name, or with this first letter; buttonQty when there is none.
unsigned int buttonFind(Box const& box, std::string_view name, bool letterDoes) {
    for (unsigned int i = 0; i < box.buttonQty; ++i) {
        std::string_view const button = box.buttons[i].name;
        if (name == button || (letterDoes && name == button.substr(0, 1)))
            return i;
    }
    return box.buttonQty;
}

unsigned int terminalAsk(Box const& box, unsigned int preset) {
    for (Line line;;) {
        for (unsigned int i = 0; i < box.buttonQty; ++i) {
            print(i > 0 ? ", " : "");
            print(box.buttons[i].name);
            print(i == preset ? " [Enter]" : "");
        }
        print("? ");
        if (!line.read()) {
            print("\n");
            return box.refuses;
        }
        unsigned int const chosen = line.length == 0 ? preset : buttonFind(box, line.view(), true);
        if (chosen < box.buttonQty)
            return chosen;
    }
}

unsigned int boxAnswer(Box const& box, UINT type) {
    std::string_view reply;
    if (replyTake(reply)) {
        unsigned int const chosen = buttonFind(box, reply, false);
        if (chosen < box.buttonQty)
            return chosen;
        print("VX7_MESSAGE_REPLY: the box has no button ");
        print(reply);
        print("\n");
        return box.refuses;
    }
    if (nxSeam.isTerminal(STDIN_FILENO) == 0 || nxSeam.isTerminal(STDERR_FILENO) == 0)
        return box.refuses;
    unsigned int const preset = (type >> 8) & 0xFu;
    return terminalAsk(box, preset < box.buttonQty ? preset : 0);
}

} // namespace

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT type) {
    UINT const kind = type & MB_TYPEMASK;
    if (kind >= std::size(boxes)) {
        SetLastError(ERROR_INVALID_MSGBOX_STYLE);
        return 0;
    }
    // One box at a time: the answers of two threads do not mix.
    static constinit std::mutex mutex;
    std::lock_guard const guard(mutex);
    print(caption != nullptr ? caption : "Error");
    print(": ");
    print(text != nullptr ? text : "");
    print("\n");
    Box const& box = boxes[kind];
    return box.buttons[boxAnswer(box, type)].id;
}

int _isatty(int descriptor) {
    return nxSeam.isTerminal(descriptor);
}

HWND GetDesktopWindow() {
    // A name for the desktop, never followed.
    static char desktop;
    return reinterpret_cast<HWND>(&desktop);
}

void FatalAppExitA(UINT, LPCSTR text) {
    if (text != nullptr) {
        print(text);
        print("\n");
    }
    ::_exit(1);
}
