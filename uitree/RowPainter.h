#pragma once

#include "uitree/Geometry.h"
#include "uitree/TreeItems.h"
#include "uitree/TreePath.h"

/// What a drawing pass needs of the control. The objects are held for the pass, whatever the items
/// that draw themselves do meanwhile; what is the control's own is read afresh for each row, since
/// they may set it.
struct PaintSettings {
    UbuntuCanvas* m_Canvas;
    CANVASRect m_Client;        ///< the rows' rectangle
    int32_t m_MaxRows;          ///< whole rows that fit
    const int32_t& m_RowHeight; ///< pixels
    const int32_t& m_TextColor; ///< 0xRRGGBB
    int32_t& m_IndentWidth;     ///< set to the row height by every row that is drawn
    SmartPtr<IRenderableObject> m_OpenIcon;
    SmartPtr<IRenderableObject> m_ClosedIcon;
    SmartPtr<IPMRenderStyle> m_Style;
    SmartPtr<IPMRenderer> m_Renderer;
};

/// Draws rows from an item of a collection to the end of that collection, with everything that is
/// open below. It goes down by itself and never up: the caller finds the row that follows. The
/// items of a collection that is reached are all drawn, visible or not: they are rows together or
/// not at all. Keeps its own stack, as the walk does. Throws std::bad_alloc, but not for rows of up
/// to kNearLevels levels below where it begins.
class RowPainter {
public:
    explicit RowPainter(PaintSettings settings) : m_Settings(std::move(settings)) {}

    /// Draws from item `start` as the rows from `*rowCounter` on, and advances the counter. `path`
    /// leads down to `collection`, included, and is the same afterwards; the caller holds what is
    /// on it, the painter what it opens below. S_OK when the collection ran out, E_FAIL when all
    /// rows are drawn or none could be.
    int32_t Paint(TreePath& path, ISuperCollection* collection, int32_t start, int32_t* rowCounter);

private:
    /// The row being drawn.
    struct Row {
        int32_t m_Flags = 0;
        int32_t m_Height = 0;        ///< pixels
        SmartPtr<IUnknown> m_Object; ///< what the item stands for
        SmartPtr<ISuperCollection> m_Children = {};
        SmartPtr<IString> m_Label;
    };
    /// A collection being drawn. The image and label of its current row follow the rows below it.
    struct Level {
        SmartPtr<ISuperCollection> m_Collection;
        int32_t m_Index;
        int32_t m_FirstRow; ///< where it begins among the rows drawn
        int32_t m_Position; ///< of the current row among the rows drawn
        Row m_Row = {};
    };

    void Push(SmartPtr<ISuperCollection> collection, int32_t start, int32_t position);
    bool Fits(int32_t position) const { return position < m_Settings.m_MaxRows; }
    bool Read(Level& level) const;
    static void Describe(Level& level);
    bool OpenChildren(TreePath& path, Level& level);
    void Finish(Level& level, int32_t next);
    void Leave(TreePath& path);

    RowGeometry GeometryOf(const Level& level) const;
    void DrawExpander(const Level& level) const;
    void DrawImage(const Level& level) const;
    void DrawLabel(const Level& level) const;
    void DrawObject(IRenderableObject& object, CANVASRect rect, int32_t param) const;

    PaintSettings m_Settings;
    NearVector<Level, kNearLevels> m_Levels;
};
