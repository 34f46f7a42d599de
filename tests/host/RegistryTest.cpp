#include "framework/Components.h"
#include "host/Host.h"
#include "host/Module.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

namespace {

class RegistryTest : public HostTest {};

template <class T = IUnknown>
SmartPtr<T> Create(const Host& host, std::wstring_view name) {
    SmartPtr<T> object;
    host.Components()->CreateComponent(Refer(name), &IdentifierOf<T>(), object.ReceiveAny());
    return object;
}

} // namespace

TEST_F(RegistryTest, HostMakesEveryComponentThatTheControlAsksFor) {
    const Host host(BuildFolder());
    for (const wchar_t* name : {L"SuperCollection", L"CreatableString", L"Variant", L"Registry",
             L"ComponentString", L"CIFFileEx", L"UIDefault", L"UIScrollBar", L"PMRenderStyle",
             L"PMRenderer", L"StringTable", L"UIPropPages.UIPropInterrogatePropPage"}) {
        EXPECT_TRUE(Create(host, name)) << ToUtf8(Refer(std::wstring_view(name)));
    }
    EXPECT_FALSE(Create(host, L"Variants"));
    EXPECT_FALSE(Create<IString>(host, L"Variant"));
    EXPECT_THROW(Host("/nowhere/at/all"), ModuleError);
}

TEST_F(RegistryTest, RegistryIsOnePerProcessAndForgetsWhatAHostRegistered) {
    const auto creator =
        MODULECreateFunction(Refer(L"CollectionsEx"), Refer(L"GlobalComponentCollection"));
    IID iid = IID_IComponentCollection;
    SmartPtr<IComponentCollection> registry;
    creator(nullptr, &iid, registry.ReceiveAny());
    const auto fake = Variant::Make();
    SmartPtr<IVariant> made;
    {
        Host host(BuildFolder());
        EXPECT_TRUE(registry == host.Components());
        host.Register(L"UIScrollBar",
            [&](const IID& each, void** object) { return fake->QueryInterface(each, object); });
        EXPECT_TRUE(Create<IVariant>(host, L"UIScrollBar") == fake.Get()) << "replaced";
    }
    registry->CreateComponent(Refer(L"UIScrollBar"), &IID_IVariant, made.ReceiveAny());
    EXPECT_FALSE(made);
}
