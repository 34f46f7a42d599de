#include "tests/framework/FrameworkTest.h"

namespace {

/// Counts calls. It lives on the stack, so that it can be asked after its "death".
struct Counted final : IUnknown {
    int32_t QueryInterface(const IID& iid, void** object) override {
        *object = iid == IID_IUnknown ? this : nullptr;
        return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    int32_t AddRef() override { return ++m_AddRefs, ++m_Count; }
    int32_t Release() override { return --m_Count == 0 ? (++m_Deaths, m_OnDeath(), 0) : m_Count; }

    int m_AddRefs = 0, m_Deaths = 0;
    int m_Count = 1; ///< the test's own reference
    std::function<void()> m_OnDeath = [] {};
};

using Holder = SmartPtr<IUnknown>;

} // namespace

TEST(SmartPtr, EveryWayInAndOutCountsExactly) {
    // The holder is empty at first. AddRef's calls, and the references left when it is gone.
    const std::tuple<std::function<void(Counted&, Holder&)>, int, int> cases[] = {
        {[](Counted& object, Holder& holder) { holder = &object; }, 1, 1},
        {[](Counted& object, Holder&) { Holder first(&object), second(first); }, 2, 1},
        {[](Counted& object, Holder&) { (void)Holder(&object).Detach(); }, 1, 2},
        {[](Counted& object, Holder& holder) { *holder.Receive() = &object; }, 0, 0},
        // Assigning what is held keeps the object alive.
        {[](Counted& object, Holder& holder) { holder.Attach(&object), holder = &object; }, 1, 0},
        {[](Counted& object, Holder& holder) { holder.Attach(&object), holder = *&holder; }, 1, 0},
        {[](Counted& object, Holder&) { EXPECT_TRUE(IsSameObject(&object, &object)); }, 2, 1},
    };
    for (const auto& [use, addRefs, left] : cases) {
        Counted object;
        std::optional<Holder> holder(std::in_place);
        use(object, *holder);
        holder.reset();
        EXPECT_EQ(std::tuple(object.m_AddRefs, object.m_Count, object.m_Deaths),
            std::tuple(addRefs, left, left == 0 ? 1 : 0));
    }
}

TEST(SmartPtr, ObjectThatRefillsItsHolderWhileDyingLeavesNothingBehind) {
    Counted object, next, refill;
    {
        Holder holder = Adopt<IUnknown>(&object);
        object.m_OnDeath = [&] { holder = &refill; };
        holder = &next;
    }
    EXPECT_TRUE(refill.m_Count == 1 && next.m_Count == 1);
}

TEST(SmartPtr, WhatIsHeldIsGivenBackBeforeAnOutParameterIsFilled) {
    Counted first, second;
    Holder holder = Adopt<IUnknown>(&first);
    EXPECT_EQ((holder.ReceiveAny(), first.m_Count), 0);
    holder.Attach(&second);
    EXPECT_EQ((holder.Receive(), second.m_Count), 0);
}
