#include "uitree/TreePath.h"

#include "framework/runtime/SmartPtr.h"

#include <algorithm>

bool TreePath::Enter(ISuperCollection* collection) {
    const void* identity = Query<IUnknown>(collection).Get();
    const auto shallowEnd =
        m_Identities.begin() + static_cast<ptrdiff_t>(std::min(m_Identities.size(), kShallow));
    if (std::find(m_Identities.begin(), shallowEnd, identity) != shallowEnd) {
        return false;
    }
    if (m_Identities.size() >= kShallow && !m_Deep.insert(identity).second) {
        return false;
    }
    m_Identities.push_back(identity);
    return true;
}

void TreePath::Leave() {
    if (m_Identities.size() > kShallow) {
        m_Deep.erase(m_Identities.back());
    }
    m_Identities.pop_back();
}
