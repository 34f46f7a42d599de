#pragma once

#include "framework/interfaces/ComponentInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/components/CreatorDescription.h"
#include "host/components/HostInterfaces.h"

#include <filesystem>
#include <vector>

/// The running host: the process's component registry, filled with the components that the host
/// itself implements. One at a time.
class Host {
public:
    /// `folder` holds the host's modules and the folder "share". The framework opens modules
    /// relative to the current directory, so the process moves to that folder and stays there.
    /// Throws ModuleError when the folder or the module "CollectionsEx" cannot be used.
    explicit Host(const std::filesystem::path& folder);
    /// Takes the host's own components off the registry again.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    IComponentCollection* Components() const { return m_Components.Get(); }

    /// Registers a component of the program, in place of one of that name, until the host goes.
    /// `name` is a literal.
    void Register(const wchar_t* name, Creator creator);

private:
    SmartPtr<IComponentCollection> m_Components;
    SmartPtr<IHostComponents> m_Registry;
    std::vector<const wchar_t*> m_Registered;
};
