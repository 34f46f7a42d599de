#include "app/Commands.h"
#include "app/SettingsPage.h"
#include "app/TreeView.h"

#include <iomanip>
#include <iostream>

namespace {

/// Takes NAME=VALUE; the value may be empty and may contain further '='.
void Edit(SettingsPage& page, const std::string& assignment) {
    const size_t length = assignment.find('=');
    if (length == std::string::npos) {
        throw UsageError("--set: not NAME=VALUE: " + assignment);
    }
    const std::string name = assignment.substr(0, length);
    const std::string value = assignment.substr(length + 1);
    const auto index = page.Find(name);
    if (!index) {
        throw UsageError("--set: there is no setting " + name);
    }
    if (!page.Edit(*index, value)) {
        throw UsageError("--set: " + page.At(*index).m_Name + " does not take " + value);
    }
}

/// All of the assignments or none.
void ChangeSettings(SettingsPage& page, const std::vector<std::string>& assignments) {
    for (const std::string& assignment : assignments) {
        Edit(page, assignment);
    }
    if (page.Apply() < 0) {
        page.Cancel();
        throw std::runtime_error("the control does not take the settings");
    }
}

void PrintSettings(const SettingsPage& page) {
    for (const auto& [parameter, name, value] : page.List()) {
        std::cout << std::left << std::setw(6) << parameter.m_Number << std::setw(22) << name << ' '
                  << value << '\n';
    }
}

} // namespace

void RunSettings(const SettingsOptions& options) {
    const ControlHost host;
    const auto tree = host.CreateTree();
    SettingsPage page(tree.Get());
    ChangeSettings(page, options.m_Set);
    if (options.m_List || options.m_Set.empty()) {
        PrintSettings(page);
    }
}
