#pragma once

#include "host/components/HostInterfaces.h"
#include "host/components/HostObject.h"

#include <string>
#include <vector>

/// The component "GlobalComponentCollection": the named component descriptions from which the host
/// and its modules make their objects.
class ComponentRegistry final
    : public HostObject<ComponentRegistry, IComponentCollection, IHostComponents> {
public:
    static constexpr const char* kKind = "ComponentRegistry";

    /// The creator: hands out the process's one registry, which lives until its last reference is
    /// gone, and makes it (with the components of the host's modules) when there is none. To be
    /// called, and the registry to be released, on one thread.
    static int32_t Share(void* outer, IID* iid, void** object);

    /// Use Share.
    ComponentRegistry();
    ~ComponentRegistry();

    int32_t GetItem(int32_t index, IUnknown** item) override;
    int32_t FindItem(IString* name, int32_t* index) override;
    int32_t CreateComponent(tagREFString name, const IID* iid, void** object) override;
    int32_t Register(tagREFString name, IComponentString* description) override;
    int32_t Unregister(tagREFString name) override;

private:
    struct Entry {
        std::wstring m_Name;
        SmartPtr<IComponentString> m_Description;
    };

    std::vector<Entry>::iterator Find(tagREFString name);

    std::vector<Entry> m_Entries;
};
