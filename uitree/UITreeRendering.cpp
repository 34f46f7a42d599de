#include "uitree/Geometry.h"
#include "uitree/RowPainter.h"
#include "uitree/UITreeImpl.h"

#include <cairo.h>

// Drawing, and the part of it that hit testing and input share: which rows there are, and where the
// scroll bar puts them.

namespace {

/// Clips the host's canvas for a scope. The whole clip of the context goes with it, also what the
/// host had set.
class CanvasClip {
public:
    CanvasClip(UbuntuCanvas* canvas, const CANVASRect& rect)
        : m_Context(canvas ? canvas->m_Context : nullptr) {
        if (m_Context) {
            cairo_rectangle(m_Context, rect.left, rect.top, rect.width, rect.height);
            cairo_clip(m_Context);
        }
    }
    ~CanvasClip() {
        if (m_Context) {
            cairo_reset_clip(m_Context);
        }
    }
    CanvasClip(const CanvasClip&) = delete;
    CanvasClip& operator=(const CanvasClip&) = delete;

private:
    cairo_t* m_Context;
};

} // namespace

bool CUITree::TakeView(View& view) {
    {
        const ObjectGuard guard(*this);
        view.collection = m_Collection;
    }
    view.rows = CountRows(view.collection.Get());
    return view.rows > 0 && m_ElementHeight > 0;
}

/// Keeps the scroll bar's range current on the way. Without a scroll bar all of it is the rows'.
CUITree::Layout CUITree::LayOut(const CANVASRect& rect, int32_t rows) {
    Layout layout;
    CANVASRect area = rect;
    if (!m_ScrollBar) {
        layout.client = area;
        return layout;
    }
    m_ScrollBar->SetRange(0, rows - 1);
    layout.status = m_ScrollBar->Layout(&area, &layout.bar, &layout.client);
    return layout;
}

int32_t CUITree::ScrollPos() const {
    int32_t position = 0;
    if (m_ScrollBar) {
        m_ScrollBar->GetPos(&position);
    }
    return position;
}

void CUITree::Scroll(int32_t position) {
    if (m_ScrollBar) {
        m_ScrollBar->SetPos(position);
    }
}

int32_t CUITree::Render(
    UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t param) {
    return Perform([&] {
        View view;
        if (!TakeView(view)) {
            return E_FAIL;
        }
        const CANVASRect area = RectOf(rect);
        Layout layout = LayOut(area, view.rows);
        const int32_t first = ScrollPos();
        if (layout.status >= 0) {
            const CanvasClip clip(canvas, layout.client);
            DrawRows(view.collection.Get(), first, canvas, layout.client);
        }
        if (layout.status == S_OK) {
            if (const auto bar = Query<IRenderableObject>(m_ScrollBar.Get())) {
                bar->Render(canvas, &layout.bar, nullptr, param);
            }
        }
        return S_OK;
    });
}

/// Each turn draws the rest of the collection that holds the next row, with all that is open below,
/// and finds the row that follows again from the root: the walk goes down by itself and up by
/// resolving.
void CUITree::DrawRows(
    ISuperCollection* collection, int32_t first, UbuntuCanvas* canvas, const CANVASRect& client) {
    const int32_t height = m_ElementHeight;
    const int32_t rows = height > 0 ? client.height / height : 0;
    int32_t drawn = 0;
    while (drawn < rows && first >= 0) {
        TreeWalk walk(collection);
        if (!walk.SeekRow(Saturate(int64_t{first} + drawn))) {
            return;
        }
        RowPainter painter(SettingsOf(canvas, client, rows), walk.Path());
        if (painter.Paint(walk.Collection(), walk.Index(), &drawn) < 0) {
            return;
        }
    }
}

int32_t CUITree::RenderChildNodes(ISuperCollection* collection, int32_t start, int32_t* rowCounter,
    int32_t maxRows, UbuntuCanvas* canvas, CANVASRect& client) {
    if (!rowCounter) {
        return E_POINTER;
    }
    return Perform([&] {
        TreePath path;
        if (collection) {
            path.Enter(collection);
        }
        RowPainter painter(SettingsOf(canvas, client, maxRows), std::move(path));
        return painter.Paint(collection, start, rowCounter);
    });
}

PaintSettings CUITree::SettingsOf(UbuntuCanvas* canvas, const CANVASRect& client, int32_t maxRows) {
    return {.canvas = canvas,
        .client = client,
        .maxRows = maxRows,
        .rowHeight = m_ElementHeight,
        .textColor = m_TextColor,
        .openIcon = m_OpenIcon,
        .closedIcon = m_ClosedIcon,
        .style = m_RenderStyle,
        .renderer = m_Renderer,
        .indentWidth = &m_IndentWidth};
}
