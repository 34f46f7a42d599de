#include "tests/support/TreeTest.h"

// Selecting by row number, reading the selection back, and the announcement of changes.

namespace {

class SelectionTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Bind("A\n a1\n a2\nB");
        Open("A");
    }
};

} // namespace

TEST_F(SelectionTest, GetSelectedAnswersNodeDataAndCollection) {
    SmartPtr<IUnknown> answer;
    m_Tree->SelectNode(2, SELECT_ABSOLUTE | SELECT_CURRENT);
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
    const auto before = m_Root;
    Bind("X\nY");
    EXPECT_EQ(SelectedLabel(), "a1");
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    m_Root = before;
    EXPECT_EQ(Flags("a1"), 0x102) << "the mark is taken off where it was set";
}

TEST_F(SelectionTest, EveryRefreshSaysThatTheControlChanged) {
    Listen();
    EXPECT_EQ(As<IUIRefreshableObject>()->Refresh(7), S_OK);
    EXPECT_EQ(As<_IUIRefreshEvent>()->UIItemChanged(m_Root.Get(), 9), S_OK);
    ASSERT_EQ(m_Listener->m_Events.size(), 2U);
    for (const Listener::Event& event : m_Listener->m_Events) {
        EXPECT_EQ(event.name, "UIItemChanged");
        EXPECT_EQ(event.source, As<IUnknown>().Get());
        EXPECT_EQ(event.state, 0);
    }
}
