#include "uitree/Geometry.h"
#include "uitree/UITreeImpl.h"

#include <cmath>

// Pointer input: the wheel, the scroll bar, and clicks on rows.

struct PointerEvent {
    int32_t state;
    int32_t action;
    int32_t keys;
    double x;
    double y;
    int32_t ix; ///< x and y truncated to whole pixels
    int32_t iy;
    CANVASRect rect; ///< the control's
    IUnknown* context;
    NodeAddress row = {}; ///< of the node under the pointer
    SmartPtr<IUnknown> node = {};
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
        PointerEvent event{.state = state,
            .action = action,
            .keys = keys,
            .x = x,
            .y = y,
            .ix = Truncate(x),
            .iy = Truncate(y),
            .rect = RectOf(rect),
            .context = context};
        return HandlePointer(event);
    });
}

int32_t CUITree::HandlePointer(PointerEvent& event) {
    View view;
    if (!TakeView(view) || !Contains(event.rect, event.ix, event.iy)) {
        return E_FAIL;
    }
    const Layout layout = LayOut(event.rect, view.rows);
    if ((event.state & POINTERSTATE_WHEEL) != 0) {
        Wheel(event);
        return S_OK;
    }
    if (const int32_t taken = OfferToScrollBar(event, layout.bar); taken >= 0) {
        if (taken == S_OK) {
            FIRE_UIItemChanged(Self(), 0);
        }
        return S_OK;
    }
    event.node = NodeAt(view.collection.Get(), Truncate(event.y - event.rect.top), event.row);
    if (!event.node) {
        return S_FALSE;
    }
    ReportDrag(event);
    if ((event.state & POINTERSTATE_PRIMARY) != 0) {
        switch (event.action) {
        case POINTERACTION_PRESS:
            return PrimaryPress(event);
        case POINTERACTION_RELEASE:
            return PrimaryRelease(event);
        default:
            return S_FALSE;
        }
    }
    if (event.action == POINTERACTION_PRESS && event.state == POINTERSTATE_SECONDARY) {
        return SecondaryPress(event);
    }
    return S_FALSE;
}

void CUITree::Wheel(const PointerEvent& event) {
    const int32_t steps = event.keys / kWheelStep;
    if (steps == 0) {
        return;
    }
    const bool fast = (event.state & POINTERSTATE_FAST) != 0;
    const double distance = steps * (fast ? kFastWheelFactor : 1.0);
    Scroll(Truncate(ScrollPos() + distance));
    FIRE_UIItemChanged(Self(), 0);
}

/// The bar's answer; negative when it is none of its business.
int32_t CUITree::OfferToScrollBar(const PointerEvent& event, CANVASRect bar) {
    const auto input = Query<IUIMouseInput>(m_ScrollBar.Get());
    return input ? input->Pointer(
                       event.state, event.action, event.keys, event.x, event.y, &bar, event.context)
                 : E_FAIL;
}

/// Informs about every move with the button held; nothing is moved and nothing latched.
void CUITree::ReportDrag(const PointerEvent& event) {
    if (event.state == POINTERSTATE_PRIMARY && event.action == POINTERACTION_MOVE &&
        event.keys == 0 && m_PointerDown &&
        (IsAway(event.x, m_PressX) || IsAway(event.y, m_PressY))) {
        const SmartPtr<IUnknown> pressed = m_PressedNode;
        Fire_NodeDrag(event.context, event.state, event.ix, event.iy, pressed.Get());
    }
}

int32_t CUITree::PrimaryPress(const PointerEvent& event) {
    m_PointerDown = true;
    m_PressX = event.ix;
    m_PressY = event.iy;
    m_PressedNode = event.node;
    if ((m_Options & OPTION_FILLONPRESS) != 0) {
        FillOnPress(event.node.Get());
    }
    if ((event.keys & kKeepSelectionKeys) != 0 || m_SelectOnPress == 0) {
        return S_OK;
    }
    ForgetSelection();
    if (!IsCollection(event.node.Get())) {
        FlipAndSelect(event.row);
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
    SetSelection({.collection = {}, .index = -1});
}

/// The flags are read afresh: what came before may have changed them.
void CUITree::FlipAndSelect(const NodeAddress& row) {
    const int32_t flags = FlagsOf(*row.collection.Get(), row.index);
    row.collection->SetItemFlags(row.index, flags ^ NODE_SELECTED);
    SetSelection(row);
}

int32_t CUITree::PrimaryRelease(const PointerEvent& event) {
    return IsDoubleClick(event) ? DoubleClick(event) : Click(event);
}

bool CUITree::IsDoubleClick(const PointerEvent& event) const {
    timeval now;
    gettimeofday(&now, nullptr);
    return MillisecondsBetween(m_LastClickTime, now) < kDoubleClickInterval && event.keys == 0 &&
           !IsAway(event.x, m_LastClickX) && !IsAway(event.y, m_LastClickY);
}

/// Leaves the press, the selection and the click time alone, and pairs with no further release.
int32_t CUITree::DoubleClick(const PointerEvent& event) {
    Fire_NodeSelect(
        Self(), NODESELECT_DOUBLECLICK, event.row.index, NODEACTION_NONE, event.node.Get());
    m_LastClickX = kNoClick;
    m_LastClickY = kNoClick;
    return S_OK;
}

int32_t CUITree::Click(const PointerEvent& event) {
    gettimeofday(&m_LastClickTime, nullptr);
    m_LastClickX = event.ix;
    m_LastClickY = event.iy;
    m_PointerDown = false;
    m_PressedNode.Reset();

    int32_t action = NODEACTION_NONE;
    SmartPtr<IUnknown> reported = event.node;
    if (const auto children = IsCollection(event.node.Get())) {
        const int32_t flags = FlagsOf(*event.row.collection.Get(), event.row.index);
        if (IsToggleZone(event, flags & NODE_LEVEL_MASK)) {
            action = Toggle(event.row, *children.Get(), flags);
        }
        if ((m_Options & OPTION_REPORTDATA) != 0) {
            SmartPtr<IUnknown> data;
            if (event.row.collection->GetItemData(event.row.index, data.Receive()) >= 0) {
                reported = std::move(data);
            }
        }
    }
    if (event.keys == 0) {
        UnmarkSelected();
    }
    FlipAndSelect(event.row);
    Fire_NodeSelect(event.row.collection.Get(), event.state | event.keys, event.row.index, action,
        reported.Get());
    return S_OK;
}

/// Whether a click on a collection row of the level opens or closes it: anywhere, or only up to the
/// right edge of its expander.
bool CUITree::IsToggleZone(const PointerEvent& event, int32_t level) const {
    if (level == 0) {
        return true;
    }
    const int32_t iconOnly = level == 1 ? m_RootToggleOnIconOnly : m_ChildToggleOnIconOnly;
    const int64_t boundary = event.rect.left + int64_t{m_IndentWidth} * level;
    return iconOnly == 0 || event.x <= static_cast<double>(boundary);
}

/// Opens or closes a collection row and says which. An empty collection never stays open.
int32_t CUITree::Toggle(const NodeAddress& row, ISuperCollection& children, int32_t flags) {
    const bool opens = (flags & NODE_EXPANDED) == 0;
    const bool stays = ShowChildren(children, flags, opens) > 0 && opens;
    const int32_t kept = flags & (NODE_LEVEL_MASK | NODE_VISIBLE);
    row.collection->SetItemFlags(row.index, stays ? kept | NODE_EXPANDED : kept);
    Refresh();
    return opens ? NODEACTION_OPENED : NODEACTION_CLOSED;
}

/// Marks the row, also a collection's, without a refresh.
int32_t CUITree::SecondaryPress(const PointerEvent& event) {
    UnmarkSelected();
    const int32_t flags = FlagsOf(*event.row.collection.Get(), event.row.index);
    event.row.collection->SetItemFlags(event.row.index, flags | NODE_SELECTED);
    SetSelection(event.row);
    Fire_NodeSelect(Self(), event.state, event.row.index, NODEACTION_NONE, event.node.Get());
    return S_FALSE;
}
