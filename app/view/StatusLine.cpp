#include "app/view/StatusLine.h"

#include "host/drawing/Cairo.h"
#include "host/drawing/LabelPainter.h"

namespace {

constexpr int32_t kHeight = 22;
constexpr int32_t kMargin = 8; // pixels left and right of the text

} // namespace

int32_t StatusHeightIn(int32_t windowHeight) {
    constexpr int32_t kLeastLines = 6;
    return windowHeight >= kLeastLines * kHeight ? kHeight : 0;
}

void DrawStatus(
    const std::string& text, UbuntuCanvas& canvas, const CANVASRect& rect, const Palette& palette) {
    const auto shade = [&palette](
                           int32_t share) { return Mix(palette.m_Paper, palette.m_Text, share); };
    FillRect(canvas.m_Context, rect, shade(7));
    FillRect(canvas.m_Context, {rect.left, rect.top, rect.width, 1}, shade(25));
    LabelPainter(canvas).Draw(
        text, shade(80), {rect.left + kMargin, rect.top, rect.width - 2 * kMargin, rect.height});
}
