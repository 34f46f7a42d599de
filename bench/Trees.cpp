#include "bench/Trees.h"

#include "host/components/CreatableString.h"
#include "host/data/SuperCollection.h"

#include <vector>

namespace {

constexpr int32_t kRowsPerIcon = 10;

class Leaf final : public HostObject<Leaf, IDataStream> {
public:
    static constexpr const char* kKind = "Leaf";
};

/// Items in a plain array, 16 bytes each, named by their numbers.
class ArrayCollection final
    : public HostObject<ArrayCollection, ISuperCollection, CollectionVersion> {
public:
    static constexpr const char* kKind = "ArrayCollection";

    int32_t GetCount(int32_t* count) override {
        *count = static_cast<int32_t>(m_Slots.size());
        return S_OK;
    }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        *item = Has(index) ? SmartPtr(At(index).m_Item).Detach() : nullptr;
        return *item ? S_OK : E_INVALIDARG;
    }
    int32_t GetItemName(int32_t index, IString** name) override {
        *name = nullptr;
        return Has(index) ? HandOutString("Row " + std::to_string(At(index).m_Number), name)
                          : E_INVALIDARG;
    }
    int32_t GetItemData(int32_t, IUnknown** data) override {
        *data = nullptr;
        return E_FAIL;
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        *flags = Has(index) ? At(index).m_Flags : 0;
        return Has(index) ? S_OK : E_INVALIDARG;
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        if (!Has(index)) {
            return E_INVALIDARG;
        }
        At(index).m_Flags = flags;
        CollectionVersion::Advance();
        return S_OK;
    }
    int32_t AddEntry(IString*, IString*, IString*, int32_t) override { return E_FAIL; }
    int32_t InsertItem(int32_t, int32_t, IUnknown*, int32_t, int32_t) override { return E_FAIL; }
    int32_t RemoveAll() override { return E_FAIL; }

    void Append(IUnknown* item, int32_t number) { m_Slots.push_back({SmartPtr(item), number, 0}); }

private:
    struct Slot {
        SmartPtr<IUnknown> m_Item;
        int32_t m_Number;
        int32_t m_Flags;
    };

    bool Has(int32_t index) const {
        return index >= 0 && static_cast<size_t>(index) < m_Slots.size();
    }
    Slot& At(int32_t index) { return m_Slots[static_cast<size_t>(index)]; }

    std::vector<Slot> m_Slots;
};

void Append(ArrayCollection& to, IUnknown* item, int32_t number) {
    to.Append(item, number);
}

void Append(SuperCollection& to, IUnknown* item, int32_t number) {
    to.Append("Row " + std::to_string(number), item);
}

template <class Collection>
SmartPtr<Collection> MakeLeaves(int32_t count, int32_t number, int32_t flags) {
    auto collection = Collection::Make();
    const auto leaf = Leaf::Make();
    for (int32_t i = 0; i < count; ++i) {
        Append(*collection.Get(), leaf->Identity(), number + i);
        collection->SetItemFlags(i, flags);
    }
    return collection;
}

template <class Collection>
SmartPtr<ISuperCollection> MakeRows(Shape shape, int32_t rows) {
    auto root = Collection::Make();
    const auto leaf = Leaf::Make();
    constexpr int32_t kLeaves = kRowsPerIcon - 1;
    for (int32_t number = 0; number < rows; number += kRowsPerIcon) {
        const bool isOpen = shape == Shape::kNested;
        const auto folder =
            MakeLeaves<Collection>(isOpen ? kLeaves : 0, number + 1, NODE_VISIBLE | 2);
        Append(*root.Get(), folder->Identity(), number);
        int32_t last = 0;
        root->GetCount(&last);
        root->SetItemFlags(last - 1, NODE_VISIBLE | (isOpen ? NODE_EXPANDED : 0) | 1);
        for (int32_t i = 0; !isOpen && i < kLeaves; ++i) {
            Append(*root.Get(), leaf->Identity(), number + 1 + i);
            root->SetItemFlags(last + i, NODE_VISIBLE | 1);
        }
    }
    return SmartPtr<ISuperCollection>(root.Get());
}

template <class Collection>
SmartPtr<ISuperCollection> MakeClosed(int32_t children) {
    auto root = Collection::Make();
    Append(*root.Get(), MakeLeaves<Collection>(children, 1, 2)->Identity(), 0);
    root->SetItemFlags(0, NODE_VISIBLE | 1);
    return SmartPtr<ISuperCollection>(root.Get());
}

/// Stands for what nobody can see into: while a collection holds one, none vouches.
class Moniker final : public HostObject<Moniker, ICollectionMoniker> {
public:
    static constexpr const char* kKind = "Moniker";
    int32_t BindToObject(const IID&, void** object) override {
        *object = nullptr;
        return E_FAIL;
    }
};

void Vouch(Vouched vouched) {
    static const auto gBlind = SuperCollection::Make();
    gBlind->RemoveAll();
    if (vouched == Vouched::kNo) {
        gBlind->Append("", Moniker::Make()->Identity());
    }
}

} // namespace

std::string NameOf(Source source) {
    const std::string name = source.m_Data == Data::kInPlace ? "in place" : "SuperCollection";
    return name + (source.m_Vouched == Vouched::kYes ? ", version" : "");
}

std::string NameOf(Shape shape) {
    return shape == Shape::kFlat ? "flat" : "nested";
}

SmartPtr<ISuperCollection> MakeTree(Source source, Shape shape, int32_t rows) {
    Vouch(source.m_Vouched);
    if (source.m_Data == Data::kInPlace) {
        return MakeRows<ArrayCollection>(shape, rows);
    }
    return MakeRows<SuperCollection>(shape, rows);
}

SmartPtr<ISuperCollection> MakeFolder(Source source, int32_t children) {
    Vouch(source.m_Vouched);
    return source.m_Data == Data::kInPlace ? MakeClosed<ArrayCollection>(children)
                                           : MakeClosed<SuperCollection>(children);
}
