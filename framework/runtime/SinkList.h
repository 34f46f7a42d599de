#pragma once

#include "framework/runtime/Object.h"

/// One connected listener.
struct AdviseItem {
    SmartPtr<IUnknown> m_Sink; ///< as the listener gave it
    int32_t m_Flags;
};

static_assert(sizeof(void*) != 4 || sizeof(AdviseItem) == 8);

/// The listeners of an object, in the order of their connection. The object's lock guards the list.
/// Sinks are compared, dropped, and asked by TakeInterface under it; their event methods are called
/// outside it. A sink may call back at any time and change the list.
class SinkList {
public:
    SinkList() = default;
    SinkList(const SinkList&) = delete;
    SinkList& operator=(const SinkList&) = delete;
    ~SinkList() { Free(kClosed); }

    /// Connects, replaces or disconnects a sink, which must offer `iid`: see IEventSource.
    int32_t Advise(ObjectBase& owner, IUnknown* sink, int32_t flags, const IID& iid);
    /// Disconnects one sink (E_FAIL when it is not connected), or all of them when `sink` is null.
    int32_t ClearAdvise(ObjectBase& owner, IUnknown* sink);

    /// Disconnects all, before the object is torn down: a sink that connects another one while it
    /// goes is refused.
    void Close(ObjectBase& owner);

    int32_t Count() const { return m_AdviseCount; }
    int32_t GetItem(uint32_t index, IUnknown** sink, int32_t* flags) const;
    /// The sink at an index with a reference, read under the lock; empty past the end.
    SmartPtr<IUnknown> Take(ObjectBase& owner, int32_t index) const;
    /// The interface `iid` of the sink at an index, asked for under the lock, in `answer` (empty
    /// when the sink lacks it). False past the end.
    bool TakeInterface(ObjectBase& owner, int32_t index, const IID& iid, void** answer) const;

private:
    static constexpr int32_t kGrowth = 8;
    static constexpr int32_t kClosed = -1; ///< in place of a capacity: takes no more

    int32_t Find(IUnknown* sink) const;
    bool Replace(ObjectBase& owner, IUnknown* sink);
    int32_t Append(IUnknown* sink, int32_t flags);
    bool Grow();
    void Free(int32_t capacity);

    int32_t m_AdviseCount = 0;
    int32_t m_AdviseCapacity = 0;
    AdviseItem** m_AdviseList = nullptr;
};
