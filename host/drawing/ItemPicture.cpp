#include "host/drawing/ItemPicture.h"

#include "host/drawing/Cairo.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

constexpr int32_t kSmallest = 6; // pixels

constexpr int32_t kOutlineColor = 0x7D8894;
constexpr int32_t kPaperColor = 0xFDFDFD;
constexpr int32_t kFolderColor = 0xE8B54A;
constexpr int32_t kFolderOutline = 0xB07F1A;
constexpr int32_t kTextColor = 0xA3ADB8;
constexpr int32_t kSkyColor = 0x9CC4EA;
constexpr int32_t kHillColor = 0x5E9E5B;
constexpr int32_t kProgramColor = 0x4A7DB5;
constexpr int32_t kLinkColor = 0x2F6FB3;

/// Draws in units of a square of 16, of which the item fills the middle.
class Painter {
public:
    Painter(cairo_t* context, const CANVASRect& rect) : m_Context(context) {
        const int32_t side = std::min(rect.width, rect.height);
        m_Unit = side / 16.0;
        m_Left = rect.left + (rect.width - side) / 2;
        m_Top = rect.top + (rect.height - side) / 2;
        cairo_set_line_width(context, 1);
        cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    }

    void DrawFolder() {
        Trace({{1.5, 13.5}, {1.5, 3}, {6, 3}, {7.5, 5}, {14.5, 5}, {14.5, 13.5}}, true);
        FillAndOutline(kFolderColor, kFolderOutline);
        Trace({{1.5, 7}, {14.5, 7}}, false);
        Stroke(kFolderOutline);
    }
    void DrawPage() {
        Trace({{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}, true);
        FillAndOutline(kPaperColor, kOutlineColor);
        Trace({{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}, false);
        Stroke(kOutlineColor);
    }
    void DrawLines() {
        for (const double y : {6.5, 9.0, 11.5}) {
            Trace({{5.5, y}, {y > 10 ? 8.5 : 10.5, y}}, false);
            Stroke(kTextColor);
        }
    }
    void DrawImage() {
        Fill({{4.5, 6.5}, {11.5, 6.5}, {11.5, 12.5}, {4.5, 12.5}}, kSkyColor);
        Fill({{4.5, 12.5}, {7.5, 8.5}, {9, 10.5}, {10, 9.5}, {11.5, 12.5}}, kHillColor);
    }
    void DrawPrompt() {
        Trace({{5.5, 7}, {8, 9.25}, {5.5, 11.5}}, false);
        Stroke(kProgramColor);
        Trace({{8.5, 11.5}, {11, 11.5}}, false);
        Stroke(kProgramColor);
    }
    /// An arrow in the lower left corner.
    void DrawLink() {
        Fill({{0.5, 9}, {7, 9}, {7, 15.5}, {0.5, 15.5}}, kPaperColor);
        Trace({{2, 14}, {5.5, 10.5}}, false);
        Stroke(kLinkColor);
        Trace({{2.5, 10.5}, {5.5, 10.5}, {5.5, 13.5}}, false);
        Stroke(kLinkColor);
    }

private:
    struct Point {
        double m_X;
        double m_Y;
    };

    /// Corners lie on the middle of the canvas' pixels, so that thin lines are sharp.
    void Trace(std::initializer_list<Point> points, bool isClosed) {
        cairo_new_path(m_Context);
        for (const Point& point : points) {
            double x = m_Left + point.m_X * m_Unit;
            double y = m_Top + point.m_Y * m_Unit;
            cairo_user_to_device(m_Context, &x, &y);
            x = std::floor(x) + 0.5;
            y = std::floor(y) + 0.5;
            cairo_device_to_user(m_Context, &x, &y);
            cairo_line_to(m_Context, x, y);
        }
        if (isClosed) {
            cairo_close_path(m_Context);
        }
    }
    void Fill(std::initializer_list<Point> points, int32_t color) {
        Trace(points, true);
        SetSourceColor(m_Context, color);
        cairo_fill(m_Context);
    }
    void FillAndOutline(int32_t color, int32_t outline) {
        SetSourceColor(m_Context, color);
        cairo_fill_preserve(m_Context);
        Stroke(outline);
    }
    void Stroke(int32_t color) {
        SetSourceColor(m_Context, color);
        cairo_stroke(m_Context);
    }

    cairo_t* m_Context;
    double m_Unit;
    int32_t m_Left;
    int32_t m_Top;
};

} // namespace

void DrawItemPicture(UbuntuCanvas* canvas, const CANVASRect* rect, ItemLook look) {
    if (!CanDraw(canvas, rect) || std::min(rect->width, rect->height) < kSmallest) {
        return;
    }
    const CairoState state(canvas->m_Context);
    Painter painter(canvas->m_Context, *rect);
    if (look.m_Kind == ItemKind::kFolder) {
        painter.DrawFolder();
    } else {
        painter.DrawPage();
    }
    switch (look.m_Kind) {
    case ItemKind::kText:
        painter.DrawLines();
        break;
    case ItemKind::kImage:
        painter.DrawImage();
        break;
    case ItemKind::kProgram:
        painter.DrawPrompt();
        break;
    default:
        break;
    }
    if (look.m_IsLink) {
        painter.DrawLink();
    }
}
