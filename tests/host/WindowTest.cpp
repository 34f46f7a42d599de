#include "tests/host/CloseButton.h"
#include "tests/host/Process.h"
#include "tests/host/Treehost.h"

#include <optional>

// The window, driven by a hand on a display that nobody sees.

namespace {

bool IsInstalled(const char* program) {
    const std::string command = std::string("command -v ") + program + " >/dev/null";
    return std::system(command.c_str()) == 0;
}

class WindowTest : public TreehostRun {
protected:
    void SetUp() override {
        for (const char* program : {"Xvfb", "xdotool"}) {
            if (!IsInstalled(program)) {
                GTEST_SKIP() << program << " is not installed: script/setup installs it";
            }
        }
        m_Server.emplace(Process::Words{
            "Xvfb", "-displayfd", "%fd", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        ASSERT_TRUE(m_Server->WaitFor("")) << "Xvfb does not start";
        m_Display = ":" + m_Server->Output().substr(0, m_Server->Output().find('\n'));
    }

    /// Opens a window of four rows on a tree of six folders, and waits for it.
    void OpenWindow() {
        std::ofstream(Path("tree")) << "A\n  a1\n  a2\nB\nC\nD\nE\nF\n";
        m_Window.emplace(Process::Words{BuildFolder() / "treehost", "run", Path("tree"), "--size",
                             "200x88", "--record"},
            // The system's own libraries keep what they allocate.
            Process::Words{
                "DISPLAY=" + m_Display, "SDL_VIDEODRIVER=x11", "ASAN_OPTIONS=detect_leaks=0"});
        m_Id = std::stoul("0" + Do("search --sync --onlyvisible --name '^treehost'"));
        ASSERT_NE(m_Id, 0U);
        Do("windowfocus --sync " + std::to_string(m_Id));
    }

    /// Moves the pointer or presses something, and answers what xdotool prints.
    std::string Do(const std::string& action) {
        const std::string command = "DISPLAY=" + m_Display + " timeout 30 xdotool " + action +
                                    " > '" + Path("answer").string() + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << action;
        return Content(Path("answer"));
    }
    void PointAt(int32_t x, int32_t y) {
        Do("mousemove --window " + std::to_string(m_Id) + " " + std::to_string(x) + " " +
            std::to_string(y));
    }
    void Expect(const std::string& line) {
        ASSERT_TRUE(m_Window->WaitFor(line)) << line << " is missing after\n" << m_Window->Output();
    }

    std::optional<Process> m_Server;
    std::optional<Process> m_Window;
    std::string m_Display;
    unsigned long m_Id = 0;
};

} // namespace

TEST_F(WindowTest, MouseAndKeys_ReachTheControlAndEscapeEndsIt) {
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    PointAt(11, 11);
    Do("click 1");
    Expect("press 11 11 -> 0");
    Expect("release 11 11 -> 0");
    Expect("action=opened node=\"A\"");
    Do("click 5");
    Expect("wheel 11 11 100 -> 0");
    Do("click 4");
    Expect("wheel 11 11 -100 -> 0");
    Do("keydown shift click 1 keyup shift");
    Expect("state=5 index=0 action=closed node=\"A\"");
    Do("click 3");
    Expect("press 11 11 secondary -> 1");
    Do("key End");
    Expect("index=5 action=none node=\"F\"");
    Do("mousedown 1");
    PointAt(40, 50);
    Expect("NodeDrag state=1 x=40 y=50");
    Do("mouseup 1");
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, ScrollBar_IsDraggedAndTheCloseButtonEndsIt) {
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    PointAt(190, 5);
    Do("mousedown 1");
    Expect("press 190 5 -> 0");
    PointAt(190, 85);
    Expect("move 190 85 primary -> 0\n  UIItemChanged");
    Do("mouseup 1");
    PointAt(60, 11);
    Do("click 1");
    Expect("index=5 action=none node=\"F\"");
    ASSERT_TRUE(PressCloseButton(m_Display, m_Id));
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(TreehostRun, WindowWithoutADisplay_SaysSoInOneLine) {
    std::ofstream(Path("tree")) << "A\n";
    // A driver that is not there stands for a display that is not: the test may run on one.
    for (const char* driver : {"x11", "none"}) {
        setenv("SDL_VIDEODRIVER", driver, 1);
        setenv("DISPLAY", ":none", 1);
        const Outcome outcome = Run("run tree");
        EXPECT_EQ(outcome.m_Status, 1);
        EXPECT_EQ(outcome.m_Errors.find("treehost: there is no display"), 0U) << outcome.m_Errors;
        EXPECT_NE(outcome.m_Errors.find("treehost shot PATH\n"), std::string::npos);
    }
    EXPECT_EQ(Run("run nowhere").m_Status, 2);
}
