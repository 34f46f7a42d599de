#pragma once

#include "uitree/Geometry.h"
#include "uitree/TreeItems.h"
#include "uitree/TreePath.h"

#include <vector>

/// What a drawing pass needs of the control. The objects are held for the pass, whatever the items
/// that draw themselves do meanwhile.
struct PaintSettings {
    UbuntuCanvas* canvas;
    CANVASRect client; ///< the rows' rectangle
    int32_t maxRows;   ///< whole rows that fit
    int32_t rowHeight; ///< pixels
    int32_t textColor; ///< 0xRRGGBB
    SmartPtr<IUnknown> openIcon;
    SmartPtr<IUnknown> closedIcon;
    SmartPtr<IPMRenderStyle> style;
    SmartPtr<IPMRenderer> renderer;
    int32_t* indentWidth; ///< set to the row height by every row that is drawn
};

/// Draws rows from an item of a collection to the end of that collection, with everything that is
/// open below. It goes down by itself and never up: the caller resolves the next row from the root.
/// The items of a collection that is reached are all drawn, visible or not: they are rows together
/// or not at all. Keeps its own stack, as the walk does. Throws std::bad_alloc.
class RowPainter {
public:
    /// `path` leads down to the collection to be drawn from, included.
    RowPainter(PaintSettings settings, TreePath path)
        : m_Settings(std::move(settings)), m_Path(std::move(path)) {}

    /// Draws from item `start` as the rows from `*rowCounter` on, and advances the counter. S_OK
    /// when the collection ran out, E_FAIL when all rows are drawn or none could be.
    int32_t Paint(ISuperCollection* collection, int32_t start, int32_t* rowCounter);

private:
    /// The row being drawn.
    struct Row {
        int32_t flags = 0;
        SmartPtr<IUnknown> object; ///< what the item stands for
        SmartPtr<ISuperCollection> children = {};
        SmartPtr<IString> label;
    };
    /// A collection being drawn. The image and label of its current row follow the rows below it.
    struct Level {
        SmartPtr<ISuperCollection> collection;
        int32_t index;
        int32_t firstRow; ///< where it begins among the rows drawn
        int32_t position; ///< of the current row among the rows drawn
        SmartPtr<IRenderableObject> openIcon;
        SmartPtr<IRenderableObject> closedIcon;
        Row row = {};
    };

    void Push(SmartPtr<ISuperCollection> collection, int32_t start, int32_t position);
    bool Load(Level& level) const;
    bool OpenChildren(Level& level);
    bool Finish(Level& level, int32_t next);
    int32_t Leave(int32_t status, int32_t* rowCounter);

    RowGeometry GeometryOf(const Level& level) const;
    void DrawExpander(const Level& level) const;
    void DrawImage(const Level& level) const;
    void DrawLabel(const Level& level) const;
    void DrawObject(IRenderableObject& object, CANVASRect rect, int32_t param) const;

    PaintSettings m_Settings;
    TreePath m_Path;
    std::vector<Level> m_Levels;
};
