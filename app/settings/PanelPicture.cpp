#include "app/settings/PanelPicture.h"

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/runtime/Components.h"
#include "host/drawing/Cairo.h"
#include "host/text/Text.h"

namespace {

constexpr int32_t kBackground = 0xF2F2F2;
constexpr int32_t kChosenBackground = 0xFFFFFF;
constexpr int32_t kEdgeColor = 0xBDBDBD;
constexpr int32_t kHelpColor = 0x8A94A0;
constexpr int32_t kTextColor = 0x4B4B4B;
constexpr int32_t kChosenColor = 0x000000;
constexpr int32_t kRejectedColor = 0xFF0000;

constexpr int32_t kMargin = 8;     // pixels left of the texts
constexpr int32_t kNameShare = 68; // percent of the width

class Painter {
public:
    Painter(UbuntuCanvas& canvas, const CANVASRect& rect) : m_Canvas(canvas), m_Rect(rect) {}

    void Draw(const Panel& panel) {
        FillRect(m_Canvas.m_Context, m_Rect, kBackground);
        DrawText(panel.Hint(), kHelpColor, LineRect(0, 0, 100));
        for (const Panel::Line& line : panel.Lines()) {
            DrawLine(line);
        }
        FillRect(m_Canvas.m_Context, {m_Rect.left, m_Rect.top, 1, m_Rect.height}, kEdgeColor);
    }

private:
    void DrawLine(const Panel::Line& line) {
        if (line.m_IsChosen) {
            FillRect(m_Canvas.m_Context,
                {m_Rect.left, m_Rect.top + line.m_Top, m_Rect.width, Panel::kLineHeight},
                kChosenBackground);
        }
        const int32_t color = line.m_IsChosen ? kChosenColor : kTextColor;
        DrawText(line.m_Name, color, LineRect(line.m_Top, 0, kNameShare));
        DrawText(line.m_Value + (line.m_IsEdited ? "|" : ""),
            line.m_IsRejected ? kRejectedColor : color, LineRect(line.m_Top, kNameShare, 100));
    }

    /// A part of a line; its ends are in percent of the width.
    CANVASRect LineRect(int32_t top, int32_t begin, int32_t end) const {
        return {m_Rect.left + m_Rect.width * begin / 100 + kMargin, m_Rect.top + top,
            m_Rect.width * (end - begin) / 100 - kMargin, Panel::kLineHeight};
    }

    void DrawText(const std::string& text, int32_t color, CANVASRect rect) {
        if (m_Renderer && m_Style) {
            m_Style->SetColor(color);
            m_Renderer->DrawText(m_Style.Get(), Refer(ToWide(text)), &m_Canvas, &rect, 0, 0);
        }
    }

    UbuntuCanvas& m_Canvas;
    CANVASRect m_Rect;
    SmartPtr<IPMRenderer> m_Renderer = CreateHostObject<IPMRenderer>("PMRenderer");
    SmartPtr<IPMRenderStyle> m_Style = CreateHostObject<IPMRenderStyle>("PMRenderStyle");
};

} // namespace

void DrawPanel(const Panel& panel, UbuntuCanvas& canvas, const CANVASRect& rect) {
    Painter(canvas, rect).Draw(panel);
}
