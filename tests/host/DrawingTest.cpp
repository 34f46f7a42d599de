#include "host/drawing/Cairo.h"
#include "host/drawing/IconFile.h"
#include "host/drawing/ItemPicture.h"
#include "host/drawing/RenderStyle.h"
#include "host/drawing/TextBox.h"
#include "host/drawing/TextLayouts.h"
#include "host/drawing/TextRenderer.h"
#include "tests/support/HostTest.h"

#include <random>
#include <set>

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

/// The bytes of a picture of 160x120 pixels.
std::string PixelsOf(const std::function<void(cairo_t*)>& draw, double deviceScale = 1) {
    const SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 160, 120));
    cairo_surface_set_device_scale(surface.get(), deviceScale, deviceScale);
    draw(ContextPtr(cairo_create(surface.get())).get());
    cairo_surface_flush(surface.get());
    return {reinterpret_cast<const char*>(cairo_image_surface_get_data(surface.get())),
        size_t(cairo_image_surface_get_stride(surface.get())) * 120};
}

std::string PixelsOf(
    TextRenderer& renderer, std::wstring_view text, int size, int width, double scale) {
    const auto style = RenderStyle::Make();
    style->SetStyleSize(size);
    return PixelsOf([&](cairo_t* context) {
        cairo_scale(context, scale, scale);
        UbuntuCanvas canvas{context};
        CANVASRect rect{3, 2, width, 40};
        EXPECT_EQ(renderer.DrawText(style.Get(), Refer(text), &canvas, &rect, 0, 0), S_OK);
    });
}

/// How much two pictures differ in one colour of one pixel, at most.
int LargestDifference(const std::string& one, const std::string& other) {
    int largest = 0;
    for (size_t i = 0; i < one.size(); ++i) {
        largest = std::max(largest, std::abs(uint8_t(one[i]) - uint8_t(other[i])));
    }
    return largest;
}

/// The image in a file as cairo scales it.
void DrawScaled(cairo_t* context, const std::filesystem::path& file, const CANVASRect& rect) {
    const SurfacePtr image(cairo_image_surface_create_from_png(file.c_str()));
    cairo_translate(context, rect.left, rect.top);
    cairo_scale(context, double(rect.width) / cairo_image_surface_get_width(image.get()),
        double(rect.height) / cairo_image_surface_get_height(image.get()));
    cairo_set_source_surface(context, image.get(), 0, 0);
    cairo_paint(context);
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
    EXPECT_GT(InkOf(L"H", {0, 0, 300, 60}).m_Height, InkOf(L"H", {0, 0, 300, 30}).m_Height);
    EXPECT_LE(InkOf(L"Hxg", {0, 20, 300, 8}).m_Height, 10) << "a low row is not left";
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

TEST_F(DrawingTest, TextDrawnBeforeLooksAsWhenDrawnFirst) {
    const std::wstring texts[] = {L"Hxg", L"Hxg ", L"a label too long for its rectangle",
        L"\u05d0\u05d1\u05d2 \u0627\u0628", {wchar_t(0xD800), L'a'}, L"", std::wstring(300, L'i'),
        std::wstring(300, L'i') + L"j"};
    const auto warm = TextRenderer::Make();
    for (int round = 0; round < 2; ++round) {
        for (const double scale : {1.0, 2.0, 1.0, 1.25}) {
            for (const int size : {11, 20}) {
                for (const int width : {20, 60, 150}) {
                    for (const std::wstring& text : texts) {
                        EXPECT_TRUE(PixelsOf(*warm.Get(), text, size, width, scale) ==
                                    PixelsOf(*TextRenderer::Make().Get(), text, size, width, scale))
                            << round << " size " << size << " width " << width << " scale "
                            << scale;
                    }
                }
            }
        }
    }
}

TEST_F(DrawingTest, TextsAreLaidOutOnceWhileFewEnoughAreDrawnBetween) {
    const SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 9, 9));
    const ContextPtr context(cairo_create(surface.get()));
    TextLayouts layouts;
    const auto get = [&](int number) {
        return layouts.Get(context.get(), L"row " + std::to_wstring(number), 11, 100);
    };
    const PangoLayout* first = get(0);
    for (int i = 1; i < 3 * int(TextLayouts::kMostKept); ++i) {
        get(i);
        EXPECT_EQ(get(0), first) << "drawn all the time, and " << i << " others";
    }
    EXPECT_NE(layouts.Get(context.get(), L"row 0", 11, 99), first);
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

TEST_F(DrawingTest, IconIsWhatItsFileHoldsWhenItIsReadWhateverItsSize) {
    const TemporaryFolder folder;
    const auto file = folder / "icon.png";
    const auto write = [&](int32_t color, int noise) {
        const SurfacePtr image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 200, 200));
        const ContextPtr context(cairo_create(image.get()));
        FillRect(context.get(), {0, 0, 200, 200}, color);
        std::minstd_rand random;
        for (int i = 0; i < noise; ++i) { // which cannot be compressed much
            FillRect(context.get(), {i % 200, i / 200, 1, 1}, int32_t(random() & 0xFFFFFF));
        }
        cairo_surface_write_to_png(image.get(), file.c_str());
    };
    const auto icon = IconFile::Make();
    icon->SetFileName(CreatableString::Make(file.wstring()).Get());
    const auto draw = [&](cairo_t* to) {
        UbuntuCanvas canvas{to};
        CANVASRect rect{0, 0, 20, 20};
        EXPECT_EQ(icon->Render(&canvas, &rect, nullptr, 0), S_OK);
    };
    std::set<std::string> pictures;
    for (const auto& [color, noise] : {std::pair(0xFF0000, 0), {0x0000FF, 0}, {0x0000FF, 40'000}}) {
        write(color, noise);
        EXPECT_EQ(std::filesystem::file_size(file) > 65'536, noise > 0);
        ASSERT_EQ(icon->Populate(), S_OK);
        pictures.insert(PixelsOf(draw));
    }
    EXPECT_EQ(pictures.size(), 3U);
}

TEST_F(DrawingTest, IconLooksAsScaledByCairoAlsoWhenDrawnAgain) {
    using Place = void (*)(cairo_t*);
    const Place places[] = {[](cairo_t*) {}, [](cairo_t* to) { cairo_scale(to, 2, 2); },
        [](cairo_t* to) { cairo_scale(to, 1.5, 1.5); }, [](cairo_t* to) { cairo_scale(to, 5, 4); },
        [](cairo_t* to) { cairo_translate(to, 3, 0.5); },
        [](cairo_t* to) { cairo_rotate(to, 0.1); },
        [](cairo_t* to) { cairo_translate(to, 60, 0), cairo_scale(to, -1, 1); },
        [](cairo_t* to) {
            cairo_rectangle(to, 8, 9, 15, 15), cairo_clip(to), cairo_push_group(to);
        }};
    constexpr int kRounding = 2; // of 255: positions in the image are rounded
    const auto icon = IconFile::Make();
    for (const char* name : {"UITreeOpen.png", "UITreeClosed.png"}) {
        const auto file = BuildFolder() / "share/_icons" / name;
        icon->SetFileName(CreatableString::Make(file.wstring()).Get());
        ASSERT_EQ(icon->Populate(), S_OK);
        for (size_t i = 0; i < 4 * std::size(places); ++i) {
            CANVASRect rect{6, 8, i % 2 == 0 ? 22 : 15, 22};
            const auto picture = [&](const std::function<void(cairo_t*)>& draw) {
                const auto drawInPlace = [&](cairo_t* to) {
                    places[i / 4](to);
                    draw(to);
                    if (cairo_get_group_target(to) != cairo_get_target(to)) {
                        cairo_pop_group_to_source(to);
                        cairo_paint(to);
                    }
                };
                return PixelsOf(drawInPlace, i % 4 < 2 ? 1 : 2);
            };
            const auto drawn = [&](cairo_t* to) {
                UbuntuCanvas canvas{to};
                EXPECT_EQ(icon->Render(&canvas, &rect, nullptr, 0), S_OK);
            };
            const auto wanted = picture([&](cairo_t* to) { DrawScaled(to, file, rect); });
            EXPECT_LE(LargestDifference(picture(drawn), wanted), kRounding)
                << name << " first, place " << i;
            EXPECT_LE(LargestDifference(picture(drawn), wanted), kRounding)
                << name << " again, place " << i;
        }
    }
}

TEST_F(DrawingTest, TextBoxTakesAsManyLinesAsItNeedsWithinItsLimits) {
    const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    const ContextPtr context(cairo_create(surface.get()));
    const TextBox line(context.get(), "short", 12, {200, 200});
    for (const std::string& text : {Repeated("two words ", 9), Repeated("oneword", 9)}) {
        const TextBox box(context.get(), text, 12, {200, 200});
        EXPECT_TRUE(box.Width() <= 200 && box.Width() > line.Width()) << text;
        EXPECT_GE(box.Height(), 2 * line.Height()) << text;
        EXPECT_EQ(TextBox(context.get(), text + '\n' + text, 12, {200, line.Height()}).Height(),
            line.Height())
            << text;
    }
}

TEST_F(DrawingTest, EachKindOfItemHasAPictureOfItsOwnInItsSquare) {
    for (const double scale : {1.0, 2.0}) {
        std::set<std::string> pictures{PixelsOf([](cairo_t*) {}, scale)};
        const size_t last = size_t(ItemKind::kFault);
        for (size_t kind = 0; kind <= last; ++kind) {
            const auto draw = [&](UbuntuCanvas* canvas) {
                const CANVASRect rect{10, 10, 24, 18};
                DrawItemPicture(canvas, &rect, {ItemKind(kind)});
            };
            const Extent ink = InkOf(draw);
            EXPECT_TRUE(ink.m_Left >= 13 && ink.Right() <= 31 && ink.m_Top >= 10 &&
                        ink.m_Top + ink.m_Height <= 28)
                << kind;
            pictures.insert(PixelsOf(
                [&](cairo_t* context) {
                    UbuntuCanvas canvas{context};
                    draw(&canvas);
                },
                scale));
        }
        EXPECT_EQ(pictures.size(), 1 + last + 1);
    }
}
