#include "tests/host/Treehost.h"

#include <cairo/cairo.h>
#include <nlohmann/json.hpp>

namespace {

class TreehostTest : public TreehostRun {};

constexpr const char* kOutline = "A\n  a1\n  a2\nB\n  b\n    bb\n";

} // namespace

TEST_F(TreehostTest, Rows_ShowsLevelsAndMarks) {
    EXPECT_EQ(Run("rows -", kOutline).m_Output, "+ A\n+ B\n");
    EXPECT_EQ(Run("rows - --depth 1", kOutline).m_Output, "- A\n    a1\n    a2\n- B\n  + b\n");
    EXPECT_EQ(Run("rows -", "esc\x1b[31m\n").m_Output, "  esc\uFFFD[31m\n");
    std::filesystem::create_directories(Path("tree/sub/deep"));
    std::ofstream(Path("tree/sub/file")) << "";
    EXPECT_EQ(Run("rows tree --depth 2").m_Output, "- sub\n  + deep\n    file\n");
}

TEST_F(TreehostTest, Shot_WritesThePictureBesideTheCaller) {
    const Outcome outcome = Run("shot - --out my.png --size 120x90 --open 1 --open 2", kOutline);
    EXPECT_EQ(outcome.m_Status, 0) << outcome.m_Errors;
    EXPECT_EQ(outcome.m_Output, "my.png\n");
    cairo_surface_t* picture = cairo_image_surface_create_from_png(Path("my.png").c_str());
    EXPECT_EQ(cairo_image_surface_get_width(picture), 120);
    EXPECT_EQ(cairo_image_surface_get_height(picture), 90);
    cairo_surface_destroy(picture);
}

TEST_F(TreehostTest, Shot_OpeningScrollingAndEmptinessChangeThePicture) {
    const auto shot = [&](const std::string& options, const std::string& input) {
        EXPECT_EQ(Run("shot - --size 200x150 " + options, input).m_Status, 0);
        return Content(Path("tree.png"));
    };
    const std::string closed = shot("", kOutline);
    EXPECT_NE(closed, shot("", "")) << "rows are drawn";
    EXPECT_NE(closed, shot("--open 0", kOutline));
    EXPECT_NE(closed, shot("--scroll 1", kOutline));
    EXPECT_EQ(shot("--depth 1", "A\n  a\n"), shot("--open 0", "A\n  a\n"));
    EXPECT_EQ(shot("--scroll 2147483647", kOutline), shot("--scroll 1", kOutline));
}

TEST_F(TreehostTest, Info_TellsInterfacesAndParameters) {
    const auto info = nlohmann::json::parse(Run("info --json").m_Output);
    const auto& interfaces = info["interfaces"];
    EXPECT_NE(std::find(interfaces.begin(), interfaces.end(), "IUITree"), interfaces.end());
    EXPECT_EQ(std::find(interfaces.begin(), interfaces.end(), "IVariant"), interfaces.end());
    const auto& parameters = info["parameters"];
    const auto height = std::find_if(parameters.begin(), parameters.end(),
        [](const auto& parameter) { return parameter["number"] == 4; });
    ASSERT_NE(height, parameters.end());
    EXPECT_EQ((*height)["type"], "long");
    EXPECT_EQ((*height)["value"], 15);
    EXPECT_NE(Run("info").m_Output.find("#4B4B4B"), std::string::npos);
}

TEST_F(TreehostTest, WrongUsage_IsOneLineAndStatus2) {
    const char* const wrong[] = {"", "bogus", "rows", "rows - extra", "rows /nowhere/at/all",
        "rows ''", "rows - --depth -1", "shot - --size 0x0", "shot - --size 100",
        "shot - --size 5x", "shot - --size 5x5x5", "shot - --size -5x5",
        "shot - --size 99999999999x5", "shot - --scroll 99999999999", "shot - --scroll x",
        "shot - --open 7", "shot - --open -1", "shot - --open 0 --open 1", "shot - --out ''"};
    for (const char* arguments : wrong) {
        const Outcome outcome = Run(arguments, "A\n  leaf\n");
        EXPECT_EQ(outcome.m_Status, 2) << arguments;
        EXPECT_EQ(outcome.m_Output, "") << arguments;
        EXPECT_EQ(outcome.m_Errors.substr(0, 10), "treehost: ") << arguments;
        EXPECT_EQ(std::count(outcome.m_Errors.begin(), outcome.m_Errors.end(), '\n'), 1)
            << arguments << ": " << outcome.m_Errors;
        EXPECT_LT(outcome.m_Errors.size(), 200U) << arguments;
    }
}

TEST_F(TreehostTest, ResultThatCannotBeWritten_IsStatus1) {
    EXPECT_EQ(Run("shot - --out no/such/folder.png", kOutline).m_Status, 1);
    EXPECT_EQ(Run("rows - > /dev/full", kOutline).m_Status, 1);
    EXPECT_EQ(Run("rows - >&-", kOutline).m_Status, 1);
    EXPECT_EQ(Run("shot - >&-", kOutline).m_Status, 1);
}

TEST_F(TreehostTest, MissingModule_IsStatus3WithTheLoadersText) {
    for (const char* file : {"treehost", "CollectionsEx.so", "Collections.so"}) {
        std::filesystem::copy_file(BuildFolder() / file, Path(file));
    }
    const Outcome outcome = RunProgram(Path("treehost"), "info", "");
    EXPECT_EQ(outcome.m_Status, 3);
    EXPECT_NE(outcome.m_Errors.find("UITree.so: cannot open shared object"), std::string::npos)
        << outcome.m_Errors;
}
