#include "host/Document.h"
#include "tests/host/Treehost.h"

#include <X11/Xlib.h>
#include <csignal>
#include <cstdio>
#include <optional>

// The window, driven by a hand on a display that nobody sees.

namespace {

/// A program that runs beside the test, which reads what it writes line by line. It ends with the
/// object, and after a minute in any case.
class Program {
public:
    /// `command` may begin with NAME=VALUE.
    explicit Program(const std::string& command)
        : m_Output(popen(("echo $$; exec timeout 60 env " + command).c_str(), "r")) {
        m_Id = std::stoi(ReadLine());
    }
    ~Program() {
        if (m_Output) {
            kill(m_Id, SIGTERM);
            Wait();
        }
    }
    Program(const Program&) = delete;

    /// The next line with its end, or "" when there is none.
    std::string ReadLine() {
        char line[1000] = "";
        return m_Output && fgets(line, sizeof(line), m_Output) ? line : "";
    }
    /// Reads on up to a line that contains the text; false when none does.
    bool WaitFor(const std::string& text) {
        std::string line = ReadLine();
        while (!line.empty() && line.find(text) == std::string::npos) {
            line = ReadLine();
        }
        return !line.empty();
    }
    /// Waits until the program ends: its exit status, or -1.
    int Wait() {
        while (!ReadLine().empty()) {
        }
        const int status = m_Output ? pclose(std::exchange(m_Output, nullptr)) : -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    FILE* m_Output;
    pid_t m_Id;
};

/// Asks a window to close, as a window manager does when its close button is pressed.
void PressCloseButton(const std::string& server, unsigned long window) {
    const std::unique_ptr<Display, int (*)(Display*)> display(
        XOpenDisplay(server.c_str()), &XCloseDisplay);
    ASSERT_TRUE(display);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display.get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(display.get(), window, False, NoEventMask, &event);
}

class WindowTest : public TreehostRun {
protected:
    /// Opens a window of four rows on a tree of six folders, and waits for it.
    void SetUp() override {
        if (*EMULATOR != '\0') {
            GTEST_SKIP() << "an emulated program has no display here";
        }
        if (std::system("command -v Xvfb >/dev/null && command -v xdotool >/dev/null") != 0) {
            GTEST_SKIP() << "Xvfb or xdotool is not installed: script/setup installs them";
        }
        m_Server.emplace("Xvfb -displayfd 1 -screen 0 640x480x24 -nolisten tcp");
        m_Display = m_Server->ReadLine();
        ASSERT_NE(m_Display, "") << "Xvfb does not start";
        m_Display = ':' + m_Display.substr(0, m_Display.size() - 1);
        std::ofstream(m_Folder / "tree") << "A\n  a1\n  a2\nB\nC\nD\nE\nF\n";
        // The system's own libraries keep what they allocate.
        m_Window.emplace("DISPLAY=" + m_Display + " SDL_VIDEODRIVER=x11" +
                         " ASAN_OPTIONS=detect_leaks=0" + Treehost() + "run '" +
                         (m_Folder / "tree").string() + "' --size 200x88 --record --document '" +
                         (m_Folder / "settings").string() + "'");
        m_Id = std::stoul('0' + Do("search --sync --onlyvisible --name '^treehost'"));
        Do("windowfocus --sync " + std::to_string(m_Id));
    }

    /// Moves the pointer or presses something, and answers what xdotool prints.
    std::string Do(const std::string& action) {
        Program hand("DISPLAY=" + m_Display + " xdotool " + action);
        const std::string answer = hand.ReadLine();
        EXPECT_EQ(hand.Wait(), 0) << action;
        return answer;
    }
    /// Does something at a place in the window and waits until the record tells of it.
    void Expect(const std::string& place, const std::string& action, const std::string& line) {
        Do("mousemove --window " + std::to_string(m_Id) + ' ' + place + ' ' + action);
        ASSERT_TRUE(m_Window->WaitFor(line)) << line << " is missing";
    }

    std::optional<Program> m_Server;
    std::optional<Program> m_Window;
    std::string m_Display;
    unsigned long m_Id = 0;
};

} // namespace

TEST_F(WindowTest, MouseAndKeysReachTheControlAndEscapeEndsIt) {
    Expect("11 11", "click 1", "action=opened node=\"A\"");
    Expect("11 11", "click 5", "wheel 11 11 100 -> 0");
    Expect("11 11", "click 4", "wheel 11 11 -100 -> 0");
    Expect("11 11", "keydown shift click 1 keyup shift", "state=5 index=0 action=closed");
    Expect("11 11", "click 3", "press 11 11 secondary -> 1");
    Expect("11 11", "key End", "index=5 action=none node=\"F\"");
    Expect("11 11", "mousedown 1 mousemove_relative 29 39", "NodeDrag state=1 x=40 y=50");
    EXPECT_FALSE(std::filesystem::exists(m_Folder / "settings")) << "saved at the end";
    Do("mouseup 1 key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
    EXPECT_NO_THROW(Document::Load(m_Folder / "settings"));
}

TEST_F(WindowTest, ScrollBarIsDraggedAndTheCloseButtonEndsIt) {
    Expect("190 5", "mousedown 1", "press 190 5 -> 0");
    Expect("190 85", "", "move 190 85 primary -> 0");
    Do("mouseup 1");
    Expect("60 11", "click 1", "index=5 action=none node=\"F\"");
    PressCloseButton(m_Display, m_Id);
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, PanelChangesTheTreeBesideItWhichStillAnswersTheMouse) {
    Expect("11 11", "key F2 type 44", "move 11 11");
    Do("key Return");
    ASSERT_TRUE(m_Window->WaitFor("set 4 44 -> 0"));
    Expect("11 50", "click 1", "node=\"B\"");
    Do("mousemove --window " + std::to_string(m_Id) + " 150 55 click 1 type '#12345'");
    Do("key Return key 6 key Return"); // refused, and corrected
    ASSERT_TRUE(m_Window->WaitFor("set 100 #123456 -> 0"));
    Expect("50 70", "key Escape", "cancel -> 0");
    Expect("50 70", "click 1", "node=\"D\"");
    Do("key F2 key F2 key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}
