#include "host/documents/DocumentLevel.h"

#include <algorithm>

DocumentLevel::DocumentLevel(
    const DocumentPart& part, const std::vector<Kind>& kinds, std::vector<Group> groups)
    : m_Part(part), m_Count(static_cast<uint32_t>(kinds.size())) {
    uint8_t* bytes = m_FewBytes;
    if (m_Count > kFew) {
        NeedMore().m_Bytes = std::make_unique_for_overwrite<uint8_t[]>(m_Count);
        bytes = m_More->m_Bytes.get();
    }
    std::transform(kinds.begin(), kinds.end(), bytes, [](const Kind& kind) {
        return static_cast<uint8_t>(uint8_t(kind.m_Kind) | (kind.m_IsBranch ? kBranch : 0));
    });
    if (!groups.empty()) {
        groups.shrink_to_fit();
        NeedMore().m_Groups = std::move(groups);
    }
}

DocumentLevel::More& DocumentLevel::NeedMore() {
    if (!m_More) {
        m_More = std::make_unique<More>();
    }
    return *m_More;
}

DocumentLevel::Kind DocumentLevel::KindOf(uint32_t index) const {
    const uint8_t byte = Bytes()[index];
    return {ItemKind(byte & (kLive - 1)), (byte & kBranch) != 0};
}

const DocumentLevel::Group* DocumentLevel::GroupOf(uint32_t index) const {
    if (!m_More || m_More->m_Groups.empty()) {
        return nullptr;
    }
    const std::vector<Group>& groups = m_More->m_Groups;
    const auto behind = std::upper_bound(groups.begin(), groups.end(), index,
        [](uint32_t wanted, const Group& group) { return wanted < group.m_First; });
    return &*std::prev(behind);
}

uint32_t DocumentLevel::EndOf(const Group* group) const {
    return group && group != &m_More->m_Groups.back() ? group[1].m_First : m_Count;
}

/// Whoever sets the flags of all rows, one after the other, leaves one word for all.
void DocumentLevel::SetFlags(uint32_t index, int32_t flags) {
    if (flags == Flags(index)) {
        return;
    }
    More& more = NeedMore();
    if (!more.m_Flags) {
        more.m_Flags = std::make_unique_for_overwrite<int32_t[]>(m_Count);
        std::fill_n(more.m_Flags.get(), m_Count, m_Flags);
    }
    int32_t* all = more.m_Flags.get();
    all[index] = flags;
    if (index == m_Count - 1 &&
        std::all_of(all, all + m_Count, [&](int32_t each) { return each == flags; })) {
        SetAllFlags(flags);
    }
}

void DocumentLevel::SetAllFlags(int32_t flags) {
    m_Flags = flags;
    if (m_More) {
        m_More->m_Flags.reset();
        if (m_More->IsEmpty()) {
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
    uint8_t* bytes = m_Count <= kFew ? m_FewBytes : m_More->m_Bytes.get();
    bytes[index] = static_cast<uint8_t>(isLive ? bytes[index] | kLive : bytes[index] & ~kLive);
}
