#include "tests/support/TreeTest.h"

#include <memory>

// What a listener does while it is called must not harm the control: every event, times everything
// that a listener may do.

namespace {

/// Heights on rows of the tree: an open branch, and two leaves.
constexpr double kBranch = 5;
constexpr double kLeaf = 25;
constexpr double kOtherLeaf = 45;

class ReentryTest : public TreeTest {
protected:
    void SetUp() override {}
    void Advise(IUnknown* listener, int flags) { As<IEventSource>()->Advise(listener, flags); }
    void Send(int state, int action, double y, int keys = 0) {
        Pointer(state, action, keys, 50, y);
    }

    /// Lets the first of two listeners react to the first such event that `trigger` brings about.
    void Try(const char* event, const std::function<void()>& trigger,
        const std::function<void()>& reaction) {
        TreeTest::SetUp();
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, 10);
        Bind("A\n a1\n a2\nB\nC");
        Open("A");
        m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
        m_Clock.Advance(10'000'000);
        Send(1, 2, kLeaf); // a click to pair with
        Listen();
        m_Second = Listener::Make();
        Advise(m_Second->Identity(), 1);
        int heard = 0;
        const auto first = m_Listener; // outlives its connection
        first->m_Reaction = [&](const Listener::Event& noted) {
            if (noted.text.starts_with(event) && heard++ == 0) {
                reaction();
            }
        };
        trigger();
        first->m_Reaction = nullptr;
        EXPECT_GE(heard, 1) << "the event was not fired";
        m_Clock.Advance(10'000'000);
        if (m_Tree) {
            m_Tree->SetElementSize(0, 10);
            EXPECT_GE(RowCount(), 0);
            Send(1, 3, kBranch);
            Send(1, 2, kBranch);
            m_Tree.Reset();
        }
        EXPECT_EQ(References(m_Second->Identity()), 1) << "the control is gone, and holds nobody";
        m_Second.Reset();
    }

    SmartPtr<Listener> m_Second;
};

} // namespace

TEST_F(ReentryTest, ListenerMayDoAnythingWhileItIsCalled) {
    const struct {
        const char *name, *event;
        std::function<void()> run;
    } triggers[] = {
        {"select", "NodeSelect", [&] { m_Tree.Get()->SelectNode(0, 3); }},
        {"click", "NodeSelect", [&] { Send(1, 2, kOtherLeaf); }},
        {"double click", "NodeSelect", [&] { Send(1, 2, kLeaf); }},
        {"secondary press", "NodeSelect", [&] { Send(2, 3, kBranch); }},
        {"drag", "NodeDrag", [&] { (Send(1, 3, kLeaf), Send(1, 0, kBranch)); }},
        {"press", "UIItemChanged", [&] { Send(1, 3, kLeaf); }},
        {"toggle", "UIItemChanged", [&] { Send(1, 2, kBranch); }},
        {"wheel", "UIItemChanged", [&] { Send(0x20, 0, kBranch, 100); }},
        {"icons", "UIItemChanged", [&] { m_Tree.Get()->Control(172, 0); }},
    };
    const std::pair<const char*, std::function<void()>> reactions[] = {
        {"disconnects itself", [&] { Advise(m_Listener->Identity(), 0); }},
        {"disconnects the next", [&] { Advise(m_Second->Identity(), 0); }},
        {"disconnects all", [&] { Advise(nullptr, 0); }},
        {"connects", [&] { Advise(Listener::Make()->Identity(), 1); }},
        {"binds another", [&] { Bind("X\n x1\nY"); }},
        {"clears", [&] { (m_Tree->Clear(), m_Root->RemoveAll()); }},
        {"feeds a press", [&] { Send(1, 3, kBranch); }},
        {"feeds a release", [&] { Send(1, 2, kBranch, 1); }},
        {"takes the row height", [&] { m_Tree->SetElementSize(0, 0); }},
        {"releases the control", [&] { m_Tree.Reset(); }},
    };
    for (const auto& trigger : triggers) {
        for (const auto& [name, reaction] : reactions) {
            for (const bool vouched : {true, false}) {
                SCOPED_TRACE(std::string(trigger.name) + ", and the listener " + name);
                Vouch(vouched);
                Try(trigger.event, trigger.run, reaction);
            }
        }
    }
}

TEST_F(ReentryTest, ListenerThatGoesWithTheControlMayStillAskIt) {
    TreeTest::SetUp();
    IUITree* control = m_Tree.Get();
    int32_t status = E_FAIL;
    auto asking = std::shared_ptr<void>(nullptr, [&](void*) {
        int32_t useDefaults = 0;
        status = control->Inquire(105, &useDefaults);
    });
    auto listener = Listener::Make();
    listener->m_Reaction = [kept = std::move(asking)](const Listener::Event&) {};
    Advise(listener->Identity(), 1);
    listener.Reset();
    m_Tree.Reset();
    EXPECT_GE(status, S_OK) << "its parameters are still there";
}
