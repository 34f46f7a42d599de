#include "uitree/Geometry.h"
#include "uitree/UITreeImpl.h"

#include <cmath>

// Pointer input: the wheel, the scroll bar, and clicks on rows.

struct PointerEvent {
    int32_t m_State;
    int32_t m_Action;
    int32_t m_Keys;
    double m_X;
    double m_Y;
    int32_t m_PixelX; ///< the position truncated to whole pixels
    int32_t m_PixelY;
    CANVASRect m_Rect; ///< the control's
    IUnknown* m_Context;
    NodeAddress m_Row = {}; ///< of the node under the pointer
    SmartPtr<IUnknown> m_Node = {};
};

namespace {

constexpr double kDoubleClickInterval = 500.0; ///< milliseconds, exclusive
constexpr int32_t kClickDistance = 1;          ///< pixels within which the pointer did not move
constexpr int32_t kWheelStep = 100;
constexpr double kFastWheelFactor = 10.0;
constexpr int32_t kKeepSelectionKeys = 0x0C;

/// Whether a position is more than the click distance away from a whole pixel on one axis.
bool IsAway(double position, int32_t from) {
    return std::abs(int64_t{Truncate(position - from)}) > kClickDistance;
}

double MillisecondsBetween(const timeval& from, const timeval& to) {
    return static_cast<double>(to.tv_sec - from.tv_sec) * 1000.0 +
           static_cast<double>(to.tv_usec - from.tv_usec) / 1000.0;
}

void FillOnPress(IUnknown* node) {
    if (const auto archive = QueryItem<IFileArchive>(node)) {
        FillOnce(*archive.Get(), CONTENTSTATE_ARCHIVE);
    } else if (const auto names = Query<IFileNameCollection>(node)) {
        FillOnce(*names.Get(), CONTENTSTATE_FILENAMES);
    }
}

} // namespace

int32_t CUITree::Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
    CANVASRect* rect, IUnknown* context) {
    if (action == POINTERACTION_IGNORED) {
        return S_OK;
    }
    return Perform([&] {
        PointerEvent event{.m_State = state,
            .m_Action = action,
            .m_Keys = keys,
            .m_X = x,
            .m_Y = y,
            .m_PixelX = Truncate(x),
            .m_PixelY = Truncate(y),
            .m_Rect = RectOf(rect),
            .m_Context = context};
        return HandlePointer(event);
    });
}

int32_t CUITree::HandlePointer(PointerEvent& event) {
    View view;
    if (!Contains(event.m_Rect, event.m_PixelX, event.m_PixelY) || !TakeView(view)) {
        return E_FAIL;
    }
    const Layout layout = LayOut(event.m_Rect, view.m_Rows);
    if ((event.m_State & POINTERSTATE_WHEEL) != 0) {
        Wheel(event);
        return S_OK;
    }
    if (const int32_t taken = OfferToScrollBar(event, layout.m_Bar); taken >= 0) {
        if (taken == S_OK) {
            FIRE_UIItemChanged(Self(), 0);
        }
        return S_OK;
    }
    event.m_Node = NodeAt(view, Truncate(event.m_Y - event.m_Rect.top), event.m_Row);
    if (!event.m_Node) {
        return S_FALSE;
    }
    ReportDrag(event);
    if ((event.m_State & POINTERSTATE_PRIMARY) != 0) {
        switch (event.m_Action) {
        case POINTERACTION_PRESS:
            return PrimaryPress(event);
        case POINTERACTION_RELEASE:
            return PrimaryRelease(event);
        default:
            return S_FALSE;
        }
    }
    if (event.m_Action == POINTERACTION_PRESS && event.m_State == POINTERSTATE_SECONDARY) {
        return SecondaryPress(event);
    }
    return S_FALSE;
}

void CUITree::Wheel(const PointerEvent& event) {
    const int32_t steps = event.m_Keys / kWheelStep;
    if (steps == 0) {
        return;
    }
    const bool fast = (event.m_State & POINTERSTATE_FAST) != 0;
    const double distance = steps * (fast ? kFastWheelFactor : 1.0);
    Scroll(Truncate(ScrollPos() + distance));
    FIRE_UIItemChanged(Self(), 0);
}

/// The bar's answer; negative when it is none of its business.
int32_t CUITree::OfferToScrollBar(const PointerEvent& event, CANVASRect bar) {
    const auto input = Query<IUIMouseInput>(m_ScrollBar.Get());
    return input ? input->Pointer(event.m_State, event.m_Action, event.m_Keys, event.m_X, event.m_Y,
                       &bar, event.m_Context)
                 : E_FAIL;
}

/// Informs about every move with the button held; nothing is moved and nothing latched.
void CUITree::ReportDrag(const PointerEvent& event) {
    if (event.m_State == POINTERSTATE_PRIMARY && event.m_Action == POINTERACTION_MOVE &&
        event.m_Keys == 0 && m_PointerDown &&
        (IsAway(event.m_X, m_PressX) || IsAway(event.m_Y, m_PressY))) {
        const SmartPtr<IUnknown> pressed = m_PressedNode;
        Fire_NodeDrag(
            event.m_Context, event.m_State, event.m_PixelX, event.m_PixelY, pressed.Get());
    }
}

int32_t CUITree::PrimaryPress(const PointerEvent& event) {
    m_PointerDown = true;
    m_PressX = event.m_PixelX;
    m_PressY = event.m_PixelY;
    m_PressedNode = event.m_Node;
    if ((m_Options & OPTION_FILLONPRESS) != 0) {
        FillOnPress(event.m_Node.Get());
    }
    if ((event.m_Keys & kKeepSelectionKeys) != 0 || m_SelectOnPress == 0) {
        return S_OK;
    }
    ForgetSelection();
    if (!IsCollection(event.m_Node.Get())) {
        FlipAndSelect(event.m_Row);
    }
    Refresh();
    return S_OK;
}

/// Takes the selected bit off the old selection, or off everything in its collection.
void CUITree::ForgetSelection() {
    if (m_ClearAllOnSelect == 0) {
        UnmarkSelected();
    } else if (const SmartPtr<ISuperCollection> collection = m_SelectedCollection) {
        const int32_t count = CountOf(*collection.Get());
        for (int32_t i = 0; i < count; ++i) {
            Unmark(collection.Get(), i);
        }
    }
    SetSelection({.m_Collection = {}, .m_Index = -1});
}

/// The flags are read afresh: what came before may have changed them.
void CUITree::FlipAndSelect(const NodeAddress& row) {
    const int32_t flags = FlagsOf(*row.m_Collection.Get(), row.m_Index);
    m_Known.WriteFlags(*row.m_Collection.Get(), row.m_Index, flags, flags ^ NODE_SELECTED);
    SetSelection(row);
}

int32_t CUITree::PrimaryRelease(const PointerEvent& event) {
    return IsDoubleClick(event) ? DoubleClick(event) : Click(event);
}

bool CUITree::IsDoubleClick(const PointerEvent& event) const {
    timeval now;
    gettimeofday(&now, nullptr);
    return MillisecondsBetween(m_LastClickTime, now) < kDoubleClickInterval && event.m_Keys == 0 &&
           !IsAway(event.m_X, m_LastClickX) && !IsAway(event.m_Y, m_LastClickY);
}

/// Leaves the press, the selection and the click time alone, and pairs with no further release.
int32_t CUITree::DoubleClick(const PointerEvent& event) {
    Fire_NodeSelect(
        Self(), NODESELECT_DOUBLECLICK, event.m_Row.m_Index, NODEACTION_NONE, event.m_Node.Get());
    m_LastClickX = kNoClick;
    m_LastClickY = kNoClick;
    return S_OK;
}

int32_t CUITree::Click(const PointerEvent& event) {
    gettimeofday(&m_LastClickTime, nullptr);
    m_LastClickX = event.m_PixelX;
    m_LastClickY = event.m_PixelY;
    m_PointerDown = false;
    m_PressedNode.Reset();

    int32_t action = NODEACTION_NONE;
    SmartPtr<IUnknown> reported = event.m_Node;
    if (const auto children = IsCollection(event.m_Node.Get())) {
        const int32_t flags = FlagsOf(*event.m_Row.m_Collection.Get(), event.m_Row.m_Index);
        if (IsToggleZone(event, flags & NODE_LEVEL_MASK)) {
            action = Toggle(event.m_Row, *children.Get(), flags);
        }
        if ((m_Options & OPTION_REPORTDATA) != 0) {
            SmartPtr<IUnknown> data;
            if (event.m_Row.m_Collection->GetItemData(event.m_Row.m_Index, data.Receive()) >= 0) {
                reported = std::move(data);
            }
        }
    }
    if (event.m_Keys == 0) {
        UnmarkSelected();
    }
    FlipAndSelect(event.m_Row);
    Fire_NodeSelect(event.m_Row.m_Collection.Get(), event.m_State | event.m_Keys,
        event.m_Row.m_Index, action, reported.Get());
    return S_OK;
}

/// Whether a click on a collection row of the level opens or closes it: anywhere, or only up to the
/// right edge of its expander.
bool CUITree::IsToggleZone(const PointerEvent& event, int32_t level) const {
    if (level == 0) {
        return true;
    }
    const int32_t iconOnly = level == 1 ? m_RootToggleOnIconOnly : m_ChildToggleOnIconOnly;
    const int64_t boundary = event.m_Rect.left + int64_t{m_IndentWidth} * level;
    return iconOnly == 0 || event.m_X <= static_cast<double>(boundary);
}

/// Opens or closes a collection row and says which. An empty collection never stays open.
int32_t CUITree::Toggle(const NodeAddress& row, ISuperCollection& children, int32_t flags) {
    const bool opens = (flags & NODE_EXPANDED) == 0;
    const bool stays = ShowChildren(children, flags, opens) > 0 && opens;
    const int32_t kept = flags & (NODE_LEVEL_MASK | NODE_VISIBLE);
    row.m_Collection->SetItemFlags(row.m_Index, stays ? kept | NODE_EXPANDED : kept);
    Refresh();
    return opens ? NODEACTION_OPENED : NODEACTION_CLOSED;
}

/// Marks the row, also a collection's, without a refresh.
int32_t CUITree::SecondaryPress(const PointerEvent& event) {
    UnmarkSelected();
    const int32_t flags = FlagsOf(*event.m_Row.m_Collection.Get(), event.m_Row.m_Index);
    m_Known.WriteFlags(
        *event.m_Row.m_Collection.Get(), event.m_Row.m_Index, flags, flags | NODE_SELECTED);
    SetSelection(event.m_Row);
    Fire_NodeSelect(
        Self(), event.m_State, event.m_Row.m_Index, NODEACTION_NONE, event.m_Node.Get());
    return S_FALSE;
}
