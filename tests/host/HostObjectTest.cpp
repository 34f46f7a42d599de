#include "host/HostObject.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

using HostObjectTest = HostTest;

TEST_F(HostObjectTest, EveryInterfaceSharesIdentityAndCountAndOthersAreRefused) {
    const auto object = CreatableString::Make(L"");
    const auto text = Query<IString>(object->Identity());
    EXPECT_EQ(Query<IUnknown>(text.Get()).Get(), object->Identity());
    void* answer = text.Get();
    EXPECT_EQ(object->QueryInterface(IID_IVariant, &answer), E_NOINTERFACE);
    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IString, nullptr), E_POINTER);
    EXPECT_EQ(object->AddRef(), 3);
    EXPECT_EQ(object->Release(), 2);
}

TEST_F(HostObjectTest, LivingObjectsAreCountedByKindUntilTheyDie) {
    auto first = Variant::Make();
    const auto second = Variant::Make();
    EXPECT_EQ(LiveObjects()["Variant"], 2);
    first.Reset();
    EXPECT_EQ(LiveObjects()["Variant"], 1);
}
