#include "host/components/ComponentString.h"

#include "framework/interfaces/ObjectInfo.h"
#include "host/components/CreatableString.h"
#include "host/text/Text.h"

std::wstring* ComponentString::Find(int32_t part) {
    if (part == COMPONENTPART_NAME) {
        return &m_Name;
    }
    return part == COMPONENTPART_MODULE ? &m_Module : nullptr;
}

int32_t ComponentString::SetObject(IUnknown* object) {
    const auto info = Query<IObjectInfo>(object);
    tagREFString name = {0, nullptr};
    if (!info || info->GetName(0, &name) < 0) {
        return E_INVALIDARG;
    }
    const int32_t status = SetPart(COMPONENTPART_NAME, name);
    return status < 0 ? status : SetPart(COMPONENTPART_MODULE, {0, nullptr});
}

int32_t ComponentString::GetPart(int32_t part, IString** text) {
    if (!text) {
        return E_POINTER;
    }
    *text = nullptr;
    const std::wstring* found = Find(part);
    if (!found) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        *text = CreatableString::Make(*found).Detach();
        return S_OK;
    });
}

int32_t ComponentString::CreateInstance(const IID& iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (!m_Creator && !m_Module.empty()) {
        Guarded([&] {
            m_Creator = MODULECreateFunction(Refer(m_Module), Refer(m_Name));
            return S_OK;
        });
    }
    IID wanted = iid; // creators take a changeable identifier
    return m_Creator ? m_Creator(nullptr, &wanted, object) : E_FAIL;
}

int32_t ComponentString::SetPart(int32_t part, tagREFString text) {
    std::wstring* found = Find(part);
    if (!found || text.m_Length < 0 || (text.m_Length > 0 && !text.m_String)) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        found->assign(text.m_String, static_cast<size_t>(text.m_Length));
        m_Creator = nullptr;
        return S_OK;
    });
}
