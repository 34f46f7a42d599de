#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"

/// What an item answers through its wrapper: a node, which may be a moniker too or stand for one,
/// or else a moniker.
int32_t QueryWrappedItem(SmartPtr<IUINode> node, SmartPtr<ICollectionMoniker> moniker,
    IUnknown* item, const IID& iid, void** result);

/// The part of QueryItem that does not depend on the interface asked for. Most items of a tree are
/// leaves without a wrapper, so it is inline: they cost three questions and nothing else.
[[gnu::always_inline]] inline int32_t QueryItemObject(
    IUnknown* item, const IID& iid, void** result) {
    *result = nullptr;
    if (!item) {
        return E_NOINTERFACE;
    }
    if (item->QueryInterface(iid, result) >= 0) {
        return S_OK;
    }
    void* node = QueryObject(item, IID_IUINode);
    void* moniker = node ? nullptr : QueryObject(item, IID_ICollectionMoniker);
    if (node || moniker) {
        return QueryWrappedItem(Adopt(static_cast<IUINode*>(node)),
            Adopt(static_cast<ICollectionMoniker*>(moniker)), item, iid, result);
    }
    *result = nullptr; // a failed query may have left something else
    return E_NOINTERFACE;
}

/// Asks a collection item for an interface, looking through its wrappers: the item itself, then the
/// object that it stands for when it is an IUINode, then what an ICollectionMoniker (the item or
/// that object) binds to. `result` receives one reference, or null with a negative status.
template <class T>
int32_t QueryItem(IUnknown* item, IID iid, T** result) {
    void* answer = nullptr;
    const int32_t status = QueryItemObject(item, iid, &answer);
    *result = static_cast<T*>(answer);
    return status;
}

/// The same as a holder: empty when the item has no such interface.
template <class T>
SmartPtr<T> QueryItem(IUnknown* item) {
    SmartPtr<T> result;
    QueryItem<T>(item, IdentifierOf<T>(), result.Receive());
    return result;
}
