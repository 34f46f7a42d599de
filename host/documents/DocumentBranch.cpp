#include "host/documents/DocumentBranch.h"

#include "host/components/ContentState.h"
#include "host/documents/ValueItem.h"

namespace {

using Entry = SuperCollectionBase::Entry;

/// Makes items of rows, and takes the rows away. Those below the first level are in their branches
/// then.
std::vector<Entry> MakeEntries(const DocumentTextPtr& text, std::deque<DocumentRow> rows) {
    std::vector<Entry> entries;
    std::vector<SmartPtr<DocumentBranch>> above; // the last branch of each level
    entries.reserve(rows.size());
    for (; !rows.empty(); rows.pop_front()) {
        DocumentRow& row = rows.front();
        Entry entry{.m_Name = std::move(row.m_Label), .m_Item = {}, .m_Data = {}};
        above.resize(row.m_Level);
        if (row.m_IsBranch) {
            const bool isLeft = row.m_Part.IsSomewhere();
            above.push_back(DocumentBranch::Make(row.m_Kind, isLeft ? text : nullptr, row.m_Part));
            entry.m_Item = above.back()->Identity();
        } else {
            entry.m_Item = ValueItem::Make(row.m_Kind, row.m_Value)->Identity();
        }
        if (row.m_Level == 0) {
            entries.push_back(std::move(entry));
        } else {
            above[row.m_Level - 1]->Append(std::move(entry));
        }
    }
    return entries;
}

} // namespace

SmartPtr<ISuperCollection> DocumentBranch::MakeRoot(
    const DocumentTextPtr& text, DocumentRows rows) {
    const auto root = Make(ItemKind::kFile);
    root->Replace(MakeEntries(text, std::move(rows.m_Rows)));
    return SmartPtr<ISuperCollection>(root.Get());
}

int32_t DocumentBranch::Populate() {
    return !m_Text ? S_OK : Guarded([&] {
        Replace(MakeEntries(m_Text, m_Text->ReadPart(m_Part).m_Rows));
        m_Text.reset();
        return S_OK;
    });
}

int32_t DocumentBranch::GetContentState(int32_t selector, int32_t* value) {
    return AnswerContentState(!m_Text, selector, value);
}
