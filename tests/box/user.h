// tests/box/user.h - the person in front of the message boxes of a child process.
//
// Each system has its own ways to see a box and to answer it; user_terminal.cpp and user_screen.cpp hold
// those of one system. The flows of boxes and the tasks that show them are the same everywhere.
#pragma once

#include <optional>
#include <string>
#include <vector>

// What a person sees of a box. What one way does not show is left out.
struct NXS_Box {
    std::string caption;
    std::string text;
    std::optional<std::string> buttons; // in lower case, the preset one marked: "retry [Enter], cancel"
    std::optional<std::string> manner;  // "icon" with an icon, "icon, on top" also above all other programs
};

// The button's name; Enter; or turning away from the box (end of input, Escape, an answer it does not offer),
// which is answered as a refusal.
inline constexpr char const* nxEnter = "enter";
inline constexpr char const* nxTurnAway = "leave";

struct NXS_Step {
    NXS_Box box;
    char const* answer;
};

struct NXS_Flow {
    char const* task;
    std::vector<std::string> arguments;
    std::vector<NXS_Step> steps;
};

struct NXS_Outcome {
    std::vector<NXS_Box> boxes;
    std::string last;  // a text that was shown behind them, without a choice
    int end;           // the child's exit code, -1 when it was aborted
    std::string fault; // what went wrong on the person's side
};

struct NXS_User {
    char const* name;
    NXS_Outcome (*run)(NXS_Flow const& flow); // starts the child and answers its boxes in order
};

std::vector<NXS_User> const& nxUsers();
