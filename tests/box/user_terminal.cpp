// Off Windows a box is a question at the terminal, or is answered by a list. The child runs at a
// pseudo-terminal of its own.
#include "general/error/log.h"
#include "tests/box/user.h"
#include "tests/support/child.h"
#include "tests/support/support.h"

#include <errno.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr int deadlineMs = 60000;

// A child task at its terminal.
class Terminal {
public:
    explicit Terminal(NXS_Flow const& flow) {
        std::vector<std::string> texts = {nxSelf(), "--child", flow.task};
        texts.insert(texts.end(), flow.arguments.begin(), flow.arguments.end());
        std::vector<char*> argv;
        for (std::string& text : texts)
            argv.push_back(text.data());
        argv.push_back(nullptr);
        termios quiet = {}; // lines of input, Ctrl-D ends it; nothing is echoed and the output stays as it is
        quiet.c_iflag = ICRNL;
        quiet.c_cflag = CS8 | CREAD;
        quiet.c_lflag = ICANON;
        quiet.c_cc[VEOF] = 4;
        pid_ = forkpty(&line_, nullptr, &quiet, nullptr);
        if (pid_ == 0) {
            execv(argv[0], argv.data());
            _exit(127);
        }
    }
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal() { end(); }

    // What appears until `mark` ends it or the child has ended.
    std::string read(char const* mark) {
        std::string text;
        pollfd line = {line_, POLLIN, 0};
        while (!text.ends_with(mark)) {
            if (poll(&line, 1, deadlineMs) == 0) {
                kill(pid_, SIGKILL);
                return text + "[nothing more within the time]";
            }
            char room[512];
            ssize_t const got = ::read(line_, room, sizeof room);
            if (got <= 0) // EIO: the child's side is closed
                break;
            text.append(room, static_cast<std::size_t>(got));
        }
        return text;
    }

    void type(std::string const& text) {
        EXPECT_EQ(write(line_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    // Waits for the child: its exit code, -1 when it was aborted.
    int end() {
        if (pid_ > 0) {
            int status = 0;
            waitpid(pid_, &status, 0);
            close(line_);
            pid_ = 0;
            code_ = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status) == SIGABRT ? -1 : -2;
        }
        return code_;
    }

private:
    int line_ = -1;
    pid_t pid_ = 0;
    int code_ = -2;
};

// "caption: text\n", as far as `end`; nothing else may stand there.
bool boxRead(std::string const& told, std::size_t end, NXS_Box& seen) {
    std::size_t const colon = told.find(": ");
    if (colon == std::string::npos || end == std::string::npos || end < colon + 2)
        return false;
    seen.caption = told.substr(0, colon);
    seen.text = told.substr(colon + 2, end - colon - 2);
    return true;
}

NXS_Outcome answered(NXS_Flow const& flow) {
    NXS_Outcome outcome = {};
    Terminal terminal(flow);
    std::string before;
    for (NXS_Step const& step : flow.steps) {
        std::string told = terminal.read("? ");
        if (told.starts_with(before))
            told.erase(0, before.size());
        NXS_Box seen;
        std::size_t const end = told.rfind('\n');
        if (!told.ends_with("? ") || !boxRead(told, end, seen)) {
            outcome.fault = "no question: " + told;
            break;
        }
        seen.buttons = told.substr(end + 1, told.size() - end - 3);
        outcome.boxes.push_back(seen);
        std::string const answer = step.answer;
        if (answer == nxTurnAway) {
            terminal.type("\4");
            before = "\n"; // the question's line is ended for the person
        } else {
            terminal.type(answer == nxEnter ? "\n" : answer + "\n");
            before = "";
        }
    }
    outcome.last = terminal.read("[]");
    if (outcome.last.ends_with('\n'))
        outcome.last.pop_back();
    outcome.end = terminal.end();
    return outcome;
}

// The name of the answer in a list.
std::string listed(NXS_Step const& step) {
    std::string const answer = step.answer;
    if (answer == nxTurnAway)
        return "nothing";
    if (answer != nxEnter)
        return answer;
    std::string const& buttons = *step.box.buttons;
    std::size_t const end = buttons.find(" [Enter]");
    std::size_t const begin = buttons.rfind(' ', end - 1) + 1; // 0 for the first
    return buttons.substr(begin, end - begin);
}

NXS_Outcome scripted(NXS_Flow const& flow) {
    std::string list;
    for (NXS_Step const& step : flow.steps)
        list += (list.empty() ? "" : ",") + listed(step);
    setenv("VX7_MESSAGE_REPLY", list.c_str(), 1);
    NXS_Outcome outcome = {};
    Terminal terminal(flow);
    unsetenv("VX7_MESSAGE_REPLY");
    std::string told = terminal.read("[]");
    for (NXS_Step const& step : flow.steps) {
        NXS_Box seen;
        std::size_t const end = told.find(step.box.text + "\n") + step.box.text.size();
        if (!boxRead(told, end < told.size() ? end : std::string::npos, seen)) {
            outcome.fault = "no box: " + told;
            break;
        }
        told.erase(0, end + 1);
        std::string const refused = "VX7_MESSAGE_REPLY: the box has no button nothing\n";
        if (step.answer == std::string(nxTurnAway) && told.starts_with(refused))
            told.erase(0, refused.size());
        outcome.boxes.push_back(seen);
    }
    if (told.ends_with('\n'))
        told.pop_back();
    outcome.last = told;
    outcome.end = terminal.end();
    return outcome;
}

// A list that is used up leaves the rest to the person at the terminal.
TEST(BoxTerminal, TheListComesFirst) {
    NXS_Flow const flow = {"show", {"5", "5"}, {}};
    nxFileMake("notes.txt", "");
    setenv("VX7_MESSAGE_REPLY", "retry", 1);
    Terminal terminal(flow);
    unsetenv("VX7_MESSAGE_REPLY");
    std::string const told = "MSG00042  Payroll: First line.\nSecond: line.\n";
    EXPECT_EQ(terminal.read("? "), told + told + "retry [Enter], cancel? ");
    terminal.type("what\n");
    EXPECT_EQ(terminal.read("? "), "retry [Enter], cancel? ");
    terminal.type(" C \n");
    EXPECT_EQ(terminal.end(), 10);
    EXPECT_EQ(nxFileContent("notes.txt"), "retry / cancel / ");
}

// Takes all memory there is, down to the smallest pieces, and fails an assertion.
int assertWithoutMemory(int, char**) {
    if (!nxMemoryLimit(256u << 20))
        return 2;
    for (std::size_t size = 32 << 20; size >= 16; size /= 2) {
        void* volatile piece = nullptr;
        do {
            piece = std::malloc(size);
        } while (piece != nullptr);
    }
    NxAssertFail("general/some/file", 12, "a < b");
}

NXS_ChildEntry const entry("assertion-full", assertWithoutMemory);

TEST(BoxTerminal, ABoxNeedsNoMemory) {
    if (!nxMemoryEnds)
        GTEST_SKIP() << "memory has no end here";
    NXS_Outcome const outcome = answered({"assertion-full", {}, {{{}, "ok"}}});
    EXPECT_EQ(outcome.fault, "");
    EXPECT_TRUE(outcome.end == -1 && outcome.boxes.size() == 1 &&
                outcome.boxes[0].text == "Assert fail: general/some/file 12 : a < b");
}

} // namespace

std::vector<NXS_User> const& nxUsers() {
    static std::vector<NXS_User> const users = {{"typing", answered}, {"by a list", scripted}};
    return users;
}
