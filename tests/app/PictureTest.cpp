#include "app/replay/Session.h"
#include "app/settings/Palette.h"
#include "tests/support/TreeTest.h"

#include "host/data/Expansion.h"

#include <cstdlib>

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
        const auto picture = DrawPicture(m_Tree.Get(), kFourRows, nullptr, m_Session->Marked());
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

/// Without texts, which each machine's fonts draw in their own way. UPDATE_PICTURES=1 in the
/// environment draws the references anew, to be looked at.
TEST_F(PictureTest, OpenersPicturesBandsAndBarAreDrawnAsTheyWereLookedAt) {
    Bind("\u00a0\n \u00a0\n  \u00a0\n\u00a0\n \u00a0\n\u00a0\n\u00a0");
    OpenLevels(m_Root.Get(), 1);
    m_Tree->SelectNode(3, SELECT_ABSOLUTE | SELECT_CURRENT);
    Point(30, POINTERACTION_MOVE, 0);
    for (const std::string theme : {"light", "dark"}) {
        ApplyTheme(m_Tree.Get(), theme);
        for (const int32_t scale : {1, 2}) {
            const std::string file = PICTURES "/" + theme + std::to_string(scale) + ".png";
            const Size size{100, 88, double(scale)};
            const auto picture = DrawPicture(m_Tree.Get(), size, nullptr, m_Session->Marked());
            if (std::getenv("UPDATE_PICTURES")) {
                WritePicture(picture.get(), file, file);
            }
            const SurfacePtr reference(cairo_image_surface_create_from_png(file.c_str()));
            EXPECT_TRUE(PixelsOf(picture.get()) == PixelsOf(reference.get())) << file;
        }
    }
}
