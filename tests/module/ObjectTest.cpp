#include "host/data/Expansion.h"
#include "tests/support/TreeTest.h"

#include <memory>

// The control as an object: its interfaces, its parent, its listeners.

using ObjectTest = TreeTest;

namespace {

/// Connects another one of its kind when it goes, as often as it is let.
class Returning final : public HostObject<Returning, _IUIContainerEvents> {
public:
    static constexpr const char* kKind = "Returning";

    Returning(IEventSource* source, int& connected) : m_Source(source), m_Connected(connected) {}
    ~Returning() {
        EXPECT_TRUE(Query<IUITree>(m_Source)) << "what it listened to is still whole";
        if (m_IsConnected && m_Connected < 100) {
            Make(m_Source, m_Connected)->Connect();
        }
    }
    void Connect() {
        m_IsConnected = m_Source->Advise(this, 1) == S_OK;
        m_Connected += m_IsConnected ? 1 : 0;
    }
    int32_t NodeSelect(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }
    int32_t NodeDrag(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }

private:
    IEventSource* m_Source;
    int& m_Connected;
    bool m_IsConnected = false;
};

/// Does something when it goes.
SmartPtr<Listener> MakeMortal(const std::function<void()>& last) {
    const std::shared_ptr<void> guard(nullptr, [last](void*) { last(); });
    auto listener = Listener::Make();
    listener->m_Reaction = [guard](const Listener::Event&) {};
    return listener;
}

} // namespace

TEST_F(ObjectTest, AdviseTakesASinkOfEitherEventOnce) {
    const auto source = As<IEventSource>();
    const auto both = Listener::Make();
    const auto container = ListenerTo<_IUIContainerEvents>::Make();
    EXPECT_EQ(source->Advise(both->Identity(), 1), S_OK);
    EXPECT_EQ(source->Advise(container->Identity(), 7), S_OK);
    EXPECT_EQ(source->GetAdviseCount(), 2);

    Bind("A");
    m_Tree->SelectNode(0, SELECT_ABSOLUTE | SELECT_CURRENT);
    EXPECT_EQ(As<IUIRefreshableObject>()->Refresh(7), S_OK);
    EXPECT_EQ(As<_IUIRefreshEvent>()->UIItemChanged(m_Root.Get(), 9), S_OK);
    ASSERT_EQ(both->m_Events.size(), 3U);
    for (size_t i : {1, 2}) {
        EXPECT_EQ(both->m_Events[i].text, "UIItemChanged 0");
        EXPECT_EQ(both->m_Events[i].source, As<IUnknown>().Get());
    }
    EXPECT_EQ(container->m_Events.size(), 1U) << "it cannot hear refreshes";

    EXPECT_EQ(source->Advise(m_Root.Get(), 1), E_NOINTERFACE);
    EXPECT_EQ(source->Advise(nullptr, 1), E_POINTER);
    EXPECT_EQ(source->Advise(nullptr, 0), S_OK);
    EXPECT_EQ(source->GetAdviseCount(), 0);
}

TEST_F(ObjectTest, ControlGivesEverythingBackWhenItGoesInUse) {
    SmartPtr<IUnknown> answer;
    EXPECT_EQ(As<IParent>()->get_Parent(answer.Receive()), E_FAIL);
    EXPECT_EQ(As<IParent>()->get_Parent(nullptr), E_POINTER);
    const auto parent = Listener::Make();
    EXPECT_EQ(As<IParent>()->put_Parent(parent->Identity()), S_OK);
    EXPECT_EQ(As<IParent>()->get_Parent(answer.Receive()), S_OK);
    EXPECT_TRUE(answer == parent->Identity());
    answer.Reset();
    Bind("A\n a1\nB");
    Listen();
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    Pointer(1, 3, 0, 5, 20);
    m_Listener->m_Events.clear();
    const auto pressed = Item("B");
    m_Tree.Reset();
    EXPECT_EQ(References(parent->Identity()), 1);
    EXPECT_EQ(References(m_Listener->Identity()), 1);
    EXPECT_EQ(References(m_Root.Get()), 1);
    EXPECT_EQ(References(pressed.Get()), 2) << "the collection's and the test's";
}

TEST_F(ObjectTest, ItemIsHeldFromThePressToTheRelease) {
    Bind("A");
    const auto item = Item("A");
    const int before = References(item.Get());
    Pointer(1, 3, 0, 5, 5);
    EXPECT_EQ(References(item.Get()), before + 1);
    Pointer(1, 2, 1, 5, 5);
    EXPECT_EQ(References(item.Get()), before);
}

TEST_F(ObjectTest, ControlGivesBackLastFirst) {
    std::string log;
    const auto makeMortal = [&](const char* name) {
        return MakeMortal([&log, name] { log += std::string(name) + ' '; });
    };
    BindItems({{"A", makeMortal("pressed")->Identity()}, {"B", makeMortal("data")->Identity()}});
    Pointer(1, 3, 0, 5, 5);
    m_Tree->Clear();
    m_Root.Reset();
    {
        const auto bound = SuperCollection::Make();
        bound->Append("C", makeMortal("collection")->Identity());
        const auto branch = SuperCollection::Make();
        branch->Append("D", makeMortal("selected")->Identity());
        bound->Append("S", branch->Identity());
        m_Tree->put_Collection(bound->Identity());
        OpenLevels(bound.Get(), 1);
        m_Tree->SelectNode(2, SELECT_ABSOLUTE | SELECT_CURRENT);
    }
    As<IParent>()->put_Parent(makeMortal("parent")->Identity());
    As<IUIPropInterrogateEx>()->ControlEx(170, makeMortal("open")->Identity());
    As<IUIPropInterrogateEx>()->ControlEx(171, makeMortal("closed")->Identity());
    const auto logHelpers = [&log](const char* name) {
        return MakeMortal([&log, name] {
            log += name;
            for (const char* kind : {"TextRenderer", "RenderStyle", "ScrollBar"}) {
                log += ' ' + std::to_string(LiveObjects()[kind]);
            }
        });
    };
    As<IEventSource>()->Advise(logHelpers("listener")->Identity(), 1);
    m_Tree.Reset();
    EXPECT_EQ(log, "data collection pressed selected closed open parent listener 0 0 0")
        << "its helpers are gone";
}

TEST_F(ObjectTest, ObjectThatDiesMayTakeTheControlAlong) {
    const auto releaseTheControl = [&] { m_Tree.Reset(); };
    auto* source = As<IEventSource>().Get();
    IUnknown* connected = nullptr;
    {
        const auto listener = MakeMortal(releaseTheControl);
        connected = listener->Identity();
        source->Advise(connected, 1);
    }
    EXPECT_EQ(source->Advise(connected, 0, IID__IUIRefreshEvent), S_OK);
    EXPECT_FALSE(m_Tree);

    SetUp();
    auto* properties = As<IUIPropInterrogateEx>().Get();
    properties->ControlEx(170, MakeMortal(releaseTheControl)->Identity());
    EXPECT_EQ(properties->ControlEx(170, nullptr), S_OK);
    EXPECT_FALSE(m_Tree);

    SetUp();
    properties = As<IUIPropInterrogateEx>().Get();
    const auto lookForIcon = [&] {
        SmartPtr<IUnknown> icon;
        EXPECT_EQ(properties->InquireEx(170, icon.Receive()) & PROPTYPE_MASK, PROPTYPE_OBJECT);
        EXPECT_FALSE(icon) << "the one that goes leaves its place before the next one comes";
    };
    properties->ControlEx(170, MakeMortal(lookForIcon)->Identity());
    EXPECT_EQ(properties->ControlEx(170, Listener::Make()->Identity()), S_OK);

    const auto touchTheControl = [dying = m_Tree.Get()] { SmartPtr<IUITree>(dying).Reset(); };
    As<IUIPropInterrogateEx>()->ControlEx(170, MakeMortal(touchTheControl)->Identity());
    m_Tree.Reset();
}

TEST_F(ObjectTest, ControlThatListensToItselfComesToRest) {
    EXPECT_EQ(As<IEventSource>()->Advise(m_Tree.Get(), 1), S_OK);
    Listen();
    for (int turn = 0; turn < 2; ++turn) {
        m_Listener->m_Events.clear();
        As<IUIRefreshableObject>()->Refresh(0);
        EXPECT_EQ(m_Listener->m_Events.size(), 1 + 64U) << "the change, and those within";
    }
    As<IEventSource>()->Advise(nullptr, 0);
}

TEST_F(ObjectTest, ListenersThatMultiplyChangesComeToRest) {
    As<IEventSource>()->Advise(m_Tree.Get(), 1);
    Listen();
    int heard = 0;
    m_Listener->m_Reaction = [&](const Listener::Event&) {
        ++heard;
        m_Listener->m_Events.clear();
        As<_IUIRefreshEvent>()->UIItemChanged(nullptr, 0);
    };
    As<IUIRefreshableObject>()->Refresh(0);
    EXPECT_GT(heard, 64);
    EXPECT_LT(heard, 20'000);
    As<IEventSource>()->Advise(nullptr, 0);
}

TEST_F(ObjectTest, SinkThatReturnsWhileTheControlDiesIsRefused) {
    int connected = 0;
    Returning::Make(As<IEventSource>().Get(), connected)->Connect();
    m_Tree.Reset();
    EXPECT_EQ(connected, 1);
}
