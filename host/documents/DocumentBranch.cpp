#include "host/documents/DocumentBranch.h"

#include "host/components/CreatableString.h"
#include "host/data/TextItems.h"
#include "host/documents/LevelBuilder.h"
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

    LivePlace& Place() { return m_Place; }

private:
    LivePlace m_Place;
};

DocumentLevelPtr MakeReadingLevel() {
    LevelBuilder builder({});
    builder.Add({.m_Label = kReadingLabel, .m_Kind = ItemKind::kText});
    return builder.Take();
}

DocumentLevelPtr ReadLevel(
    const DocumentText& text, const DocumentPart& part, ReadProgress* progress) {
    LevelBuilder builder(part, text.ReadBefore());
    text.ReadPart(part, builder, progress);
    return builder.Take();
}

} // namespace

DocumentBranch::~DocumentBranch() {
    if (const auto reads = m_IsAwaited ? m_Helpers->Reads() : nullptr) {
        reads->Forget(this);
    }
    m_Helpers->Drop(m_Place.TakeBelow());
}

SmartPtr<ISuperCollection> DocumentBranch::MakeRoot(
    const DocumentHelpersPtr& helpers, ReadProgress* progress) {
    const auto root = Make(ItemKind::kFile, helpers);
    root->m_Place.ExchangeBelow(ReadLevel(*helpers->Text(), kWholeText, progress));
    return SmartPtr<ISuperCollection>(root.Get());
}

int32_t DocumentBranch::GetCount(int32_t* count) {
    if (!count) {
        return E_POINTER;
    }
    const DocumentLevel* level = m_Place.Below();
    *count = level ? static_cast<int32_t>(level->Count()) : 0;
    return S_OK;
}

/// The answer about a row, of its level and its index there; E_FAIL when memory runs out.
template <class Answer>
int32_t DocumentBranch::AnswerRow(int32_t index, Answer answer) {
    DocumentLevel* level = m_Place.Below();
    const auto row = static_cast<uint32_t>(index);
    return level && row < level->Count() ? Guarded([&] { return answer(*level, row); })
                                         : E_INVALIDARG;
}

int32_t DocumentBranch::GetItem(int32_t index, IUnknown** item) {
    if (!item) {
        return E_POINTER;
    }
    *item = nullptr;
    return AnswerRow(index, [&](DocumentLevel& level, uint32_t row) {
        SmartPtr<IUnknown> found(m_Helpers->Live().Find(level, row));
        *item = (found ? std::move(found) : MakeItem(level, row)).Detach();
        return S_OK;
    });
}

SmartPtr<IUnknown> DocumentBranch::MakeItem(DocumentLevel& level, uint32_t index) {
    const auto connect = [&](const auto& item) {
        m_Helpers->Live().Connect(level, index, item->Identity(), item->Place());
        return SmartPtr<IUnknown>(item->Identity());
    };
    if (m_IsAwaited) {
        return connect(ReadingItem::Make());
    }
    const DocumentLevel::Kind& kind = level.KindOf(index);
    const ItemKind what = kind.m_Kind;
    return kind.m_IsBranch ? connect(Make(what, m_Helpers))
                           : connect(ValueItem::Make(what, m_Helpers));
}

int32_t DocumentBranch::GetItemName(int32_t index, IString** name) {
    if (!name) {
        return E_POINTER;
    }
    *name = nullptr;
    return AnswerRow(index, [&](const DocumentLevel& level, uint32_t row) {
        return HandOutString(m_Helpers->RowOf(level, row).m_Label, name);
    });
}

int32_t DocumentBranch::GetItemData(int32_t index, IUnknown** data) {
    if (!data) {
        return E_POINTER;
    }
    *data = nullptr;
    return AnswerRow(index, [](const DocumentLevel&, uint32_t) { return E_FAIL; });
}

int32_t DocumentBranch::GetItemFlags(int32_t index, int32_t* flags) {
    if (!flags) {
        return E_POINTER;
    }
    *flags = 0;
    return AnswerRow(index, [&](const DocumentLevel& level, uint32_t row) {
        *flags = level.Flags(row);
        return S_OK;
    });
}

int32_t DocumentBranch::SetItemFlags(int32_t index, int32_t flags) {
    return AnswerRow(index, [&](DocumentLevel& level, uint32_t row) {
        level.SetFlags(row, flags);
        CollectionVersion::Advance();
        return S_OK;
    });
}

int32_t DocumentBranch::RemoveAll() {
    return Guarded([&] {
        Show(LevelBuilder({}).Take());
        return S_OK;
    });
}

/// What dies with the rows that were shown finds the new ones here.
void DocumentBranch::Show(DocumentLevelPtr level) {
    DocumentLevelPtr before = m_Place.ExchangeBelow(std::move(level));
    CollectionVersion::Advance();
    m_Helpers->Drop(std::move(before));
}

int32_t DocumentBranch::Populate() {
    return m_Place.Below() ? S_OK : Guarded([&] {
        const DocumentLevel* level = m_Place.Level();
        const DocumentPart part =
            level ? m_Helpers->RowOf(*level, m_Place.Index()).m_Part : m_Place.LeftPart();
        if (const auto reads = m_Helpers->Reads()) {
            ReadBeside(*reads, part);
        } else {
            Show(ReadLevel(*m_Helpers->Text(), part, nullptr));
        }
        return S_OK;
    });
}

/// Reads beside the window's thread, and shows what is in the part unless that takes longer: then
/// there is a row that says so, since an empty branch would not stay open. That row is there before
/// it begins, so that nothing can fail once it has.
void DocumentBranch::ReadBeside(BackgroundReads& reads, const DocumentPart& part) {
    Show(MakeReadingLevel());
    try {
        auto level = reads.Begin<DocumentLevelPtr>(
            this, m_Helpers->Name(), [text = m_Helpers->Text(), part](ReadProgress& progress) {
                PartProgress within(part, progress);
                return ReadLevel(*text, part, &within);
            });
        if (level) {
            Show(std::move(*level));
            return;
        }
    } catch (...) {
        Show(nullptr);
        throw;
    }
    m_IsAwaited = true;
    m_Place.Hold(part); // who reads for it knows its address
}

/// Where memory did not hold it, it can be filled again.
int32_t DocumentBranch::ReadAgain(int32_t newFlags) {
    return IsChanged() != S_OK ? S_FALSE : Guarded([&] {
        m_IsAwaited = false;
        Show(nullptr);
        m_Place.LetGo();
        auto level = m_Helpers->Reads()->Take<DocumentLevelPtr>(this).value();
        level->SetAllFlags(newFlags);
        Show(std::move(level));
        return S_OK;
    });
}

int32_t DocumentBranch::IsChanged() {
    const auto reads = m_IsAwaited ? m_Helpers->Reads() : nullptr;
    return reads && reads->IsOver(this) ? S_OK : S_FALSE;
}
