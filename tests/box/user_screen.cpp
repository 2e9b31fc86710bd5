// On Windows a box is a window. It is read by its handle, and answered by the one in front of the screen: the
// script that runs this program presses the mouse or a key there, as asked for in the file press.txt.
#include "general/platform/platform.h"
#include "tests/box/user.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace {

constexpr DWORD deadlineMs = 60000;

DWORD_PTR asked(HWND window, UINT message, WPARAM one = 0, LPARAM two = 0) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutA(window, message, one, two, SMTO_ABORTIFHUNG, deadlineMs, &answer);
    return answer;
}

std::string textOf(HWND window) {
    char text[512] = "";
    asked(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

// The buttons of a box from left to right.
std::vector<HWND> buttonsOf(HWND box) {
    std::vector<HWND> buttons;
    for (HWND child = nullptr; (child = FindWindowExA(box, child, "Button", nullptr)) != nullptr;)
        if (IsWindowVisible(child))
            buttons.push_back(child);
    std::sort(buttons.begin(), buttons.end(), [](HWND a, HWND b) {
        RECT left;
        RECT right;
        return GetWindowRect(a, &left) && GetWindowRect(b, &right) && left.left < right.left;
    });
    return buttons;
}

std::string nameOf(HWND button) {
    std::string name = textOf(button);
    std::erase(name, '&');
    for (char& c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name;
}

NXS_Box seenOf(HWND box) {
    std::string buttons;
    for (HWND const button : buttonsOf(box)) {
        bool const preset = (GetWindowLongA(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
        buttons += (buttons.empty() ? "" : ", ") + nameOf(button) + (preset ? " [Enter]" : "");
    }
    std::string manner;
    for (HWND child = nullptr; (child = FindWindowExA(box, child, "Static", nullptr)) != nullptr;)
        if ((GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON && asked(child, STM_GETICON) != 0)
            manner = "icon";
    if ((GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0)
        manner += ", on top";
    return {textOf(box), textOf(GetDlgItem(box, 0xFFFF)), buttons, manner};
}

// The box on the screen once its buttons are there; null when the child ends first, or shows none within the
// time.
HWND boxAwait(NXS_Child& child) {
    for (DWORD const start = GetTickCount(); GetTickCount() - start < deadlineMs; Sleep(20)) {
        bool const running = child.isRunning();
        HWND const box = FindWindowA("#32770", nullptr);
        if (box != nullptr && IsWindowVisible(box) && !buttonsOf(box).empty())
            return box;
        if (!running)
            return nullptr;
    }
    return nullptr;
}

// Has the answer given and waits until the box is gone. What went wrong, or an empty text.
std::string press(HWND box, std::string const& caption, std::string const& answer) {
    RECT at;
    if (!GetWindowRect(box, &at))
        return "the box has no place";
    at = {at.left, at.bottom - 20, at.left + 20,
          at.bottom}; // for keys: its lower left corner, free of buttons
    std::string key = answer == nxEnter ? "Return" : answer == nxTurnAway ? "Escape" : "";
    for (HWND const button : buttonsOf(box))
        if (nameOf(button) == answer && GetWindowRect(button, &at))
            key = "-";
    if (key.empty())
        return "no button " + answer;
    nxFileMake("press.tmp", std::to_string((at.left + at.right) / 2) + " " +
                                std::to_string((at.top + at.bottom) / 2) + " " + key + "\n" + caption + "\n");
    std::filesystem::rename("press.tmp", "press.txt");
    for (DWORD const start = GetTickCount(); GetTickCount() - start < deadlineMs; Sleep(20))
        if (!IsWindow(box)) {
            // The answer of the one in front of the screen: the caption found there.
            nxFileAwait("pressed.txt");
            std::string const found = nxFileContent("pressed.txt");
            std::remove("pressed.txt");
            return found == caption + "\n" ? "" : "pressed at: " + found;
        }
    return "the box does not go: " + nxFileContent("pressed.txt");
}

NXS_Outcome atScreen(NXS_Flow const& flow) {
    NXS_Outcome outcome = {};
    std::remove("pressed.txt");
    NXS_Child child(flow.task, flow.arguments);
    while (HWND const box = boxAwait(child)) {
        NXS_Box const seen = seenOf(box);
        std::size_t const n = outcome.boxes.size();
        bool const further = n == flow.steps.size();
        if (further)
            outcome.last += seen.text;
        else
            outcome.boxes.push_back(seen);
        outcome.fault = press(box, seen.caption, further ? "ok" : flow.steps[n].answer);
        if (!outcome.fault.empty())
            break;
    }
    if (child.isRunning()) {
        outcome.fault += "; ended by force";
        child.kill();
    }
    int const code = child.wait();
    outcome.end = code == 3 ? -1 : code; // the run-time's abort ends with 3
    return outcome;
}

} // namespace

std::vector<NXS_User> const& nxUsers() {
    static std::vector<NXS_User> const users = {{"at the screen", atScreen}};
    return users;
}
