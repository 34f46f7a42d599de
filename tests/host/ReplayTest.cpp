#include "tests/host/Treehost.h"

namespace {

class ReplayTest : public TreehostRun {
protected:
    /// Plays a script on a small tree.
    Outcome Play(const std::string& script, const std::string& options = "") {
        std::ofstream(m_Folder / "tree") << "A\n  a1\n  a2\nB\n";
        return Run("replay tree - " + options, script);
    }
};

} // namespace

TEST_F(ReplayTest, ExampleGivesItsRecord) {
    const std::string folder = SHARE_FOLDER "/replay/";
    const Outcome outcome = Run("replay '" + folder + "garden' '" + folder + "example.replay'");
    EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
    EXPECT_EQ(outcome.m_Output, Content(folder + "example.record"));
}

TEST_F(ReplayTest, WrongLineIsNamedAndNothingIsPlayed) {
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
        EXPECT_EQ(outcome.m_Errors.find("treehost: standard input:4: "), 0U) << line;
        EXPECT_EQ(outcome.m_Errors.find('\n'), outcome.m_Errors.size() - 1) << "one line";
    }
    EXPECT_EQ(Run("replay tree .").m_Status, 1) << "a script that cannot be read";
}

TEST_F(ReplayTest, ShotWritesWhatAWindowWouldShow) {
    const Outcome outcome =
        Play("shot 1.png\npress 60 11\nrelease 60 11\nshot 2.png\n"
             "wheel 5 5 100\nwheel 5 5 -100\nshot 3.png\nsize 50x60\nshot 4.png\n",
            "--shots some/folder --size 120x40");
    EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
    const auto folder = m_Folder / "some/folder";
    EXPECT_NE(Content(folder / "1.png"), Content(folder / "2.png"));
    EXPECT_EQ(Content(folder / "2.png"), Content(folder / "3.png"));
    EXPECT_EQ(SizeOf(folder / "4.png"), "50x60");
    EXPECT_EQ(Play("shot 1.png", "--shots tree").m_Status, 1) << "not a folder";
}
