#include "host/settings/Document.h"
#include "tests/support/HostTest.h"
#include "tests/support/Program.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

// The window, driven by a hand on a display that nobody sees.

namespace {

/// Asks the focused window to close, as a window manager does when its close button is pressed.
void PressCloseButton() {
    Display* display = XOpenDisplay(nullptr);
    int next = 0;
    XEvent event{};
    event.xclient.type = ClientMessage;
    XGetInputFocus(display, &event.xclient.window, &next);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XCloseDisplay(display);
}

class WindowTest : public testing::Test {
protected:
    /// Opens a window of four rows on a tree of six folders in the display's corner.
    void SetUp() override {
        if (*EMULATOR != '\0' || std::system("which Xvfb xdotool >/dev/null") != 0) {
            GTEST_SKIP() << "no display for an emulated program, or without Xvfb and xdotool";
        }
        ASSERT_TRUE(m_Server || OpenDisplay(m_Server)) << "Xvfb does not start";
        std::ofstream(m_Folder / "tree") << "A\n  a1\n  a2\nB\nC\nD\nE\nF\n";
        // The system's own libraries keep what they allocate.
        m_Window.emplace(
            "env -u XENVIRONMENT HOME=/nowhere SDL_VIDEODRIVER=x11 ASAN_OPTIONS=detect_leaks=0" +
            m_Hints + Treehost() + "run '" + (m_Folder / m_Shown).string() + "' --size 200x88" +
            m_Scale + " --record --document '" + m_Settings + "'");
        // Until it hears of the pointer it may yet move itself to the middle of the display.
        const std::string window = "search --sync --onlyvisible --name 'treehost$' ";
        Do(window + "windowfocus --sync %1 mousemove 321 241");
        ASSERT_TRUE(m_Window->WaitFor("move "));
        Do(window + "windowmove --sync %1 0 0");
    }

    /// Does something and waits until the record tells of it.
    void Expect(const std::string& action, const std::string& line) {
        Do(action);
        ASSERT_TRUE(m_Window->WaitFor(line)) << line << " is missing";
    }

    TemporaryFolder m_Folder;
    std::string m_Shown = "tree";
    std::string m_Settings = m_Folder / "settings";
    std::string m_Scale;
    std::string m_Hints; ///< variables for the window system, each with a blank in front
    std::optional<Program> m_Server;
    std::optional<Program> m_Window;
};

/// The mouse is a finger too.
class TouchedWindowTest : public WindowTest {
protected:
    TouchedWindowTest() { m_Hints = " SDL_MOUSE_TOUCH_EVENTS=1"; }
};

/// What is on the display at a place, where there is no text.
unsigned long PixelAt(Display* display, int x, int y) {
    XImage* image = XGetImage(display, DefaultRootWindow(display), x, y, 1, 1, AllPlanes, ZPixmap);
    const unsigned long pixel = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return pixel;
}

class ScaledWindowTest : public WindowTest {
protected:
    ScaledWindowTest() { m_Scale = " --scale 2"; }
};

/// A window on a display that says how sharp it is.
class DenseWindowTest : public WindowTest {
protected:
    void SetUp() override {
        if (*EMULATOR == '\0' && OpenDisplay(m_Server)) {
            const std::string resources = "Xft.dpi:\t192\n";
            m_Display = XOpenDisplay(nullptr);
            ASSERT_TRUE(m_Display);
            XChangeProperty(m_Display, DefaultRootWindow(m_Display), XA_RESOURCE_MANAGER, XA_STRING,
                8, PropModeReplace, reinterpret_cast<const unsigned char*>(resources.data()),
                int(resources.size()));
            XSync(m_Display, False);
        }
        WindowTest::SetUp();
    }
    ~DenseWindowTest() override {
        if (m_Display) {
            XCloseDisplay(m_Display);
        }
    }

    Display* m_Display = nullptr;
};

class FolderWindowTest : public WindowTest {
protected:
    FolderWindowTest() {
        m_Shown = "shown";
        std::filesystem::create_directories(m_Folder / "shown");
    }
};

/// A window on a pipe that somebody has begun to write an outline to.
class PipeWindowTest : public WindowTest {
protected:
    PipeWindowTest() {
        m_Shown = "pipe";
        mkfifo((m_Folder / "pipe").c_str(), 0600);
        m_Pipe = open((m_Folder / "pipe").c_str(), O_RDWR);
    }
    ~PipeWindowTest() override { close(m_Pipe); }

    /// Writes more than the pipe holds, which takes until the rows in front were read.
    void SetUp() override {
        WindowTest::SetUp();
        if (!IsSkipped()) {
            const int held = fcntl(m_Pipe, F_SETPIPE_SZ, 1);
            const std::string text = "A\nB\n" + std::string(size_t(std::max(held, 1)), '\n');
            EXPECT_EQ(write(m_Pipe, text.data(), text.size()), ssize_t(text.size()));
        }
    }

    int m_Pipe;
};

} // namespace

TEST_F(ScaledWindowTest, PixelThatIsHitIsThePixelThatIsSeen) {
    Expect("mousemove 22 22 click 1", "action=opened node=\"A\"");
    Expect("mousemove 120 90", "move 60 45 -> ");
    Expect("click 1", "node=\"a2\"");
    Expect("mousemove 380 10 mousedown 1", "press 190 5 -> 0");
    Do("mouseup 1 key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(DenseWindowTest, AllIsTwiceAsLargeOnADisplayThatIsTwiceAsSharp) {
    Expect("mousemove 120 90", "move 60 45 -> ");
    Expect("click 1", "node=\"C\"");
    Expect("mousemove 380 10 mousedown 1", "press 190 5 -> 0");
    Do("mouseup 1 key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, MouseAndKeysReachTheControlAndEscapeEndsIt) {
    Expect("mousemove 11 11 click 1", "action=opened node=\"A\"");
    Expect("click 5", "wheel 11 11 100 -> 0");
    Expect("click 4", "wheel 11 11 -100 -> 0");
    Expect("keydown shift click 1 keyup shift", "state=5 index=0 action=closed");
    Expect("click 3", "press 11 11 secondary -> 1");
    Expect("key End", "index=5 action=none node=\"F\"");
    Expect("mousedown 1 mousemove_relative 29 39", "NodeDrag state=1 x=40 y=50");
    Expect("mouseup 1 type /c", "action=none node=\"C\"");
    Expect("key ctrl+c", "copy C");
    Expect("key Escape", "key escape -> 0"); // ends the search, and not yet the window
    EXPECT_FALSE(std::filesystem::exists(m_Settings)) << "saved at the end";
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
    EXPECT_NO_THROW(Document::Load(m_Settings));
}

TEST_F(WindowTest, LettersGoToTheRowThatBeginsWithThem) {
    Expect("key d", "action=none node=\"D\"");
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, RowUnderThePointerIsMarkedUntilItLeaves) {
    constexpr int kInRow = 150; // right of the labels
    constexpr int kMiddles[] = {11, 33};
    Display* display = XOpenDisplay(nullptr);
    const auto isMarked = [&](int row) {
        return PixelAt(display, kInRow, kMiddles[row]) != PixelAt(display, kInRow, 55);
    };
    // The record tells of the pointer before the picture shows it.
    for (const int row : {0, 1}) {
        Expect("mousemove 100 " + std::to_string(kMiddles[row]), "move 100");
        while (!isMarked(row) || isMarked(1 - row)) {
        }
    }
    Do("mousemove 400 300");
    while (isMarked(1)) {
    }
    XCloseDisplay(display);
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(TouchedWindowTest, QuickFingerLetsTheRowsGoOnByThemselves) {
    // A hand that a busy machine holds up for long is not quick.
    for (bool isOn = false; !isOn;) {
        Do("key Home mousemove 60 80 mousedown 1 mousemove 60 60 mousemove 60 40 mousemove 60 10 "
           "mouseup 1 mousemove 61 10");
        ASSERT_TRUE(m_Window->WaitFor("release 60 10"));
        Do("mousemove 62 10");
        for (std::string line; line.find("move 62 10") == std::string::npos;) {
            line = m_Window->ReadLine();
            ASSERT_NE(line, "");
            isOn |= line.find("touch update -") != std::string::npos;
        }
    }
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, ScrollBarIsDraggedAndTheCloseButtonEndsIt) {
    Expect("mousemove 190 5 mousedown 1", "press 190 5 -> 0");
    Expect("mousemove 190 85", "move 190 85 primary -> 0");
    Do("mouseup 1");
    Expect("mousemove 60 11 click 1", "index=5 action=none node=\"F\"");
    PressCloseButton();
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(WindowTest, TerminalThatGoesAwayDoesNotTakeTheSettingsWithIt) {
    Expect("key F2 type 44", "");
    Expect("key Return", "set 4 44 -> 0");
    EXPECT_EQ(std::system("kill -HUP $(xdotool getwindowfocus getwindowpid)"), 0);
    EXPECT_EQ(m_Window->Wait(), 0);
    EXPECT_NO_THROW(Document::Load(m_Settings));
}

TEST_F(WindowTest, PanelChangesTheTreeBesideItWhichStillAnswersTheMouse) {
    Expect("mousemove 11 11 key F2 type 44", "move 11 11");
    Expect("key Return", "set 4 44 -> 0");
    Expect("mousemove 11 50 click 1", "node=\"B\"");
    Do("mousemove 150 55 click 1 type '#12345'");
    Expect("key Return key 6 key Return", "set 100 #123456 -> 0"); // refused, and corrected
    Expect("mousemove 50 70 key Escape", "cancel -> 0");
    Expect("click 1", "node=\"D\"");
    Do("key F2 key F2 key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(FolderWindowTest, FolderIsShownAsItIsNowWithoutAKeyAndWithF5) {
    for (const char* name : {"first", "second"}) {
        std::filesystem::create_directory(m_Folder / (std::string("shown/") + name));
        ASSERT_TRUE(m_Window->WaitFor("tree changed -> 0")) << name;
    }
    Expect("mousemove 60 33 click 1", "node=\"second\"");
    std::filesystem::remove(m_Folder / "shown/first");
    ASSERT_TRUE(m_Window->WaitFor("tree changed -> 0"));
    Expect("key F5", "key f5 -> 1"); // there is nothing left to do
    EXPECT_EQ(std::system("kill -TERM $(xdotool getwindowfocus getwindowpid)"), 0);
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(FolderWindowTest, TenThousandFilesThatComeGoAndAreRenamedEndAsTheyAre) {
    constexpr int kFiles = 10'000;
    const auto file = [&](const char* kind, int number) {
        return m_Folder / ("shown/" + (kind + std::to_string(100'000 + number)));
    };
    for (int number = 0; number < kFiles; ++number) {
        std::ofstream(file("made", number)).close();
        if (number % 3 == 0) {
            std::filesystem::rename(file("made", number), file("renamed", number));
        }
    }
    for (int number = 1; number < kFiles; number += 3) {
        std::filesystem::remove(file("made", number));
    }
    // After the last change, the last row and the first one are what they will be.
    const char* const wanted[] = {
        "index=6666 action=none node=\"renamed109999\"", "index=0 action=none node=\"made100002\""};
    for (size_t seen = 0; seen < std::size(wanted);) {
        const std::string line = m_Window->ReadLine();
        ASSERT_NE(line, "");
        if (line.find("tree changed -> 0") != std::string::npos) {
            Do("key End key Home");
        }
        seen += line.find(wanted[seen]) != std::string::npos ? 1 : 0;
    }
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(PipeWindowTest, EscapeShowsWhatWasReadUntilThen) {
    Do("key F2 type 44");
    Expect("key Return", "set 4 44 -> 0"); // there is a window that answers, meanwhile
    Do("key F2");
    Expect("key Escape", "reading stopped");
    Expect("mousemove 60 50 click 1", "node=\"B\""); // in the second row of that height
    Do("key Escape");
    EXPECT_EQ(m_Window->Wait(), 0);
}

TEST_F(PipeWindowTest, CloseButtonEndsAReadingThatNeverEnds) {
    PressCloseButton();
    EXPECT_EQ(m_Window->Wait(), 0);
}
