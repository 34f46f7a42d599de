#pragma once

#include "framework/interfaces/ComponentInterfaces.h"
#include "host/components/HostObject.h"

#include <functional>
#include <string>

/// Makes an object and asks it for the identifier.
using Creator = std::function<int32_t(const IID& iid, void** object)>;

/// Describes a component of the program itself. The description cannot be changed.
class CreatorDescription final : public HostObject<CreatorDescription, IComponentString> {
public:
    static constexpr const char* kKind = "CreatorDescription";

    CreatorDescription(std::wstring name, Creator creator)
        : m_Name(std::move(name)), m_Creator(std::move(creator)) {}

    int32_t SetObject(IUnknown* object) override;
    int32_t GetPart(int32_t part, IString** text) override;
    int32_t CreateInstance(const IID& iid, void** object) override;
    int32_t SetPart(int32_t part, tagREFString text) override;

private:
    std::wstring m_Name;
    Creator m_Creator;
};
