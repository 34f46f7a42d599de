#include "host/documents/Extents.h"

#include <algorithm>

void Extents::Note() {
    if (!m_Open.empty()) {
        m_Open.back().m_IsNoted = true;
    }
}

void Extents::Close(size_t end) {
    const Opened closed = m_Open.back();
    m_Open.pop_back();
    const size_t size = end - closed.m_Inside;
    const bool isKept = closed.m_IsNoted && size - closed.m_Covered >= m_Least;
    if (isKept) {
        m_Kept.push_back({closed.m_Begin, closed.m_Inside, end});
    }
    if (!m_Open.empty()) {
        m_Open.back().m_Covered += isKept ? size : closed.m_Covered;
    }
}

void Extents::Finish(size_t end) {
    while (!m_Open.empty()) {
        Close(end);
    }
    m_Open.shrink_to_fit();
    std::sort(m_Kept.begin(), m_Kept.end(),
        [](const Extent& first, const Extent& second) { return first.m_Begin < second.m_Begin; });
}

const Extent* Extents::From(size_t begin) const {
    const auto found = std::lower_bound(m_Kept.begin(), m_Kept.end(), begin,
        [](const Extent& extent, size_t place) { return extent.m_Begin < place; });
    return found != m_Kept.end() ? &*found : nullptr;
}
