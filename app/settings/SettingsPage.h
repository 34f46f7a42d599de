#pragma once

#include "framework/runtime/SmartPtr.h"
#include "host/components/HostInterfaces.h"

#include <optional>
#include <string>
#include <vector>

/// A parameter as the settings page shows it. Texts are printable UTF-8.
struct Setting {
    HostParameter m_Parameter;
    std::string m_Name;
    std::string m_Value;
};

/// The settings page that a control names, with the control on it. Indices are those of List.
class SettingsPage {
public:
    /// Throws std::runtime_error when the control names no page, or one that the host does not
    /// have.
    explicit SettingsPage(IUnknown* control);

    int32_t Count() const;
    Setting At(int32_t index) const;
    std::vector<Setting> List() const;
    /// The index of the setting with that display name, case ignored, or with that number.
    std::optional<int32_t> Find(const std::string& nameOrNumber) const;

    /// What the setting takes, in words.
    std::string HintAt(int32_t index) const;
    bool Takes(int32_t index, tagREFString text) const { return m_Page->Test(index, text) >= 0; }
    /// False when the setting does not take the text.
    bool Edit(int32_t index, const std::string& text);
    int32_t Apply() { return m_Page->Apply(); }
    int32_t Cancel() { return m_Page->Cancel(); }

private:
    SmartPtr<IHostPropertyPage> m_Page;
};
