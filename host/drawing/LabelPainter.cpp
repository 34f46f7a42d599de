#include "host/drawing/LabelPainter.h"

#include "framework/runtime/Components.h"
#include "host/text/Text.h"

LabelPainter::LabelPainter(UbuntuCanvas& canvas)
    : m_Canvas(canvas), m_Renderer(CreateHostObject<IPMRenderer>("PMRenderer")),
      m_Style(CreateHostObject<IPMRenderStyle>("PMRenderStyle")) {}

void LabelPainter::Draw(const std::string& text, int32_t color, CANVASRect rect) {
    if (m_Renderer && m_Style) {
        m_Style->SetColor(color);
        m_Renderer->DrawText(m_Style.Get(), Refer(ToWide(text)), &m_Canvas, &rect, 0, 0);
    }
}
