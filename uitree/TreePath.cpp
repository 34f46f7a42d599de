#include "uitree/TreePath.h"

#include "framework/runtime/SmartPtr.h"

#include <algorithm>

bool TreePath::Enter(ISuperCollection* collection) {
    if (m_Identities->empty()) {
        m_Root = collection;
        m_Identities->push_back(nullptr);
        return true;
    }
    if (collection == m_Root) {
        return false;
    }
    if (!m_Identities->front()) {
        m_Identities->front() = IdentityOf(m_Root);
    }
    const void* identity = IdentityOf(collection);
    if (Contains(identity)) {
        return false;
    }
    if (m_Identities->size() >= kNearLevels) {
        m_Deep.insert(identity);
    }
    m_Identities->push_back(identity);
    return true;
}

void TreePath::Leave() {
    if (m_Identities->size() > kNearLevels) {
        m_Deep.erase(m_Identities->back());
    }
    m_Identities->pop_back();
}

/// Up to kNearLevels a scan is the quickest way to look.
bool TreePath::Contains(const void* identity) {
    const size_t near = std::min(m_Identities->size(), kNearLevels);
    const auto end = m_Identities->begin() + static_cast<ptrdiff_t>(near);
    return std::find(m_Identities->begin(), end, identity) != end || m_Deep.contains(identity);
}
