#include "host/components/ComponentRegistry.h"

#include "host/components/ComponentString.h"
#include "host/text/Text.h"

#include <algorithm>

namespace {

ComponentRegistry* gRegistry = nullptr; // borrowed; null while there is none

} // namespace

int32_t ComponentRegistry::Share(void* /*outer*/, IID* iid, void** object) {
    if (!iid || !object) {
        return E_POINTER;
    }
    *object = nullptr;
    return Guarded([&] {
        const auto registry = gRegistry ? SmartPtr(gRegistry) : Make();
        return registry->QueryInterface(*iid, object);
    });
}

ComponentRegistry::ComponentRegistry() {
    const auto describe = [this](const wchar_t* module, const wchar_t* name) {
        m_Entries.push_back(
            {name, Query<IComponentString>(ComponentString::Make(module, name)->Identity())});
    };
    describe(L"Collections", L"CreatableString");
    describe(L"Collections", L"SuperCollection");
    describe(L"Collections", L"Variant");
    describe(L"CollectionsEx", L"ComponentString");
    gRegistry = this;
}

ComponentRegistry::~ComponentRegistry() {
    gRegistry = nullptr;
}

std::vector<ComponentRegistry::Entry>::iterator ComponentRegistry::Find(tagREFString name) {
    return std::find_if(m_Entries.begin(), m_Entries.end(),
        [&](const Entry& entry) { return IsEqual(Refer(entry.m_Name), name); });
}

int32_t ComponentRegistry::GetItem(int32_t index, IUnknown** item) {
    if (!item) {
        return E_POINTER;
    }
    *item = nullptr;
    if (index < 0 || static_cast<size_t>(index) >= m_Entries.size()) {
        return E_INVALIDARG;
    }
    *item = SmartPtr(m_Entries[static_cast<size_t>(index)].m_Description).Detach();
    return S_OK;
}

int32_t ComponentRegistry::FindItem(IString* name, int32_t* index) {
    if (!name || !index) {
        return E_POINTER;
    }
    const auto found = Find(CREFString(name));
    const bool exists = found != m_Entries.end();
    *index = exists ? static_cast<int32_t>(found - m_Entries.begin()) : -1;
    return exists ? S_OK : E_FAIL;
}

int32_t ComponentRegistry::CreateComponent(tagREFString name, const IID* iid, void** object) {
    if (!iid || !object) {
        return E_POINTER;
    }
    *object = nullptr;
    const auto found = Find(name);
    if (found == m_Entries.end()) {
        return E_FAIL;
    }
    // Making the object may change the entries.
    const SmartPtr<IComponentString> description = found->m_Description;
    return description->CreateInstance(*iid, object);
}

int32_t ComponentRegistry::Register(tagREFString name, IComponentString* description) {
    if (!description || name.m_Length <= 0 || !name.m_String) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        const auto found = Find(name);
        if (found != m_Entries.end()) {
            found->m_Description = description;
        } else {
            m_Entries.push_back({std::wstring(name.m_String, static_cast<size_t>(name.m_Length)),
                SmartPtr(description)});
        }
        return S_OK;
    });
}

int32_t ComponentRegistry::Unregister(tagREFString name) {
    const auto found = Find(name);
    if (found == m_Entries.end()) {
        return E_INVALIDARG;
    }
    m_Entries.erase(found);
    return S_OK;
}
