#include "app/view/Backdrop.h"

#include "app/settings/Palette.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/drawing/Cairo.h"

#include <algorithm>

namespace {

// Of the band's colour. Beneath a selected label it may be little: on more of it the red in which
// the control draws that label could not be read.
constexpr double kSelectedShare = 0.04;
constexpr double kPointedShare = 0.05;

/// Of the band's colour, in lines.
struct LineShares {
    double m_Edge;
    double m_Ring;
    double m_Guide;
};
constexpr LineShares kFaint{0.60, 0.45, 0.16};
constexpr LineShares kStark{1, 1, 0.60};

class Painter {
public:
    Painter(cairo_t* context, int32_t width, const Palette& palette)
        : m_Context(context), m_Width(width), m_Color(palette.m_Band),
          m_Lines(IsStark(palette) ? kStark : kFaint) {}

    void Fill(const Band& band, double share) const {
        Trace(band, 0);
        SetSourceColor(m_Context, m_Color, share);
        cairo_fill(m_Context);
    }
    /// A selected row: a band with a strong left edge.
    void FillSelected(const Band& band) const {
        constexpr double kEdge = 3;
        Fill(band, kSelectedShare);
        const CairoState state(m_Context);
        Trace(band, 0);
        cairo_clip(m_Context);
        SetSourceColor(m_Context, m_Color, m_Lines.m_Edge);
        cairo_rectangle(m_Context, kMargin, band.m_Top, kEdge, band.m_Height);
        cairo_fill(m_Context);
    }
    /// One pixel wide.
    void Draw(const Guide& guide) const {
        FillRect(m_Context, {guide.m_X, guide.m_Row.m_Top, 1, guide.m_Row.m_Height}, m_Color,
            m_Lines.m_Guide);
    }
    void Outline(const Band& band) const {
        constexpr double kHalfLine = 0.5;
        Trace(band, kHalfLine);
        SetSourceColor(m_Context, m_Color, m_Lines.m_Ring);
        cairo_set_line_width(m_Context, 1);
        cairo_stroke(m_Context);
    }

private:
    static constexpr double kMargin = 2;

    /// A rectangle with round corners, a little within the row.
    void Trace(const Band& band, double inset) const {
        constexpr double kLargestCorner = 5;
        TraceRounded(m_Context, kMargin + inset, band.m_Top + inset, m_Width - kMargin - inset,
            band.m_Top + band.m_Height - inset, std::min(kLargestCorner, band.m_Height / 4.0));
    }

    cairo_t* m_Context;
    int32_t m_Width;
    int32_t m_Color;
    LineShares m_Lines;
};

/// Where a row is drawn; nothing for one out of view.
std::optional<Band> BandOf(IUITree* tree, std::optional<int32_t> row, int32_t height) {
    int32_t rowHeight = 0;
    int32_t first = 0;
    tree->GetElementSize(nullptr, &rowHeight);
    tree->Inquire(PROP_SCROLLPOS, &first);
    const int64_t place = int64_t{row.value_or(-1)} - first;
    const bool isInView = row && rowHeight > 0 && place >= 0 && (place + 1) * rowHeight <= height;
    return isInView ? std::optional(Band{static_cast<int32_t>(place * rowHeight), rowHeight})
                    : std::nullopt;
}

/// Openers of a level stand in the middle of its indent, and a label two indents right of where its
/// level begins; an indent is as wide as a row is high.
void AppendGuides(const CANVASRect& label, std::vector<Guide>& guides) {
    for (int64_t x = label.height / 2; x + 2 * int64_t{label.height} < label.left;
         x += label.height) {
        guides.push_back({static_cast<int32_t>(x), {label.top, label.height}});
    }
}

} // namespace

Underlay UnderlayOf(IUITree* tree, const Noted& noted, bool hasGuides) {
    constexpr int32_t kSelectedColor = 0xFF0000; // of the labels that the control hands over
    const bool canTell = PaletteOf(tree).m_Text != kSelectedColor;
    Underlay underlay{.m_Bar = noted.m_Track.width};
    for (const NotedText& label : noted.m_Texts) {
        if (canTell && label.m_Color == kSelectedColor) {
            underlay.m_Selected.push_back({label.m_Rect.top, label.m_Rect.height});
        }
        if (hasGuides && label.m_Rect.height > 0) {
            AppendGuides(label.m_Rect, underlay.m_Guides);
        }
    }
    return underlay;
}

void DrawBackdrop(cairo_t* context, IUITree* tree, int32_t width, int32_t height,
    const Underlay& underlay, const Highlights& highlights) {
    const Palette palette = PaletteOf(tree);
    const CairoState state(context);
    FillRect(context, {0, 0, width, height}, palette.m_Paper);
    const Painter painter(context, width - underlay.m_Bar, palette);
    for (const Guide& guide : underlay.m_Guides) {
        painter.Draw(guide);
    }
    const auto& selected = underlay.m_Selected;
    if (const auto band = BandOf(tree, highlights.m_Pointed, height);
        band && std::find(selected.begin(), selected.end(), *band) == selected.end()) {
        painter.Fill(*band, kPointedShare);
    }
    for (const Band& band : selected) {
        painter.FillSelected(band);
    }
    if (const auto band = BandOf(tree, highlights.m_Focused, height)) {
        painter.Outline(*band);
    }
}
