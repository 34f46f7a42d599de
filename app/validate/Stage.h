#pragma once

#include "app/faults/Gate.h"
#include "app/validate/Check.h"
#include "host/Host.h"
#include "host/components/Module.h"

#include <map>
#include <optional>

/// The module under validation in a host of its own. Making it moves the process to the host's
/// folder.
class Stage {
public:
    /// Throws ModuleError.
    explicit Stage(const Subject& subject);

    Host& TheHost() { return m_Host; }
    /// Stands a gate between the host and a module that is loaded from now on, in place of the one
    /// before; it stays until the module is unloaded, however the check ends. Nothing may be
    /// loaded.
    Gate& RaiseGate() { return m_Gate.emplace(); }
    void LowerGate() { m_Gate.reset(); }
    /// Loads the module.
    void Load();
    /// Unloads it. Its objects have to be gone.
    void Unload() { m_Module.reset(); }
    bool IsStillLoaded() const;
    /// For checks that load the module again and again: they do not apply to one that stays.
    void NeedUnloading(Trial& trial);

    /// The creator of the component. Throws ModuleError when the module has none.
    CreatorFunction Creator() const;
    /// A new object of the component asked for `iid`; null when the creation fails.
    void* CreateAny(const IID& iid) const;
    template <class T>
    SmartPtr<T> Create() const {
        return Adopt(static_cast<T*>(CreateAny(IdentifierOf<T>())));
    }
    /// A new object, or an exception.
    SmartPtr<IUnknown> CreateOrThrow() const;

    /// Host objects that are alive now and were not when the stage was set, by kind; "" for none.
    std::string Leaked() const;

private:
    const Subject& m_Subject;
    Host m_Host;
    std::map<std::string, int32_t> m_Before;
    std::optional<Gate> m_Gate;
    std::optional<Module> m_Module; ///< goes before the gate whose objects it holds
};

/// The references to an object, as it counts them itself.
int32_t CountOf(IUnknown* object);
