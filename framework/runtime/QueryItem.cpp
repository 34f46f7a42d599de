#include "framework/runtime/QueryItem.h"

int32_t QueryWrappedItem(SmartPtr<IUINode> node, SmartPtr<ICollectionMoniker> moniker,
    IUnknown* item, const IID& iid, void** result) {
    if (node) {
        SmartPtr<IUnknown> stoodFor;
        node->get_Object(stoodFor.Receive());
        if (stoodFor && stoodFor->QueryInterface(iid, result) >= 0) {
            return S_OK;
        }
        moniker = Query<ICollectionMoniker>(item);
        if (!moniker) {
            moniker = Query<ICollectionMoniker>(stoodFor.Get());
        }
    }
    *result = nullptr; // a failed query may have left something else
    const int32_t status = moniker ? moniker->BindToObject(iid, result) : E_NOINTERFACE;
    if (status < 0) {
        *result = nullptr;
    }
    return status;
}
