#pragma once

#include "framework/runtime/SmartPtr.h"

/// The part of QueryItem that does not depend on the interface asked for.
int32_t QueryItemObject(IUnknown* item, const IID& iid, void** result);

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
