#include "tests/support/Clock.h"
#include "tests/support/Listener.h"
#include "tests/support/TreeTest.h"

#include <functional>
#include <tuple>

// What a listener does while it is called must not harm the control: every event, times everything
// that a listener may do.

namespace {

constexpr int32_t kHeight = 10;
/// Heights on rows of the tree: an open branch, and two leaves.
constexpr double kBranch = 5;
constexpr double kLeaf = 25;
constexpr double kOtherLeaf = 45;

/// Something that fires an event. It works on raw pointers, so that the control may go meanwhile.
struct Trigger {
    const char* name;
    const char* event;
    std::function<void(IUITree&, IUIMouseInput&)> run;
};

void Send(IUIMouseInput& input, int32_t state, int32_t action, double y, int32_t keys = 0) {
    CANVASRect rect = {0, 0, 100, 100};
    input.Pointer(state, action, keys, 50, y, &rect, nullptr);
}

const Trigger kTriggers[] = {
    {"SelectNode", "NodeSelect",
        [](IUITree& tree, IUIMouseInput&) {
            tree.SelectNode(0, SELECT_ABSOLUTE | SELECT_CURRENT);
        }},
    {"Click", "NodeSelect", [](IUITree&, IUIMouseInput& input) { Send(input, 1, 2, kOtherLeaf); }},
    {"DoubleClick", "NodeSelect", [](IUITree&, IUIMouseInput& input) { Send(input, 1, 2, kLeaf); }},
    {"SecondaryPress", "NodeSelect",
        [](IUITree&, IUIMouseInput& input) { Send(input, 2, 3, kBranch); }},
    {"Drag", "NodeDrag",
        [](IUITree&, IUIMouseInput& input) {
            Send(input, 1, 3, kLeaf);
            Send(input, 1, 0, kBranch);
        }},
    {"Press", "UIItemChanged", [](IUITree&, IUIMouseInput& input) { Send(input, 1, 3, kLeaf); }},
    {"Toggle", "UIItemChanged", [](IUITree&, IUIMouseInput& input) { Send(input, 1, 2, kBranch); }},
    {"Wheel", "UIItemChanged",
        [](IUITree&, IUIMouseInput& input) { Send(input, 0x20, 0, kBranch, 100); }},
    {"ResetIcons", "UIItemChanged", [](IUITree& tree, IUIMouseInput&) { tree.Control(172, 0); }},
};

struct Reaction;

class ReentryTest
    : public TreeTest,
      public ::testing::WithParamInterface<std::tuple<const Trigger*, const Reaction*>> {
public:
    void SetUp() override;
    void TearDown() override;

    SmartPtr<Listener> m_First;
    SmartPtr<Listener> m_Second;
    SmartPtr<Listener> m_Late;
    IUIMouseInput* m_Input = nullptr; ///< not held
    int m_Heard = 0;

    using TreeTest::As;
    using TreeTest::Bind;
    using TreeTest::m_Tree;
};

struct Reaction {
    const char* name;
    std::function<void(ReentryTest&)> run;
};

void Advise(ReentryTest& test, const SmartPtr<Listener>& listener, int32_t flags) {
    Query<IEventSource>(test.m_Tree.Get())->Advise(listener->Identity(), flags);
}

const Reaction kReactions[] = {
    {"DisconnectsItself", [](ReentryTest& test) { Advise(test, test.m_First, 0); }},
    {"DisconnectsTheNext", [](ReentryTest& test) { Advise(test, test.m_Second, 0); }},
    {"DisconnectsAll",
        [](ReentryTest& test) { Query<IEventSource>(test.m_Tree.Get())->Advise(nullptr, 0); }},
    {"Connects", [](ReentryTest& test) { Advise(test, test.m_Late, 1); }},
    {"BindsAnother", [](ReentryTest& test) { test.Bind("X\n x1\nY"); }},
    {"Clears",
        [](ReentryTest& test) {
            test.m_Tree->Clear();
            SmartPtr<IUnknown> bound;
            test.m_Tree->get_Collection(bound.Receive());
            Query<ISuperCollection>(bound.Get())->RemoveAll();
        }},
    {"FeedsAPress", [](ReentryTest& test) { Send(*test.m_Input, 1, 3, kBranch); }},
    {"FeedsARelease", [](ReentryTest& test) { Send(*test.m_Input, 1, 2, kBranch, 1); }},
    {"SetsNoHeight", [](ReentryTest& test) { test.m_Tree->SetElementSize(0, 0); }},
    {"ReleasesTheControl", [](ReentryTest& test) { test.m_Tree.Reset(); }},
};

void ReentryTest::SetUp() {
    TreeTest::SetUp();
    m_Tree->Control(105, 0);
    m_Tree->SetElementSize(0, kHeight);
    Bind("A\n a1\n a2\nB\nC");
    Open("A");
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Input = As<IUIMouseInput>().Get();
    AdvanceClock(10'000'000);
    Send(*m_Input, 1, 2, kLeaf); // a click that the next release there pairs with
    for (auto* listener : {&m_First, &m_Second, &m_Late}) {
        *listener = Listener::Make();
    }
    Advise(*this, m_First, 1);
    Advise(*this, m_Second, 1);
}

void ReentryTest::TearDown() {
    for (auto* listener : {&m_First, &m_Second, &m_Late}) {
        (*listener)->m_Events.clear();
        listener->Reset();
    }
    TreeTest::TearDown();
}

} // namespace

TEST_P(ReentryTest, ListenerMayActWhileItIsCalled) {
    const auto& [trigger, reaction] = GetParam();
    m_First->m_Reaction = [this, trigger = trigger, reaction = reaction](const auto& event) {
        if (m_Heard == 0 && event.name == trigger->event) {
            ++m_Heard;
            reaction->run(*this);
        }
    };
    trigger->run(*m_Tree.Get(), *m_Input);
    m_First->m_Reaction = nullptr;
    EXPECT_EQ(m_Heard, 1) << "the event was not fired";
    AdvanceClock(10'000'000);
    if (m_Tree) {
        m_Tree->SetElementSize(0, kHeight);
        EXPECT_GE(RowCount(), 0);
        Send(*m_Input, 1, 3, kBranch);
        Send(*m_Input, 1, 2, kBranch);
    } else {
        EXPECT_EQ(m_Second->AddRef(), 2) << "the control still holds its listeners";
        m_Second->Release();
    }
}

INSTANTIATE_TEST_SUITE_P(All, ReentryTest,
    ::testing::Combine(
        [] {
            std::vector<const Trigger*> all;
            for (const Trigger& trigger : kTriggers) {
                all.push_back(&trigger);
            }
            return ::testing::ValuesIn(all);
        }(),
        [] {
            std::vector<const Reaction*> all;
            for (const Reaction& reaction : kReactions) {
                all.push_back(&reaction);
            }
            return ::testing::ValuesIn(all);
        }()),
    [](const auto& cell) {
        return std::string(std::get<0>(cell.param)->name) + "_" + std::get<1>(cell.param)->name;
    });
