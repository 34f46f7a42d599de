#include "host/Host.h"

#include "framework/runtime/Components.h"
#include "host/components/Module.h"
#include "host/drawing/IconFile.h"
#include "host/drawing/RenderStyle.h"
#include "host/drawing/ScrollBar.h"
#include "host/drawing/TextRenderer.h"
#include "host/drawing/UIDefault.h"
#include "host/settings/PropertyPage.h"
#include "host/settings/RegistryFile.h"
#include "host/settings/StringTable.h"
#include "host/text/Text.h"

namespace {

void MoveTo(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::current_path(folder, error);
    if (error) {
        throw ModuleError(
            "cannot use the host's folder " + folder.string() + ": " + error.message());
    }
}

SmartPtr<IComponentCollection> ObtainRegistry(const std::filesystem::path& folder) {
    SmartPtr<IComponentCollection> registry;
    std::error_code error;
    if (!std::filesystem::exists(folder / "CollectionsEx.so", error)) {
        throw ModuleError("the host's module CollectionsEx.so is not in " + folder.string());
    }
    const CreatorFunction creator = MODULECreateFunction(Refer(std::wstring_view(L"CollectionsEx")),
        Refer(std::wstring_view(L"GlobalComponentCollection")));
    if (creator) {
        IID iid = IID_IComponentCollection;
        creator(nullptr, &iid, registry.ReceiveAny());
    }
    if (!registry) {
        throw ModuleError("the host's module CollectionsEx.so cannot be used");
    }
    return registry;
}

} // namespace

Host::Host(const std::filesystem::path& folder) {
    const std::filesystem::path absolute = std::filesystem::absolute(folder).lexically_normal();
    MoveTo(absolute);
    m_Components = ObtainRegistry(absolute);
    m_Registry = Query<IHostComponents>(m_Components.Get());
    if (!m_Registry) {
        throw ModuleError("the component registry is not the host's own");
    }
    SetGlobalComponents(m_Components.Get());

    Register(L"Registry", [absolute](const IID& iid, void** object) {
        return RegistryFile::Make(absolute)->QueryInterface(iid, object);
    });
    Register(L"CIFFileEx", &CreateInstanceOf<IconFile>);
    Register(L"UIDefault", &CreateInstanceOf<UIDefault>);
    Register(L"UIScrollBar", &CreateInstanceOf<ScrollBar>);
    Register(L"PMRenderStyle", &CreateInstanceOf<RenderStyle>);
    Register(L"PMRenderer", &CreateInstanceOf<TextRenderer>);
    Register(L"StringTable", &CreateInstanceOf<StringTable>);
    Register(L"UIPropPages.UIPropInterrogatePropPage", &CreateInstanceOf<PropertyPage>);
}

Host::~Host() {
    for (const wchar_t* name : m_Registered) {
        m_Registry->Unregister(Refer(std::wstring_view(name)));
    }
    SetGlobalComponents(nullptr);
}

void Host::Register(const wchar_t* name, Creator creator) {
    const auto description = CreatorDescription::Make(name, std::move(creator));
    m_Registered.push_back(name);
    m_Registry->Register(Refer(std::wstring_view(name)), description.Get());
}
