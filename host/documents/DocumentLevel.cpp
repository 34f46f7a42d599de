#include "host/documents/DocumentLevel.h"

#include <algorithm>

static_assert(sizeof(DocumentLevel::Kind) == 1, "there is one for each row");

DocumentLevel::DocumentLevel(
    const DocumentPart& part, const std::vector<Kind>& kinds, std::vector<Group> groups)
    : m_Part(part), m_Count(static_cast<uint32_t>(kinds.size())) {
    if (m_Count > kFew) {
        NeedMore().m_Kinds = std::make_unique_for_overwrite<Kind[]>(m_Count);
    }
    std::copy(kinds.begin(), kinds.end(), m_Count > kFew ? m_More->m_Kinds.get() : m_FewKinds);
    if (!groups.empty()) {
        groups.shrink_to_fit();
        NeedMore().m_Groups = std::make_unique<std::vector<Group>>(std::move(groups));
    }
}

DocumentLevel::More& DocumentLevel::NeedMore() {
    if (!m_More) {
        m_More = std::make_unique<More>();
    }
    return *m_More;
}

const DocumentLevel::Group* DocumentLevel::GroupOf(uint32_t index) const {
    if (!m_More || !m_More->m_Groups) {
        return nullptr;
    }
    const std::vector<Group>& groups = *m_More->m_Groups;
    const auto behind = std::upper_bound(groups.begin(), groups.end(), index,
        [](uint32_t wanted, const Group& group) { return wanted < group.m_First; });
    return &*std::prev(behind);
}

uint32_t DocumentLevel::EndOf(const Group* group) const {
    return group && group != &m_More->m_Groups->back() ? group[1].m_First : m_Count;
}

int32_t DocumentLevel::Flags(uint32_t index) const {
    if (!m_More) {
        return m_Flags;
    }
    const More& more = *m_More;
    const bool isInRun = index >= more.m_Begin && index < more.m_End;
    return more.m_Flags ? more.m_Flags[index] : isInRun ? more.m_Run : m_Flags;
}

void DocumentLevel::SetFlags(uint32_t index, int32_t flags) {
    if (flags == Flags(index) || ExtendRun(index, flags)) {
        return;
    }
    More& more = *m_More;
    if (!more.m_Flags) {
        auto all = std::make_unique_for_overwrite<int32_t[]>(m_Count);
        std::fill_n(all.get(), m_Count, m_Flags);
        std::fill(all.get() + more.m_Begin, all.get() + more.m_End, more.m_Run);
        more.m_Flags = std::move(all);
    }
    more.m_Flags[index] = flags;
}

/// Whoever gives all rows the same flags, one after the other, needs no word for each.
bool DocumentLevel::ExtendRun(uint32_t index, int32_t flags) {
    More& more = NeedMore();
    if (more.m_Begin == more.m_End) {
        more.m_Begin = more.m_End = index;
        more.m_Run = flags;
    }
    if (more.m_Flags || flags != more.m_Run || (index != more.m_End && index + 1 != more.m_Begin)) {
        return false;
    }
    if (index == more.m_End) {
        ++more.m_End;
    } else {
        --more.m_Begin;
    }
    if (more.m_End - more.m_Begin == m_Count) {
        SetAllFlags(flags);
    }
    return true;
}

void DocumentLevel::SetAllFlags(int32_t flags) {
    m_Flags = flags;
    if (m_More) {
        m_More->m_Flags.reset();
        m_More->m_Begin = m_More->m_End = 0;
        if (!m_More->IsNeeded()) {
            m_More.reset();
        }
    }
}

DocumentLevelPtr DocumentLevel::ExchangeBelow(uint32_t index, DocumentLevelPtr level) {
    More& more = NeedMore();
    if (!more.m_Below) {
        more.m_Below = std::make_unique<DocumentLevelPtr[]>(m_Count);
    }
    return std::exchange(more.m_Below[index], std::move(level));
}

DocumentLevelPtr DocumentLevel::TakeBelow(uint32_t index) {
    return Below(index) ? std::move(m_More->m_Below[index]) : nullptr;
}

void DocumentLevel::SetLive(uint32_t index, bool isLive) {
    (m_Count <= kFew ? m_FewKinds : m_More->m_Kinds.get())[index].m_IsLive = isLive;
}
