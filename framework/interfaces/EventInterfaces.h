#pragma once

#include "framework/interfaces/Unknown.h"

// Events: implemented by listeners, which connect through IEventSource. What a listener returns is
// ignored.

/// States of NodeSelect.
constexpr int32_t NODESELECT_CLICK = 1;
constexpr int32_t NODESELECT_DOUBLECLICK = 2;

/// What a click did to the row, the action of NodeSelect.
constexpr int32_t NODEACTION_NONE = 0;
constexpr int32_t NODEACTION_OPENED = 1;
constexpr int32_t NODEACTION_CLOSED = 2;

struct _IUIContainerEvents : IUnknown {
    /// `container` is the row's collection for a click and the control itself otherwise; `index` is
    /// the row's in its collection.
    virtual int32_t NodeSelect(
        IUnknown* container, int32_t state, int32_t index, int32_t action, IUnknown* node) = 0;
    /// The pressed node was moved to x, y in canvas pixels.
    virtual int32_t NodeDrag(
        IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) = 0;
};

struct _IUIRefreshEvent : IUnknown {
    /// `item` changed and wants to be drawn again.
    virtual int32_t UIItemChanged(IUnknown* item, int32_t flags) = 0;
};

/// Flags of Advise: 0 disconnects, 2 replaces the sink that was connected with 2 before; any other
/// value is kept without a meaning.
constexpr int32_t ADVISE_DISCONNECT = 0;
constexpr int32_t ADVISE_REPLACE = 2;

/// Implemented by components that fire events.
struct IEventSource : IUnknown {
    /// Connects a sink; a null sink with flags 0 disconnects all.
    virtual int32_t Advise(IUnknown* sink, int32_t flags) = 0;
    virtual int32_t GetAdviseCount() = 0;
    /// Either out-pointer may be null; `sink` receives one reference. E_FAIL past the end.
    virtual int32_t GetAdviseItem(uint32_t index, IUnknown** sink, int32_t* flags) = 0;
    /// Connects a sink that must offer the event interface `iid`. S_FALSE: already connected.
    virtual int32_t Advise(IUnknown* sink, int32_t flags, const IID& iid) = 0;
};
