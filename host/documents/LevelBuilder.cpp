#include "host/documents/LevelBuilder.h"

namespace {

// A group ends with the first row behind which one of these is reached.
constexpr size_t kRowsTogether = 64;
constexpr size_t kBytesTogether = 4096;

// What has more, since nothing can be read without it, is kept.
constexpr size_t kMostRows = 1024;
constexpr size_t kMostLabelBytes = 16384;

} // namespace

bool LevelBuilder::Add(DocumentRow row) {
    CloseTo(row.m_Level + 1);
    const bool isFollowed = row.m_IsBranch && !row.m_Part.IsSomewhere();
    m_Open.back().Add(std::move(row));
    if (isFollowed) {
        m_Open.emplace_back();
    }
    return true;
}

DocumentLevelPtr LevelBuilder::Take() {
    CloseTo(1);
    return m_Open.front().Finish();
}

void LevelBuilder::CloseTo(size_t count) {
    while (m_Open.size() > count) {
        DocumentLevelPtr level = m_Open.back().Finish();
        m_Open.pop_back();
        const auto above = static_cast<uint32_t>(m_Open.back().m_Kinds.size() - 1);
        m_Open.back().m_Below.emplace_back(above, std::move(level));
    }
}

void LevelBuilder::Level::Add(DocumentRow row) {
    if (m_Kinds.empty()) {
        BeginGroup({}, m_Part.IsWhole() ? 0 : m_Part.m_Begin);
    } else if (row.m_Place.IsSomewhere() && IsFull(row.m_Place)) {
        EndGroup();
        BeginGroup(row.m_Place, row.m_Place.m_Begin);
    }
    m_Kinds.emplace_back(row.m_Kind, row.m_IsBranch);
    m_LabelBytes += row.m_Label.size();
    m_Rows.push_back(std::move(row));
}

bool LevelBuilder::Level::IsFull(const RowPlace& next) const {
    const size_t bytes = next.m_Begin - m_GroupBegin;
    return bytes >= m_LeastBytes && (m_Rows.size() >= kRowsTogether || bytes >= kBytesTogether);
}

void LevelBuilder::Level::BeginGroup(const RowPlace& place, size_t begin) {
    m_Groups.push_back({.m_From = place, .m_First = static_cast<uint32_t>(m_Kinds.size())});
    m_GroupBegin = begin;
}

void LevelBuilder::Level::EndGroup() {
    if (!m_Part.IsSomewhere() || m_Rows.size() > kMostRows || m_LabelBytes > kMostLabelBytes) {
        m_Rows.shrink_to_fit();
        m_Groups.back().m_Kept = std::make_unique<std::vector<DocumentRow>>(std::move(m_Rows));
    }
    m_Rows.clear();
    m_LabelBytes = 0;
}

DocumentLevelPtr LevelBuilder::Level::Finish() {
    if (!m_Groups.empty()) {
        EndGroup();
    }
    if (m_Groups.size() == 1 && !m_Groups.front().m_Kept) {
        m_Groups.clear();
    }
    auto level = std::make_unique<DocumentLevel>(m_Part, m_Kinds, std::move(m_Groups));
    for (auto& [index, below] : m_Below) {
        level->ExchangeBelow(index, std::move(below));
    }
    return level;
}
