#include "host/documents/DocumentBranch.h"

#include "host/components/CreatableString.h"
#include "host/data/TextItems.h"
#include "host/documents/ValueItem.h"

#include <algorithm>

namespace {

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

/// The one row of what is being read.
class ReadingItem final : public HostObject<ReadingItem, IUnknown> {
public:
    static constexpr const char* kKind = "ReadingItem";

    LevelPlace& Place() { return m_Place; }

private:
    LevelPlace m_Place;
};

DocumentLevelPtr MakeReadingLevel() {
    auto level = std::make_unique<DocumentLevel>(1);
    level->Append({.m_Label = kReadingLabel, .m_Kind = ItemKind::kText});
    return level;
}

} // namespace

DocumentBranch::~DocumentBranch() {
    if (const auto reads = m_State == State::kAwaited ? Reads() : nullptr) {
        reads->Forget(this);
    }
}

SmartPtr<ISuperCollection> DocumentBranch::MakeRoot(
    const DocumentHelpersPtr& helpers, DocumentRows rows, ReadProgress* progress) {
    const auto root = Make(ItemKind::kFile, helpers);
    root->m_Level = MakeLevel(helpers, std::move(rows.m_Rows), progress);
    return SmartPtr<ISuperCollection>(root.Get());
}

/// Takes the rows away, on any thread. Branches whose rows follow theirs are made at once.
/// `progress`, which may be null, has heard that all was read.
DocumentLevelPtr DocumentBranch::MakeLevel(
    const DocumentHelpersPtr& helpers, std::deque<DocumentRow> rows, ReadProgress* progress) {
    constexpr size_t kStep = 4096;
    auto first = std::make_unique<DocumentLevel>(rows.size());
    std::vector<DocumentLevel*> levels{first.get()}; // those that the rows to come may be in
    for (; !rows.empty(); rows.pop_front()) {
        if (progress && rows.size() % kStep == 0 && !progress->Advance({1, 1})) {
            break;
        }
        const DocumentRow& row = rows.front();
        levels.resize(row.m_Level + 1);
        DocumentLevel& level = *levels.back();
        level.Append(row);
        if (row.m_IsBranch && !row.m_Part.IsSomewhere()) {
            const auto branch = Make(row.m_Kind, helpers);
            branch->m_Level = std::make_unique<DocumentLevel>(1);
            level.Connect(level.Count() - 1, branch->Identity(), branch->m_Place);
            branch->m_Place.Hold();
            levels.push_back(branch->m_Level.get());
        }
    }
    return first;
}

int32_t DocumentBranch::GetCount(int32_t* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = m_Level ? static_cast<int32_t>(m_Level->Count()) : 0;
    return S_OK;
}

int32_t DocumentBranch::GetItem(int32_t index, IUnknown** item) {
    if (!item) {
        return E_POINTER;
    }
    *item = nullptr;
    const DocumentLevel::Row* row = Find(index);
    if (!row) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        SmartPtr<IUnknown> found(DocumentLevel::ItemOf(*row));
        *item = (found ? std::move(found) : MakeItem(index)).Detach();
        return S_OK;
    });
}

SmartPtr<IUnknown> DocumentBranch::MakeItem(int32_t index) {
    const auto place = static_cast<size_t>(index);
    const auto connect = [&](const auto& item) {
        m_Level->Connect(place, item->Identity(), item->Place());
        return SmartPtr<IUnknown>(item->Identity());
    };
    const DocumentLevel::Row& row = *m_Level->Find(index);
    if (m_State == State::kAwaited) {
        return connect(ReadingItem::Make());
    }
    return row.m_IsBranch ? connect(Make(row.m_Kind, m_Helpers, row.m_Part))
                          : connect(ValueItem::Make(row.m_Kind, row.Value()));
}

int32_t DocumentBranch::GetItemName(int32_t index, IString** name) {
    if (!name) {
        return E_POINTER;
    }
    *name = nullptr;
    const DocumentLevel::Row* row = Find(index);
    return row ? HandOutString(row->Label(), name) : E_INVALIDARG;
}

int32_t DocumentBranch::GetItemData(int32_t index, IUnknown** data) {
    if (!data) {
        return E_POINTER;
    }
    *data = nullptr;
    return Find(index) ? E_FAIL : E_INVALIDARG;
}

int32_t DocumentBranch::GetItemFlags(int32_t index, int32_t* flags) {
    if (!flags) {
        return E_POINTER;
    }
    const DocumentLevel::Row* row = Find(index);
    *flags = row ? row->m_Flags : 0;
    return row ? S_OK : E_INVALIDARG;
}

int32_t DocumentBranch::SetItemFlags(int32_t index, int32_t flags) {
    DocumentLevel::Row* row = Find(index);
    if (!row) {
        return E_INVALIDARG;
    }
    row->m_Flags = flags;
    CollectionVersion::Advance();
    return S_OK;
}

int32_t DocumentBranch::RemoveAll() {
    Show(nullptr);
    return S_OK;
}

/// What dies with the rows that were shown finds the new ones here.
void DocumentBranch::Show(DocumentLevelPtr level) {
    CollectionVersion::Advance();
    std::swap(m_Level, level);
}

int32_t DocumentBranch::Populate() {
    return m_State != State::kUnread ? S_OK : Guarded([&] {
        auto level = Read();
        m_State = level ? State::kRead : State::kAwaited;
        Show(level ? std::move(*level) : MakeReadingLevel()); // an empty one would not stay open
        m_Place.Hold();
        return S_OK;
    });
}

/// What is in the part; nothing where it is read beside the window's thread and takes longer.
std::optional<DocumentLevelPtr> DocumentBranch::Read() {
    const auto reads = Reads();
    if (!reads) {
        return MakeLevel(m_Helpers, m_Helpers->m_Text->ReadPart(m_Part).m_Rows, nullptr);
    }
    auto work = [helpers = m_Helpers, part = m_Part](ReadProgress& progress) {
        PartProgress within(part, progress);
        return MakeLevel(helpers, helpers->m_Text->ReadPart(part, &within).m_Rows, &progress);
    };
    return reads->Begin<DocumentLevelPtr>(this, m_Helpers->m_Name, std::move(work));
}

/// Where memory did not hold it, it can be filled again.
int32_t DocumentBranch::ReadAgain(int32_t newFlags) {
    return IsChanged() != S_OK ? S_FALSE : Guarded([&] {
        m_State = State::kUnread;
        RemoveAll();
        auto level = Reads()->Take<DocumentLevelPtr>(this).value();
        level->SetAllFlags(newFlags);
        Show(std::move(level));
        m_State = State::kRead;
        return S_OK;
    });
}

int32_t DocumentBranch::IsChanged() {
    const auto reads = m_State == State::kAwaited ? Reads() : nullptr;
    return reads && reads->IsOver(this) ? S_OK : S_FALSE;
}
