#include "app/session/Session.h"
#include "app/settings/Palette.h"
#include "tests/support/TreeTest.h"

#include "host/data/Expansion.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>

// What the host draws: beneath the rows, and beside their texts.

namespace {

constexpr Size kFourRows{200, 4 * 22};

/// Row by row; of a picture that has none, nothing.
std::string PixelsOf(cairo_surface_t* picture) {
    const int width = cairo_image_surface_get_width(picture);
    std::string pixels = std::to_string(width) + ':';
    for (int y = 0; y < cairo_image_surface_get_height(picture); ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(
            cairo_image_surface_get_data(picture) +
            ptrdiff_t{y} * cairo_image_surface_get_stride(picture));
        for (int x = 0; x < width; ++x) {
            pixels += std::to_string(row[x] & 0xFFFFFF) + ' ';
        }
    }
    return pixels;
}

/// How light a colour is to the eye, from 0 to 1.
double LightOf(int32_t color) {
    const auto part = [color](int shift) {
        const double value = (color >> shift & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

class PictureTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Bind("A\nB\nC");
        m_Session.emplace(m_Tree.Get(), kFourRows, m_Record);
    }
    void TearDown() override {
        m_Session.reset();
        TreeTest::TearDown();
    }

    /// The colours in the middle of the rows, right of their texts.
    std::vector<int32_t> RowColors() {
        const auto picture = DrawPicture({m_Tree.Get(), kFourRows, nullptr, m_Session->Marked()});
        std::vector<int32_t> colors;
        const auto* pixels = cairo_image_surface_get_data(picture.get());
        for (int row = 0; row < 4; ++row) {
            const ptrdiff_t stride = cairo_image_surface_get_stride(picture.get());
            const auto* pixel = pixels + (row * 22 + 11) * stride + ptrdiff_t{150} * 4;
            colors.push_back(pixel[2] << 16 | pixel[1] << 8 | pixel[0]);
        }
        return colors;
    }
    void Point(double y, int32_t action, int32_t state) {
        m_Session->Feed(PointerInput{state, action, 0, 60, y});
    }

    std::ostringstream m_Record;
    std::optional<Session> m_Session;
};

} // namespace

TEST_F(PictureTest, SelectedAndPointedRowsHaveBandsInEveryTheme) {
    for (const std::string& theme : ThemeNames()) {
        ApplyTheme(m_Tree.Get(), theme);
        const int32_t paper = PaletteOf(m_Tree.Get()).m_Paper;
        m_Session->NoteLeft();
        m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
        const auto selected = RowColors();
        const int32_t band = selected[1];
        EXPECT_NE(band, paper) << theme;
        EXPECT_EQ(selected, (std::vector{paper, band, paper, paper})) << theme;
        Point(50, POINTERACTION_MOVE, 0);
        const auto pointed = RowColors();
        EXPECT_TRUE(pointed[2] != paper && pointed[2] != band) << theme;
        Point(80, POINTERACTION_MOVE, 0);
        EXPECT_EQ(RowColors(), selected) << "below the last row";
    }
}

TEST_F(PictureTest, BarIsSlimUntilThePointerIsNearAndTellsThatItIsHeld) {
    Bind("A\nB\nC\nD\nE\nF\nG\nH");
    KeptPicture picture;
    m_Session->Draw(picture, {.m_Size = kFourRows});
    const struct {
        double m_X, m_Y;
        int32_t m_State, m_Action;
        BarLook m_Look;
    } steps[] = {{100, 50, 0, POINTERACTION_MOVE, BarLook::kSlim},
        {170, 80, 0, POINTERACTION_MOVE, BarLook::kNear},
        {190, 10, 0, POINTERACTION_MOVE, BarLook::kPointed},
        {190, 10, POINTERSTATE_PRIMARY, POINTERACTION_PRESS, BarLook::kHeld},
        {20, 10, POINTERSTATE_PRIMARY, POINTERACTION_MOVE, BarLook::kHeld},
        {20, 10, POINTERSTATE_PRIMARY, POINTERACTION_RELEASE, BarLook::kSlim},
        {190, 80, 0, POINTERACTION_MOVE, BarLook::kNear}, // on the strip, and on no row
        {20, 80, POINTERSTATE_PRIMARY, POINTERACTION_PRESS, BarLook::kSlim},
        {190, 10, POINTERSTATE_PRIMARY, POINTERACTION_MOVE, BarLook::kPointed}};
    std::set<std::string> looks;
    for (const auto& [x, y, state, action, look] : steps) {
        m_Session->Feed(PointerInput{state, action, 0, x, y});
        m_Session->Draw(picture, {.m_Size = kFourRows});
        EXPECT_EQ(m_Session->Marked().m_Bar, look) << x << ", " << y;
        EXPECT_EQ(m_Session->Marked().m_Pointed.has_value(), x < 178) << x << ", " << y;
        looks.insert(std::to_string(int(look)) + ' ' + PixelsOf(picture.Surface()));
    }
    EXPECT_GE(looks.size(), 7U) << "each look and place has a picture of its own";
    m_Session->NoteLeft();
    EXPECT_EQ(m_Session->Marked().m_Bar, BarLook::kSlim);
}

TEST_F(PictureTest, LabelThatIsCutIsShownWholeAfterAMomentUntilSomethingIsDone) {
    Bind("A label that is too long for four rows and a picture of them\nB\nC\nD\nE");
    KeptPicture picture;
    m_Session->Draw(picture, {.m_Size = kFourRows});
    const Input ends[] = {KeyInput{Key::kDown}, TypedInput{"x"},
        PointerInput{POINTERSTATE_PRIMARY, POINTERACTION_PRESS, 0, 60, 11},
        PointerInput{POINTERSTATE_WHEEL, POINTERACTION_MOVE, 0, 60, 11},
        PointerInput{0, POINTERACTION_MOVE, 0, 60, 33},   // a label that fits
        PointerInput{0, POINTERACTION_MOVE, 0, 190, 11}}; // the scroll bar
    for (const Input& end : ends) {
        Point(11, POINTERACTION_MOVE, 0);
        m_Session->Draw(picture, {.m_Size = kFourRows});
        const std::string before = PixelsOf(picture.Surface());
        m_Clock.Advance(Dwell::kPatience * 500);
        Point(12, POINTERACTION_MOVE, 0); // stays on it
        EXPECT_EQ(m_Session->UntilNextPicture(), Dwell::kPatience / 2);
        EXPECT_FALSE(m_Session->Draw(picture, {.m_Size = kFourRows}));
        m_Clock.Advance(Dwell::kPatience * 500);
        EXPECT_EQ(m_Session->UntilNextPicture(), std::nullopt);
        EXPECT_TRUE(m_Session->Draw(picture, {.m_Size = kFourRows}));
        EXPECT_NE(PixelsOf(picture.Surface()), before);
        m_Session->Feed(end);
        EXPECT_EQ(m_Session->Marked().m_Hint, std::nullopt) << ToText(end);
    }
    Point(33, POINTERACTION_MOVE, 0);
    EXPECT_EQ(m_Session->UntilNextPicture(), std::nullopt) << "nothing would come";
}

TEST_F(PictureTest, SelectedLabelIsLegibleInEveryThemeAlsoUnderThePointer) {
    constexpr int32_t kSelected = 0xFF0000;
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    for (const bool isPointed : {false, true}) {
        Point(isPointed ? 30 : 80, POINTERACTION_MOVE, 0);
        for (const std::string& theme : ThemeNames()) {
            ApplyTheme(m_Tree.Get(), theme);
            const double band = LightOf(RowColors()[1]) + 0.05;
            const double label = LightOf(kSelected) + 0.05;
            EXPECT_GE(std::max(band, label) / std::min(band, label), 3.5) << theme << isPointed;
        }
    }
}

/// Without texts, which each machine's fonts draw in their own way. UPDATE_PICTURES=1 in the
/// environment draws the references anew, to be looked at.
TEST_F(PictureTest, OpenersPicturesGuidesBandsAndBarAreDrawnAsTheyWereLookedAt) {
    Bind("\u00a0\n \u00a0\n  \u00a0\n\u00a0\n \u00a0\n\u00a0\n\u00a0");
    OpenLevels(m_Root.Get(), 2);
    m_Tree->SelectNode(3, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Session->ShowGuides();
    Point(30, POINTERACTION_MOVE, 0);
    for (const std::string& theme : ThemeNames()) {
        ApplyTheme(m_Tree.Get(), theme);
        for (const int32_t scale : {1, 2}) {
            const std::string file = PICTURES "/" + theme + std::to_string(scale) + ".png";
            const Size size{100, 88, double(scale)};
            const auto picture = DrawPicture({m_Tree.Get(), size, nullptr, m_Session->Marked()});
            if (std::getenv("UPDATE_PICTURES")) {
                WritePicture(picture.get(), file, file);
            }
            const SurfacePtr reference(cairo_image_surface_create_from_png(file.c_str()));
            EXPECT_TRUE(PixelsOf(picture.get()) == PixelsOf(reference.get())) << file;
        }
    }
}
