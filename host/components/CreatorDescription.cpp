#include "host/components/CreatorDescription.h"

#include "host/components/CreatableString.h"

int32_t CreatorDescription::SetObject(IUnknown* /*object*/) {
    return E_FAIL;
}

int32_t CreatorDescription::GetPart(int32_t part, IString** text) {
    if (!text) {
        return E_POINTER;
    }
    *text = nullptr;
    if (part != COMPONENTPART_NAME) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        *text = CreatableString::Make(m_Name).Detach();
        return S_OK;
    });
}

int32_t CreatorDescription::CreateInstance(const IID& iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    return Guarded([&] { return m_Creator(iid, object); });
}

int32_t CreatorDescription::SetPart(int32_t /*part*/, tagREFString /*text*/) {
    return E_FAIL;
}
