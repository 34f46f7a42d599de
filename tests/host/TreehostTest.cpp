#include "tests/host/Treehost.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class TreehostTest : public TreehostRun {};

constexpr const char* kOutline = "A\n  a1\n  a2\nB\n  b\n    bb\n";

} // namespace

TEST_F(TreehostTest, RowsShowsLevelsAndMarks) {
    EXPECT_EQ(Run("rows -", kOutline).m_Output, "+ A\n+ B\n");
    EXPECT_EQ(Run("rows - --depth 1", kOutline).m_Output, "- A\n    a1\n    a2\n- B\n  + b\n");
    EXPECT_EQ(Run("rows -", "esc\x1b[31m\n").m_Output, "  esc\uFFFD[31m\n");
    std::filesystem::create_directories(m_Folder / "tree/sub/deep");
    EXPECT_EQ(Run("rows tree --depth 2").m_Output, "- sub\n  + deep\n");
}

TEST_F(TreehostTest, ShotOpeningScrollingAndEmptinessChangeThePicture) {
    const auto shot = [&](const std::string& options, const std::string& input) {
        const Outcome outcome = Run("shot - --out my.png --size 200x150 " + options, input);
        EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
        EXPECT_EQ(outcome.m_Output, "my.png\n");
        EXPECT_EQ(SizeOf(m_Folder / "my.png"), "200x150");
        return Content(m_Folder / "my.png");
    };
    const std::string closed = shot("", kOutline);
    EXPECT_NE(closed, shot("", "")) << "rows are drawn";
    EXPECT_NE(closed, shot("--scroll 1", kOutline));
    EXPECT_EQ(shot("--scroll 2147483647", kOutline), shot("--scroll 1", kOutline));
    EXPECT_NE(closed, shot("--open 0 --open 3", kOutline));
    EXPECT_EQ(shot("--depth 1", kOutline), shot("--open 0 --open 3", kOutline));
    EXPECT_NE(closed, shot("--page", kOutline));
}

TEST_F(TreehostTest, InfoTellsInterfacesAndParametersToPeopleAndPrograms) {
    const std::string text = Run("info").m_Output;
    EXPECT_THAT(text, HasSubstr("\n  IUITree\n"));
    EXPECT_THAT(text, Not(HasSubstr("IVariant")));
    EXPECT_THAT(text, HasSubstr("\n  100     TextColor              long    0x23     0..0        "
                                "#4B4B4B\n"));
    const std::string json = Run("info --json").m_Output;
    for (const char* part :
        {"\n    \"IUITree\",", "\"name\": \"TextColor\"", "\"value\": \"#4B4B4B\"",
            "\"number\": 148,\n      \"name\": \"ChildToggleOnIconOnly\",\n      \"type\": "
            "\"long\"",
            "\"flags\": 19,\n      \"min\": 0,\n      \"max\": 1,\n      \"value\": 1\n"}) {
        EXPECT_THAT(json, HasSubstr(part));
    }
}

TEST_F(TreehostTest, SettingsAreListedAndSetByNameOrNumber) {
    EXPECT_THAT(Run("settings").m_Output, HasSubstr("4     ElementHeight          15\n"));
    EXPECT_EQ(Run("settings --set 4=30").m_Output, "");
    const Outcome outcome = Run("settings --set elementheight=30 --list --set 100=0xFF --set 4=31");
    EXPECT_EQ(outcome.m_Status, 0);
    EXPECT_THAT(outcome.m_Output, HasSubstr("4     ElementHeight          31\n"));
    EXPECT_THAT(outcome.m_Output, HasSubstr("100   TextColor              #0000FF\n"));
}

TEST_F(TreehostTest, NamesAndIconsAreReadFromTheFolderThatTheIniFileNames) {
    for (const char* file : {"treehost", "CollectionsEx.so", "Collections.so", "UITree.so"}) {
        std::filesystem::copy_file(BuildFolder() / file, m_Folder / file);
    }
    const auto list = [&] { return Run("settings", "", Treehost(m_Folder / "")).m_Output; };
    EXPECT_THAT(list(), HasSubstr("4     4                      15\n"));
    EXPECT_THAT(list(), HasSubstr("170   170                    not set\n"));
    std::filesystem::copy(
        BuildFolder() / "share", m_Folder / "other", std::filesystem::copy_options::recursive);
    std::ofstream(m_Folder / "other/_strings/UITree.ini") << "[Parameters]\n4=Tall\n170=Open\n";
    std::ofstream(m_Folder / "treehost.ini")
        << "[Workspace]\nCommonPath=" << (m_Folder / "other").string() << '\n';
    EXPECT_THAT(list(), HasSubstr("4     Tall                   15\n"));
    EXPECT_THAT(list(), HasSubstr("170   Open                   set\n"));
}

TEST_F(TreehostTest, WrongUsageIsOneLineAndStatus2) {
    std::ofstream(m_Folder / "tree") << "A\n";
    const char* const wrong[] = {"", "bogus", "rows", "rows - extra", "rows /nowhere/at/all",
        "rows ''", "rows - --depth -1", "shot - --size 0x0", "shot - --size 100",
        "shot - --size 5x", "shot - --size 5x5x5", "shot - --size -5x5",
        "shot - --size 99999999999x5", "shot - --scroll 99999999999", "shot - --scroll x",
        "shot - --open 7", "shot - --open -1", "shot - --open 0 --open 1", "shot - --out ''",
        "run nowhere", "replay - -", "replay tree", "replay tree nowhere", "replay nowhere -",
        "replay tree - --size 5", "replay tree - --shots ''", "settings --set",
        "settings --set bogus=1", "settings --set ElementHeight", "settings --set =1",
        "settings --set 4=x", "settings --set 105=2",
        "settings --list --set TextColor=#123456 --set OpenIcon=x", "settings --document nowhere",
        "settings --xml nowhere --list", "settings --xml ''", "shot - --document nowhere",
        "shot - --document ''", "run tree --document ''"};
    for (const char* arguments : wrong) {
        const Outcome outcome = Run(arguments, "A\n  leaf\n");
        EXPECT_EQ(outcome.m_Status, 2) << arguments;
        EXPECT_EQ(outcome.m_Output, "") << arguments;
        EXPECT_EQ(outcome.m_Errors.find("treehost: "), 0U) << arguments;
        EXPECT_EQ(outcome.m_Errors.find('\n'), outcome.m_Errors.size() - 1) << outcome.m_Errors;
        EXPECT_LT(outcome.m_Errors.size(), 200U) << arguments;
    }
}

TEST_F(TreehostTest, ResultThatCannotBeWrittenIsStatus1) {
    for (const char* arguments : {"shot - --out no/such/folder.png", "rows - > /dev/full",
             "rows - >&-", "shot - >&-", "shot - --document input"}) {
        EXPECT_EQ(Run(arguments, kOutline).m_Status, 1) << arguments;
    }
}

TEST_F(TreehostTest, MissingModuleIsStatus3WithTheLoadersText) {
    for (const char* file : {"treehost", "CollectionsEx.so", "Collections.so"}) {
        std::filesystem::copy_file(BuildFolder() / file, m_Folder / file);
    }
    const Outcome outcome = Run("info", "", Treehost(m_Folder / ""));
    EXPECT_EQ(outcome.m_Status, 3);
    EXPECT_NE(outcome.m_Errors.find("UITree.so: cannot open shared object"), std::string::npos)
        << outcome.m_Errors;
}

TEST_F(TreehostTest, WindowWithoutADisplaySaysSo) {
    std::ofstream(m_Folder / "tree") << "A\n";
    const Outcome outcome = Run("run tree", "", "DISPLAY=:none SDL_VIDEODRIVER=x11 " + Treehost());
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_EQ(outcome.m_Errors.find("treehost: there is no display"), 0U) << outcome.m_Errors;
}
