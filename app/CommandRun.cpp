#include "app/Commands.h"
#include "app/SettingsFiles.h"
#include "app/TreeView.h"
#include "app/TreeWindow.h"

#include <iostream>

void RunWindow(const WindowOptions& options) {
    const Size size = ParseSize(options.m_Size);
    const TreeView view(options.m_Path, 0);
    if (!options.m_Document.empty()) {
        LoadIfThere(&LoadDocument, view.Control(), options.m_Document);
    }
    std::ostream silence(nullptr);
    try {
        TreeWindow window(view.Control(), "treehost " + options.m_Path, size,
            options.m_Record ? std::cout : silence);
        window.Run();
    } catch (const NoDisplay& error) {
        throw std::runtime_error(std::string("there is no display: ") + error.what() +
                                 "; to draw into a file: treehost shot PATH");
    }
    if (!options.m_Document.empty()) {
        SaveDocument(view.Control(), options.m_Document);
    }
}
