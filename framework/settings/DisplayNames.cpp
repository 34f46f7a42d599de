#include "framework/settings/DisplayNames.h"

#include "framework/runtime/Components.h"
#include "framework/support/HostStrings.h"

namespace {

SmartPtr<IString> ComponentName(IUnknown* object) {
    SmartPtr<IString> name;
    if (const auto description = CreateHostObject<IComponentString>("ComponentString")) {
        description->SetObject(object);
        description->GetPart(COMPONENTPART_NAME, name.Receive());
    }
    return name;
}

} // namespace

DisplayNames::DisplayNames(INamedCollection* strings, IUnknown* object) : m_Strings(strings) {
    if (m_Strings) {
        return;
    }
    const auto name = ComponentName(object);
    if (const auto tables = CreateHostObject<IStringTable>("StringTable")) {
        tables->GetTable(name.Get(), m_Strings.Receive());
    }
}

SmartPtr<IString> DisplayNames::FindByText(int32_t id) const {
    const auto text = Adopt(ISCreate(id));
    int32_t index = 0;
    const bool isFound = m_Strings && text && m_Strings->FindItem(text.Get(), &index) >= 0;
    return isFound ? FindByNumber(index) : SmartPtr<IString>();
}

SmartPtr<IString> DisplayNames::FindByNumber(int32_t id) const {
    SmartPtr<IUnknown> entry;
    if (m_Strings) {
        m_Strings->GetItem(id, entry.Receive());
    }
    return Query<IString>(entry.Get());
}
