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
    if (!HasRowHeight()) {
        return false;
    }
    SmartPtr<ICollectionVersion> source;
    uint32_t binding = 0;
    {
        const ObjectGuard guard(*this);
        view.m_Collection = m_Collection;
        source = m_Version;
        binding = m_Binding;
    }
    uint64_t version = 0;
    if (source && source->GetVersion(&version) >= 0) {
        TakeKnownRows(view, binding, version);
    } else {
        view.m_Marks = &view.m_OwnMarks;
        view.m_Rows = CountRows(view.m_Collection.Get(), view.m_Marks);
    }
    return view.m_Rows > 0 && HasRowHeight();
}

/// The number was asked for before the rows are counted: what changes them meanwhile changes it.
void CUITree::TakeKnownRows(View& view, uint32_t binding, uint64_t version) {
    if (m_Known.m_Binding != binding || m_Known.m_Version != version) {
        m_Known.m_Binding = 0; // for who asks while they are counted
        m_Known.m_Marks.Clear();
        m_Known.m_Rows = CountRows(view.m_Collection.Get(), &m_Known.m_Marks);
        m_Known.m_Version = version;
        m_Known.m_Binding = binding;
    }
    view.m_Marks = &m_Known.m_Marks;
    view.m_Rows = m_Known.m_Rows;
}

bool CUITree::KnowsRows() {
    SmartPtr<ICollectionVersion> source;
    uint32_t binding = 0;
    {
        const ObjectGuard guard(*this);
        source = m_Version;
        binding = m_Binding;
    }
    uint64_t version = 0;
    return source && m_Known.m_Binding == binding && source->GetVersion(&version) >= 0 &&
           m_Known.m_Version == version;
}

void CUITree::WriteFlags(
    ISuperCollection& collection, int32_t index, int32_t before, int32_t after) {
    const bool isKept = (before & after & NODE_VISIBLE) != 0 && KnowsRows();
    const uint64_t version = m_Known.m_Version;
    collection.SetItemFlags(index, after);
    if (isKept && m_Known.m_Version == version) {
        ++m_Known.m_Version;
        if (!KnowsRows()) { // nothing was counted as a change, or more than the one word
            m_Known.m_Version = version;
        }
    }
}

/// The tree is taken to be as it was counted. Where a mark leads nowhere it was changed since, and
/// the row is looked for from the root.
bool CUITree::FindRow(const View& view, int32_t row, std::optional<TreeWalk>& walk) {
    walk.emplace(view.m_Collection.Get());
    if (row < 0 || row >= view.m_Rows) {
        return false;
    }
    bool isFound = false;
    if (const auto mark = view.m_Marks->Nearest(row)) {
        isFound = walk->GoTo(*mark) && MoveTo(*walk, row);
        if (!isFound) {
            walk.emplace(view.m_Collection.Get());
        }
    }
    isFound = isFound || walk->SeekRow(row);
    if (isFound) {
        walk->MarkIn(*view.m_Marks);
    }
    return isFound;
}

/// Moves a walk from the row that it is on to another, there or back.
bool CUITree::MoveTo(TreeWalk& walk, int32_t row) {
    while (walk.Seen() > row + 1) {
        if (!walk.Back()) {
            return false;
        }
    }
    return walk.Seen() == row + 1 || walk.SeekRow(row);
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
void CUITree::DrawRows(
    const View& view, int32_t first, UbuntuCanvas* canvas, const CANVASRect& client) {
    const int32_t rows = HasRowHeight() ? client.height / m_ElementHeight : 0;
    std::optional<TreeWalk> walk;
    if (rows <= 0 || !FindRow(view, first, walk)) {
        return;
    }
    RowPainter painter(SettingsOf(canvas, client, rows));
    int32_t drawn = 0;
    do {
        const int32_t status =
            painter.Paint(walk->Path(), walk->Collection(), walk->Index(), &drawn, &m_IndentWidth);
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
        TreePath path;
        path.Enter(collection);
        RowPainter painter(SettingsOf(canvas, client, maxRows));
        return painter.Paint(path, collection, start, rowCounter, &m_IndentWidth);
    });
}

PaintSettings CUITree::SettingsOf(UbuntuCanvas* canvas, const CANVASRect& client, int32_t maxRows) {
    return {.m_Canvas = canvas,
        .m_Client = client,
        .m_MaxRows = maxRows,
        .m_RowHeight = m_ElementHeight,
        .m_TextColor = m_TextColor,
        .m_OpenIcon = Query<IRenderableObject>(m_OpenIcon.Get()),
        .m_ClosedIcon = Query<IRenderableObject>(m_ClosedIcon.Get()),
        .m_Style = m_RenderStyle,
        .m_Renderer = m_Renderer};
}
