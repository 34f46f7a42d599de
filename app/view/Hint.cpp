#include "app/view/Hint.h"

#include "host/drawing/Cairo.h"
#include "host/drawing/TextBox.h"
#include "host/text/Text.h"

#include <algorithm>

namespace {

constexpr int32_t kSidePadding = 6; // pixels
constexpr int32_t kPadding = 3;

/// A place for a length as near as can be to where it is wanted.
int32_t Fitted(int32_t wanted, int32_t length, int32_t begin, int32_t whole) {
    return std::max(std::min(wanted, begin + whole - length), begin);
}

} // namespace

const NotedText* CutLabelAt(const Noted& noted, double y) {
    const auto found =
        std::find_if(noted.m_Texts.begin(), noted.m_Texts.end(), [y](const NotedText& text) {
            const CANVASRect& rect = text.m_Rect;
            return !text.m_Cut.empty() && y >= rect.top && y < double(rect.top) + rect.height;
        });
    return found != noted.m_Texts.end() ? &*found : nullptr;
}

void DrawHint(
    cairo_t* context, const NotedText& label, const CANVASRect& area, const Palette& palette) {
    const TextBox::Limits limits{area.width - 2 * kSidePadding, area.height - 2 * kPadding};
    if (limits.m_Width <= 0 || limits.m_Height <= 0) {
        return;
    }
    const TextBox text(context, ToPrintable(Refer(label.m_Cut)), label.m_TextSize, limits);
    const int32_t width = text.Width() + 2 * kSidePadding;
    const int32_t height = text.Height() + 2 * kPadding;
    const int32_t left = Fitted(label.m_Rect.left - kSidePadding, width, area.left, area.width);
    const int32_t top = Fitted(label.m_Rect.top + std::min((label.m_Rect.height - height) / 2, 0),
        height, area.top, area.height);
    const CairoState state(context);
    FillRect(context, {left, top, width, height}, Mix(palette.m_Paper, palette.m_Text, 40));
    FillRect(context, {left + 1, top + 1, width - 2, height - 2},
        Mix(palette.m_Paper, palette.m_Text, 4));
    SetSourceColor(context, palette.m_Text);
    text.Draw(left + kSidePadding, top + kPadding);
}
