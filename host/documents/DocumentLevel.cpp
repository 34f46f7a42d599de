#include "host/documents/DocumentLevel.h"

#include "host/data/SuperCollection.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

/// Where memory is full an item goes at once, and what is below it by recursion.
void Take(SmartPtr<IUnknown> item, std::vector<SuperCollectionBase::Entry>& held) try {
    if (item) {
        held.push_back({.m_Name = {}, .m_Item = std::move(item), .m_Data = {}});
    }
} catch (const std::bad_alloc&) {
}

} // namespace

LevelPlace::~LevelPlace() {
    if (m_Level) {
        m_Level->At(m_Index).m_Place = nullptr;
    }
}

/// The items that others hold live on without a place.
DocumentLevel::~DocumentLevel() {
    for (const Rows& rows : m_Rows) {
        std::vector<SuperCollectionBase::Entry> held;
        for (const Row& row : rows) {
            if (row.m_Place) {
                row.m_Place->m_Level = nullptr;
                Take(std::exchange(row.m_Place->m_Held, {}), held);
            }
        }
        ReleaseEntries(held);
    }
}

void DocumentLevel::Append(const DocumentRow& row) {
    if (m_Rows.empty() || m_Rows.back().size() == kRowsTogether) {
        const size_t left = m_Expected - std::min(m_Expected, m_Count);
        m_Rows.emplace_back().reserve(std::clamp(left, size_t{1}, kRowsTogether));
    }
    m_Rows.back().push_back({.m_Label = Keep(row.m_Label),
        .m_LabelSize = static_cast<uint32_t>(row.m_Label.size()),
        .m_Part = row.m_IsBranch ? row.m_Part : DocumentPart{row.m_Value, 0},
        .m_Kind = row.m_Kind,
        .m_IsBranch = row.m_IsBranch});
    ++m_Count;
}

/// Blocks are as large as the rows that are still to come will need, more or less.
const char* DocumentLevel::Keep(std::string_view label) {
    constexpr size_t kUsualLabel = 16;
    if (label.size() > m_Left) {
        const size_t rows = std::min(m_Expected - std::min(m_Expected, m_Count), kRowsTogether);
        const size_t size = std::max(label.size(), rows * kUsualLabel);
        m_Labels.push_back(std::make_unique_for_overwrite<char[]>(size));
        m_Free = m_Labels.back().get();
        m_Left = size;
    }
    const char* kept = m_Free;
    m_Free = std::copy(label.begin(), label.end(), m_Free);
    m_Left -= label.size();
    return kept;
}

DocumentLevel::Row* DocumentLevel::Find(int32_t index) {
    const auto place = static_cast<size_t>(index);
    return index >= 0 && place < m_Count ? &At(place) : nullptr;
}

void DocumentLevel::Connect(size_t index, IUnknown* item, LevelPlace& place) {
    place.m_Level = this;
    place.m_Index = index;
    place.m_Item = item;
    At(index).m_Place = &place;
}

void DocumentLevel::SetAllFlags(int32_t flags) {
    for (Rows& rows : m_Rows) {
        for (Row& row : rows) {
            row.m_Flags = flags;
        }
    }
}
