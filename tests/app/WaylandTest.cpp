#include "tests/support/HostTest.h"
#include "tests/support/Program.h"

// The window under a compositor, which itself is in a display that nobody sees.

TEST(WaylandTest, WindowOpensTakesPointerAndKeysAndCloses) {
    if (*EMULATOR != '\0' || std::system("which Xvfb xdotool weston >/dev/null") != 0) {
        GTEST_SKIP() << "no display for an emulated program, or without Xvfb, xdotool and weston";
    }
    std::optional<Program> server;
    ASSERT_TRUE(OpenDisplay(server)) << "Xvfb does not start";
    const TemporaryFolder folder;
    setenv("XDG_RUNTIME_DIR", (folder / "").c_str(), 1);
    Program compositor(
        "sh -c 'echo $$; exec weston --backend=x11-backend.so --use-pixman --width=400 "
        "--height=300 --shell=kiosk-shell.so --socket=tree --idle-time=0 2>&1'");
    const std::string ends = "kill " + compositor.ReadLine();
    ASSERT_TRUE(compositor.WaitFor("kiosk-shell.so"));
    Do("search --sync --class Weston windowfocus --sync %1"); // or it hands no keys on
    std::ofstream(folder / "data") << "A\n  a1\n  a2\nB\nC\n";
    Program window("env SDL_VIDEODRIVER=wayland WAYLAND_DISPLAY=tree ASAN_OPTIONS=detect_leaks=0" +
                   Treehost() + "run '" + (folder / "data").string() + "' --record --document '" +
                   (folder / "settings").string() + "'");
    // Until the window is there nobody takes what the pointer does; and the compositor knows where
    // the pointer is only after that came in from outside of it.
    const std::string isThere = (folder / "there").string();
    Program hand("sh -c 'until [ -e " + isThere +
                 " ]; do xdotool mousemove 500 400 mousemove 11 11 mousemove 9 11; done'");
    ASSERT_TRUE(window.WaitFor("move 9 11"));
    std::ofstream(isThere).close();
    hand.Wait();
    Do("click 1");
    EXPECT_TRUE(window.WaitFor("action=opened node=\"A\""));
    Do("key End");
    EXPECT_TRUE(window.WaitFor("node=\"C\""));
    Do("key Escape");
    EXPECT_EQ(window.Wait(), 0);
    EXPECT_EQ(std::system(ends.c_str()), 0);
}
