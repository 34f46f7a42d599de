#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "host/components/HostObject.h"
#include "host/data/CollectionVersion.h"

#include <optional>
#include <string>
#include <vector>

/// Implements ISuperCollection over a list of entries, for the component "SuperCollection" and for
/// the data sources. A collection may be shared, and may contain itself (its owner then has to
/// break that cycle with RemoveAll). Whatever changes moves the version of collections on; a class
/// that offers that lists CollectionVersion among its bases.
class SuperCollectionBase : public ISuperCollection {
public:
    using Interface = ISuperCollection;

    SuperCollectionBase(const SuperCollectionBase&) = delete;
    SuperCollectionBase& operator=(const SuperCollectionBase&) = delete;

    int32_t GetCount(int32_t* count) override;
    int32_t GetItem(int32_t index, IUnknown** item) override;
    int32_t GetItemName(int32_t index, IString** name) override;
    int32_t GetItemData(int32_t index, IUnknown** data) override;
    int32_t GetItemFlags(int32_t index, int32_t* flags) override;
    int32_t SetItemFlags(int32_t index, int32_t flags) override;
    int32_t AddEntry(IString* name, IString* component, IString* owner, int32_t) override;
    int32_t InsertItem(int32_t index, int32_t, IUnknown* item, int32_t, int32_t) override;
    int32_t RemoveAll() override {
        Clear();
        CollectionVersion::Advance(); // not for one that dies, which nobody sees
        return S_OK;
    }

    struct Entry {
        std::optional<std::string> m_Name; ///< UTF-8, may be ill-formed; nothing: no name
        SmartPtr<IUnknown> m_Item;
        SmartPtr<IUnknown> m_Data;
        int32_t m_Flags = 0;
    };

    /// Appends an entry. Throws when memory runs out.
    void Append(Entry entry);
    /// The same for a named item.
    void Append(std::string name, IUnknown* item);
    /// The same while nobody else knows the collection, on any thread. It must cover the item with
    /// its version.
    void AppendNew(Entry entry) { m_Entries.push_back(std::move(entry)); }
    bool IsEmpty() const { return m_Entries.empty(); }

protected:
    const std::vector<Entry>& Entries() const { return m_Entries; }
    /// Puts these entries in the place of all that there are.
    void Replace(std::vector<Entry> entries);
    /// The same while nobody else knows the collection, on any thread. It must cover the items with
    /// its version.
    void Fill(std::vector<Entry> entries) { m_Entries = std::move(entries); }

    SuperCollectionBase() = default;
    ~SuperCollectionBase() { Clear(); }

private:
    Entry* Find(int32_t index);
    void Clear();
    void Exchange(std::vector<Entry>& entries);
    void NoteItem(IUnknown* item);

    std::vector<Entry> m_Entries;
    bool m_IsBlind = false; ///< it holds what its version does not cover
};

/// The component "SuperCollection".
class SuperCollection final
    : public HostObject<SuperCollection, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "SuperCollection";
};
