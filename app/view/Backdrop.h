#pragma once

#include "framework/interfaces/TreeInterfaces.h"
#include "host/drawing/CanvasNotes.h"

#include <cairo/cairo.h>
#include <optional>
#include <vector>

// What the host draws beneath the rows of a control, before the control draws them.

/// What the host marks by itself; rows are counted from 0 over the visible ones.
struct Highlights {
    bool m_HasGuides = false;              ///< lines from open nodes down along what is below them
    std::optional<int32_t> m_Pointed = {}; ///< the row under the pointer
    std::optional<int32_t> m_Focused = {}; ///< the row where the keyboard is
    std::optional<int32_t> m_Hint = {};    ///< the top of a cut label that is shown whole, pixels
    BarLook m_Bar = BarLook::kSlim;        ///< of the control's scroll bar

    bool operator==(const Highlights&) const = default;
};

/// Part of the canvas' height, in pixels.
struct Band {
    int32_t m_Top;
    int32_t m_Height;

    bool operator==(const Band&) const = default;
};

/// One row's part of a guide line.
struct Guide {
    int32_t m_X;
    Band m_Row;
};

/// What lies beneath rows by what the control tells while it draws them.
struct Underlay {
    std::vector<Band> m_Selected = {};
    std::vector<Guide> m_Guides = {};
    int32_t m_Bar = 0; ///< the width of the scroll bar, before which bands end

    bool IsEmpty() const { return m_Selected.empty() && m_Guides.empty() && m_Bar == 0; }
};
Underlay UnderlayOf(IUITree* tree, const Noted& noted, bool hasGuides);

/// Draws the paper, guide lines, the band of each selected row, a lighter one under the pointer,
/// and a ring where the keyboard is. `width` and `height` are the control's, in pixels.
void DrawBackdrop(cairo_t* context, IUITree* tree, int32_t width, int32_t height,
    const Underlay& underlay, const Highlights& highlights);
