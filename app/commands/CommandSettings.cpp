#include "app/commands/Commands.h"
#include "app/installation/ControlHost.h"
#include "app/settings/SettingsFiles.h"
#include "app/settings/SettingsPage.h"

#include <filesystem>
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
        throw UsageError("--set: " + page.At(*index).m_Name + " takes " + page.HintAt(*index) +
                         ", not \"" + value + '"');
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
    std::string m_Name; ///< "" for none
    void (*m_Load)(IUnknown* control, const std::string& file);
    void (*m_Save)(IUnknown* control, const std::string& file);
};

/// The files that settings come from and go to. Of those that are there the last one counts.
class ChosenFiles {
public:
    ChosenFiles(const std::string& xml, const std::string& document)
        : m_Files{{xml, &LoadXml, &SaveXml}, {document, &LoadDocument, &SaveDocument}} {
        const auto place = [](const std::string& name) {
            return std::filesystem::weakly_canonical(name);
        };
        if (!xml.empty() && !document.empty() && place(xml) == place(document)) {
            throw UsageError("--document and --xml are the same file " + xml);
        }
    }

    /// The earlier ones are loaded too, to see that they may be replaced. False when none is there.
    bool Load(IUnknown* control) {
        for (const SettingsFile& file : m_Files) {
            if (!file.m_Name.empty() && LoadIfThere(file.m_Load, control, file.m_Name)) {
                m_Source = &file;
            }
        }
        return m_Source != nullptr;
    }
    /// Where nothing was changed the file that counts stays as it is.
    void Save(IUnknown* control, bool isChanged) const {
        for (const SettingsFile& file : m_Files) {
            if (!file.m_Name.empty() && (isChanged || &file != m_Source)) {
                file.m_Save(control, file.m_Name);
            }
        }
    }

private:
    std::vector<SettingsFile> m_Files;
    const SettingsFile* m_Source = nullptr;
};

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
    ChosenFiles files(options.m_Xml, options.m_Document);
    const bool areNamed = !options.m_Xml.empty() || !options.m_Document.empty();
    const bool isChanged = !options.m_Set.empty();
    const bool isLoaded = files.Load(tree.Get());
    if (!isLoaded && !isChanged && areNamed) {
        throw UsageError("there is no file " +
                         (options.m_Document.empty() ? options.m_Xml : options.m_Document));
    }
    SettingsPage page(tree.Get());
    ChangeSettings(page, options.m_Set);
    files.Save(tree.Get(), isChanged);
    if (options.m_List || !isChanged || !areNamed) {
        PrintSettings(page);
    }
}
