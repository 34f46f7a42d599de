#include "host/data/SuperCollection.h"

#include "host/components/CreatableString.h"
#include "host/components/HostInterfaces.h"
#include "host/text/Text.h"

#include <array>

namespace {

using EntryList = std::vector<SuperCollectionBase::Entry>;

/// What AddEntry stores: three strings.
class CollectionEntry final : public HostObject<CollectionEntry, IHostEntry> {
public:
    static constexpr const char* kKind = "CollectionEntry";

    CollectionEntry(IString* name, IString* component, IString* owner)
        : m_Texts{SmartPtr(name), SmartPtr(component), SmartPtr(owner)} {}

    int32_t GetText(int32_t number, IString** text) override {
        if (!text) {
            return E_POINTER;
        }
        const bool exists = number >= 0 && number < static_cast<int32_t>(m_Texts.size());
        *text = exists ? SmartPtr(m_Texts[static_cast<size_t>(number)]).Detach() : nullptr;
        return exists ? S_OK : E_INVALIDARG;
    }

private:
    std::array<SmartPtr<IString>, 3> m_Texts;
};

/// The entries of collections that die while others are being torn down on this thread; null when
/// none is.
thread_local std::vector<EntryList>* gDyingEntries = nullptr;

void TearDown(EntryList& first) {
    std::vector<EntryList> dying;
    gDyingEntries = &dying;
    first.clear();
    while (!dying.empty()) {
        const EntryList next = std::move(dying.back());
        dying.pop_back();
    }
    gDyingEntries = nullptr;
}

/// Releases entries. Collections that die with them leave theirs to the loop of the first one, so
/// that a chain of any depth is torn down without recursion.
void ReleaseEntries(EntryList& entries) {
    if (!gDyingEntries) {
        TearDown(entries);
        return;
    }
    try {
        gDyingEntries->push_back(std::move(entries));
    } catch (...) {
        entries.clear(); // no memory for the detour: by recursion, then
    }
}

int32_t HandOut(const SmartPtr<IUnknown>& held, IUnknown** object) {
    *object = SmartPtr(held).Detach();
    return *object ? S_OK : E_FAIL;
}

} // namespace

SuperCollectionBase::Entry* SuperCollectionBase::Find(int32_t index) {
    const auto position = static_cast<size_t>(index);
    return index >= 0 && position < m_Entries.size() ? &m_Entries[position] : nullptr;
}

int32_t SuperCollectionBase::GetCount(int32_t* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = static_cast<int32_t>(m_Entries.size());
    return S_OK;
}

int32_t SuperCollectionBase::GetItem(int32_t index, IUnknown** item) {
    if (!item) {
        return E_POINTER;
    }
    *item = nullptr;
    const Entry* entry = Find(index);
    return entry ? HandOut(entry->m_Item, item) : E_INVALIDARG;
}

int32_t SuperCollectionBase::GetItemName(int32_t index, IString** name) {
    if (!name) {
        return E_POINTER;
    }
    *name = nullptr;
    const Entry* entry = Find(index);
    if (!entry) {
        return E_INVALIDARG;
    }
    return entry->m_Name ? HandOutString(*entry->m_Name, name) : E_FAIL;
}

int32_t SuperCollectionBase::GetItemData(int32_t index, IUnknown** data) {
    if (!data) {
        return E_POINTER;
    }
    *data = nullptr;
    const Entry* entry = Find(index);
    return entry ? HandOut(entry->m_Data, data) : E_INVALIDARG;
}

int32_t SuperCollectionBase::GetItemFlags(int32_t index, int32_t* flags) {
    if (!flags) {
        return E_POINTER;
    }
    const Entry* entry = Find(index);
    *flags = entry ? entry->m_Flags : 0;
    return entry ? S_OK : E_INVALIDARG;
}

int32_t SuperCollectionBase::SetItemFlags(int32_t index, int32_t flags) {
    Entry* entry = Find(index);
    if (!entry) {
        return E_INVALIDARG;
    }
    entry->m_Flags = flags;
    CollectionVersion::Advance();
    return S_OK;
}

int32_t SuperCollectionBase::AddEntry(IString* name, IString* component, IString* owner, int32_t) {
    return Guarded([&] {
        const auto item = CollectionEntry::Make(name, component, owner);
        Append(ToUtf8(CREFString(name)), item.Get());
        return S_OK;
    });
}

int32_t SuperCollectionBase::InsertItem(int32_t index, int32_t, IUnknown* item, int32_t, int32_t) {
    if (!item) {
        return E_POINTER;
    }
    return Guarded([&] {
        const auto place = Find(index) ? m_Entries.begin() + index : m_Entries.end();
        m_Entries.insert(place, Entry{.m_Name = {}, .m_Item = SmartPtr(item), .m_Data = {}});
        NoteItem(item);
        CollectionVersion::Advance();
        return S_OK;
    });
}

void SuperCollectionBase::Clear() {
    EntryList none;
    Exchange(none);
}

void SuperCollectionBase::Replace(std::vector<Entry> entries) {
    CollectionVersion::Advance();
    Exchange(entries);
}

void SuperCollectionBase::Exchange(std::vector<Entry>& entries) {
    // What dies may look back at this collection, which has its new entries by then.
    entries.swap(m_Entries);
    if (std::exchange(m_IsBlind, false)) {
        CollectionVersion::AddBlind(-1);
    }
    for (const Entry& entry : m_Entries) {
        NoteItem(entry.m_Item.Get());
    }
    if (!entries.empty()) {
        ReleaseEntries(entries);
    }
}

void SuperCollectionBase::Append(Entry entry) {
    m_Entries.push_back(std::move(entry));
    NoteItem(m_Entries.back().m_Item.Get());
    CollectionVersion::Advance();
}

void SuperCollectionBase::NoteItem(IUnknown* item) {
    if (!m_IsBlind && !CollectionVersion::Covers(item)) {
        m_IsBlind = true;
        CollectionVersion::AddBlind(1);
    }
}

void SuperCollectionBase::Append(std::string name, IUnknown* item) {
    Append(Entry{.m_Name = std::move(name), .m_Item = SmartPtr(item), .m_Data = {}});
}
