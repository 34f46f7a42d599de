#include "app/Commands.h"
#include "app/SettingsFiles.h"
#include "app/SettingsPage.h"
#include "app/TreeView.h"

#include <array>
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

struct SettingsFile {
    const std::string& m_Name; ///< "" for none
    void (*m_Load)(IUnknown* control, const std::string& file);
    void (*m_Save)(IUnknown* control, const std::string& file);
    bool m_IsThere = false;
};
using SettingsFiles = std::array<SettingsFile, 2>;

void LoadFiles(SettingsFiles& files, IUnknown* control) {
    for (SettingsFile& file : files) {
        file.m_IsThere = !file.m_Name.empty() && LoadIfThere(file.m_Load, control, file.m_Name);
    }
}

/// Somebody who only asks for the settings in a file wants one that is there.
void RequireOne(const SettingsFiles& files) {
    bool isThere = false;
    const std::string* missing = nullptr;
    for (const SettingsFile& file : files) {
        isThere |= file.m_IsThere;
        missing = file.m_Name.empty() ? missing : &file.m_Name;
    }
    if (missing && !isThere) {
        throw UsageError("there is no file " + *missing);
    }
}

void SaveFiles(const SettingsFiles& files, IUnknown* control, bool isChanged) {
    for (const SettingsFile& file : files) {
        if (!file.m_Name.empty() && (isChanged || !file.m_IsThere)) {
            file.m_Save(control, file.m_Name);
        }
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
    SettingsFiles files{
        {{options.m_Document, &LoadDocument, &SaveDocument}, {options.m_Xml, &LoadXml, &SaveXml}}};
    const bool isChanged = !options.m_Set.empty();
    LoadFiles(files, tree.Get());
    if (!isChanged) {
        RequireOne(files);
    }
    SettingsPage page(tree.Get());
    ChangeSettings(page, options.m_Set);
    SaveFiles(files, tree.Get(), isChanged);
    if (options.m_List || !isChanged) {
        PrintSettings(page);
    }
}
