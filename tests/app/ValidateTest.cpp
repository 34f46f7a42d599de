#include "tests/support/HostTest.h"

#include <gmock/gmock.h>
#include <sstream>
#include <sys/wait.h>

// The validator: how it is called, and what it says of good modules.

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class ValidateTest : public testing::Test {
protected:
    /// Runs it on a module beside the program; `arguments` follow the module's name.
    int Validate(const std::string& module, const std::string& arguments) {
        // What a broken module leaks is not what it is caught by.
        const std::string line =
            "ASAN_OPTIONS=detect_leaks=" + std::string(module.starts_with("broken") ? "0 " : "1 ") +
            Treehost() + "validate '" + (BuildFolder() / module).string() + "' " + arguments +
            " > '" + (m_Folder / "output").string() + "' 2>&1";
        const int status = std::system(line.c_str());
        m_Output = Content(m_Folder / "output");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// The names of the checks that failed.
    std::vector<std::string> FailedChecks() const {
        std::vector<std::string> names;
        std::istringstream lines(m_Output);
        for (std::string line, word; std::getline(lines, line);) {
            std::istringstream words(line);
            if (words >> word && word == "FAILED" && words >> word) {
                names.push_back(word);
            }
        }
        return names;
    }

    TemporaryFolder m_Folder;
    std::string m_Output;
};

} // namespace

TEST_F(ValidateTest, StatusTellsWrongUsageFromWhatCannotBeLoaded) {
    const struct {
        const char *m_Module, *m_Arguments;
        int m_Status;
        const char* m_Says;
    } cases[] = {{"UITree.so", "--only module.exports", 0, "1 passed, 0 failed, 0 skipped"},
        {"UITree.so", "UITree --only module.exports", 0, "1 passed"},
        {"UITree.so", "--only nothing", 2, "no check matches"},
        {"UITree.so", "--only '['", 2, "not a regular expression"},
        {"UITree.so", "Other", 3, "no component"}, {"nowhere.so", "", 3, "not a library"},
        {"treehost", "", 3, "cannot load"}, {"NoFactory.so", "", 3, "not a module"}};
    for (const auto& [module, arguments, status, says] : cases) {
        EXPECT_EQ(Validate(module, arguments), status) << module << ' ' << arguments << m_Output;
        EXPECT_THAT(m_Output, HasSubstr(says)) << module << ' ' << arguments;
    }
    EXPECT_EQ(Validate("UITree.so", "--list --only exports"), 0);
    EXPECT_THAT(m_Output, HasSubstr("module.exports"));
    EXPECT_EQ(m_Output.find("passed"), std::string::npos) << "nothing is run for a list";
}

TEST_F(ValidateTest, ControlAndSampleModulePassEveryCheck) {
    for (const char* module : {"UITree.so", "Swatch.so"}) {
        EXPECT_EQ(Validate(module, "--time-limit 900"), 0) << m_Output;
    }
}

TEST_F(ValidateTest, ControlMayBeUsedBySeveralThreads) {
    EXPECT_EQ(Validate("UITree.so", "--only ^threads --in-process"), 0) << m_Output;
    EXPECT_THAT(m_Output, HasSubstr("\n3 passed, 0 failed, 0 skipped"));
}

TEST_F(ValidateTest, EachFaultIsFoundByTheCheckNamedForItAndByNoOther) {
    const struct {
        const char *m_Fault, *m_Checks, *m_Says;
    } cases[] = {{"None", "", "0 failed"},
        {"CountTooMany", "counts.balance", "IObjectInfo does not add one"},
        {"CountTooFew", "counts.balance", "IObjectInfo does not add one"},
        {"KeptReference", "counts.balance", "1 references to host objects are kept"},
        {"ChangingIdentity", "query.identity", "IParent answers IUnknown with another address"},
        {"OneSidedQuery", "query.answers", "IParent does not answer IRenderableObject"},
        {"OpenSave", "draw.canvas", "a save of the canvas is left open"},
        {"ChangedMatrix", "draw.canvas", "the matrix is changed"},
        {"DrawnOutside", "draw.clip", "pixels outside the rectangle"},
        {"RangeIgnored", "parameters.range", "parameter 1 begins with 101"},
        {"ShortSave", "settings.(cut-)?folders", "change parameter 1, 2"},
        {"PointerOnFailure", "module.names", "writes the creator"},
        {"RunningThread", "module.threads", "runs on"}, {"Crash", "null.pointers", "ended "},
        {"EndlessLoop", "parameters.numbers", "ended by SIGKILL"},
        {"SymbolTooMany", "module.exports", "Helper is shown"},
        {"NeverUnloaded", "module.unloads", "is still there"},
        {"Exception", "faults.memory-(once|onwards)", "an exception leaves an operation"},
        {"MemoryLeak", "create.grows|module.loads", "memory grows"}};
    // The one that never ends is waited for as long as the slowest check may need somewhere.
    const std::string endless = *EMULATOR ? "--time-limit 120" : "--time-limit 20";
    for (const auto& [fault, checks, says] : cases) {
        const std::string name = fault;
        EXPECT_EQ(Validate("broken/Broken" + name + ".so",
                      name == "EndlessLoop" ? endless : "--time-limit 900"),
            *checks ? 1 : 0);
        EXPECT_THAT(m_Output, HasSubstr(says)) << fault;
        for (const std::string& failed : FailedChecks()) {
            EXPECT_THAT(failed, MatchesRegex(checks)) << fault;
        }
    }
}

TEST_F(ValidateTest, ReportsForProgramsHoldTheSame) {
    const std::string junit = m_Folder / "junit.xml";
    ASSERT_EQ(
        Validate("UITree.so", "--json --only 'module.(exports|names)' --junit '" + junit + "'"), 0);
    EXPECT_THAT(m_Output, HasSubstr("\"component\": \"UITree\",\n  \"passed\": 2,"));
    EXPECT_THAT(
        m_Output, HasSubstr("\"name\": \"module.exports\",\n      \"outcome\": \"passed\""));
    EXPECT_THAT(Content(junit), HasSubstr("<testsuite name=\"UITree\" tests=\"2\" failures=\"0\""));
    EXPECT_THAT(Content(junit), HasSubstr("<testcase classname=\"UITree\" name=\"module.names\""));
}
