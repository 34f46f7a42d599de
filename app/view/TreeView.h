#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/Host.h"
#include "host/components/Module.h"

#include <string>

/// A host with the control's module loaded, both from the program's own folder. Making it moves
/// the process there, so relative paths have to be made absolute before.
class ControlHost {
public:
    /// Throws ModuleError.
    ControlHost();

    /// A new control with the host's default sizes, which come with its first tree: an empty one.
    /// Throws ModuleError.
    SmartPtr<IUITree> CreateTree() const;

private:
    Host m_Host;
    Module m_Module;
};

/// A control that shows the tree behind a path. Throws what OpenSource and ControlHost throw.
class TreeView {
public:
    /// Opens `depth` levels of the tree.
    TreeView(const std::string& path, int32_t depth);

    IUITree* Control() const { return m_Tree.Get(); }
    ISuperCollection* Source() const { return m_Source.Get(); }

private:
    SmartPtr<ISuperCollection> m_Source;
    ControlHost m_Host;
    SmartPtr<IUITree> m_Tree;
};
