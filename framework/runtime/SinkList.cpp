#include "framework/runtime/SinkList.h"

#include "framework/interfaces/EventInterfaces.h"
#include "framework/runtime/OutParameter.h"

#include <algorithm>
#include <memory>

namespace {

/// Whether a sink speaks an event interface. The answer itself goes at once; what a failed query
/// leaves is nobody's.
int32_t TestFor(IUnknown* sink, const IID& iid) {
    void* answer = nullptr;
    const int32_t status = sink->QueryInterface(iid, &answer);
    if (status >= 0) {
        Adopt(static_cast<IUnknown*>(answer)).Reset();
    }
    return status;
}

} // namespace

int32_t SinkList::Advise(ObjectBase& owner, IUnknown* sink, int32_t flags, const IID& iid) {
    const SmartPtr<IUnknown> alive(&owner); // a sink that goes may hold its last reference
    if (flags == ADVISE_DISCONNECT) {
        return ClearAdvise(owner, sink);
    }
    if (!sink) {
        return E_POINTER;
    }
    if (flags == ADVISE_REPLACE && m_AdviseCount > 0 && Replace(owner, sink)) {
        return S_OK;
    }
    if (const int32_t status = TestFor(sink, iid); status < 0) {
        return status;
    }
    const ObjectGuard guard(owner);
    return Find(sink) >= 0 ? S_FALSE : Append(sink, flags);
}

int32_t SinkList::ClearAdvise(ObjectBase& owner, IUnknown* sink) {
    if (!sink) {
        if (m_AdviseCount > 0) {
            const ObjectGuard guard(owner);
            Free(0);
        }
        return S_OK;
    }
    const ObjectGuard guard(owner);
    const int32_t index = Find(sink);
    if (index < 0) {
        return E_FAIL;
    }
    // The gap is closed before the sink goes: its last reference may be this one, and its
    // destruction may look at the list.
    const std::unique_ptr<AdviseItem> removed(m_AdviseList[index]);
    std::copy(m_AdviseList + index + 1, m_AdviseList + m_AdviseCount, m_AdviseList + index);
    --m_AdviseCount;
    return S_OK;
}

void SinkList::Close(ObjectBase& owner) {
    const ObjectGuard guard(owner);
    Free(kClosed);
}

int32_t SinkList::GetItem(uint32_t index, IUnknown** sink, int32_t* flags) const {
    Store<IUnknown*>(sink, nullptr);
    Store(flags, 0);
    if (index >= static_cast<uint32_t>(m_AdviseCount)) {
        return E_FAIL;
    }
    const AdviseItem& item = *m_AdviseList[index];
    Store(flags, item.m_Flags);
    if (sink) {
        *sink = SmartPtr(item.m_Sink).Detach();
        return *sink ? S_OK : E_FAIL;
    }
    return S_OK;
}

SmartPtr<IUnknown> SinkList::Take(ObjectBase& owner, int32_t index) const {
    const ObjectGuard guard(owner);
    return index < m_AdviseCount ? m_AdviseList[index]->m_Sink : SmartPtr<IUnknown>();
}

bool SinkList::TakeInterface(
    ObjectBase& owner, int32_t index, const IID& iid, void** answer) const {
    SmartPtr<IUnknown> sink; // released outside the lock
    const ObjectGuard guard(owner);
    if (index >= m_AdviseCount) {
        return false;
    }
    sink = m_AdviseList[index]->m_Sink;
    *answer = QueryObject(sink.Get(), iid);
    return true;
}

/// Compares identities, which calls the sinks; each is held meanwhile, and a match counts only
/// while its record still stands there.
int32_t SinkList::Find(IUnknown* sink) const {
    for (int32_t i = 0; i < m_AdviseCount; ++i) {
        const SmartPtr<IUnknown> connected = m_AdviseList[i]->m_Sink;
        const bool same = IsSameObject(connected.Get(), sink);
        if (same && i < m_AdviseCount && m_AdviseList[i]->m_Sink.Get() == connected.Get()) {
            return i;
        }
    }
    return -1;
}

bool SinkList::Replace(ObjectBase& owner, IUnknown* sink) {
    const ObjectGuard guard(owner);
    AdviseItem** const end = m_AdviseList + m_AdviseCount;
    AdviseItem** const found = std::find_if(
        m_AdviseList, end, [](const AdviseItem* item) { return item->m_Flags == ADVISE_REPLACE; });
    if (found == end) {
        return false;
    }
    SmartPtr<IUnknown> replacement(sink);
    std::swap((*found)->m_Sink, replacement); // the previous sink goes after it was replaced
    return true;
}

int32_t SinkList::Append(IUnknown* sink, int32_t flags) {
    std::unique_ptr<AdviseItem> item(new (std::nothrow) AdviseItem{SmartPtr(sink), flags});
    if (!item || m_AdviseCapacity == kClosed || (m_AdviseCount >= m_AdviseCapacity && !Grow())) {
        return E_FAIL;
    }
    m_AdviseList[m_AdviseCount++] = item.release();
    return S_OK;
}

bool SinkList::Grow() {
    auto** grown = new (std::nothrow) AdviseItem*[m_AdviseCapacity + kGrowth];
    if (!grown) {
        return false;
    }
    std::copy(m_AdviseList, m_AdviseList + m_AdviseCount, grown);
    delete[] m_AdviseList;
    m_AdviseList = grown;
    m_AdviseCapacity += kGrowth;
    return true;
}

/// Takes the list away before the first sink is released, so that one that connects a new sink
/// meanwhile finds an empty list.
void SinkList::Free(int32_t capacity) {
    const std::unique_ptr<AdviseItem*[]> items(std::exchange(m_AdviseList, nullptr));
    const int32_t count = std::exchange(m_AdviseCount, 0);
    m_AdviseCapacity = capacity;
    for (int32_t i = 0; i < count; ++i) {
        delete items[i];
    }
}
