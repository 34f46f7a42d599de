#include "app/tree/TreeView.h"

#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"

TreeView::TreeView(const std::string& path, int32_t depth, SourceKind kind, ReadProgress* progress)
    : m_Source(OpenSource(AbsolutePath(path), kind, {m_Failures}, progress)),
      m_Tree(m_Host.CreateTree()) {
    Bind();
    OpenLevels(m_Source.Get(), depth);
}

TreeView::TreeView(FolderWatchPtr watch, BackgroundReadsPtr reads)
    : m_Watch(std::move(watch)), m_Reads(std::move(reads)), m_Tree(m_Host.CreateTree()) {}

/// The default sizes came with the empty tree, and may have been changed since.
void TreeView::Show(SourceMaker make) {
    m_Source = std::move(make)({m_Failures, m_Watch, m_Reads});
    int32_t usesDefaults = 0;
    m_Tree->Inquire(PROP_USEDEFAULTSTYLE, &usesDefaults);
    m_Tree->Control(PROP_USEDEFAULTSTYLE, 0);
    Bind();
    m_Tree->Control(PROP_USEDEFAULTSTYLE, usesDefaults);
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
