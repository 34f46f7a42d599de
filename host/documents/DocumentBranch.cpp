#include "host/documents/DocumentBranch.h"

#include "host/components/ContentState.h"
#include "host/data/TextItems.h"
#include "host/documents/ValueItem.h"

#include <algorithm>

namespace {

using Entry = SuperCollectionBase::Entry;

/// How far the reading of a part is, of one that tells places in the whole text.
class PartProgress final : public ReadProgress {
public:
    PartProgress(const DocumentPart& part, ReadProgress& progress)
        : m_Part(part), m_Progress(progress) {}

    bool Advance(const ReadState& state) override {
        const size_t end = std::min(m_Part.m_End, state.m_Whole);
        const size_t at = std::clamp(state.m_Done, m_Part.m_Begin, end);
        return m_Progress.Advance({at - m_Part.m_Begin, end - m_Part.m_Begin});
    }

private:
    DocumentPart m_Part;
    ReadProgress& m_Progress;
};

/// Makes items of rows, on any thread, and takes the rows away. Those below the first level are in
/// their branches then. `progress`, which may be null, has heard that all was read.
std::vector<Entry> MakeEntries(
    const DocumentHelpersPtr& helpers, std::deque<DocumentRow> rows, ReadProgress* progress) {
    constexpr size_t kStep = 4096;
    std::vector<Entry> entries;
    std::vector<SmartPtr<DocumentBranch>> above; // the last branch of each level
    entries.reserve(rows.size());
    for (; !rows.empty(); rows.pop_front()) {
        if (progress && rows.size() % kStep == 0 && !progress->Advance({1, 1})) {
            break;
        }
        DocumentRow& row = rows.front();
        Entry entry{.m_Name = std::move(row.m_Label), .m_Item = {}, .m_Data = {}};
        above.resize(row.m_Level);
        if (row.m_IsBranch) {
            const bool isLeft = row.m_Part.IsSomewhere();
            above.push_back(
                DocumentBranch::Make(row.m_Kind, isLeft ? helpers : nullptr, row.m_Part));
            entry.m_Item = above.back()->Identity();
        } else {
            entry.m_Item = ValueItem::Make(row.m_Kind, row.m_Value)->Identity();
        }
        if (row.m_Level == 0) {
            entries.push_back(std::move(entry));
        } else {
            above[row.m_Level - 1]->AppendNew(std::move(entry));
        }
    }
    return entries;
}

} // namespace

DocumentBranch::~DocumentBranch() {
    if (const auto reads = m_IsAwaited ? Reads() : nullptr) {
        reads->Forget(this);
    }
}

SmartPtr<ISuperCollection> DocumentBranch::MakeRoot(
    const DocumentHelpersPtr& helpers, DocumentRows rows, ReadProgress* progress) {
    const auto root = Make(ItemKind::kFile);
    root->Fill(MakeEntries(helpers, std::move(rows.m_Rows), progress));
    return SmartPtr<ISuperCollection>(root.Get());
}

int32_t DocumentBranch::Populate() {
    return !m_Helpers || m_IsAwaited ? S_OK : Guarded([&] {
        auto entries = Read();
        m_IsAwaited = !entries;
        if (entries) {
            Replace(std::move(*entries));
            m_Helpers.reset();
        } else {
            Replace({MakeReadingRow()}); // an empty one would not stay open
        }
        return S_OK;
    });
}

/// What is in the part; nothing where it is read beside the window's thread and takes longer.
std::optional<std::vector<Entry>> DocumentBranch::Read() {
    const auto reads = Reads();
    if (!reads) {
        return MakeEntries(m_Helpers, m_Helpers->m_Text->ReadPart(m_Part).m_Rows, nullptr);
    }
    auto work = [helpers = m_Helpers, part = m_Part](ReadProgress& progress) {
        PartProgress within(part, progress);
        return MakeEntries(helpers, helpers->m_Text->ReadPart(part, &within).m_Rows, &progress);
    };
    return reads->Begin<std::vector<Entry>>(this, m_Helpers->m_Name, std::move(work));
}

/// Where memory did not hold it, it can be filled again.
int32_t DocumentBranch::ReadAgain(int32_t newFlags) {
    return IsChanged() != S_OK ? S_FALSE : Guarded([&] {
        m_IsAwaited = false;
        RemoveAll();
        auto entries = Reads()->Take<std::vector<Entry>>(this).value();
        for (Entry& entry : entries) {
            entry.m_Flags = newFlags;
        }
        Replace(std::move(entries));
        m_Helpers.reset();
        return S_OK;
    });
}

int32_t DocumentBranch::IsChanged() {
    const auto reads = m_IsAwaited ? Reads() : nullptr;
    return reads && reads->IsOver(this) ? S_OK : S_FALSE;
}

int32_t DocumentBranch::GetContentState(int32_t selector, int32_t* value) {
    return AnswerContentState(!m_Helpers || m_IsAwaited, selector, value);
}
