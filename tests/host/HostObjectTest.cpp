#include "framework/runtime/Components.h"
#include "host/components/CreatableString.h"
#include "host/components/LiveObjects.h"
#include "host/components/Variant.h"
#include "tests/support/TreeTest.h"

// The host's objects and the registry that makes them.

using HostObjectTest = TreeTest;

TEST_F(HostObjectTest, InterfacesShareIdentityAndCountAndTheLivingAreCounted) {
    const auto object = CreatableString::Make(L"");
    const auto text = Query<IString>(object->Identity());
    EXPECT_EQ(Query<IUnknown>(text.Get()).Get(), object->Identity());
    void* answer = text.Get();
    EXPECT_EQ(object->QueryInterface(IID_IVariant, &answer), E_NOINTERFACE);
    EXPECT_EQ(answer, nullptr);
    auto first = Variant::Make();
    const auto second = Variant::Make();
    EXPECT_EQ(LiveObjects()["Variant"], 2);
    first.Reset();
    EXPECT_EQ(LiveObjects()["Variant"], 1);
}

TEST_F(HostObjectTest, RegistryForgetsWhatAHostRegistered) {
    const auto fake = Variant::Make();
    m_Host->Register(
        L"Fake", [&](const IID& iid, void** object) { return fake->QueryInterface(iid, object); });
    EXPECT_TRUE(CreateHostObject<IVariant>("Fake") == fake.Get());
    EXPECT_FALSE(CreateHostObject<IString>("Fake"));
    m_Host.reset();
    m_Host.emplace(".");
    EXPECT_FALSE(CreateHostObject<IVariant>("Fake"));
    EXPECT_THROW(Host("/nowhere/at/all"), ModuleError);
}
