#pragma once

#include "framework/interfaces/EventInterfaces.h"
#include "framework/runtime/SinkList.h"

// Firing: every sink that offers the event interface is called, in the order of connection and
// outside the lock; the others are skipped. The caller keeps the owner alive meanwhile.

/// Serves at most as many sinks as are connected at the start.
void FireNodeSelect(ObjectBase& owner, const SinkList& sinks, IUnknown* container, int32_t state,
    int32_t index, int32_t action, IUnknown* node);
void FireNodeDrag(ObjectBase& owner, const SinkList& sinks, IUnknown* context, int32_t state,
    int32_t x, int32_t y, IUnknown* node);
/// Serves sinks that are connected during the firing too.
void FireItemChanged(ObjectBase& owner, const SinkList& sinks, IUnknown* item, int32_t flags);

/// Gives a component class T with an IEventSourceImpl base the firing of container events.
template <class T>
class _FIREUIContainerEvents {
protected:
    void Fire_NodeSelect(
        IUnknown* container, int32_t state, int32_t index, int32_t action, IUnknown* node) {
        T& self = static_cast<T&>(*this);
        FireNodeSelect(self, self.Sinks(), container, state, index, action, node);
    }
    void Fire_NodeDrag(IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) {
        T& self = static_cast<T&>(*this);
        FireNodeDrag(self, self.Sinks(), context, state, x, y, node);
    }
};

/// The same for the refresh event.
template <class T>
class _FIREUIRefreshEvents {
protected:
    void FIRE_UIItemChanged(IUnknown* item, int32_t flags) {
        T& self = static_cast<T&>(*this);
        FireItemChanged(self, self.Sinks(), item, flags);
    }
};
