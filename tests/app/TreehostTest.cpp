#include "tests/support/HostTest.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kOutline = "A\n  a1\n  a2\nB\n  b\n    bb\n";

struct Outcome {
    int m_Status;
    std::string m_Output; ///< standard output
    std::string m_Errors; ///< standard error
};

/// Runs the program as a process of its own from a folder that is not its own.
class TreehostTest : public testing::Test {
protected:
    TreehostTest() { std::ofstream(m_Folder / "tree") << kOutline; }

    /// `arguments` is what follows the program's name; `input` goes to standard input.
    Outcome Run(const std::string& arguments, const std::string& input = "",
        const std::string& program = Treehost()) const {
        std::ofstream(m_Folder / "input") << input;
        const std::string line = "cd '" + (m_Folder / "").string() + "' && " + program +
                                 "< input 2> errors > output " + arguments;
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content(m_Folder / "output"),
            Content(m_Folder / "errors")};
    }
    /// One line that begins so, and nothing else.
    void ExpectWrong(
        const std::string& begin, const std::string& arguments, const std::string& input) const {
        const auto [status, output, errors] = Run(arguments, input);
        EXPECT_EQ(status, 2) << arguments << input;
        EXPECT_EQ(output, "") << arguments << input;
        EXPECT_THAT(errors, StartsWith(begin)) << arguments << input;
        EXPECT_EQ(errors.find('\n'), errors.size() - 1) << errors;
    }

    /// The most memory that the program has at a time, in bytes.
    size_t PeakOf(const std::string& arguments) const {
        const std::string line = "exec " + Treehost() + arguments + " >/dev/null";
        const pid_t child = fork();
        if (child == 0) {
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            _exit(1);
        }
        int status = 0;
        rusage used{};
        EXPECT_EQ(wait4(child, &status, 0, &used), child);
        EXPECT_EQ(status, 0);
        return static_cast<size_t>(used.ru_maxrss) * 1024;
    }

    TemporaryFolder m_Folder;
};

} // namespace

TEST_F(TreehostTest, RowsShowsLevelsAndMarks) {
    EXPECT_EQ(Run("rows -", kOutline).m_Output, "+ A\n+ B\n");
    EXPECT_EQ(Run("rows - --depth 1", kOutline).m_Output, "- A\n    a1\n    a2\n- B\n  + b\n");
    EXPECT_EQ(Run("rows -", "esc\x1b[31m\u202Etxt\n").m_Output, "  esc\uFFFD[31m\uFFFDtxt\n");
    EXPECT_EQ(Run("rows - --depth 1 --find A", kOutline).m_Output, "- A\n    a1\n    a2\n");
    EXPECT_EQ(Run("rows - --depth 1 --json --find b", kOutline).m_Output,
        "[{\"level\":1,\"label\":\"B\",\"open\":true},\n"
        " {\"level\":2,\"label\":\"b\",\"open\":false}]\n");
    EXPECT_EQ(Run("rows - --as json", "[1,").m_Status, 1);
    EXPECT_EQ(Run("rows - --depth 1", "\xEF\xBB\xBF<a><b/></a>").m_Output, "- a\n    b\n");
    for (const char* wrong : {"--as xml", "--as archive"}) {
        EXPECT_EQ(Run(std::string("rows - ") + wrong, "<a>").m_Status, 1) << wrong;
    }
    EXPECT_EQ(Run("rows - --as outline", "<a>").m_Output, "  <a>\n");
    std::filesystem::create_directories(m_Folder / "folder/sub/deep");
    std::filesystem::create_directory_symlink("sub", m_Folder / "folder/to");
    EXPECT_EQ(Run("rows folder --depth 2").m_Output, "- sub\n  + deep\n- to ->\n  + deep\n");
    EXPECT_THAT(Run("rows folder --json --find t").m_Output, HasSubstr("\"link\":true"));
    EXPECT_EQ(
        Run("rows - --json", "\u202Ex\n").m_Output, "[{\"level\":1,\"label\":\"\\u202ex\"}]\n");
}

TEST_F(TreehostTest, NamesAreInTheOrderOfTheUsersLocale) {
    if (*EMULATOR) {
        GTEST_SKIP() << "locales are made for this machine";
    }
    std::filesystem::create_directory(m_Folder / "folder");
    for (const char* name : {"b", "A", "C", "a"}) {
        std::ofstream(m_Folder / "folder" / name);
    }
    const std::string folder = (m_Folder / "").string();
    ASSERT_EQ(Run("", "", "localedef -i en_US -f UTF-8 ./en_US.UTF-8").m_Status, 0);
    const std::string english = "LOCPATH='" + folder + "' LC_ALL=en_US.UTF-8 ";
    EXPECT_EQ(Run("rows folder", "", english + Treehost()).m_Output, "  a\n  A\n  b\n  C\n");
    EXPECT_EQ(Run("rows folder", "", "LC_ALL=C " + Treehost()).m_Output, "  A\n  C\n  a\n  b\n");
}

TEST_F(TreehostTest, ShotOpeningScrollingAndEmptinessChangeThePicture) {
    const auto shot = [&](const std::string& options, const std::string& input = kOutline) {
        const Outcome outcome = Run("shot - --out my.png " + options, input);
        EXPECT_EQ(outcome.m_Output, "my.png\n") << outcome.m_Errors;
        return Content(m_Folder / "my.png");
    };
    const std::string closed = shot("");
    EXPECT_NE(closed, shot("", "")) << "rows are drawn";
    EXPECT_NE(closed, shot("--scroll 1"));
    EXPECT_EQ(shot("--scroll 2147483647"), shot("--scroll 1"));
    EXPECT_NE(closed, shot("--open 0 --open 3"));
    EXPECT_EQ(shot("--depth 1"), shot("--open 0 --open 3"));
    EXPECT_NE(closed, shot("--page"));
    EXPECT_NE(closed, shot("--size 200x150"));
    EXPECT_NE(shot("--size 960x1280"), shot("--scale 2"));
    EXPECT_EQ(shot("--size 200x150 --scale 1"), shot("--size 200x150"));
}

TEST_F(TreehostTest, InfoTellsInterfacesAndParametersToPeopleAndPrograms) {
    const std::string text = Run("info").m_Output;
    EXPECT_THAT(text, HasSubstr("\n  IUITree\n"));
    EXPECT_THAT(text, HasSubstr("\n  100     TextColor              long    0x23     0..0        "
                                "#4B4B4B\n"));
    const std::string json = Run("info --json").m_Output;
    for (const char* part : {"\n    \"IUITree\",", "\"value\": \"#4B4B4B\"",
             "\"number\": 148,\n      \"name\": \"ChildToggleOnIconOnly\",\n      \"type\": "
             "\"long\"",
             "\"flags\": 19,\n      \"min\": 0,\n      \"max\": 1,\n      \"value\": 1\n"}) {
        EXPECT_THAT(json, HasSubstr(part));
    }
}

TEST_F(TreehostTest, SettingsAreListedAndKeptInDocumentsAndXmlFiles) {
    EXPECT_THAT(Run("settings").m_Output, HasSubstr("4     ElementHeight          22\n"));
    const std::string kept = DATA_FOLDER "/settings-1.tree"; // of the same settings
    std::filesystem::copy_file(kept, m_Folder / "kept");
    for (const std::string height : {"9", "0x1E"}) { // into new files, and into old ones
        const std::string set = "settings --set 100=#C03000 --set elementheight=" + height;
        EXPECT_EQ(Run(set + " --document document --xml xml").m_Output, "");
    }
    for (const std::string options : {"--document kept", "--document document --xml copy",
             "--xml xml", "--xml copy", "--set 4=9 --set 100=#C03000 --set 4=30 --list"}) {
        const auto [status, list, errors] = Run("settings " + options);
        EXPECT_THAT(list, HasSubstr("4     ElementHeight          30\n")) << options << errors;
        EXPECT_THAT(list, HasSubstr("100   TextColor              #C03000\n")) << options;
    }
    EXPECT_EQ(Content(m_Folder / "kept"), Content(kept)) << "nothing was changed";
    const std::string commented =
        "<ElementHeight>\n-5</ElementHeight>\n<!-- mine -->\n<BandColor>#000001</BandColor>\n";
    std::ofstream(m_Folder / "commented") << commented;
    const Outcome outcome = Run("settings --xml commented --set 100=1");
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_THAT(outcome.m_Errors, HasSubstr("commented, line 1: ElementHeight should be a whole "
                                            "number from 8 to 512, not \"-5\"\n"));
    EXPECT_THAT(outcome.m_Errors, HasSubstr("line 3 holds a comment, which would be lost\n"));
    EXPECT_EQ(Content(m_Folder / "commented"), commented);
}

TEST_F(TreehostTest, HelpManualAndCompletionAgreeOnEveryOption) {
    EXPECT_EQ(Run("--version").m_Output, "treehost " TREEHOST_VERSION "\n");
    EXPECT_THAT(Content(SHARE_FOLDER "/man/treehost.1"), HasSubstr("treehost " TREEHOST_VERSION));
    EXPECT_EQ(Run("help").m_Output, Run("--help").m_Output);
    std::string manual = Content(SHARE_FOLDER "/man/treehost.1");
    std::erase(manual, '\\');
    const std::string completion = Content(SHARE_FOLDER "/completion/treehost");
    for (const std::string command :
        {"run", "shot", "replay", "rows", "settings", "info", "validate"}) {
        const std::string help = Run("help " + command).m_Output;
        EXPECT_EQ(help, Run(command + " --help").m_Output);
        EXPECT_THAT(manual, HasSubstr("\n.SS \"" + command + ' '));
        const size_t line = completion.find("        [" + command + "]=");
        const std::string completed =
            completion.substr(line, completion.find('\n', line) - line) + ' ';
        for (size_t at = help.find("\n  --"); at != help.npos; at = help.find("\n  --", at + 1)) {
            const std::string option = help.substr(at + 3, help.find(' ', at + 3) - at - 3);
            EXPECT_THAT(manual, HasSubstr(option)) << command;
            EXPECT_THAT(completed, HasSubstr(option)) << command;
        }
    }
}

TEST_F(TreehostTest, ModuleIsBesideTheProgramAndNamesAndIconsWhereTheIniFileSays) {
    const auto copy = [&](const char* file) {
        std::filesystem::copy_file(BuildFolder() / file, m_Folder / file);
    };
    const auto list = [&] { return Run("settings", "", Treehost(m_Folder / "")); };
    copy("treehost");
    copy("Collections.so");
    copy("CollectionsEx.so");
    EXPECT_EQ(list().m_Status, 3);
    EXPECT_THAT(list().m_Errors, HasSubstr("UITree.so: cannot open shared object"));
    const std::string added =
        "TREEHOST_MODULE_PATH=/nowhere::" + BuildFolder().string() + ' ' + Treehost(m_Folder / "");
    EXPECT_THAT(
        Run("info --paths", "", added).m_Output, HasSubstr((BuildFolder() / "UITree.so").string()));
    EXPECT_EQ(Run("settings", "", added).m_Status, 0);
    copy("UITree.so");
    EXPECT_THAT(list().m_Output, HasSubstr("170   170                    not set\n"));
    EXPECT_THAT(list().m_Errors, HasSubstr("/_icons/UITreeOpen.png is missing: "));
    std::filesystem::copy(
        BuildFolder() / "share", m_Folder / "other", std::filesystem::copy_options::recursive);
    std::ofstream(m_Folder / "other/_strings/UITree.ini") << "[Parameters]\n170=Open\n";
    std::ofstream(m_Folder / "treehost.ini")
        << "[Workspace]\nCommonPath=" << (m_Folder / "other").string() << '\n';
    EXPECT_THAT(list().m_Output, HasSubstr("170   Open                   set\n"));
}

TEST_F(TreehostTest, WrongUsageIsOneLineAndStatus2) {
    const char* const wrong[] = {"", "bogus", "rows", "rows - extra", "rows /nowhere", "rows ''",
        "rows - --depth -1", "shot - --size 0x0", "shot - --size 100", "shot - --size 5x5x5",
        "shot - --size -5x5", "shot - --size 99999999999x5", "shot - --scroll 99999999999",
        "shot - --scroll x", "shot - --open 7", "shot - --open -1", "shot - --open 0 --open 1",
        "shot - --out ''", "shot - --scale 0", "run . --scale 5", "run nowhere", "replay - -",
        "replay tree", "replay tree nowhere", "replay nowhere -", "replay tree - --size 5",
        "replay tree - --shots ''", "settings --set", "settings --set bogus=1",
        "settings --set ElementHeight", "settings --set =1", "settings --set 4=x",
        "settings --set 4=7", "settings --set 4=2147483647", "settings --set 105=2",
        "settings --document a --xml ./a --set 4=3",
        "settings --list --set TextColor=#123456 --set OpenIcon=x", "settings --document nowhere",
        "settings --xml nowhere --list", "settings --xml ''", "shot - --document nowhere",
        "shot - --document ''", "run tree --document ''", "validate", "validate ''",
        "validate x --time-limit 0"};
    for (const char* arguments : wrong) {
        ExpectWrong("treehost: ", arguments, "A\n  leaf\n");
    }
}

TEST_F(TreehostTest, WrongLineOfAScriptIsNamedAndNothingIsPlayed) {
    const char* const wrong[] = {"fly 1 2", "press 1", "press 1 x", "press 1 2 third",
        "press 1 2 primary alt", "press 1 2 primary shift 5", "wheel 1 2 3 slow",
        "wheel 1 2 99999999999", "wheel 1 2 1.5", "touch begin 0", "touch start", "key",
        "key space", "key 3", "wait -1", "wait 86400001", "size 10", "size 0x5", "bind",
        "bind nowhere", "select 1", "select one absolute", "open", "compact all", "set row-height",
        "set colour 1", "set 4 0x123456789", "get", "shot", "shot ../up.png", "shot .."};
    for (const std::string line : wrong) {
        ExpectWrong("treehost: standard input:4: ", "replay tree -",
            "# first\n\npress 5 5\n" + line + "\npress 5 5\n");
    }
}

TEST_F(TreehostTest, WhatCannotBeReadOrWrittenOrShownIsStatus1) {
    for (const char* arguments : {"shot - --out no/such/folder.png", "rows - > /dev/full",
             "rows - >&-", "shot - >&-", "shot - --document input", "replay . ."}) {
        EXPECT_EQ(Run(arguments, kOutline).m_Status, 1) << arguments;
    }
    for (const auto& [arguments, message] :
        {std::pair("rows /proc/self/mem", "cannot read /proc/self/mem: Input/output error"),
            std::pair("shot - <&-", "cannot read standard input: Bad file descriptor"),
            std::pair("shot - --out no/x", "cannot write no/x: No such file or directory"),
            std::pair("shot - --out - > /dev/full", "cannot write standard output: No space left "
                                                    "on device"),
            std::pair("bogus -x", "there is no command bogus"),
            std::pair("rows - --what --else", "not expected: --what --else")}) {
        const Outcome failed = Run(arguments);
        EXPECT_GT(failed.m_Status, 0) << arguments;
        EXPECT_EQ(failed.m_Errors, std::string("treehost: ") + message + '\n');
    }
    const Outcome outcome = Run("run .", "", "DISPLAY=:none SDL_VIDEODRIVER=x11 " + Treehost());
    EXPECT_EQ(outcome.m_Status, 1);
    EXPECT_THAT(outcome.m_Errors, StartsWith("treehost: there is no display"));
}

TEST_F(TreehostTest, ReplayOfTheExampleGivesItsRecord) {
    const std::string folder = SHARE_FOLDER "/replay/";
    const Outcome outcome = Run("replay '" + folder + "garden' '" + folder + "example.replay'");
    EXPECT_EQ(outcome.m_Output, Content(folder + "example.record")) << outcome.m_Errors;
}

TEST_F(TreehostTest, ReplayWritesWhatAWindowWouldShow) {
    const char* const script =
        "shot 1.png\npress 60 11\nrelease 60 11\nshot 2.png\n"
        "wheel 5 5 100\nwheel 5 5 -100\nshot 3.png\nsize 50x60\nshot 4.png\n";
    EXPECT_EQ(Run("replay tree - --shots some/folder --size 120x40", script).m_Status, 0);
    const auto shot = [&](const char* name) { return Content(m_Folder / "some/folder" / name); };
    EXPECT_NE(shot("1.png"), shot("2.png"));
    EXPECT_EQ(shot("2.png"), shot("3.png"));
    EXPECT_NE(shot("3.png"), shot("4.png"));
    EXPECT_EQ(Run("replay tree - --shots tree", script).m_Status, 1) << "not a folder";
}

TEST_F(TreehostTest, LargeDocumentTakesNoMoreThanThreeTimesItsSizeWithAllOfItOpen) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes memory of its own";
#endif
    if (*EMULATOR != '\0') {
        GTEST_SKIP() << "so does an emulator";
    }
    constexpr size_t kCount = 150'000;
    const std::string json = R"({"id": 1234567, "name": "somebody", "on": true})";
    const std::string xml = "<user id='1234567'><name>somebody</name></user>\n";
    const std::pair<const char*, std::string> documents[] = {
        {"json", "{\"all\": [" + Repeated(json + ",", kCount) + "0]}"},
        {"lines", Repeated(json + '\n', kCount)},
        {"xml", "<all>" + Repeated(xml, kCount) + "</all>"}};
    const size_t least = PeakOf("rows '" + (m_Folder / "tree").string() + '\'');
    for (const auto& [name, text] : documents) {
        const std::string file = m_Folder / name;
        std::ofstream(file, std::ios::binary) << text;
        EXPECT_LT(PeakOf("rows --depth 9 '" + file + '\'') - least, 3 * text.size()) << name;
    }
}
