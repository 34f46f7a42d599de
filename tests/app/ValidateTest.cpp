#include "app/validate/Child.h"
#include "tests/support/HostTest.h"

#include <gmock/gmock.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

// The validator: how it is called, and what it says of good modules.

namespace {

using testing::ContainsRegex;
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
        {"UITree.so", "Other", 3, "no component"}, {"nowhere.so", "", 3, "no such file: /"},
        {"broken", "", 3, "not a file: /"},
        {"UITree.so", "--junit /nowhere/report.xml", 1, "cannot write /nowhere/report.xml"},
        {"UITree.so", "--list --json --only exports", 0, "\"name\": \"module.exports\""},
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

/// A module with one fault: the checks that find it, what they say in their order, and which are
/// tried.
struct Fault {
    const char *m_Name, *m_Checks, *m_Says, *m_Arguments = "--time-limit 900";
};

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSlow = true;
#else
constexpr bool kIsSlow = sizeof(EMULATOR) > 1;
#endif

/// For a tree, where all is slow without the checks that take longest: create.*, use.* and
/// faults.*.
constexpr const char* kOfTrees =
    kIsSlow ? "--time-limit 900 --only "
              "'^(module|query|counts|host|null|param|settings|draw|numbers|threads)'"
            : "--time-limit 900";

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.m_Name;
}

class BrokenModuleTest : public ValidateTest, public testing::WithParamInterface<Fault> {};

TEST_P(BrokenModuleTest, IsFoundByTheCheckNamedForItAndByNoOther) {
    const auto& [name, checks, says, arguments] = GetParam();
    if (kIsSlow && std::string(name) == "MappingLeak") {
        GTEST_SKIP() << "mappings of an emulator or a sanitizer hide it";
    }
    EXPECT_EQ(Validate("broken/Broken" + std::string(name) + ".so", arguments), *checks ? 1 : 0);
    EXPECT_THAT(m_Output, ContainsRegex(says));
    for (const std::string& failed : FailedChecks()) {
        EXPECT_THAT(failed, MatchesRegex(checks)) << m_Output;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, BrokenModuleTest,
    testing::Values(Fault{"None", "", "0 failed"},
        Fault{"CountTooMany", "counts.balance", "IObjectInfo does not add one"},
        Fault{"CountTooFew", "counts.balance", "IObjectInfo does not add one"},
        Fault{"KeptReference", "counts.balance|use.grows", "1 references to host objects are kept"},
        Fault{
            "ChangingIdentity", "query.identity", "IParent answers IUnknown with another address"},
        Fault{"OneSidedQuery", "query.answers", "IParent does not answer IRenderableObject"},
        Fault{"OpenSave", "draw.canvas", "a save of the canvas is left open"},
        Fault{"SaveOpenOnFailure", "faults.memory-(once|onwards)",
            "a save of the canvas is left open"},
        Fault{"ChangedMatrix", "draw.canvas", "the matrix is changed"},
        Fault{"DrawnOutside", "draw.clip", "pixels outside the rectangle"},
        Fault{"DeadAfterFault", "faults.memory-(once|onwards)",
            "it does not draw as ever when all is well again"},
        Fault{"RangeIgnored", "parameters.range", "parameter 100 begins with 101"},
        Fault{"ShortSave", "settings.(cut-)?folders", "change parameter 100, 101"},
        Fault{"XmlNothing", "settings.(cut-)?xml", "nothing is saved as XML"},
        Fault{"PointerOnFailure", "module.names", "writes the creator"},
        Fault{"RunningThread", "module.threads", "runs on"},
        Fault{"Crash", "null.pointers", " in Render"},
        Fault{"CrashInPair", "numbers.pairs", " with left = 2147483647, width = -2147483648"},
        Fault{"BlindTrust", "host.missing|faults.*", " without ComponentString"},
        Fault{"EndlessLoop", "parameters.numbers",
            "ran longer than 5 s, ended by SIGKILL with the unknown parameter 2147483647",
            "--only parameters --time-limit 5"},
        Fault{"SymbolTooMany", "module.exports", "Helper is shown"},
        Fault{"NeverUnloaded", "module.unloads", "is still there"},
        Fault{"Exception", "faults.memory-(once|onwards)", "an exception leaves an operation"},
        Fault{"LeakOnFailure", "create.fails|faults.memory-(once|onwards)", "blocks are kept"},
        Fault{"MemoryLeak", "create.grows|module.loads", "memory grows with every object"},
        Fault{"LeakInUse", "use.grows", "memory grows with every use"},
        Fault{"FileLeak", "create.grows|module.loads", "open files grow with every object"},
        Fault{"MappingLeak", "create.grows|module.loads", "mapped pages grow with every object"},
        // The control itself, changed in one place.
        Fault{"NextRowHit", "draw.hits", "where 'A' is drawn, 'a1' is hit", kOfTrees},
        Fault{"RingBelowRoot", "hostile.rings", "with a ring of 1 below the root it asks for ever",
            kOfTrees},
        Fault{"ItemUnchecked", "hostile.(counts|items|changes)|faults.host-(once|onwards)",
            " with counts that change.* with items that are null.* with items removed while",
            kOfTrees},
        Fault{"SelectionNotHeld", "hostile.changes", " with a tree that is unbound at question ",
            kOfTrees},
        Fault{"Recursion", "hostile.depth", "FAILED +hostile.depth", kOfTrees},
        Fault{"LockLeftOut", "threads.(listeners|binding)",
            "a listener is held too late.*a collection is held too late", kOfTrees},
        Fault{"CountInTwoSteps", "threads.*", "the count is not what it was", kOfTrees}),
    [](const auto& test) { return test.param.m_Name; });

TEST(ChildTest, BodyThatPausesIsEndedAndToldWithItsPlace) {
    std::string heard;
    const ChildEnd end = RunChild(
        [](const Tell& tell) {
            tell('f', "found");
            tell(kPlace, "first");
            tell(kPlace, "at the end");
            while (true) {
                pause();
            }
        },
        [&](char kind, const std::string& text) { heard += kind + text; }, std::chrono::seconds(1));
    EXPECT_FALSE(end.m_IsDone);
    EXPECT_EQ(end.m_Reason, "ran longer than 1 s, ended by SIGKILL");
    EXPECT_EQ(end.m_Place, "at the end");
    EXPECT_EQ(heard, "ffound");
}

TEST_F(ValidateTest, ReportsForProgramsHoldTheSame) {
    const std::string junit = m_Folder / "junit.xml";
    ASSERT_EQ(
        Validate("UITree.so", "--json --only 'module.(exports|names)' --junit '" + junit + "'"), 0);
    EXPECT_THAT(m_Output, HasSubstr("\"component\": \"UITree\",\n  \"passed\": 2,"));
    EXPECT_THAT(
        m_Output, HasSubstr("\"name\": \"module.exports\",\n      \"outcome\": \"passed\""));
    EXPECT_THAT(Content(junit), HasSubstr("<testsuite name=\"UITree\" tests=\"2\" failures=\"0\""));
    EXPECT_THAT(Content(junit), HasSubstr("skipped=\"0\" time=\""));
    EXPECT_THAT(Content(junit), HasSubstr("<testcase classname=\"UITree\" name=\"module.names\""));
    Validate("broken/BrokenCrash.so", "--json --only null --junit '" + junit + "'");
    EXPECT_THAT(m_Output, HasSubstr("\"output\": \"last words\\n"));
    EXPECT_THAT(Content(junit), HasSubstr("<system-out>last words"));
}
