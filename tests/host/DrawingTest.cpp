#include "host/drawing/Cairo.h"
#include "host/drawing/IconFile.h"
#include "host/drawing/RenderStyle.h"
#include "host/drawing/TextRenderer.h"
#include "tests/support/HostTest.h"

namespace {

using DrawingTest = HostTest;

struct Extent {
    double m_Left, m_Top, m_Width, m_Height;
    bool operator==(const Extent&) const = default;
    double Right() const { return m_Left + m_Width; }
};

/// The smallest rectangle around everything that is drawn on a surface of 60 pixels' height that
/// ends at the right at `clip`; all zeros when nothing is.
Extent InkOf(const std::function<void(UbuntuCanvas*)>& draw, double clip = 300) {
    const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    const ContextPtr context(cairo_create(surface.get()));
    cairo_rectangle(context.get(), 0, 0, clip, 60);
    cairo_clip(context.get());
    UbuntuCanvas canvas{context.get()};
    draw(&canvas);
    Extent ink{};
    auto& [left, top, width, height] = ink;
    cairo_recording_surface_ink_extents(surface.get(), &left, &top, &width, &height);
    return ink;
}

Extent InkOf(std::wstring_view text, CANVASRect rect, double clip = 300) {
    const auto style = RenderStyle::Make();
    style->SetStyleSize(20);
    const auto draw = [&](UbuntuCanvas* canvas) {
        TextRenderer::Make()->DrawText(style.Get(), Refer(text), canvas, &rect, 0, 0);
    };
    return InkOf(draw, clip);
}

} // namespace

TEST_F(DrawingTest, TextIsDrawnInItsRectangleAndEndsThereOrAtTheClip) {
    const Extent ink = InkOf(L"Hxg", {20, 10, 200, 40});
    EXPECT_GE(ink.m_Left, 20);
    EXPECT_GT(ink.m_Width, 15);
    EXPECT_NEAR(ink.m_Top + ink.m_Height / 2, 30, 5) << "centred in the height";
    const std::wstring text(200, L'm');
    const Extent inRectangle = InkOf(text, {10, 0, 150, 60});
    EXPECT_LE(inRectangle.Right(), 160);
    EXPECT_GT(inRectangle.m_Width, 120);
    // Without the ellipsis the clip would cut a letter.
    EXPECT_EQ(InkOf(text, {10, 0, 10000, 60}, 160), inRectangle);
    EXPECT_EQ(InkOf(text, {200, 0, 50, 60}, 160), Extent{});
    EXPECT_GT(InkOf({L"a\nb", 3}, {0, 0, 300, 60}).m_Width, InkOf(L"a", {0, 0, 300, 60}).m_Width);
}

TEST_F(DrawingTest, OddTextNeverDisturbsTheRenderer) {
    const std::wstring oddTexts[] = {L"", {L'\0', L'a'}, L"a\nb\r\tc", {wchar_t(0xD800)},
        {wchar_t(0x110000)}, {wchar_t(-1)}, L"\u202e\u05d0\u0301\u200d\U0001F600",
        std::wstring(100000, L'\u0301'), std::wstring(100000, L'W'), L"\ufffe\uffff\u2029x"};
    for (const std::wstring& text : oddTexts) {
        EXPECT_LE(InkOf(text, {0, 0, 300, 60}).Right(), 300);
    }
    const CANVASRect oddRects[] = {{0, 0, 0, 0}, {0, 0, -5, 20}, {INT32_MAX, 0, INT32_MAX, 20},
        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}};
    for (const CANVASRect& rect : oddRects) {
        EXPECT_EQ(InkOf(L"text", rect), Extent{});
    }
}

TEST_F(DrawingTest, IllFormedTextBecomesReplacementCharacters) {
    EXPECT_EQ(ToWide("\u20ac\U0001F600\xff\x61\xc3"), L"\u20ac\U0001F600\uFFFDa\uFFFD");
    for (const char* text : {"\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        EXPECT_EQ(ToWide(text).front(), L'\uFFFD') << "overlong, a surrogate, too great";
    }
    const std::wstring wide{wchar_t(0xD800), wchar_t(0x110000), wchar_t(-1), L'\x1b', L'\u20ac'};
    EXPECT_EQ(ToUtf8(Refer(wide)), "\uFFFD\uFFFD\uFFFD\x1b\u20ac");
    EXPECT_EQ(ToPrintable(Refer(wide)), "\uFFFD\uFFFD\uFFFD\uFFFD\u20ac");
}

TEST_F(DrawingTest, IconFillsItsRectangleAndADamagedOneKeepsThePrevious) {
    const TemporaryFolder folder;
    std::ofstream(folder / "bad.png") << "\x89PNG\r\n\x1a\nand then nothing";
    const auto good = BuildFolder() / "share/_icons/UITreeOpen.png";
    const auto icon = IconFile::Make();
    CANVASRect rect{10, 12, 22, 22};
    EXPECT_LT(icon->Render(nullptr, &rect, nullptr, 0), 0) << "nothing loaded";
    for (const auto& path : {good, folder / "bad.png", folder / "missing.png"}) {
        icon->SetFileName(CreatableString::Make(path.wstring()).Get());
        EXPECT_EQ(icon->Populate() == S_OK, path == good) << path;
    }
    const auto draw = [&](UbuntuCanvas* canvas) {
        EXPECT_EQ(icon->Render(canvas, &rect, nullptr, 0), S_OK);
    };
    EXPECT_EQ(InkOf(draw), (Extent{10, 12, 23, 23})) << "with the smoothed edge";
}
