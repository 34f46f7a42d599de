#include "tests/support/HostTest.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

// The validator: how it is called, and what it says of good modules.

namespace {

using testing::HasSubstr;

class ValidateTest : public testing::Test {
protected:
    /// Runs it on a module beside the program; `arguments` follow the module's name.
    int Validate(const std::string& module, const std::string& arguments) {
        const std::string line = Treehost() + "validate '" + (BuildFolder() / module).string() +
                                 "' " + arguments + " > '" + (m_Folder / "output").string() +
                                 "' 2>&1";
        const int status = std::system(line.c_str());
        m_Output = Content(m_Folder / "output");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
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
