#include "tests/framework/FrameworkTest.h"

namespace {

/// Counts calls. It lives on the stack, so that it can be asked after its "death".
class Counted final : public IUnknown {
public:
    int32_t QueryInterface(const IID& iid, void** object) override {
        *object = iid == IID_IUnknown ? this : nullptr;
        return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    int32_t AddRef() override {
        ++m_AddRefs;
        return ++m_Count;
    }
    int32_t Release() override {
        if (--m_Count == 0 && m_OnDeath) {
            m_OnDeath();
        }
        return m_Count;
    }

    int m_AddRefs = 0;
    int m_Count = 1; ///< the test's own reference
    std::function<void()> m_OnDeath;
};

using Holder = SmartPtr<IUnknown>;

} // namespace

TEST(SmartPtr, EveryWayInAndOutCountsExactly) {
    const struct {
        std::function<void(Counted&, Holder&)> use; ///< the holder is empty at first
        int addRefs;
        int left; ///< references that are left when the holder is gone
    } cases[] = {
        {[](Counted& object, Holder& holder) { holder = &object; }, 1, 1},
        {[](Counted& object, Holder& holder) { holder = Holder(&object); }, 1, 1},
        {[](Counted& object, Holder&) { Holder first(&object), second(first); }, 2, 1},
        {[](Counted& object, Holder&) { (void)Holder(&object).Detach(); }, 1, 2},
        {[](Counted& object, Holder& holder) { holder.Attach(&object); }, 0, 0},
        {[](Counted& object, Holder& holder) { *holder.Receive() = &object; }, 0, 0},
        {[](Counted& object, Holder&) { EXPECT_FALSE(Query<IString>(&object)); }, 0, 1},
        {[](Counted& object, Holder&) { EXPECT_TRUE(IsSameObject(&object, &object)); }, 2, 1},
    };
    for (const auto& [use, addRefs, left] : cases) {
        Counted object;
        {
            Holder holder;
            use(object, holder);
        }
        EXPECT_EQ(object.m_AddRefs, addRefs);
        EXPECT_EQ(object.m_Count, left);
    }
}

TEST(SmartPtr, AssigningWhatIsHeldKeepsTheObject) {
    const std::function<void(Holder&, Holder&)> cases[] = {
        [](Holder& holder, Holder&) { holder = holder.Get(); },
        [](Holder& holder, Holder& self) { holder = self; },
        [](Holder& holder, Holder& self) { holder = std::move(self); },
    };
    for (const auto& assign : cases) {
        Counted object;
        Holder holder = Adopt<IUnknown>(&object); // the only reference
        object.m_OnDeath = [] { ADD_FAILURE() << "died"; };
        assign(holder, holder);
        EXPECT_EQ(object.m_Count, 1);
        EXPECT_EQ(holder.Detach(), &object);
    }
}

TEST(SmartPtr, ObjectThatRefillsItsHolderWhileDyingLeavesNothingBehind) {
    const std::function<void(Holder&, Counted&)> cases[] = {
        [](Holder& holder, Counted&) { holder.Reset(); },
        [](Holder& holder, Counted&) { EXPECT_FALSE(*holder.Receive()); },
        [](Holder& holder, Counted& next) { holder = &next; },
        [](Holder& holder, Counted& next) { holder = Holder(&next); },
    };
    for (const auto& drop : cases) {
        Counted object, next, refill;
        {
            Holder holder = Adopt<IUnknown>(&object);
            object.m_OnDeath = [&] {
                EXPECT_FALSE(holder) << "still shows the dying object";
                holder = &refill;
            };
            drop(holder, next);
            EXPECT_EQ(refill.m_Count, 1);
            EXPECT_EQ(next.m_Count, holder ? 2 : 1);
        }
        EXPECT_EQ(next.m_Count, 1);
    }
}

TEST(SmartPtr, ComparisonTellsObjectsApart) {
    const auto thing = Thing::Make();
    EXPECT_TRUE(thing == thing.Get());
    EXPECT_FALSE(thing == Thing::Make().Get());
    EXPECT_FALSE(thing == nullptr);
    EXPECT_TRUE(SmartPtr<Thing>() == nullptr);
    EXPECT_FALSE(SmartPtr<Thing>() == thing.Get());
}
