#include "app/installation/ControlHost.h"

#include "framework/support/FileNames.h"
#include "framework/support/REFString.h"
#include "host/data/SuperCollection.h"
#include "host/text/Text.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

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

} // namespace

ControlHost::ControlHost() : ControlHost(FindInstallation()) {}

ControlHost::ControlHost(const Installation& installation)
    : m_Host(installation.m_Host), m_Module(installation.m_Module, m_Host.Components()) {
    WarnOfMissing("_icons/UITreeOpen.png", "nothing shows that a folder is open");
    WarnOfMissing("_icons/UITreeClosed.png", "nothing shows that a folder is closed");
    WarnOfMissing("_strings/UITree.ini", "settings have numbers for names");
}

SmartPtr<IUITree> ControlHost::CreateTree() const {
    auto tree = m_Module.Create<IUITree>(L"UITree");
    tree->put_Collection(SuperCollection::Make()->Identity());
    return tree;
}

std::string AbsolutePath(const std::string& path) {
    if (path == "-" || path.empty()) {
        return path;
    }
    auto absolute = std::filesystem::absolute(path);
    if (std::find(absolute.begin(), absolute.end(), "..") == absolute.end()) {
        absolute = absolute.lexically_normal(); // a step back may lead out of a link
    }
    return (absolute.has_filename() ? absolute : absolute.parent_path()).string();
}
