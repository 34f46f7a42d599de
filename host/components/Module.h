#pragma once

#include "framework/interfaces/ComponentInterfaces.h"
#include "framework/runtime/Object.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

/// A module cannot be loaded, or an object of it not made; the text says which step failed, with
/// the loader's own words.
struct ModuleError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A loaded control module. Its objects must be gone before it is.
///
///     Module module(folder / "UITree.so", host.Components());
///     SmartPtr<IUITree> tree = module.Create<IUITree>(L"UITree");
class Module {
public:
    /// Loads the file and hands it the host's components. Throws ModuleError.
    Module(const std::filesystem::path& file, IComponentCollection* components);
    /// Takes the components back and unloads the file.
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// The creator of a component; null when the module does not know it.
    CreatorFunction FindCreator(const wchar_t* name) const;

    /// A new object of the component, asked for interface T. Throws ModuleError.
    template <class T>
    SmartPtr<T> Create(const wchar_t* name) const {
        return Adopt(static_cast<T*>(CreateAny(name, IdentifierOf<T>())));
    }

private:
    using InitializeFunction = int32_t (*)(void*, IComponentCollection*);
    using FactoryFunction = int32_t (*)(tagREFString, void**);

    struct Unloader {
        void operator()(void* library) const;
    };

    void* FindSymbol(const char* name) const;
    void* CreateAny(const wchar_t* name, const IID& iid) const;

    std::string m_File;
    std::unique_ptr<void, Unloader> m_Library;
    InitializeFunction m_Initialize = nullptr;
    FactoryFunction m_Factory = nullptr;
};
