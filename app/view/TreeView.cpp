#include "app/view/TreeView.h"

#include "app/settings/Parameters.h"
#include "app/view/TerminalBar.h"
#include "framework/support/FileNames.h"
#include "framework/support/REFString.h"
#include "host/data/Expansion.h"
#include "host/data/SuperCollection.h"
#include "host/sources/Source.h"
#include "host/text/Text.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <unistd.h>

namespace {

/// Tells of a file in the host's folder of common files, without which everything works but looks
/// poorer.
void WarnOfMissing(const char* file, const char* consequence) {
    SmartPtr<IString> common;
    FILENAMEGetCommonPath(common.Receive());
    const std::filesystem::path path =
        std::filesystem::path(ToUtf8(CREFString(common.Get()))) / file;
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        std::cerr << "treehost: " << ToPrintable(Refer(ToWide(path.string())))
                  << " is missing: " << consequence << '\n';
    }
}

SmartPtr<ISuperCollection> OpenWithBar(
    const std::string& path, SourceKind kind, const ReadFailuresPtr& failures) {
    TerminalBar bar(path, std::cerr, isatty(STDERR_FILENO) != 0);
    return OpenSource(AbsolutePath(path), failures, kind, nullptr, &bar);
}

} // namespace

ControlHost::ControlHost() : ControlHost(FindInstallation()) {}

ControlHost::ControlHost(const Installation& installation)
    : m_Host(installation.m_Host), m_Module(installation.m_Module, m_Host.Components()) {
    WarnOfMissing("_icons/UITreeOpen.png", "open folders look like files");
    WarnOfMissing("_icons/UITreeClosed.png", "closed folders look like files");
    WarnOfMissing("_strings/UITree.ini", "settings have numbers for names");
}

SmartPtr<IUITree> ControlHost::CreateTree() const {
    auto tree = m_Module.Create<IUITree>(L"UITree");
    tree->put_Collection(SuperCollection::Make()->Identity());
    return tree;
}

std::string AbsolutePath(const std::string& path) {
    return path == "-" || path.empty() ? path : std::filesystem::absolute(path).string();
}

TreeView::TreeView(const std::string& path, int32_t depth, SourceKind kind)
    : m_Source(OpenWithBar(path, kind, m_Failures)), m_Tree(m_Host.CreateTree()) {
    Bind();
    OpenLevels(m_Source.Get(), depth);
}

TreeView::TreeView(FolderWatchPtr watch, FolderScansPtr scans)
    : m_Watch(std::move(watch)), m_Scans(std::move(scans)), m_Tree(m_Host.CreateTree()) {}

/// The default sizes came with the empty tree, and may have been changed since.
void TreeView::Show(const SourceMaker& make) {
    m_Source = make({m_Failures, m_Watch, m_Scans});
    int32_t usesDefaults = 0;
    m_Tree->Inquire(PARAMETER_USEDEFAULTSTYLE, &usesDefaults);
    m_Tree->Control(PARAMETER_USEDEFAULTSTYLE, 0);
    Bind();
    m_Tree->Control(PARAMETER_USEDEFAULTSTYLE, usesDefaults);
}

void TreeView::Bind() {
    if (m_Tree->put_Collection(m_Source.Get()) < 0) {
        throw std::runtime_error("the control does not take the tree");
    }
}

void TreeView::CheckAllRead() const {
    std::string text;
    for (const std::string& line : m_Failures->Lines()) {
        text += (text.empty() ? "" : "\n") + line;
    }
    if (!text.empty()) {
        throw NotAllRead(text);
    }
}
