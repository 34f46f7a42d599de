#include "host/Cairo.h"
#include "host/IconFile.h"
#include "host/RenderStyle.h"
#include "host/TextRenderer.h"
#include "tests/host/HostTest.h"

#include <fstream>

bool operator==(const CANVASRect& first, const CANVASRect& second) {
    return first.left == second.left && first.top == second.top && first.width == second.width &&
           first.height == second.height;
}

namespace {

class DrawingTest : public HostTest {};

/// A transparent drawing surface that tells where something was drawn.
class Sheet {
public:
    static constexpr int32_t kWidth = 300;
    static constexpr int32_t kHeight = 60;

    UbuntuCanvas* Canvas() { return &m_Canvas; }
    void Clip(int32_t width) {
        cairo_rectangle(m_Context.get(), 0, 0, width, kHeight);
        cairo_clip(m_Context.get());
    }
    /// The smallest rectangle around everything drawn; all zeros when nothing is.
    CANVASRect Ink() {
        int32_t left = kWidth, top = kHeight, right = 0, bottom = 0;
        for (int32_t i = 0; i < kWidth * kHeight; ++i) {
            const int32_t x = i % kWidth;
            const int32_t y = i / kWidth;
            if (Pixel(x, y) != 0) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x + 1);
                bottom = std::max(bottom, y + 1);
            }
        }
        return right == 0 ? CANVASRect{} : CANVASRect{left, top, right - left, bottom - top};
    }
    uint32_t Pixel(int32_t x, int32_t y) {
        cairo_surface_flush(m_Surface.get());
        return reinterpret_cast<const uint32_t*>(
            cairo_image_surface_get_data(m_Surface.get()))[y * kWidth + x];
    }

private:
    SurfacePtr m_Surface{cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight)};
    ContextPtr m_Context{cairo_create(m_Surface.get())};
    UbuntuCanvas m_Canvas{m_Context.get()};
};

/// Where the ink of a text lies on a sheet that is clipped at `clip`.
CANVASRect InkOf(std::wstring_view text, CANVASRect rect, int32_t clip = Sheet::kWidth) {
    Sheet sheet;
    sheet.Clip(clip);
    const auto style = RenderStyle::Make();
    style->SetStyleSize(20);
    TextRenderer::Make()->DrawText(style.Get(), Refer(text), sheet.Canvas(), &rect, 0, 0);
    return sheet.Ink();
}

} // namespace

TEST_F(DrawingTest, TextIsDrawnInItsRectangleAndEndsThereOrAtTheClip) {
    const CANVASRect ink = InkOf(L"Hxg", {20, 10, 200, 40});
    EXPECT_GE(ink.left, 20);
    EXPECT_GT(ink.width, 15);
    EXPECT_NEAR(ink.top + ink.height / 2, 30, 5) << "centred in the height";
    const std::wstring text(200, L'm');
    const CANVASRect inRectangle = InkOf(text, {10, 0, 150, 60});
    EXPECT_LE(inRectangle.left + inRectangle.width, 160);
    EXPECT_GT(inRectangle.width, 120);
    // Without the ellipsis the clip would cut a letter.
    EXPECT_TRUE(InkOf(text, {10, 0, 10000, 60}, 160) == inRectangle);
    EXPECT_TRUE(InkOf(text, {200, 0, 50, 60}, 160) == CANVASRect{});
    EXPECT_GT(InkOf({L"a\nb", 3}, {0, 0, 300, 60}).width, InkOf(L"a", {0, 0, 300, 60}).width);
}

TEST_F(DrawingTest, OddTextNeverDisturbsTheRenderer) {
    const std::wstring oddTexts[] = {L"", {L'\0', L'a'}, L"a\nb\r\tc", {wchar_t(0xD800)},
        {wchar_t(0x110000)}, {wchar_t(-1)}, L"\u202e\u05d0\u0301\u200d\U0001F600",
        std::wstring(100000, L'\u0301'), std::wstring(100000, L'W'), L"\ufffe\uffff\u2029x"};
    for (const std::wstring& text : oddTexts) {
        InkOf(text, {0, 0, 300, 60});
    }
    const CANVASRect oddRects[] = {{0, 0, 0, 0}, {0, 0, -5, 20}, {INT32_MAX, 0, INT32_MAX, 20},
        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}};
    for (const CANVASRect& rect : oddRects) {
        EXPECT_TRUE(InkOf(L"text", rect) == CANVASRect{});
    }
}

TEST_F(DrawingTest, IconFillsItsRectangleAndADamagedOneKeepsThePrevious) {
    const TemporaryFolder folder;
    std::ofstream(folder / "bad.png") << "\x89PNG\r\n\x1a\nand then nothing";
    for (const char* name : {"UITreeOpen.png", "UITreeClosed.png"}) {
        const auto icon = IconFile::Make();
        Sheet sheet;
        CANVASRect rect{10, 12, 22, 22};
        EXPECT_LT(icon->Render(sheet.Canvas(), &rect, nullptr, 0), 0) << "nothing loaded";
        for (const auto& path :
            {BuildFolder() / "share/_icons" / name, folder / "bad.png", folder / "missing.png"}) {
            icon->SetFileName(CreatableString::Make(path.wstring()).Get());
            EXPECT_EQ(icon->Populate() == S_OK, path.filename() == name) << path;
        }
        EXPECT_EQ(icon->Render(sheet.Canvas(), &rect, nullptr, 0), S_OK);
        const CANVASRect ink = sheet.Ink();
        EXPECT_TRUE(ink.left >= 10 && ink.left + ink.width <= 32 && ink.width > 15);
        EXPECT_TRUE(ink.top >= 12 && ink.top + ink.height <= 34 && ink.height > 12);
        EXPECT_EQ(sheet.Pixel(31, 12), 0U) << "transparent around the folder";
    }
}
