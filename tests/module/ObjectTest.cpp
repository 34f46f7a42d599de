#include "tests/support/Listener.h"
#include "tests/support/TreeTest.h"

#include "framework/Support.h"

#include <memory>

// The control as an object: its interfaces, its parent, its listeners.

namespace {

using ObjectTest = TreeTest;

/// Every identifier that the control answers.
const IID* const kAnswered[] = {&IID_IUnknown, &IID_IObjectInfo, &IID_IDataPersist,
    &IID_IEventSource, &IID_IParent, &IID_IRenderableObject, &IID_IUINodeContainer,
    &IID_IUIMouseInput, &IID_IUIPropInterrogate, &IID_IUIPropInterrogateEx,
    &IID_IUIPropertyPageSpecify, &IID_IUIRefreshableObject, &IID_IUITouchInput, &IID_IUITree,
    &IID__IUIRefreshEvent};

/// A listener that cannot hear refreshes.
class ContainerListener final : public HostObject<ContainerListener, _IUIContainerEvents> {
public:
    static constexpr const char* kKind = "ContainerListener";

    int32_t NodeSelect(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override {
        ++m_Selects;
        return S_OK;
    }
    int32_t NodeDrag(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }

    int m_Selects = 0;
};

} // namespace

TEST_F(ObjectTest, EveryInterfaceLeadsToOneIdentityAndBack) {
    SmartPtr<IUnknown> identity = As<IUnknown>();
    for (const IID* iid : kAnswered) {
        auto through = Adopt(static_cast<IUnknown*>(QueryObject(m_Tree.Get(), *iid)));
        ASSERT_TRUE(through);
        EXPECT_EQ(Query<IUnknown>(through.Get()).Get(), identity.Get());
        for (const IID* other : kAnswered) {
            auto direct = Adopt(static_cast<IUnknown*>(QueryObject(m_Tree.Get(), *other)));
            auto indirect = Adopt(static_cast<IUnknown*>(QueryObject(through.Get(), *other)));
            EXPECT_EQ(direct.Get(), indirect.Get());
        }
    }
    EXPECT_EQ(static_cast<void*>(As<IUITree>().Get()), As<IUINodeContainer>().Get());
    EXPECT_EQ(static_cast<void*>(As<IUIPropInterrogate>().Get()), As<IUIPropInterrogateEx>().Get());
}

TEST_F(ObjectTest, ParentIsHeldUntilItIsReplaced) {
    const auto parent = As<IParent>();
    SmartPtr<IUnknown> answer;
    EXPECT_EQ(parent->get_Parent(nullptr), E_POINTER);
    EXPECT_EQ(parent->get_Parent(answer.Receive()), E_FAIL);
    EXPECT_FALSE(answer);

    auto listener = Listener::Make();
    EXPECT_EQ(parent->put_Parent(listener->Identity()), S_OK);
    EXPECT_EQ(parent->put_Parent(listener->Identity()), S_OK);
    EXPECT_EQ(listener->AddRef(), 3);
    EXPECT_EQ(listener->Release(), 2);
    EXPECT_EQ(parent->get_Parent(answer.Receive()), S_OK);
    EXPECT_TRUE(answer == listener->Identity());
    answer.Reset();
    EXPECT_EQ(parent->put_Parent(nullptr), S_OK);
    EXPECT_EQ(listener->AddRef(), 2);
    EXPECT_EQ(listener->Release(), 1);
}

TEST_F(ObjectTest, AdviseTakesASinkOfEitherEventOnce) {
    const auto source = As<IEventSource>();
    const auto both = Listener::Make();
    const auto container = ContainerListener::Make();
    EXPECT_EQ(source->Advise(both->Identity(), 1), S_OK);
    EXPECT_EQ(source->Advise(both->Identity(), 1), S_OK);
    EXPECT_EQ(source->Advise(container->Identity(), 7), S_OK);
    EXPECT_EQ(source->Advise(container->Identity(), 7), S_FALSE);
    EXPECT_EQ(source->GetAdviseCount(), 2);
    SmartPtr<IUnknown> sink;
    int32_t flags = 0;
    EXPECT_EQ(source->GetAdviseItem(1, sink.Receive(), &flags), S_OK);
    EXPECT_TRUE(sink == container->Identity());
    EXPECT_EQ(flags, 7);

    Bind("A");
    m_Tree->SelectNode(0, SELECT_ABSOLUTE | SELECT_CURRENT);
    As<IUIRefreshableObject>()->Refresh(0);
    EXPECT_EQ(both->TakeNames(), "NodeSelect UIItemChanged");
    EXPECT_EQ(container->m_Selects, 1);

    EXPECT_EQ(source->Advise(container->Identity(), 0), S_OK);
    EXPECT_EQ(source->Advise(container->Identity(), 0), E_FAIL);
    EXPECT_EQ(source->Advise(nullptr, 1), E_POINTER);
    EXPECT_EQ(source->Advise(m_Root.Get(), 1), E_NOINTERFACE);
    EXPECT_EQ(source->Advise(nullptr, 0), S_OK);
    EXPECT_EQ(source->GetAdviseCount(), 0);
}

TEST_F(ObjectTest, ControlGivesEverythingBackWhenItGoesInUse) {
    Bind("A\n a1\nB");
    const auto listener = Listener::Make();
    const auto parent = Listener::Make();
    As<IEventSource>()->Advise(listener->Identity(), 1);
    As<IParent>()->put_Parent(parent->Identity());
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    CANVASRect rect = {0, 0, 100, 100};
    As<IUIMouseInput>()->Pointer(1, 3, 0, 5, 5, &rect, nullptr);
    listener->m_Events.clear();
    m_Tree.Reset();
    EXPECT_EQ(listener->AddRef(), 2);
    EXPECT_EQ(listener->Release(), 1);
    EXPECT_EQ(parent->AddRef(), 2);
    EXPECT_EQ(parent->Release(), 1);
    EXPECT_EQ(m_Root->AddRef(), 2);
    EXPECT_EQ(m_Root->Release(), 1);
}

TEST_F(ObjectTest, ListenerMayReleaseTheControlInTheMiddleOfAnEvent) {
    Bind("A\nB");
    const auto listener = Listener::Make();
    As<IEventSource>()->Advise(listener->Identity(), 1);
    listener->m_Reaction = [&](const Listener::Event&) { m_Tree.Reset(); };
    IUITree* tree = m_Tree.Get();
    EXPECT_EQ(tree->SelectNode(0, SELECT_ABSOLUTE | SELECT_CURRENT), S_OK);
    EXPECT_EQ(listener->TakeNames(), "NodeSelect");
    EXPECT_EQ(listener->AddRef(), 2) << "the control is gone, and its reference with it";
    listener->Release();
}

TEST_F(ObjectTest, ObjectThatDiesMayTakeTheControlAlong) {
    const auto makeMortal = [&] {
        const std::shared_ptr<void> last(this, [&](void*) { m_Tree.Reset(); });
        auto listener = Listener::Make();
        listener->m_Reaction = [last](const Listener::Event&) {};
        return listener;
    };
    auto* source = As<IEventSource>().Get();
    source->Advise(makeMortal()->Identity(), 1);
    SmartPtr<IUnknown> sink;
    source->GetAdviseItem(0, sink.Receive(), nullptr);
    IUnknown* connected = sink.Get();
    sink.Reset();
    EXPECT_EQ(source->Advise(connected, 0, IID__IUIRefreshEvent), S_OK);
    EXPECT_FALSE(m_Tree);

    SetUp();
    auto* properties = As<IUIPropInterrogateEx>().Get();
    properties->ControlEx(170, makeMortal()->Identity());
    EXPECT_EQ(properties->ControlEx(170, nullptr), S_OK);
    EXPECT_FALSE(m_Tree);
}

TEST_F(ObjectTest, ControlThatListensToItselfComesToRest) {
    const auto source = As<IEventSource>();
    EXPECT_EQ(source->Advise(m_Tree.Get(), 1), S_OK);
    Listen();
    As<IUIRefreshableObject>()->Refresh(0);
    EXPECT_FALSE(m_Listener->TakeNames().empty());
    source->Advise(nullptr, 0);
}
