#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "uitree/KnownRows.h"
#include "uitree/TreeWalk.h"

#include <optional>
#include <sys/time.h>

class CUITree;
template <>
MODULE_EXPORT const tagREFString IObjectInfoImpl<CUITree>::m_ObjectName;

/// A node by the collection that holds it and its index there.
struct NodeAddress {
    SmartPtr<ISuperCollection> m_Collection;
    int32_t m_Index = 0;
};

/// One pointer event as the operations that handle it see it: truncated to whole pixels, with the
/// row under the pointer once that is known.
struct PointerEvent;
struct PaintSettings;

/// The tree control. It shows a collection that the host owns, in place: nothing of the data is
/// copied, and whether a node is shown, open or selected, and its level, live in the flag word that
/// the host's collection keeps for it.
///
/// Runs on the thread that delivers input and calls Render. The object lock guards the bound
/// collection while it is replaced or closed, the sink list, and the replacement of object
/// parameters; listeners are called outside it. A host object or listener that is called may do
/// anything, including dropping the last reference to the control, which lives until the operation
/// returns.
///
/// The order of the bases, of the operations and of the fields is part of the binary contract.
class CUITree final : public CObject<CUITree>,
                      public IObjectInfoImpl<CUITree>,
                      public IDataPersist,
                      public IParent,
                      public IRenderableObject,
                      public IUITree,
                      public IUIMouseInput,
                      public IUIPropertyPageSpecify,
                      public IUIPropInterrogateImpl<CUITree, IUIPropInterrogateEx, 10l>,
                      public IUIRefreshableObject,
                      public IUITouchInput,
                      public IEventSourceImpl<CUITree, &IID_IUnknown>,
                      public _FIREUIContainerEvents<CUITree>,
                      public _FIREUIRefreshEvents<CUITree>,
                      public _IUIRefreshEvent {
public:
    int32_t QueryInterface(const IID& iid, void** object) override;
    int32_t AddRef() override;
    int32_t Release() override;
    int32_t FinalConstruct() override;
    void FinalRelease() override;
    void Lock() override;
    void Unlock() override;

    int32_t SelectNode(int32_t row, int32_t flags) override;
    int32_t get_Collection(IUnknown** collection) override;
    int32_t put_Collection(IUnknown* collection) override;
    int32_t MakeNodeVisible(IUnknown* collection, int32_t index) override;
    int32_t CompactNodes() override;
    int32_t GetSelected(int32_t index, int32_t kind, IUnknown** result) override;
    int32_t get_Node(int32_t, int32_t row, int32_t, IUnknown** node) override;
    int32_t put_Node(int32_t, int32_t row, int32_t, IUnknown* node) override;
    int32_t HitTest(int32_t x, int32_t y, CANVASRect* rect, IUnknown** node) override;
    int32_t Clear() override;
    int32_t Insert(IUnknown* reference, IUnknown* node, InsertAtConstants at, TrimFlags trim,
        ScrollFlags scroll) override;
    int32_t SetElementSize(int32_t width, int32_t height) override;
    int32_t GetContainerSize(int32_t* columns, int32_t* rows, int32_t* layers) override;
    int32_t GetElementSize(int32_t* width, int32_t* height) override;
    /// Tells the listeners that the control changed.
    virtual int32_t Refresh();
    int32_t Control(int32_t id, int32_t value) override;
    int32_t Inquire(int32_t id, int32_t* value) override;
    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;
    int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) override;
    int32_t Touch(double x, double y, CANVASRect* rect, double phase, double, double, double,
        double, double, double panY, double, double) override;
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;
    int32_t UIItemChanged(IUnknown* item, int32_t flags) override;
    using IEventSourceImpl::Advise;
    /// Connects a sink of either event interface.
    int32_t Advise(IUnknown* sink, int32_t flags) override;
    int32_t Refresh(int32_t) override;
    int32_t Save(IDataStream* stream, int32_t flags) override;
    int32_t Load(IDataStream* stream, int32_t flags) override;
    int32_t GetPages(int32_t page, INamedCollection** pages, IUnknown** reserved) override;
    /// Draws the items of `collection` from `start` on, with what is open below them, as the rows
    /// from `*rowCounter` on, while fewer than `maxRows` are drawn; advances the counter. E_FAIL
    /// when `maxRows` was reached or nothing could be drawn; S_OK for a counter beyond it.
    virtual int32_t RenderChildNodes(ISuperCollection* collection, int32_t start,
        int32_t* rowCounter, int32_t maxRows, UbuntuCanvas* canvas, CANVASRect& client);
    /// Hides and closes what is visible in `collection` and below.
    virtual int32_t CompactSubNodes(ISuperCollection* collection);

private:
    friend class CObject<CUITree>;

    /// What an operation on the shown rows starts from: the collection, taken under the lock, and
    /// the number of its visible rows.
    struct View {
        SmartPtr<ISuperCollection> m_Collection;
        RowsVersion m_Version; ///< that of the rows, where somebody vouches for them
        int32_t m_Rows = 0;
        RowMarks m_Marks; ///< along the rows, where nobody does
    };
    /// How the scroll bar splits the control's rectangle.
    struct Layout {
        int32_t m_Status = S_FALSE; ///< as of IUIScrollBar::Layout
        CANVASRect m_Bar = {};
        CANVASRect m_Client = {};
    };

    CUITree();
    ~CUITree();

    /// The control as the object of its events.
    IUnknown* Self() { return static_cast<ObjectBase*>(this); }
    /// Runs the body of an operation that calls the host: the control outlives it, and no exception
    /// leaves it.
    template <class Body>
    int32_t Perform(Body&& body) {
        const SmartPtr<IUnknown> alive(Self());
        return Guarded(body);
    }
    template <class... Interfaces>
    void* FindInterface(const IID& iid);

    void LoadIcons();
    int32_t RegisterParameters();

    // Rows and nodes.
    /// Finds the visible row `row` of `collection`, by the known rows where they are its. Takes no
    /// lock, and calls the host. Without such a row it answers E_INVALIDARG and stores the number
    /// of visible rows in `index`, which may be null; for a negative row, without a collection or
    /// an `owner`, nothing is stored.
    int32_t get_VisibleIndex(
        ISuperCollection* collection, int32_t row, int32_t* index, ISuperCollection** owner);
    /// Finds a node object anywhere in the tree, in display order.
    static int32_t Find(
        ISuperCollection* collection, IUnknown* node, int32_t* index, ISuperCollection** owner);
    static int32_t CountRows(ISuperCollection* collection, RowMarks* marks);
    /// The marks along a view's rows; null where the rows are not known as they were any more.
    RowMarks* MarksOf(View& view);
    /// Puts the walk on a row. When there is none it is false, and the view has the number of rows.
    bool FindRow(View& view, int32_t row, std::optional<TreeWalk>& walk);
    /// The row under a height in pixels below the control's top edge.
    void GetElementPos(int32_t x, int32_t y, int32_t* row) const;
    /// The node at that height and its address; empty when there is none.
    SmartPtr<IUnknown> NodeAt(View& view, int32_t y, NodeAddress& address);
    void EmptyOwnCollection();
    void ApplyDefaultSizes();
    static void Compact(ISuperCollection* collection, bool keepRootRows);

    // Rows on the canvas.
    /// A host may take the height away at any time, also within an operation.
    bool HasRowHeight() const { return m_ElementHeight > 0; }
    /// False when there is nothing to draw or hit: no visible row, or no row height.
    bool TakeView(View& view);
    Layout LayOut(const CANVASRect& rect, int32_t rows);
    int32_t ScrollPos() const;
    void Scroll(int32_t position);
    void DrawRows(View& view, int32_t first, UbuntuCanvas* canvas, const CANVASRect& client);
    PaintSettings SettingsOf(UbuntuCanvas* canvas, const CANVASRect& client, int32_t maxRows);

    // Selection.
    void SetSelection(const NodeAddress& node);
    void FlipAndSelect(const NodeAddress& row);
    void UnmarkSelected();
    void Unmark(ISuperCollection* collection, int32_t index);

    // Pointer input, in the order of the dispatch.
    int32_t HandlePointer(PointerEvent& event);
    void Wheel(const PointerEvent& event);
    int32_t OfferToScrollBar(const PointerEvent& event, CANVASRect bar);
    void ReportDrag(const PointerEvent& event);
    int32_t PrimaryPress(const PointerEvent& event);
    void ForgetSelection();
    int32_t PrimaryRelease(const PointerEvent& event);
    bool IsDoubleClick(const PointerEvent& event) const;
    int32_t DoubleClick(const PointerEvent& event);
    int32_t Click(const PointerEvent& event);
    bool IsToggleZone(const PointerEvent& event, int32_t level) const;
    int32_t Toggle(const NodeAddress& row, ISuperCollection& children, int32_t flags);
    int32_t SecondaryPress(const PointerEvent& event);

    CResourceLock m_Lock;
    SmartPtr<IUIScrollBar> m_ScrollBar; ///< its position is the row shown at the top
    SmartPtr<IPMRenderStyle> m_RenderStyle;
    SmartPtr<IPMRenderer> m_Renderer;
    int32_t m_ScrollBarWidth = 22;           ///< pixels
    int32_t m_IndentWidth = 10;              ///< pixels per level
    SmartPtr<ISuperCollection> m_Collection; ///< the bound collection
    bool m_OwnsCollection = true;            ///< it is the control's own default one
    SmartPtr<IUnknown> m_Parent;
    int32_t m_ElementHeight = 15; ///< row height in pixels
    timeval m_LastClickTime;
    SmartPtr<IUnknown> m_OpenIcon;
    SmartPtr<IUnknown> m_ClosedIcon;
    int32_t m_SelectedIndex = -1; ///< has a meaning in m_SelectedCollection only
    SmartPtr<ISuperCollection> m_SelectedCollection;
    int32_t m_SelectOnPress = 1;
    int32_t m_ClearAllOnSelect = 1;
    int32_t m_UseDefaultStyle = 1;
    int32_t m_Options = OPTION_FILLONPRESS;
    bool m_PointerDown = false; ///< a press landed on a node
    int32_t m_PressX = 0;
    int32_t m_PressY = 0;
    SmartPtr<IUnknown> m_PressedNode;
    int32_t m_LastClickX = kNoClick;
    int32_t m_LastClickY = kNoClick;
    int32_t m_Color101 = 0xFFFFFF; ///< 0xRRGGBB, like every colour; kept for the host only
    int32_t m_TextColor = 0x4B4B4B;
    int32_t m_Color102 = 0x000000; ///< kept for the host only
    int32_t m_RootToggleOnIconOnly = 0;
    int32_t m_ChildToggleOnIconOnly = 1;
    int32_t m_ResetIcons = 0; ///< storage of the action parameter; never written
    int32_t m_TouchStartPos = 0;
    int32_t m_ChangeDepth = 0;  ///< changes that are being passed on within each other
    int32_t m_ChangeRounds = 0; ///< how many were since the outermost of them
    KnownRows m_Known;

    static constexpr int32_t kDeepestChange = 64;
    static constexpr int32_t kMostChanges = 10'000;
    static constexpr int32_t kNoClick = -2;       ///< there is no click to pair with
    static constexpr int32_t kNoRow = 0x0FFFFFFF; ///< never reached, so looking for it counts rows
};
