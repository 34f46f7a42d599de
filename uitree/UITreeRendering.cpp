#include "uitree/Geometry.h"
#include "uitree/RowPainter.h"
#include "uitree/UITreeImpl.h"

#include <cairo.h>
#include <limits>

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
    if (!HasRowHeight()) {
        return false;
    }
    {
        const ObjectGuard guard(*this);
        view.m_Collection = m_Collection;
        view.m_Version = m_Known.Binding();
    }
    // Before the rows are counted: what changes them meanwhile changes the version.
    view.m_Version.Take();
    if (m_Known.AreOf(view.m_Version)) {
        view.m_Rows = m_Known.Count();
    } else {
        view.m_Rows = CountRows(view.m_Collection.Get(), &view.m_Marks);
        m_Known.Learn(view.m_Version, view.m_Rows, view.m_Marks);
    }
    return view.m_Rows > 0 && HasRowHeight();
}

/// The host is called between the counting of rows and each use of them, and may then bind, change
/// or draw something else: the known rows are those of another version afterwards.
RowMarks* CUITree::MarksOf(View& view) {
    if (!view.m_Version.m_Source) {
        return &view.m_Marks;
    }
    return m_Known.AreOf(view.m_Version) ? &m_Known.Marks() : nullptr;
}

/// Where nobody vouches for the tree it is taken to be as it was counted, and one that has changed
/// shows in a mark that leads nowhere: the row is looked for from the root then.
bool CUITree::FindRow(View& view, int32_t row, std::optional<TreeWalk>& walk) {
    walk.emplace(view.m_Collection.Get());
    const bool isAsCounted = !view.m_Version.m_Source || view.m_Version.Stands();
    if (!isAsCounted) {
        view.m_Rows = std::numeric_limits<int32_t>::max(); // until a search has failed
    }
    if (row < 0 || row >= view.m_Rows) {
        return false;
    }
    const RowMarks* marks = isAsCounted ? MarksOf(view) : nullptr;
    const auto mark = marks ? marks->Nearest(row) : std::nullopt;
    bool isFound = mark && walk->GoTo(*mark) && walk->MoveTo(row);
    if (mark && !isFound) {
        walk.emplace(view.m_Collection.Get());
    }
    if (!isFound && !walk->SeekRow(row)) {
        view.m_Rows = walk->Seen();
        return false;
    }
    if (RowMarks* still = isAsCounted ? MarksOf(view) : nullptr) {
        walk->MarkIn(*still);
    }
    return true;
}

/// Keeps the scroll bar's range current on the way. Without a scroll bar the rows get the whole
/// rectangle.
CUITree::Layout CUITree::LayOut(const CANVASRect& rect, int32_t rows) {
    Layout layout;
    CANVASRect area = rect;
    if (!m_ScrollBar) {
        layout.m_Client = area;
        return layout;
    }
    m_ScrollBar->SetRange(0, rows - 1);
    layout.m_Status = m_ScrollBar->Layout(&area, &layout.m_Bar, &layout.m_Client);
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
        Layout layout = LayOut(area, view.m_Rows);
        const int32_t first = ScrollPos();
        if (layout.m_Status >= 0) {
            const CanvasClip clip(canvas, layout.m_Client);
            DrawRows(view, first, canvas, layout.m_Client);
        }
        if (layout.m_Status == S_OK) {
            if (const auto bar = Query<IRenderableObject>(m_ScrollBar.Get())) {
                bar->Render(canvas, &layout.m_Bar, nullptr, param);
            }
        }
        return S_OK;
    });
}

/// Each turn draws the rest of the collection that holds the next row, with all that is open below.
/// The painter goes down by itself; the walk goes on to the row that follows what was drawn.
void CUITree::DrawRows(View& view, int32_t first, UbuntuCanvas* canvas, const CANVASRect& client) {
    const int32_t rows = HasRowHeight() ? client.height / m_ElementHeight : 0;
    std::optional<TreeWalk> walk;
    if (rows <= 0 || !FindRow(view, first, walk)) {
        return;
    }
    RowPainter painter(SettingsOf(canvas, client, rows));
    int32_t drawn = 0;
    do {
        const int32_t status =
            painter.Paint(walk->Path(), walk->Collection(), walk->Index(), &drawn);
        if (status < 0) {
            return;
        }
    } while (drawn < rows && int64_t{first} + drawn < view.m_Rows && walk->SeekRow(first + drawn));
}

int32_t CUITree::RenderChildNodes(ISuperCollection* collection, int32_t start, int32_t* rowCounter,
    int32_t maxRows, UbuntuCanvas* canvas, CANVASRect& client) {
    if (!rowCounter) {
        return E_POINTER;
    }
    return Perform([&] {
        if (*rowCounter > maxRows) {
            return S_OK;
        }
        TreePath path;
        path.Enter(collection);
        RowPainter painter(SettingsOf(canvas, client, maxRows));
        return painter.Paint(path, collection, start, rowCounter);
    });
}

PaintSettings CUITree::SettingsOf(UbuntuCanvas* canvas, const CANVASRect& client, int32_t maxRows) {
    return {.m_Canvas = canvas,
        .m_Client = client,
        .m_MaxRows = maxRows,
        .m_RowHeight = m_ElementHeight,
        .m_TextColor = m_TextColor,
        .m_IndentWidth = m_IndentWidth,
        .m_OpenIcon = Query<IRenderableObject>(m_OpenIcon.Get()),
        .m_ClosedIcon = Query<IRenderableObject>(m_ClosedIcon.Get()),
        .m_Style = m_RenderStyle,
        .m_Renderer = m_Renderer};
}
