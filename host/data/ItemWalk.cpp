#include "host/data/ItemWalk.h"

#include "framework/runtime/QueryItem.h"

#include <utility>

const IUnknown* IdentityOf(ISuperCollection* collection) {
    return Query<IUnknown>(collection).Get();
}

SmartPtr<ISuperCollection> CollectionBelow(ISuperCollection* collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    return QueryItem<ISuperCollection>(item.Get());
}

const std::vector<Place>* ItemWalk::Next() {
    if (std::exchange(m_IsAtItem, false)) {
        const Place& place = m_Path.back();
        Descend(CollectionBelow(place.m_Collection.Get(), place.m_Index));
    }
    while (!m_Path.empty()) {
        Place& place = m_Path.back();
        if (place.m_Collection->GetItemFlags(++place.m_Index, &m_Flags) < 0) {
            Ascend();
        } else if ((m_Flags & m_NeededFlags) == m_NeededFlags) {
            m_IsAtItem = true;
            return &m_Path;
        }
    }
    return nullptr;
}

void ItemWalk::Descend(SmartPtr<ISuperCollection> collection) {
    if (!collection) {
        return;
    }
    const IUnknown* identity = IdentityOf(collection.Get());
    if (m_OnPath.insert(identity).second) {
        m_Path.push_back({std::move(collection), -1});
        m_Identities.push_back(identity);
    }
}

void ItemWalk::Ascend() {
    m_OnPath.erase(m_Identities.back());
    m_Identities.pop_back();
    m_Path.pop_back();
}
