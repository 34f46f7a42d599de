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
constexpr int32_t kFolderFront = 0xF3CE7A;
constexpr int32_t kFolderOutline = 0xB07F1A;
constexpr int32_t kTextColor = 0xA3ADB8;
constexpr int32_t kSkyColor = 0x9CC4EA;
constexpr int32_t kHillColor = 0x5E9E5B;
constexpr int32_t kProgramColor = 0x4A7DB5;
constexpr int32_t kLinkColor = 0x2F6FB3;
constexpr int32_t kNameColor = 0x4A7DB5;
constexpr int32_t kValueColor = 0x5E9E5B;
constexpr int32_t kFaultColor = 0xF2B233;
constexpr int32_t kFaultOutline = 0x9A5B00;

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
    void DrawOpenFolder() {
        Trace({{1.5, 13.5}, {1.5, 3}, {6, 3}, {7.5, 5}, {13, 5}, {13, 7.5}, {13, 13.5}}, true);
        FillAndOutline(kFolderColor, kFolderOutline);
        Trace({{1.5, 13.5}, {4, 7.5}, {15, 7.5}, {13, 13.5}}, true);
        FillAndOutline(kFolderFront, kFolderOutline);
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
    void DrawObject() {
        const auto brace = [this](double outer, double inner, double tip) {
            Trace({{tip, 2.5}, {inner, 3.5}, {inner, 7}, {outer, 8}, {inner, 9}, {inner, 12.5},
                      {tip, 13.5}},
                false);
            Stroke(kNameColor);
        };
        brace(2.5, 4, 6);
        brace(13.5, 12, 10);
    }
    void DrawList() {
        Trace({{6, 2.5}, {3.5, 2.5}, {3.5, 13.5}, {6, 13.5}}, false);
        Stroke(kNameColor);
        Trace({{10, 2.5}, {12.5, 2.5}, {12.5, 13.5}, {10, 13.5}}, false);
        Stroke(kNameColor);
    }
    void DrawElement() {
        Trace({{5.5, 4.5}, {2, 8}, {5.5, 11.5}}, false);
        Stroke(kNameColor);
        Trace({{10.5, 4.5}, {14, 8}, {10.5, 11.5}}, false);
        Stroke(kNameColor);
        Trace({{9, 3.5}, {7, 12.5}}, false);
        Stroke(kNameColor);
    }
    void DrawEqual() {
        for (const double y : {6.5, 9.5}) {
            Trace({{4, y}, {12, y}}, false);
            Stroke(kNameColor);
        }
    }
    void DrawQuotes() {
        for (const double x : {3.5, 9.0}) {
            Fill({{x, 3.5}, {x + 3.5, 3.5}, {x + 2.25, 9}, {x + 1.25, 9}}, kValueColor);
        }
    }
    void DrawHash() {
        for (const double place : {6.0, 10.0}) {
            Trace({{3, place}, {13, place}}, false);
            Stroke(kValueColor);
            Trace({{place + 0.5, 3}, {place - 0.5, 13}}, false);
            Stroke(kValueColor);
        }
    }
    void DrawChoice(bool isOn) {
        Trace({{3.5, 3.5}, {12.5, 3.5}, {12.5, 12.5}, {3.5, 12.5}}, true);
        Stroke(kValueColor);
        if (isOn) {
            Trace({{5.5, 8}, {7.5, 10}, {10.5, 5.5}}, false);
            Stroke(kValueColor);
        }
    }
    void DrawNull() {
        Trace({{6, 3.5}, {10, 3.5}, {12.5, 6}, {12.5, 10}, {10, 12.5}, {6, 12.5}, {3.5, 10},
                  {3.5, 6}},
            true);
        Stroke(kOutlineColor);
        Trace({{4.5, 11.5}, {11.5, 4.5}}, false);
        Stroke(kOutlineColor);
    }
    void DrawFault() {
        Trace({{8, 2}, {14.5, 13.5}, {1.5, 13.5}}, true);
        FillAndOutline(kFaultColor, kFaultOutline);
        Trace({{8, 6}, {8, 10}}, false);
        Stroke(kFaultOutline);
        Trace({{8, 11}, {8, 12.5}}, false);
        Stroke(kFaultOutline);
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

void Draw(Painter& painter, ItemKind kind, bool isOpen) {
    switch (kind) {
    case ItemKind::kFolder:
        return isOpen ? painter.DrawOpenFolder() : painter.DrawFolder();
    case ItemKind::kFile:
        return painter.DrawPage();
    case ItemKind::kText:
        painter.DrawPage();
        return painter.DrawLines();
    case ItemKind::kImage:
        painter.DrawPage();
        return painter.DrawImage();
    case ItemKind::kProgram:
        painter.DrawPage();
        return painter.DrawPrompt();
    case ItemKind::kObject:
        return painter.DrawObject();
    case ItemKind::kList:
        return painter.DrawList();
    case ItemKind::kElement:
        return painter.DrawElement();
    case ItemKind::kAttribute:
        return painter.DrawEqual();
    case ItemKind::kString:
        return painter.DrawQuotes();
    case ItemKind::kNumber:
        return painter.DrawHash();
    case ItemKind::kTrue:
    case ItemKind::kFalse:
        return painter.DrawChoice(kind == ItemKind::kTrue);
    case ItemKind::kNull:
        return painter.DrawNull();
    case ItemKind::kFault:
        return painter.DrawFault();
    }
}

} // namespace

void DrawItemPicture(UbuntuCanvas* canvas, const CANVASRect* rect, ItemLook look, bool isOpen) {
    if (!CanDraw(canvas, rect) || std::min(rect->width, rect->height) < kSmallest) {
        return;
    }
    const CairoState state(canvas->m_Context);
    Painter painter(canvas->m_Context, *rect);
    Draw(painter, look.m_Kind, isOpen);
    if (look.m_IsLink) {
        painter.DrawLink();
    }
}
