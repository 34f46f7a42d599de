#include "app/input/Opening.h"

#include "app/tree/Rows.h"

bool Opening::GoOn(const Turn& turn) {
    FindPlace();
    bool isAnyOpened = false;
    int32_t flags = 0;
    ISuperCollection* level = m_Place.m_Collection.Get();
    while (level->GetItemFlags(m_Place.m_Index, &flags) >= 0) {
        isAnyOpened |= (flags & NODE_EXPANDED) == 0 && ToggleNode(level, m_Place.m_Index);
        ++m_Place.m_Index;
        if (turn.IsOver()) {
            break;
        }
    }
    m_Next = NodeAt(m_Place);
    m_IsOver = level->GetItemFlags(m_Place.m_Index, &flags) < 0;
    return isAnyOpened;
}

/// Where the next item is gone, what has come in its place is the next one.
void Opening::FindPlace() {
    Place place = m_Place;
    const auto isNext = [&] { return NodeAt(place) == m_Next.Get(); };
    if (!m_Next || isNext()) {
        return;
    }
    int32_t flags = 0;
    place.m_Index = 0;
    while (!isNext() && place.m_Collection->GetItemFlags(place.m_Index, &flags) >= 0) {
        ++place.m_Index;
    }
    m_Place = isNext() ? place : m_Place;
}
