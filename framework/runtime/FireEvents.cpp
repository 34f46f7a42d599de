#include "framework/runtime/FireEvents.h"

namespace {

template <class Call>
void ForEachContainerSink(ObjectBase& owner, const SinkList& sinks, Call&& call) {
    const int32_t count = sinks.Count();
    for (int32_t i = 0; i < count; ++i) {
        const auto sink = sinks.Take(owner, i);
        if (const auto events = Query<_IUIContainerEvents>(sink.Get())) {
            call(*events.Get());
        }
    }
}

} // namespace

void FireNodeSelect(ObjectBase& owner, const SinkList& sinks, IUnknown* container, int32_t state,
    int32_t index, int32_t action, IUnknown* node) {
    ForEachContainerSink(owner, sinks, [&](_IUIContainerEvents& events) {
        events.NodeSelect(container, state, index, action, node);
    });
}

void FireNodeDrag(ObjectBase& owner, const SinkList& sinks, IUnknown* context, int32_t state,
    int32_t x, int32_t y, IUnknown* node) {
    ForEachContainerSink(owner, sinks,
        [&](_IUIContainerEvents& events) { events.NodeDrag(context, state, x, y, node); });
}

void FireItemChanged(ObjectBase& owner, const SinkList& sinks, IUnknown* item, int32_t flags) {
    SmartPtr<_IUIRefreshEvent> events;
    for (int32_t i = 0; sinks.TakeInterface(owner, i, IID__IUIRefreshEvent, events.ReceiveAny());
         ++i) {
        if (events) {
            events->UIItemChanged(item, flags);
        }
    }
}
