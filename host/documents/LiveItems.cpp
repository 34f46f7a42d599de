#include "host/documents/LiveItems.h"

#include <algorithm>
#include <new>
#include <utility>

LivePlace::~LivePlace() {
    if (m_Level) {
        m_Items->Disconnect(*this);
    }
}

DocumentLevelPtr LivePlace::ExchangeBelow(DocumentLevelPtr level) {
    return m_Level ? m_Level->ExchangeBelow(m_Index, std::move(level))
                   : std::exchange(m_Below, std::move(level));
}

IUnknown* LiveItems::Find(const DocumentLevel& level, uint32_t index) {
    return level.KindOf(index).m_IsLive ? (*LinkTo(level, index))->m_Item : nullptr;
}

void LiveItems::Connect(DocumentLevel& level, uint32_t index, IUnknown* item, LivePlace& place) {
    if (m_Count == m_Slots.size()) {
        Grow();
    }
    place.m_Items = this;
    place.m_Level = &level;
    place.m_Index = index;
    place.m_Item = item;
    place.m_Next = std::exchange(m_Slots[SlotOf(level, index)], &place);
    level.SetLive(index, true);
    ++m_Count;
}

void LiveItems::Disconnect(LivePlace& place) {
    *LinkTo(*place.m_Level, place.m_Index) = place.m_Next;
    place.m_Level->SetLive(place.m_Index, false);
    place.m_Level = nullptr;
    --m_Count;
}

size_t LiveItems::SlotOf(const DocumentLevel& level, uint32_t index) const {
    const size_t mixed =
        (reinterpret_cast<uintptr_t>(&level) / alignof(std::max_align_t)) * 31 + index;
    return mixed & (m_Slots.size() - 1);
}

/// What points to the place of a row that is live.
LivePlace** LiveItems::LinkTo(const DocumentLevel& level, uint32_t index) {
    LivePlace** link = &m_Slots[SlotOf(level, index)];
    while ((*link)->m_Level != &level || (*link)->m_Index != index) {
        link = &(*link)->m_Next;
    }
    return link;
}

void LiveItems::Grow() {
    constexpr size_t kFirstSlots = 64;
    std::vector<LivePlace*> before(std::max(kFirstSlots, 2 * m_Slots.size()));
    before.swap(m_Slots);
    for (LivePlace* place : before) {
        while (place) {
            LivePlace*& slot = m_Slots[SlotOf(*place->m_Level, place->m_Index)];
            LivePlace* next = std::exchange(place->m_Next, slot);
            slot = std::exchange(place, next);
        }
    }
}

void LiveItems::Drop(DocumentLevelPtr level, const PartOf& partOf) {
    level->TakeApart([&](DocumentLevel& dropped) {
        for (uint32_t i = 0; m_Count > 0 && i < dropped.Count(); ++i) {
            if (dropped.KindOf(i).m_IsLive) {
                TakeOut(**LinkTo(dropped, i), partOf);
            }
        }
    });
}

void LiveItems::TakeOut(LivePlace& place, const PartOf& partOf) {
    const DocumentLevel& level = *place.m_Level;
    try {
        if (level.KindOf(place.m_Index).m_IsBranch && !place.Below()) {
            place.m_LeftPart = partOf(level, place.m_Index);
        }
    } catch (const std::bad_alloc&) { // it cannot be read any more
    }
    place.m_Below = place.m_Level->TakeBelow(place.m_Index);
    Disconnect(place);
    const SmartPtr<IUnknown> last = std::move(place.m_Held);
}
