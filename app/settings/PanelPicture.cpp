#include "app/settings/PanelPicture.h"

#include "host/drawing/Cairo.h"
#include "host/drawing/LabelPainter.h"

namespace {

constexpr int32_t kRejectedColor = 0xFF0000;

constexpr int32_t kMargin = 8;     // pixels left of the texts
constexpr int32_t kNameShare = 68; // percent of the width

class Painter {
public:
    Painter(UbuntuCanvas& canvas, const CANVASRect& rect, const Palette& palette)
        : m_Canvas(canvas), m_Rect(rect), m_Palette(palette) {}

    void Draw(const Panel& panel) {
        FillRect(m_Canvas.m_Context, m_Rect, Shade(7));
        m_Labels.Draw(panel.Hint(), Shade(65), LineRect(0, 0, 100));
        for (const Panel::Line& line : panel.Lines()) {
            DrawLine(line);
        }
        FillRect(m_Canvas.m_Context, {m_Rect.left, m_Rect.top, 1, m_Rect.height}, Shade(36));
    }

private:
    /// Between paper and text, in percent.
    int32_t Shade(int32_t share) const { return Mix(m_Palette.m_Paper, m_Palette.m_Text, share); }

    void DrawLine(const Panel::Line& line) {
        if (line.m_IsChosen) {
            FillRect(m_Canvas.m_Context,
                {m_Rect.left, m_Rect.top + line.m_Top, m_Rect.width, Panel::kLineHeight},
                m_Palette.m_Paper);
        }
        const int32_t color = line.m_IsChosen ? m_Palette.m_Text : Shade(90);
        m_Labels.Draw(line.m_Name, color, LineRect(line.m_Top, 0, kNameShare));
        m_Labels.Draw(line.m_Value + (line.m_IsEdited ? "|" : ""),
            line.m_IsRejected ? kRejectedColor : color, LineRect(line.m_Top, kNameShare, 100));
    }

    /// A part of a line; its ends are in percent of the width.
    CANVASRect LineRect(int32_t top, int32_t begin, int32_t end) const {
        return {m_Rect.left + m_Rect.width * begin / 100 + kMargin, m_Rect.top + top,
            m_Rect.width * (end - begin) / 100 - kMargin, Panel::kLineHeight};
    }

    UbuntuCanvas& m_Canvas;
    CANVASRect m_Rect;
    Palette m_Palette;
    LabelPainter m_Labels{m_Canvas};
};

} // namespace

void DrawPanel(
    const Panel& panel, UbuntuCanvas& canvas, const CANVASRect& rect, const Palette& palette) {
    Painter(canvas, rect, palette).Draw(panel);
}
