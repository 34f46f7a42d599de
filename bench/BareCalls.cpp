#include "bench/BareCalls.h"

namespace {

/// The questions that decide whether an item has rows below it, with nothing around them.
ISuperCollection* AskForCollection(IUnknown* item) {
    void* answer = nullptr;
    if (item->QueryInterface(IID_ISuperCollection, &answer) >= 0) {
        auto* collection = static_cast<ISuperCollection*>(answer);
        if (item->QueryInterface(IID_ICollectionMoniker, &answer) < 0) {
            item->QueryInterface(IID_IObjectInfo, &answer);
        }
        return collection;
    }
    item->QueryInterface(IID_IUINode, &answer);
    item->QueryInterface(IID_ICollectionMoniker, &answer);
    return nullptr;
}

/// A walk that is not to go round in a ring asks who it enters, unless nothing is there.
int32_t EnterBare(ISuperCollection* collection) {
    int32_t count = 0;
    collection->GetCount(&count);
    if (count > 0) {
        void* identity = nullptr;
        collection->QueryInterface(IID_IUnknown, &identity);
        static_cast<IUnknown*>(identity)->Release();
    }
    return count;
}

int64_t CountItems(ISuperCollection* collection, int32_t count) {
    int64_t rows = 0;
    for (int32_t i = 0; i < count; ++i) {
        int32_t flags = 0;
        collection->GetItemFlags(i, &flags);
        if ((flags & NODE_VISIBLE) == 0) {
            continue;
        }
        ++rows;
        IUnknown* item = nullptr;
        collection->GetItem(i, &item);
        if (ISuperCollection* below = AskForCollection(item)) {
            rows += CountItems(below, EnterBare(below));
            below->Release();
        }
        item->Release();
    }
    return rows;
}

} // namespace

int64_t CountBare(ISuperCollection* collection) {
    return CountItems(collection, EnterBare(collection));
}

void ShowBare(ISuperCollection* collection) {
    int32_t count = 0;
    int32_t flags = 0;
    collection->GetCount(&count);
    for (int32_t i = 0; i < count; ++i) {
        collection->GetItemFlags(i, &flags);
        collection->SetItemFlags(i, flags | NODE_VISIBLE);
    }
}
