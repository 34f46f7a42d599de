#pragma once

#include "framework/interfaces/EventInterfaces.h"
#include "framework/runtime/Guarded.h"
#include "framework/runtime/SinkList.h"

/// Implements IEventSource for a component class T (derived from ObjectBase), which requires the
/// event interface `*RequiredIID` of sinks unless it says otherwise.
template <class T, const IID* RequiredIID>
class IEventSourceImpl : public IEventSource, protected SinkList {
public:
    int32_t Advise(IUnknown* sink, int32_t flags) override {
        return Advise(sink, flags, *RequiredIID);
    }
    int32_t GetAdviseCount() override { return SinkList::Count(); }
    int32_t GetAdviseItem(uint32_t index, IUnknown** sink, int32_t* flags) override {
        return SinkList::GetItem(index, sink, flags);
    }
    int32_t Advise(IUnknown* sink, int32_t flags, const IID& iid) override {
        return Guarded([&] { return SinkList::Advise(static_cast<T&>(*this), sink, flags, iid); });
    }

    /// The listeners, for the firing helpers.
    const SinkList& Sinks() const { return *this; }
};
