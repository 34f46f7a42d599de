#pragma once

#include "framework/runtime/Components.h"
#include "host/components/HostObject.h"

#include <string>

/// The component "ComponentString": describes a component of a module, which is loaded when the
/// first object is made. A description without a module makes nothing.
class ComponentString final : public HostObject<ComponentString, IComponentString> {
public:
    static constexpr const char* kKind = "ComponentString";

    ComponentString() = default;
    ComponentString(std::wstring module, std::wstring name)
        : m_Module(std::move(module)), m_Name(std::move(name)) {}

    /// Takes over the object's component name and forgets the module.
    int32_t SetObject(IUnknown* object) override;
    int32_t GetPart(int32_t part, IString** text) override;
    int32_t CreateInstance(const IID& iid, void** object) override;
    int32_t SetPart(int32_t part, tagREFString text) override;

private:
    std::wstring* Find(int32_t part);

    std::wstring m_Module;
    std::wstring m_Name;
    CreatorFunction m_Creator = nullptr; ///< of what the parts describe, once it was needed
};
