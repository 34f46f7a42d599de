#include "framework/runtime/Object.h"

#include "framework/runtime/Guarded.h"

int32_t ObjectBase::QueryInterface(const IID& /*iid*/, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

int32_t CompleteCreation(ObjectBase& object, const IID& iid, void** result) {
    int32_t status = Guarded([&] { return object.FinalConstruct(); });
    if (status != S_OK) {
        return status;
    }
    status = object.QueryInterface(iid, result);
    if (status < 0) {
        return status;
    }
    object.Release();
    return S_OK;
}
