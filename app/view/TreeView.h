#pragma once

#include "app/view/Installation.h"
#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/Host.h"
#include "host/components/Module.h"
#include "host/sources/Source.h"

#include <stdexcept>
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

/// Something of the tree could not be read; a line for each such thing.
struct NotAllRead : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A path as it is to be said once there is a ControlHost.
std::string AbsolutePath(const std::string& path);

/// A control that shows the tree behind a path. Throws what OpenSource and ControlHost throw.
class TreeView {
public:
    /// Opens `depth` levels of the tree. With a bar on standard error while it is read, where that
    /// is a terminal.
    TreeView(const std::string& path, int32_t depth, SourceKind kind = SourceKind::kByContent);
    /// Shows nothing yet. Folders will be watched by `watch`, and those that are opened looked into
    /// by `scans`.
    TreeView(FolderWatchPtr watch, FolderScansPtr scans);

    /// Shows what was read, with the settings as they are.
    void Show(const SourceMaker& make);

    IUITree* Control() const { return m_Tree.Get(); }
    ISuperCollection* Source() const { return m_Source.Get(); }
    const ReadFailuresPtr& Failures() const { return m_Failures; }
    /// For the end of a command, which has shown what was read. Throws NotAllRead.
    void CheckAllRead() const;

private:
    void Bind();

    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch;
    FolderScansPtr m_Scans;
    SmartPtr<ISuperCollection> m_Source;
    ControlHost m_Host;
    SmartPtr<IUITree> m_Tree;
};
