#include "host/documents/RowCache.h"

#include <algorithm>
#include <utility>

namespace {

/// Enough for all rows of a large window to be in different groups.
constexpr size_t kMostGroups = 128;

/// Takes so many rows of a part, without what is below them.
class Collector final : public RowSink {
public:
    explicit Collector(uint32_t count) : m_Count(count) { m_Rows.reserve(count); }

    bool Add(DocumentRow row) override {
        if (row.m_Level == 0) {
            m_Rows.push_back(std::move(row));
        }
        return m_Rows.size() < m_Count;
    }
    std::vector<DocumentRow> Take() { return std::move(m_Rows); }

private:
    uint32_t m_Count;
    std::vector<DocumentRow> m_Rows;
};

std::vector<DocumentRow> ReadRows(
    const DocumentText& text, const DocumentPart& part, const RowPlace& from, uint32_t count) {
    Collector collector(count);
    text.ReadPart(part, collector, nullptr, from);
    std::vector<DocumentRow> rows = collector.Take();
    rows.resize(count); // what is asked for is there, whatever the text says now
    return rows;
}

} // namespace

const DocumentRow& RowCache::Find(
    const DocumentText& text, const DocumentLevel& level, uint32_t index) {
    const DocumentLevel::Group* group = level.GroupOf(index);
    const uint32_t first = group ? group->m_First : 0;
    if (group && group->m_Kept) {
        return (*group->m_Kept)[index - first];
    }
    auto found = std::find_if(m_Read.begin(), m_Read.end(),
        [&](const ReadGroup& read) { return read.m_Level == &level && read.m_First == first; });
    if (found == m_Read.end()) {
        const RowPlace from = group ? group->m_From : RowPlace{};
        m_Read.push_front(
            {&level, first, ReadRows(text, level.Part(), from, level.EndOf(group) - first)});
        found = m_Read.begin();
        if (m_Read.size() > kMostGroups) {
            m_Read.pop_back();
        }
    }
    m_Read.splice(m_Read.begin(), m_Read, found);
    return m_Read.front().m_Rows[index - first];
}
