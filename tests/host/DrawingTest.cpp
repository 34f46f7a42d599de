#include "host/Cairo.h"
#include "host/FileItem.h"
#include "host/IconFile.h"
#include "host/RenderStyle.h"
#include "host/ScrollBar.h"
#include "host/TextRenderer.h"
#include "tests/host/HostTest.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <vector>

bool operator==(const CANVASRect& first, const CANVASRect& second) {
    return first.left == second.left && first.top == second.top && first.width == second.width &&
           first.height == second.height;
}
void PrintTo(const CANVASRect& rect, std::ostream* stream) {
    *stream << rect.left << ',' << rect.top << ' ' << rect.width << 'x' << rect.height;
}

namespace {

class DrawingTest : public HostTest {};

/// A transparent drawing surface that tells where something was drawn.
class Sheet {
public:
    Sheet(int32_t width, int32_t height)
        : m_Surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
          m_Context(cairo_create(m_Surface.get())), m_Width(width), m_Height(height) {}

    cairo_t* Context() { return m_Context.get(); }
    UbuntuCanvas* Canvas() { return &m_Canvas; }

    /// The smallest rectangle around everything drawn; all zeros when nothing is.
    CANVASRect Ink() {
        cairo_surface_flush(m_Surface.get());
        int32_t left = m_Width, top = m_Height, right = 0, bottom = 0;
        for (int32_t y = 0; y < m_Height; ++y) {
            for (int32_t x = 0; x < m_Width; ++x) {
                if (Pixel(x, y) != 0) {
                    left = std::min(left, x);
                    top = std::min(top, y);
                    right = std::max(right, x + 1);
                    bottom = std::max(bottom, y + 1);
                }
            }
        }
        return right == 0 ? CANVASRect{} : CANVASRect{left, top, right - left, bottom - top};
    }
    uint32_t Pixel(int32_t x, int32_t y) {
        const unsigned char* row = cairo_image_surface_get_data(m_Surface.get()) +
                                   y * cairo_image_surface_get_stride(m_Surface.get());
        return reinterpret_cast<const uint32_t*>(row)[x];
    }

private:
    SurfacePtr m_Surface;
    ContextPtr m_Context;
    UbuntuCanvas m_Canvas{m_Context.get()};
    int32_t m_Width;
    int32_t m_Height;
};

/// Where the ink of a text lies on a sheet that is clipped at `clip`.
CANVASRect InkOf(std::wstring_view text, CANVASRect rect, int32_t clip = 300) {
    Sheet sheet(300, 60);
    cairo_rectangle(sheet.Context(), 0, 0, clip, 60);
    cairo_clip(sheet.Context());
    const auto style = RenderStyle::Make();
    style->SetStyleSize(20);
    TextRenderer::Make()->DrawText(style.Get(), Refer(text), sheet.Canvas(), &rect, 0, 0);
    return sheet.Ink();
}

SmartPtr<CreatableString> PathString(const std::filesystem::path& path) {
    return MakeString(ToWide(path.string()));
}

struct Areas {
    int32_t m_Status;
    CANVASRect m_Bar{9, 9, 9, 9};
    CANVASRect m_Client{9, 9, 9, 9};
};

Areas LayOut(ScrollBar& bar, CANVASRect area) {
    Areas areas{};
    areas.m_Status = bar.Layout(&area, &areas.m_Bar, &areas.m_Client);
    return areas;
}

int32_t PosOf(ScrollBar& bar) {
    int32_t pos = -1;
    bar.GetPos(&pos);
    return pos;
}

constexpr CANVASRect kUntouched{9, 9, 9, 9};

} // namespace

TEST_F(DrawingTest, ScrollBar_KeepsItsPositionInTheRange) {
    const auto bar = ScrollBar::Make();
    bar->SetPos(500); // before a range is known
    EXPECT_EQ(PosOf(*bar.Get()), 500);
    bar->SetRange(0, 99);
    EXPECT_EQ(PosOf(*bar.Get()), 99);
    bar->SetPos(-1);
    EXPECT_EQ(PosOf(*bar.Get()), 0);
    bar->SetRange(10, 5);
    EXPECT_EQ(PosOf(*bar.Get()), 10);
}

TEST_F(DrawingTest, ScrollBar_IsShownWhenTheRowsDoNotFit) {
    const auto bar = ScrollBar::Make();
    bar->Configure(SCROLLBAR_WIDTH, 22);
    bar->SetRange(0, 9);
    const Areas fits = LayOut(*bar.Get(), {5, 6, 100, 10 * kDefaultRowHeight});
    EXPECT_GT(fits.m_Status, 0);
    EXPECT_EQ(fits.m_Bar, CANVASRect{});
    EXPECT_EQ(fits.m_Client, (CANVASRect{5, 6, 100, 220}));
    const Areas shown = LayOut(*bar.Get(), {5, 6, 100, 10 * kDefaultRowHeight - 1});
    EXPECT_EQ(shown.m_Status, 0);
    EXPECT_EQ(shown.m_Bar, (CANVASRect{83, 6, 22, 219}));
    EXPECT_EQ(shown.m_Client, (CANVASRect{5, 6, 78, 219}));
    const Areas narrow = LayOut(*bar.Get(), {0, 0, 10, 40});
    EXPECT_EQ(narrow.m_Bar, (CANVASRect{0, 0, 10, 40}));
    EXPECT_EQ(narrow.m_Client, (CANVASRect{0, 0, 0, 40}));
}

TEST_F(DrawingTest, ScrollBarWithoutAnArea_FailsAndTouchesNothing) {
    const auto bar = ScrollBar::Make();
    const Areas negative = LayOut(*bar.Get(), {0, 0, -1, 40});
    EXPECT_LT(negative.m_Status, 0);
    EXPECT_EQ(negative.m_Bar, kUntouched);
    EXPECT_EQ(negative.m_Client, kUntouched);
    EXPECT_LT(bar->Layout(nullptr, nullptr, nullptr), 0);
}

TEST_F(DrawingTest, ScrollBarOfAnyRange_DrawsInsideItsRectangle) {
    const std::pair<int32_t, int32_t> ranges[] = {
        {0, 0}, {0, 50}, {0, INT32_MAX}, {INT32_MIN, INT32_MAX}};
    for (const auto& [min, max] : ranges) {
        for (const int32_t pos : {min, max}) {
            Sheet sheet(40, 120);
            CANVASRect rect{8, 10, 20, 100};
            const auto bar = ScrollBar::Make();
            bar->SetRange(min, max);
            bar->SetPos(pos);
            bar->Render(sheet.Canvas(), &rect, nullptr, 0);
            EXPECT_EQ(sheet.Ink(), rect) << min << ".." << max << " at " << pos;
            if (max > 50) {
                const int32_t end = pos == min ? 10 : 109;
                EXPECT_NE(sheet.Pixel(18, end), sheet.Pixel(18, 119 - end)) << "thumb at its end";
            }
        }
    }
}

TEST_F(DrawingTest, Text_IsDrawnInItsRectangleInTheStylesColor) {
    const CANVASRect ink = InkOf(L"Hxg", {20, 10, 200, 40});
    EXPECT_GE(ink.left, 20);
    EXPECT_GT(ink.width, 15);
    EXPECT_NEAR(ink.top + ink.height / 2, 30, 5) << "centred in the height";
    Sheet sheet(100, 60);
    CANVASRect rect{0, 0, 100, 60};
    const auto style = RenderStyle::Make();
    style->SetStyleSize(40);
    style->SetColor(0x00FF00);
    const std::wstring block(3, L'\u2588');
    TextRenderer::Make()->DrawText(style.Get(), Refer(block), sheet.Canvas(), &rect, 0, 0);
    EXPECT_EQ(sheet.Pixel(15, 30), 0xFF00FF00U);
}

TEST_F(DrawingTest, LongText_EndsWhereTheRectangleOrTheClipEnds) {
    const std::wstring text(200, L'm');
    const CANVASRect inRectangle = InkOf(text, {10, 0, 150, 60});
    EXPECT_LE(inRectangle.left + inRectangle.width, 160);
    EXPECT_GT(inRectangle.width, 120);
    // The ellipsis stands low, so the last columns drawn are lower than the letters.
    const CANVASRect inClip = InkOf(text, {10, 0, 10000, 60}, 160);
    EXPECT_EQ(inClip, inRectangle);
    EXPECT_EQ(InkOf(text, {200, 0, 50, 60}, 160), CANVASRect{});
}

TEST_F(DrawingTest, OddText_NeverDisturbsTheRenderer) {
    const std::wstring oddTexts[] = {L"", {L'\0', L'a'}, L"a\nb\r\tc", {wchar_t(0xD800)},
        {wchar_t(0x110000)}, {wchar_t(-1)}, L"\u202e\u05d0\u0301\u200d\U0001F600",
        std::wstring(100000, L'\u0301'), std::wstring(100000, L'W'), L"\ufffe\uffff\u2029x"};
    for (const std::wstring& text : oddTexts) {
        InkOf(text, {0, 0, 300, 60});
    }
    const CANVASRect oddRects[] = {{0, 0, 0, 0}, {0, 0, -5, 20}, {INT32_MAX, 0, INT32_MAX, 20},
        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}};
    for (const CANVASRect& rect : oddRects) {
        EXPECT_EQ(InkOf(L"text", rect), CANVASRect{});
    }
    EXPECT_GT(InkOf({L"a\nb", 3}, {0, 0, 300, 60}).width, InkOf(L"a", {0, 0, 300, 60}).width);
}

TEST_F(DrawingTest, DrawingParts_LeaveTheContextAsItWas) {
    Sheet sheet(100, 100);
    cairo_rectangle(sheet.Context(), 0, 0, 30, 30);
    cairo_clip(sheet.Context());
    CANVASRect rect{10, 10, 60, 60};
    const auto bar = ScrollBar::Make();
    bar->SetRange(0, 99);
    bar->Render(sheet.Canvas(), &rect, nullptr, 0);
    FileItem::Make()->Render(sheet.Canvas(), &rect, nullptr, 0);
    TextRenderer::Make()->DrawText(
        RenderStyle::Make().Get(), Ref(L"wide text"), sheet.Canvas(), &rect, 0, 0);
    EXPECT_EQ(sheet.Ink(), (CANVASRect{10, 10, 20, 20})) << "the clip holds";
    cairo_matrix_t matrix;
    cairo_get_matrix(sheet.Context(), &matrix);
    EXPECT_EQ(matrix.x0, 0);
    EXPECT_EQ(cairo_status(sheet.Context()), CAIRO_STATUS_SUCCESS);
}

TEST_F(DrawingTest, Icon_FillsItsRectangle) {
    for (const char* name : {"UITreeOpen.png", "UITreeClosed.png"}) {
        const auto icon = IconFile::Make();
        Sheet sheet(64, 64);
        CANVASRect rect{10, 12, 22, 22};
        EXPECT_LT(icon->Render(sheet.Canvas(), &rect, nullptr, 0), 0) << "nothing loaded";
        icon->SetFileName(PathString(BuildFolder() / "share/_icons" / name).Get());
        ASSERT_EQ(icon->Populate(), S_OK);
        icon->Render(sheet.Canvas(), &rect, nullptr, 0);
        const CANVASRect ink = sheet.Ink();
        EXPECT_TRUE(ink.left >= 10 && ink.left + ink.width <= 32 && ink.width > 15);
        EXPECT_TRUE(ink.top >= 12 && ink.top + ink.height <= 34 && ink.height > 12);
        EXPECT_EQ(sheet.Pixel(31, 12), 0U) << "transparent around the folder";
    }
}

TEST_F(DrawingTest, DamagedIcon_FailsAndKeepsThePrevious) {
    const TemporaryFolder folder;
    std::ofstream(folder.Path() / "bad.png") << "\x89PNG\r\n\x1a\nand then nothing";
    const auto icon = IconFile::Make();
    EXPECT_LT(icon->Populate(), 0);
    icon->SetFileName(PathString(BuildFolder() / "share/_icons/UITreeOpen.png").Get());
    EXPECT_EQ(icon->Populate(), S_OK);
    icon->SetFileName(PathString(folder.Path() / "bad.png").Get());
    EXPECT_LT(icon->Populate(), 0);
    Sheet sheet(30, 30);
    CANVASRect rect{0, 0, 30, 30};
    EXPECT_EQ(icon->Render(sheet.Canvas(), &rect, nullptr, 0), S_OK);
    EXPECT_GT(sheet.Ink().width, 0);
}
