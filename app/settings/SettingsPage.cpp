#include "app/settings/SettingsPage.h"

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/runtime/Components.h"
#include "framework/support/REFString.h"
#include "host/text/Numbers.h"
#include "host/text/Text.h"

#include <stdexcept>

namespace {

/// The component name of the first page that the control lists; null when it lists none.
SmartPtr<IString> PageName(IUnknown* control) {
    constexpr int32_t kComponent = 1; // of the texts of an entry
    SmartPtr<ISuperCollection> list;
    if (const auto pages = Query<IUIPropertyPageSpecify>(control)) {
        // The list travels as its ISuperCollection interface, whatever the pointer type says.
        pages->GetPages(0, reinterpret_cast<INamedCollection**>(list.Receive()), nullptr);
    }
    SmartPtr<IUnknown> first;
    if (list) {
        list->GetItem(0, first.Receive());
    }
    SmartPtr<IString> name;
    if (const auto entry = Query<IHostEntry>(first.Get())) {
        entry->GetText(kComponent, name.Receive());
    }
    return name;
}

} // namespace

SettingsPage::SettingsPage(IUnknown* control) {
    const auto name = PageName(control);
    const tagREFString text = CREFString(name.Get());
    const IID& iid = IdentifierOf<IHostPropertyPage>();
    m_Page.Attach(name ? static_cast<IHostPropertyPage*>(CreateObject(text, &iid)) : nullptr);
    if (!m_Page || m_Page->SetObject(control) < 0) {
        throw std::runtime_error(
            "the control has no settings page" + (name ? " " + ToPrintable(text) : ""));
    }
}

int32_t SettingsPage::Count() const {
    int32_t count = 0;
    m_Page->GetCount(&count);
    return count;
}

Setting SettingsPage::At(int32_t index) const {
    Setting setting{};
    SmartPtr<IString> name;
    SmartPtr<IString> value;
    m_Page->GetParameter(index, &setting.m_Parameter);
    m_Page->GetName(index, name.Receive());
    m_Page->GetText(index, value.Receive());
    setting.m_Name = ToPrintable(CREFString(name.Get()));
    setting.m_Value = ToPrintable(CREFString(value.Get()));
    return setting;
}

std::string SettingsPage::HintAt(int32_t index) const {
    SmartPtr<IString> hint;
    m_Page->GetHint(index, hint.Receive());
    return ToPrintable(CREFString(hint.Get()));
}

std::vector<Setting> SettingsPage::List() const {
    std::vector<Setting> settings;
    settings.reserve(static_cast<size_t>(Count()));
    for (int32_t i = 0; i < Count(); ++i) {
        settings.push_back(At(i));
    }
    return settings;
}

std::optional<int32_t> SettingsPage::Find(const std::string& nameOrNumber) const {
    const std::wstring wanted = ToWide(nameOrNumber);
    const auto number = ReadInteger(nameOrNumber);
    std::optional<int32_t> numbered;
    for (int32_t i = 0; i < Count(); ++i) {
        const Setting setting = At(i);
        if (IsEqualIgnoringCase(Refer(ToWide(setting.m_Name)), Refer(wanted))) {
            return i;
        }
        if (setting.m_Parameter.m_Number == number) {
            numbered = i;
        }
    }
    return numbered;
}

bool SettingsPage::Edit(int32_t index, const std::string& text) {
    return m_Page->SetText(index, Refer(ToWide(text))) >= 0;
}
