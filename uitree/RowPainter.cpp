#include "uitree/RowPainter.h"

#include "framework/Support.h"

#include <limits>

namespace {

constexpr int32_t kSelectedColor = 0xFF0000;
/// The last argument of Render: what is to be drawn.
constexpr int32_t kDrawIcon = 0;
constexpr int32_t kDrawItemImage = 1;

/// The object that an item stands for when it is a node, and else itself; `label` receives the
/// node's own label.
SmartPtr<IUnknown> ResolveItem(SmartPtr<IUnknown> item, SmartPtr<IString>& label) {
    const auto node = Query<IUINode>(item.Get());
    if (!node) {
        return item;
    }
    node->get_Name(label.Receive());
    SmartPtr<IUnknown> object;
    node->get_Object(object.Receive());
    if (const auto moniker = Query<ICollectionMoniker>(object.Get())) {
        moniker->BindToObject(IID_IUnknown, object.ReceiveAny());
    }
    return object;
}

/// A node's own label unless it is empty, else the collection's name for the item, even an empty
/// one, else a word that stands for any node.
SmartPtr<IString> ChooseLabel(SmartPtr<IString> own, ISuperCollection& collection, int32_t index) {
    if (CREFString(own.Get()).m_Length > 0) {
        return own;
    }
    SmartPtr<IString> name;
    collection.GetItemName(index, name.Receive());
    if (!name) {
        name.Attach(ISCreate(L"Node"));
    }
    return name;
}

} // namespace

int32_t RowPainter::Paint(ISuperCollection* collection, int32_t start, int32_t* rowCounter) {
    if (*rowCounter > m_Settings.maxRows) {
        return S_OK;
    }
    if (!collection || *rowCounter == m_Settings.maxRows) {
        return E_FAIL;
    }
    Push(SmartPtr(collection), start, *rowCounter);
    int32_t status = S_OK;
    while (!m_Levels.empty()) {
        Level& level = m_Levels.back();
        if (!Load(level)) {
            status = Leave(level.position == level.firstRow ? E_FAIL : S_OK, rowCounter);
            continue;
        }
        DrawExpander(level);
        if (!OpenChildren(level) && !Finish(level, level.position + 1)) {
            status = Leave(E_FAIL, rowCounter);
        }
    }
    return status;
}

void RowPainter::Push(SmartPtr<ISuperCollection> collection, int32_t start, int32_t position) {
    m_Levels.push_back({.collection = std::move(collection),
        .index = start,
        .firstRow = position,
        .position = position,
        .openIcon = Query<IRenderableObject>(m_Settings.openIcon.Get()),
        .closedIcon = Query<IRenderableObject>(m_Settings.closedIcon.Get())});
}

/// Reads the current item; false when the collection has no more.
bool RowPainter::Load(Level& level) const {
    SmartPtr<IUnknown> item;
    if (level.index == std::numeric_limits<int32_t>::max() ||
        level.collection->GetItem(level.index, item.Receive()) < 0) {
        return false;
    }
    level.row.flags = FlagsOf(*level.collection.Get(), level.index);
    *m_Settings.indentWidth = m_Settings.rowHeight;
    SmartPtr<IString> own;
    level.row.object = ResolveItem(std::move(item), own);
    level.row.label = ChooseLabel(std::move(own), *level.collection.Get(), level.index);
    level.row.children = IsCollection(level.row.object.Get());
    return true;
}

/// Goes on with the rows below the current one when it is open and another row fits.
bool RowPainter::OpenChildren(Level& level) {
    const int32_t position = level.position + 1;
    if (!level.row.children || (level.row.flags & NODE_EXPANDED) == 0 ||
        position >= m_Settings.maxRows || !m_Path.Enter(level.row.children.Get())) {
        return false;
    }
    Push(std::move(level.row.children), 0, position);
    return true;
}

/// Draws what follows the rows below the current one, and moves on to the next item, whose row is
/// at `next`; false when all rows are drawn.
bool RowPainter::Finish(Level& level, int32_t next) {
    DrawImage(level);
    DrawLabel(level);
    level.row = {};
    ++level.index;
    level.position = next;
    return next < m_Settings.maxRows;
}

/// Leaves the current collection with `status`, and with it every one above in which no further row
/// fits. The status and the counter are those of the collection that the drawing began with.
int32_t RowPainter::Leave(int32_t status, int32_t* rowCounter) {
    for (;;) {
        const int32_t next = m_Levels.back().position;
        m_Levels.pop_back();
        m_Path.Leave();
        if (m_Levels.empty()) {
            *rowCounter = next;
            return status;
        }
        if (Finish(m_Levels.back(), next)) {
            return S_OK;
        }
        status = E_FAIL;
    }
}

RowGeometry RowPainter::GeometryOf(const Level& level) const {
    return {
        m_Settings.client, m_Settings.rowHeight, level.position, level.row.flags & NODE_LEVEL_MASK};
}

void RowPainter::DrawExpander(const Level& level) const {
    const bool open = (level.row.flags & NODE_EXPANDED) != 0;
    const auto& icon = open ? level.openIcon : level.closedIcon;
    if (level.row.children && icon) {
        DrawObject(*icon.Get(), GeometryOf(level).Expander(), kDrawIcon);
    }
}

void RowPainter::DrawImage(const Level& level) const {
    if (const auto image = QueryItem<IRenderableObject>(level.row.object.Get())) {
        DrawObject(*image.Get(), GeometryOf(level).Image(), kDrawItemImage);
    }
}

/// A selected row differs in its text colour only.
void RowPainter::DrawLabel(const Level& level) const {
    if (!m_Settings.style || !m_Settings.renderer) {
        return;
    }
    if ((level.row.flags & NODE_SELECTED) != 0) {
        m_Settings.style->SetColor(kSelectedColor);
    } else {
        m_Settings.style->SetStyleValue(0);
        m_Settings.style->SetColor(m_Settings.textColor);
    }
    CANVASRect rect = GeometryOf(level).Label();
    m_Settings.renderer->DrawText(
        m_Settings.style.Get(), CREFString(level.row.label.Get()), m_Settings.canvas, &rect, 0, 0);
}

void RowPainter::DrawObject(IRenderableObject& object, CANVASRect rect, int32_t param) const {
    object.Render(m_Settings.canvas, &rect, nullptr, param);
}
