#include "app/view/TreeView.h"

#include "host/data/Expansion.h"
#include "host/data/Source.h"
#include "host/data/SuperCollection.h"

#include <filesystem>
#include <stdexcept>

namespace {

std::string Absolute(const std::string& path) {
    return path == "-" || path.empty() ? path : std::filesystem::absolute(path).string();
}

} // namespace

ControlHost::ControlHost() : ControlHost(FindInstallation()) {}

ControlHost::ControlHost(const Installation& installation)
    : m_Host(installation.m_Host), m_Module(installation.m_Module, m_Host.Components()) {}

SmartPtr<IUITree> ControlHost::CreateTree() const {
    auto tree = m_Module.Create<IUITree>(L"UITree");
    tree->put_Collection(SuperCollection::Make()->Identity());
    return tree;
}

TreeView::TreeView(const std::string& path, int32_t depth)
    : m_Source(OpenSource(Absolute(path), m_Failures)), m_Tree(m_Host.CreateTree()) {
    if (m_Tree->put_Collection(m_Source.Get()) < 0) {
        throw std::runtime_error("the control does not take the tree");
    }
    OpenLevels(m_Source.Get(), depth);
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
