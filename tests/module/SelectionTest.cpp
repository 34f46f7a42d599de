#include "tests/support/Listener.h"
#include "tests/support/TreeTest.h"

// Selecting by row number, reading the selection back, and the announcement of changes.

namespace {

class SelectionTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        m_Listener = Listener::Make();
        As<IEventSource>()->Advise(m_Listener->Identity(), 1);
        Bind("A\n a1\n a2\nB\nC");
        Open("A");
        CANVASRect rect = {0, 0, 100, 30};
        As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0); // gives the bar its range
    }
    void TearDown() override {
        m_Listener.Reset();
        TreeTest::TearDown();
    }

    int32_t Top() const {
        int32_t top = -1;
        m_Tree->Inquire(115, &top);
        return top;
    }
    /// The labels of the rows that carry the selected bit.
    std::string Marked() const {
        std::string marked;
        for (const char* label : {"A", "a1", "a2", "B", "C"}) {
            if ((Flags(label) & NODE_SELECTED) != 0) {
                marked += label;
            }
        }
        return marked;
    }

    SmartPtr<Listener> m_Listener;
};

} // namespace

TEST_F(SelectionTest, SelectNodeMovesMarkAndSelectionAndTellsOnce) {
    m_Tree->SelectNode(3, SELECT_ABSOLUTE | SELECT_CURRENT);
    SetFlags("B", Flags("B") | 0x7000);
    m_Listener->m_Events.clear();
    EXPECT_EQ(m_Tree->SelectNode(2, SELECT_ABSOLUTE | SELECT_CURRENT), S_OK);
    EXPECT_EQ(Marked(), "a2");
    EXPECT_EQ(Flags("B"), 0x101) << "the bits above the selected one go with it";
    EXPECT_EQ(SelectedLabel(), "a2");
    ASSERT_EQ(m_Listener->m_Events.size(), 1U);
    const Listener::Event& event = m_Listener->m_Events[0];
    EXPECT_EQ(event.name, "NodeSelect");
    EXPECT_EQ(event.source, As<IUnknown>().Get());
    EXPECT_EQ(event.state, 1);
    EXPECT_EQ(event.first, 1) << "the index in its own collection";
    EXPECT_EQ(event.second, 0);
    EXPECT_TRUE(event.node == Item("a2").Get());
    m_Listener->m_Events.clear();
}

TEST_F(SelectionTest, FlagsOfSelectNodeWorkOneByOne) {
    struct Case {
        int32_t flags;
        const char *marked, *selected, *events;
        int32_t top;
    };
    const Case cases[] = {
        {SELECT_ABSOLUTE, "B", "", "", 0},
        {SELECT_ABSOLUTE | SELECT_UNMARKED, "", "", "", 0},
        {SELECT_ABSOLUTE | SELECT_CURRENT | SELECT_UNMARKED, "", "B", "NodeSelect", 0},
        {SELECT_ABSOLUTE | SELECT_SCROLL, "B", "", "", 3},
        {SELECT_SCROLL | SELECT_UNMARKED, "", "", "", 3},
    };
    for (const Case& one : cases) {
        BindCollection(m_Root);
        m_Tree->Clear();
        Open("A");
        EXPECT_EQ(m_Tree->SelectNode(3, one.flags), S_OK);
        EXPECT_EQ(Marked(), one.marked) << one.flags;
        EXPECT_EQ(SelectedLabel(), one.selected) << one.flags;
        EXPECT_EQ(m_Listener->TakeNames(), one.events) << one.flags;
        EXPECT_EQ(Top(), one.top) << one.flags;
    }
}

TEST_F(SelectionTest, RelativeRowsAreCountedBackByTheScrollPosition) {
    m_Tree->Control(115, 2);
    m_Tree->SelectNode(3, SELECT_CURRENT);
    EXPECT_EQ(SelectedLabel(), "a1");
    m_Tree->SelectNode(4, SELECT_CURRENT | SELECT_SCROLL);
    EXPECT_EQ(SelectedLabel(), "a2") << "resolved before it scrolled";
    EXPECT_EQ(Top(), 4);
    m_Tree->SelectNode(INT32_MIN, SELECT_CURRENT);
    EXPECT_EQ(SelectedLabel(), "");
}

TEST_F(SelectionTest, MissingRowEmptiesTheSelectionAndKeepsTheMarks) {
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Listener->m_Events.clear();
    EXPECT_EQ(m_Tree->SelectNode(99, SELECT_ABSOLUTE | SELECT_CURRENT), S_OK);
    ASSERT_EQ(m_Listener->m_Events.size(), 1U);
    EXPECT_FALSE(m_Listener->m_Events[0].node);
    EXPECT_EQ(Marked(), "a1");
    SmartPtr<IUnknown> selected;
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, selected.Receive()), E_FAIL);
    m_Listener->m_Events.clear();
}

TEST_F(SelectionTest, GetSelectedAnswersNodeDataAndCollection) {
    SmartPtr<IUnknown> answer;
    m_Tree->SelectNode(2, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Listener->m_Events.clear();
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, answer.Receive()), S_OK);
    EXPECT_TRUE(answer == Item("a2").Get());
    EXPECT_EQ(m_Tree->GetSelected(0, SELECTED_NODE, answer.Receive()), S_OK);
    EXPECT_TRUE(answer == Item("a1").Get());
    EXPECT_EQ(m_Tree->GetSelected(0, SELECTED_COLLECTION, answer.Receive()), 1);
    EXPECT_TRUE(answer == Item("A").Get());
    m_Tree->GetSelected(-1, SELECTED_DATA, answer.Receive());
    EXPECT_FALSE(answer) << "the outline keeps no data";
    EXPECT_LT(m_Tree->GetSelected(77, SELECTED_NODE, answer.Receive()), 0);
    EXPECT_EQ(m_Tree->GetSelected(-1, 3, answer.Receive()), E_FAIL);
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, nullptr), E_POINTER);
}

TEST_F(SelectionTest, SelectionOutlivesBindingAndItsCollection) {
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Listener->m_Events.clear();
    const auto before = m_Root;
    Bind("X\nY");
    EXPECT_EQ(SelectedLabel(), "a1");
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Listener->m_Events.clear();
    m_Root = before;
    EXPECT_EQ(Marked(), "") << "the mark is taken off where it was set";
}

TEST_F(SelectionTest, EveryRefreshSaysThatTheControlChanged) {
    EXPECT_EQ(As<IUIRefreshableObject>()->Refresh(7), S_OK);
    EXPECT_EQ(As<_IUIRefreshEvent>()->UIItemChanged(m_Root.Get(), 9), S_OK);
    ASSERT_EQ(m_Listener->m_Events.size(), 2U);
    for (const Listener::Event& event : m_Listener->m_Events) {
        EXPECT_EQ(event.name, "UIItemChanged");
        EXPECT_EQ(event.source, As<IUnknown>().Get());
        EXPECT_EQ(event.state, 0);
    }
}
