#include "host/HostObject.h"
#include "framework/Interfaces.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

namespace {

class HostObjectTest : public HostTest {};

/// Two unrelated interfaces, one of which extends another.
class Combined final : public HostObject<Combined, IVariant, ICreatableString> {
public:
    static constexpr const char* kKind = "Combined";

    double GetDouble() override { return 0; }
    int32_t SetLong(int32_t) override { return S_OK; }
    int32_t SetDouble(double) override { return S_OK; }
    int32_t GetString(wchar_t**, int32_t*) override { return E_FAIL; }
    int32_t SetString(tagREFString) override { return S_OK; }
    int32_t AppendString(tagREFString) override { return S_OK; }
};

/// Hands its own reference around while it dies.
class LooksBack final : public HostObject<LooksBack, IUnknown> {
public:
    static constexpr const char* kKind = "LooksBack";

    explicit LooksBack(int& destroyed) : m_Destroyed(destroyed) {}
    ~LooksBack() {
        ++m_Destroyed;
        const SmartPtr<LooksBack> shared(this);
    }

private:
    int& m_Destroyed;
};

} // namespace

TEST_F(HostObjectTest, EveryInterface_HasTheSameIdentityAndCount) {
    const auto object = Combined::Make();
    const auto variant = Query<IVariant>(object->Identity());
    const auto creatable = Query<ICreatableString>(variant.Get());
    const auto text = Query<IString>(variant.Get());
    ASSERT_TRUE(variant && creatable && text);
    EXPECT_EQ(static_cast<void*>(creatable.Get()), static_cast<void*>(text.Get()));
    EXPECT_EQ(Query<IUnknown>(variant.Get()).Get(), Query<IUnknown>(text.Get()).Get());
    EXPECT_EQ(object->AddRef(), 5);
    EXPECT_EQ(object->Release(), 4);
}

TEST_F(HostObjectTest, UnknownInterface_NullsTheOutPointerAndAddsNoReference) {
    const auto object = Variant::Make();
    void* answer = object.Get();
    EXPECT_EQ(object->QueryInterface(IID_IString, &answer), E_NOINTERFACE);
    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IVariant, nullptr), E_POINTER);
    EXPECT_EQ(object->AddRef(), 2);
    EXPECT_EQ(object->Release(), 1);
}

TEST_F(HostObjectTest, LivingObjects_AreCountedByKindUntilTheyDie) {
    {
        const auto first = Variant::Make();
        const auto second = Variant::Make();
        const auto other = Combined::Make();
        EXPECT_EQ(LiveObjects(), (LiveCounts{{"Variant", 2}, {"Combined", 1}}));
    }
    EXPECT_EQ(LiveObjects(), LiveCounts{});
}

TEST_F(HostObjectTest, ReferenceTakenWhileDying_DoesNotDestroyTwice) {
    int destroyed = 0;
    LooksBack::Make(destroyed).Reset();
    EXPECT_EQ(destroyed, 1);
}
