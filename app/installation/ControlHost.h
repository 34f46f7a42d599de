#pragma once

#include "app/installation/Installation.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/Host.h"
#include "host/components/Module.h"

#include <string>

/// A host with the control's module loaded. Making it moves the process to the folder of the host's
/// modules, so relative paths have to be made absolute before.
class ControlHost {
public:
    /// Throws ModuleError.
    ControlHost();
    explicit ControlHost(const Installation& installation);

    /// A new control with the host's default sizes, which come with its first tree: an empty one.
    /// Throws ModuleError.
    SmartPtr<IUITree> CreateTree() const;

private:
    Host m_Host;
    Module m_Module;
};

/// A path as it is to be said once there is a ControlHost; "-" and "" stay.
std::string AbsolutePath(const std::string& path);
