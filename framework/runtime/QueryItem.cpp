#include "framework/runtime/QueryItem.h"

#include "framework/interfaces/CollectionInterfaces.h"

int32_t QueryItemObject(IUnknown* item, const IID& iid, void** result) {
    *result = nullptr;
    if (!item) {
        return E_NOINTERFACE;
    }
    if (item->QueryInterface(iid, result) >= 0) {
        return S_OK;
    }
    SmartPtr<IUnknown> stoodFor;
    const auto node = Query<IUINode>(item);
    if (node) {
        node->get_Object(stoodFor.Receive());
        if (stoodFor && stoodFor->QueryInterface(iid, result) >= 0) {
            return S_OK;
        }
    }
    auto moniker = Query<ICollectionMoniker>(item);
    if (!moniker) {
        moniker = Query<ICollectionMoniker>(stoodFor.Get());
    }
    *result = nullptr; // a failed query may have left something else
    const int32_t status = moniker ? moniker->BindToObject(iid, result) : E_NOINTERFACE;
    if (status < 0) {
        *result = nullptr;
    }
    return status;
}
