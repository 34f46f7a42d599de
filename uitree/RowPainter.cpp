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

int32_t RowPainter::Paint(
    TreePath& path, ISuperCollection* collection, int32_t start, int32_t* rowCounter) {
    if (!collection || *rowCounter >= m_Settings.m_MaxRows) {
        return E_FAIL;
    }
    Push(SmartPtr(collection), start, *rowCounter);
    bool ranOut = false;
    while (!m_Levels->empty()) {
        Level& level = m_Levels->back();
        if (Fits(level.m_Position) && Read(level)) {
            Describe(level);
            DrawExpander(level);
            if (!OpenChildren(path, level)) {
                Finish(level, level.m_Position + 1);
            }
            continue;
        }
        // The last collection to be left is the one that the drawing began with.
        ranOut = Fits(level.m_Position) && level.m_Position > level.m_FirstRow;
        *rowCounter = level.m_Position;
        Leave(path);
    }
    return ranOut ? S_OK : E_FAIL;
}

void RowPainter::Push(SmartPtr<ISuperCollection> collection, int32_t start, int32_t position) {
    m_Levels->push_back({.m_Collection = std::move(collection),
        .m_Index = start,
        .m_FirstRow = position,
        .m_Position = position});
}

/// Reads the current item; false when the collection has no more.
bool RowPainter::Read(Level& level) const {
    if (level.m_Index == std::numeric_limits<int32_t>::max() ||
        level.m_Collection->GetItem(level.m_Index, level.m_Row.m_Object.Receive()) < 0) {
        return false;
    }
    level.m_Row.m_Flags = FlagsOf(*level.m_Collection.Get(), level.m_Index);
    level.m_Row.m_Height = m_Settings.m_RowHeight;
    m_Settings.m_IndentWidth = level.m_Row.m_Height;
    return true;
}

/// Finds out what the current item stands for, its label, and what is below it.
void RowPainter::Describe(Level& level) {
    Row& row = level.m_Row;
    SmartPtr<IString> own;
    row.m_Object = ResolveItem(std::move(row.m_Object), own);
    row.m_Label = ChooseLabel(std::move(own), *level.m_Collection.Get(), level.m_Index);
    row.m_Children = IsCollection(row.m_Object.Get());
}

/// Goes on with the rows below the current one when it is open and another row fits.
bool RowPainter::OpenChildren(TreePath& path, Level& level) {
    const int32_t position = level.m_Position + 1;
    if (!level.m_Row.m_Children || (level.m_Row.m_Flags & NODE_EXPANDED) == 0 || !Fits(position) ||
        !path.Enter(level.m_Row.m_Children.Get())) {
        return false;
    }
    Push(std::move(level.m_Row.m_Children), 0, position);
    return true;
}

/// Draws what follows the rows below the current one, and moves on to the next item, whose row is
/// at `next`.
void RowPainter::Finish(Level& level, int32_t next) {
    DrawImage(level);
    DrawLabel(level);
    level.m_Row = {};
    ++level.m_Index;
    level.m_Position = next;
}

/// Leaves the current collection; the row above that it was opened for is finished by that.
void RowPainter::Leave(TreePath& path) {
    const int32_t next = m_Levels->back().m_Position;
    m_Levels->pop_back();
    if (!m_Levels->empty()) {
        path.Leave();
        Finish(m_Levels->back(), next);
    }
}

RowGeometry RowPainter::GeometryOf(const Level& level) const {
    return {m_Settings.m_Client, level.m_Row.m_Height, level.m_Position,
        level.m_Row.m_Flags & NODE_LEVEL_MASK};
}

void RowPainter::DrawExpander(const Level& level) const {
    const bool open = (level.m_Row.m_Flags & NODE_EXPANDED) != 0;
    const auto& icon = open ? m_Settings.m_OpenIcon : m_Settings.m_ClosedIcon;
    if (level.m_Row.m_Children && icon) {
        DrawObject(*icon.Get(), GeometryOf(level).Expander(), kDrawIcon);
    }
}

void RowPainter::DrawImage(const Level& level) const {
    if (const auto image = QueryItem<IRenderableObject>(level.m_Row.m_Object.Get())) {
        DrawObject(*image.Get(), GeometryOf(level).Image(), kDrawItemImage);
    }
}

/// A selected row differs in its text colour only.
void RowPainter::DrawLabel(const Level& level) const {
    if (!m_Settings.m_Style || !m_Settings.m_Renderer) {
        return;
    }
    if ((level.m_Row.m_Flags & NODE_SELECTED) != 0) {
        m_Settings.m_Style->SetColor(kSelectedColor);
    } else {
        m_Settings.m_Style->SetStyleValue(0);
        m_Settings.m_Style->SetColor(m_Settings.m_TextColor);
    }
    CANVASRect rect = GeometryOf(level).Label();
    m_Settings.m_Renderer->DrawText(m_Settings.m_Style.Get(), CREFString(level.m_Row.m_Label.Get()),
        m_Settings.m_Canvas, &rect, 0, 0);
}

void RowPainter::DrawObject(IRenderableObject& object, CANVASRect rect, int32_t param) const {
    object.Render(m_Settings.m_Canvas, &rect, nullptr, param);
}
