#include "app/commands/Commands.h"
#include "app/settings/Palette.h"
#include "app/settings/SettingsFiles.h"
#include "app/settings/SettingsPage.h"
#include "app/tree/TreeView.h"
#include "app/window/TreeWindow.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/sources/Source.h"

#include <iostream>

namespace {

/// What is read by then is in the window's first picture.
constexpr std::chrono::milliseconds kPatience(50);

/// Keeps the settings of a control in a document while it is shown.
class KeptSettings {
public:
    /// Loads the document if it is there. Throws DocumentError, also when it could not be saved.
    KeptSettings(IUITree* control, const std::string& document)
        : m_Control(control), m_Document(document) {
        if (!m_Document.empty()) {
            m_IsThere = LoadIfThere(&LoadDocument, control, document);
            CheckDocument(document);
            m_Loaded = Values();
        }
    }

    /// Saves what a function has changed, also when that throws.
    template <class Function>
    void SaveAfter(Function function) const {
        try {
            function();
        } catch (...) {
            Save();
            throw;
        }
        Save();
    }

private:
    /// Only what was changed here is saved: the document may have been changed elsewhere.
    void Save() const {
        if (!m_Document.empty() && (!m_IsThere || m_Loaded != Values())) {
            SaveDocument(m_Control, m_Document);
        }
    }
    /// Without the scroll position, which changes all the time and is not kept.
    std::vector<std::string> Values() const {
        std::vector<std::string> values;
        for (const Setting& setting : SettingsPage(m_Control).List()) {
            if (setting.m_Parameter.m_Number != PROP_SCROLLPOS) {
                values.push_back(setting.m_Value);
            }
        }
        return values;
    }

    IUITree* m_Control;
    std::string m_Document; ///< "" for none
    bool m_IsThere = false;
    std::vector<std::string> m_Loaded;
};

} // namespace

void RunWindow(const WindowOptions& options) {
    const Size size = ParseSize(options.m_Size, options.m_Scale);
    const auto watch = std::make_shared<FolderWatch>();
    const auto reads = std::make_shared<BackgroundReads>(kPatience);
    const std::string path = AbsolutePath(options.m_Path);
    BackgroundReading reading(
        [&](ReadProgress& progress) { return ReadSource(path, options.m_Kind, &progress, watch); });
    const bool isRead = reading.WaitFor(kPatience);
    SourceMaker make = isRead ? reading.Take() : SourceMaker();
    TreeView view(watch, reads);
    if (isRead) {
        view.Show(std::move(make));
    }
    const KeptSettings settings(view.Control(), options.m_Document);
    ApplyTheme(view.Control(), options.m_Theme);
    std::ostream silence(nullptr);
    try {
        TreeWindow window({view, path == "-" ? "standard input" : path, *watch, *reads,
                              isRead ? nullptr : &reading},
            size, options.m_Record ? std::cout : silence);
        if (options.m_HasGuides) {
            window.ShowGuides();
        }
        settings.SaveAfter([&] { window.Run(); });
    } catch (const NoDisplay& error) {
        throw std::runtime_error(std::string("there is no display: ") + error.what() +
                                 "; to draw into a file: treehost shot PATH");
    }
    view.CheckAllRead();
}
