#include "tests/support/Clock.h"
#include "tests/support/TreeTest.h"

#include <functional>

// What a listener does while it is called must not harm the control: every event, times everything
// that a listener may do.

namespace {

/// Heights on rows of the tree: an open branch, and two leaves.
constexpr double kBranch = 5;
constexpr double kLeaf = 25;
constexpr double kOtherLeaf = 45;

void Send(IUIMouseInput& input, int32_t state, int32_t action, double y, int32_t keys = 0) {
    CANVASRect rect = {0, 0, 100, 100};
    input.Pointer(state, action, keys, 50, y, &rect, nullptr);
}

class ReentryTest : public TreeTest {
protected:
    /// A control with an open tree, a click to pair with, and two listeners.
    void Begin() {
        TreeTest::SetUp();
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, 10);
        Bind("A\n a1\n a2\nB\nC");
        Open("A");
        m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
        m_Input = As<IUIMouseInput>().Get();
        AdvanceClock(10'000'000);
        Send(*m_Input, 1, 2, kLeaf);
        Listen();
        m_Second = Listener::Make();
        Advise(m_Second, 1);
    }
    void SetUp() override {}
    void TearDown() override {
        m_Second.Reset();
        TreeTest::TearDown();
    }
    void Advise(const SmartPtr<Listener>& listener, int32_t flags) {
        As<IEventSource>()->Advise(listener ? listener->Identity() : nullptr, flags);
    }
    void Try(const std::string& event, const std::function<void()>& trigger,
        const std::function<void()>& reaction);

    SmartPtr<Listener> m_Second;
    IUIMouseInput* m_Input = nullptr; ///< not held: the control may go while it is called
};

void ReentryTest::Try(const std::string& event, const std::function<void()>& trigger,
    const std::function<void()>& reaction) {
    Begin();
    int heard = 0;
    const auto first = m_Listener; // outlives its connection
    first->m_Reaction = [&](const Listener::Event& noted) {
        if (noted.name == event && heard++ == 0) {
            reaction();
        }
    };
    trigger();
    first->m_Reaction = nullptr;
    EXPECT_GE(heard, 1) << "the event was not fired";
    AdvanceClock(10'000'000);
    if (m_Tree) {
        m_Tree->SetElementSize(0, 10);
        EXPECT_GE(RowCount(), 0);
        Send(*m_Input, 1, 3, kBranch);
        Send(*m_Input, 1, 2, kBranch);
        m_Tree.Reset();
    }
    EXPECT_EQ(m_Second->AddRef(), 2) << "the control is gone, and its listeners are not held";
    m_Second->Release();
}

} // namespace

TEST_F(ReentryTest, ListenerMayDoAnythingWhileItIsCalled) {
    struct Trigger {
        const char *name, *event;
        std::function<void()> run;
    };
    const Trigger triggers[] = {
        {"select", "NodeSelect", [&] { m_Tree.Get()->SelectNode(0, 3); }},
        {"click", "NodeSelect", [&] { Send(*m_Input, 1, 2, kOtherLeaf); }},
        {"double click", "NodeSelect", [&] { Send(*m_Input, 1, 2, kLeaf); }},
        {"secondary press", "NodeSelect", [&] { Send(*m_Input, 2, 3, kBranch); }},
        {"drag", "NodeDrag",
            [&] {
                Send(*m_Input, 1, 3, kLeaf);
                Send(*m_Input, 1, 0, kBranch);
            }},
        {"press", "UIItemChanged", [&] { Send(*m_Input, 1, 3, kLeaf); }},
        {"toggle", "UIItemChanged", [&] { Send(*m_Input, 1, 2, kBranch); }},
        {"wheel", "UIItemChanged", [&] { Send(*m_Input, 0x20, 0, kBranch, 100); }},
        {"icons", "UIItemChanged", [&] { m_Tree.Get()->Control(172, 0); }},
    };
    const std::pair<const char*, std::function<void()>> reactions[] = {
        {"disconnects itself", [&] { Advise(m_Listener, 0); }},
        {"disconnects the next", [&] { Advise(m_Second, 0); }},
        {"disconnects all", [&] { Advise({}, 0); }},
        {"connects", [&] { Advise(Listener::Make(), 1); }},
        {"binds another", [&] { Bind("X\n x1\nY"); }},
        {"clears",
            [&] {
                m_Tree->Clear();
                m_Root->RemoveAll();
            }},
        {"feeds a press", [&] { Send(*m_Input, 1, 3, kBranch); }},
        {"feeds a release", [&] { Send(*m_Input, 1, 2, kBranch, 1); }},
        {"takes the row height", [&] { m_Tree->SetElementSize(0, 0); }},
        {"releases the control", [&] { m_Tree.Reset(); }},
    };
    for (const auto& trigger : triggers) {
        for (const auto& [name, reaction] : reactions) {
            SCOPED_TRACE(std::string(trigger.name) + ", and the listener " + name);
            Try(trigger.event, trigger.run, reaction);
        }
    }
}
