#include "tests/host/Treehost.h"

#include <algorithm>
#include <cairo/cairo.h>

namespace {

constexpr const char* kShare = SHARE_FOLDER;

class ReplayTest : public TreehostRun {
protected:
    /// Plays a script on a small tree.
    Outcome Play(const std::string& script, const std::string& options = "") {
        std::ofstream(Path("tree")) << "A\n  a1\n  a2\nB\n";
        return Run("replay tree - " + options, script);
    }
};

} // namespace

TEST_F(ReplayTest, Example_GivesItsRecord) {
    const std::string folder = std::string(kShare) + "/replay/";
    const Outcome outcome = Run("replay '" + folder + "garden' '" + folder + "example.replay'");
    EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
    EXPECT_EQ(outcome.m_Output, Content(folder + "example.record"));
    EXPECT_FALSE(outcome.m_Output.empty());
}

TEST_F(ReplayTest, Clock_DecidesWhatIsADoubleClick) {
    const auto clicks = [&](const std::string& milliseconds) {
        const std::string click = "press 60 33\nrelease 60 33\n";
        const Outcome outcome = Play(click + "wait " + milliseconds + "\n" + click);
        return outcome.m_Output.find("container=control state=2") != std::string::npos;
    };
    EXPECT_TRUE(clicks("499"));
    EXPECT_FALSE(clicks("500"));
    EXPECT_FALSE(clicks("86400000"));
}

TEST_F(ReplayTest, WrongLine_IsNamedAndNothingIsPlayed) {
    const char* const wrong[] = {"fly 1 2", "press 1", "press 1 x", "press 1 2 third",
        "press 1 2 primary alt", "press 1 2 primary shift 5", "wheel 1 2 3 slow",
        "wheel 1 2 99999999999", "wheel 1 2 1.5", "touch begin 0", "touch start", "key",
        "key space", "key 3", "wait -1", "wait 86400001", "size 10", "size 0x5", "bind",
        "bind nowhere", "select 1", "select one absolute", "open", "compact all", "set row-height",
        "set colour 1", "set 4 0x123456789", "get", "shot", "shot ../up.png", "shot .."};
    for (const char* line : wrong) {
        const Outcome outcome =
            Play(std::string("# first\n\npress 5 5\n") + line + "\npress 5 5\n");
        EXPECT_EQ(outcome.m_Status, 2) << line;
        EXPECT_EQ(outcome.m_Output, "") << line;
        EXPECT_EQ(outcome.m_Errors.substr(0, 28), "treehost: standard input:4: ") << line;
        EXPECT_EQ(std::count(outcome.m_Errors.begin(), outcome.m_Errors.end(), '\n'), 1) << line;
    }
    for (const char* arguments : {"replay - -", "replay tree", "replay tree nowhere",
             "replay tree - --size 5", "replay nowhere -", "replay tree - --shots ''"}) {
        EXPECT_EQ(Run(arguments).m_Status, 2) << arguments;
    }
    EXPECT_EQ(Run("replay tree .").m_Status, 1) << "a script that cannot be read";
}

TEST_F(ReplayTest, Commands_PrintWhatTheControlReturns) {
    std::filesystem::create_directory(Path("other tree"));
    const Outcome outcome = Play("  press  300 5   primary \n"
                                 "move 5 5\nmove 5 5 none shift+control\nrelease 5 55\n"
                                 "press nan inf\nopen 9\nopen 0\nget 136\nset text-color #FF0000\n"
                                 "get text-color\nset 999 1\nselect 9 absolute+current\n"
                                 "touch -1 5\nkey down\nbind other tree\nkey up\n",
        "--size 300x100");
    EXPECT_EQ(outcome.m_Output,
        "press 300 5 -> 0x80004005\n"
        "move 5 5 primary -> 1\n"
        "move 5 5 none shift+control -> 1\n"
        "release 5 55 -> 1\n"
        "press nan inf -> 0x80004005\n"
        "open 9 -> 0x80004005\n"
        "open 0 -> 0\n"
        "get 136 -> 0x80070057\n"
        "set text-color #FF0000 -> 0\n"
        "get text-color -> 0x23 value=16711680\n"
        "set 999 1 -> 0x80070057\n"
        "select 9 absolute+current -> 0\n"
        "  NodeSelect container=control state=1 index=4 action=none node=none\n"
        "touch -1 5 -> 0\n"
        "key down -> 0\n"
        "  NodeSelect container=control state=1 index=0 action=none node=\"A\"\n"
        "  UIItemChanged\n"
        "bind other tree -> 0\n"
        "key up -> 1\n")
        << outcome.m_Errors;
}

TEST_F(ReplayTest, Shot_WritesWhatAWindowWouldShow) {
    const Outcome outcome =
        Play("shot 1.png\npress 60 11\nrelease 60 11\nshot 2.png\n"
             "wheel 5 5 100\nwheel 5 5 -100\nshot 3.png\nsize 50x60\nshot 4.png\n",
            "--shots some/folder --size 120x40");
    EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
    const auto shot = [&](const std::string& name) {
        return Content(m_Folder.Path() / "some/folder" / name);
    };
    EXPECT_EQ(shot("1.png").substr(0, 4), "\x89PNG");
    EXPECT_NE(shot("1.png"), shot("2.png"));
    EXPECT_EQ(shot("2.png"), shot("3.png"));
    cairo_surface_t* last =
        cairo_image_surface_create_from_png((m_Folder.Path() / "some/folder/4.png").c_str());
    EXPECT_EQ(cairo_image_surface_get_width(last), 50);
    cairo_surface_destroy(last);
    EXPECT_EQ(Play("shot 1.png", "--shots tree").m_Status, 1) << "not a folder";
}
