#pragma once

#include "app/installation/ControlHost.h"
#include "framework/interfaces/CollectionInterfaces.h"
#include "host/sources/Source.h"

#include <stdexcept>
#include <string>

/// Something of the tree could not be read; a line for each such thing.
struct NotAllRead : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A control that shows the tree behind a path. Throws what OpenSource and ControlHost throw.
class TreeView {
public:
    /// Opens `depth` levels of the tree. `progress`, which may be null, hears of the reading.
    TreeView(const std::string& path, int32_t depth, SourceKind kind, ReadProgress* progress);
    /// Shows nothing yet. Folders will be watched by `watch`, and what is opened read by `reads`.
    TreeView(FolderWatchPtr watch, BackgroundReadsPtr reads);

    /// Shows what was read, with the settings as they are.
    void Show(SourceMaker make);

    IUITree* Control() const { return m_Tree.Get(); }
    ISuperCollection* Source() const { return m_Source.Get(); }
    const ReadFailuresPtr& Failures() const { return m_Failures; }
    /// For the end of a command, which has shown what was read. Throws NotAllRead.
    void CheckAllRead() const;

private:
    void Bind();

    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch;
    BackgroundReadsPtr m_Reads;
    SmartPtr<ISuperCollection> m_Source;
    ControlHost m_Host;
    SmartPtr<IUITree> m_Tree;
};
