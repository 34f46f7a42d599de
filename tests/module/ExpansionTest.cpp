#include "tests/support/LazyItems.h"
#include "tests/support/TreeTest.h"

// Opening, closing, finding and inserting nodes by operation.

namespace {

using ExpansionTest = TreeTest;

} // namespace

TEST_F(ExpansionTest, MakeNodeVisibleOpensTheNodeAndShowsItsSiblings) {
    Bind("A\n a1\n  x\n a2\nB\n b1");
    SetFlags("a1", NODE_EXPANDED | NODE_SELECTED | 0x55);
    SetFlags("B", 0x7701);
    EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), 0), S_OK);
    EXPECT_EQ(Rows(), "A a1 a2 B");
    EXPECT_EQ(Flags("A"), 0x301);
    EXPECT_EQ(Flags("a1"), 0x302) << "a child keeps nothing but its own open state";
    EXPECT_EQ(Flags("a2"), 0x102);
    EXPECT_EQ(Flags("B"), 0x101) << "a sibling keeps nothing but its level";
    EXPECT_EQ(m_Tree->MakeNodeVisible(Item("A").Get(), 1), S_OK);
    EXPECT_EQ(Flags("a2"), 0x302);
    EXPECT_EQ(Flags("a1"), 0x102);
}

TEST_F(ExpansionTest, MakeNodeVisibleAnswersForWhatItCannotOpen) {
    Bind("A\n a1\nB");
    EXPECT_EQ(m_Tree->MakeNodeVisible(nullptr, 0), E_FAIL);
    EXPECT_EQ(m_Tree->MakeNodeVisible(Item("B").Get(), 0), E_FAIL);
    for (const int32_t index : {-1, 2, 0x7FFFFFFF}) {
        EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), index), S_OK);
    }
    EXPECT_EQ(Rows(), "A B");
}

TEST_F(ExpansionTest, LazyNodeIsFilledOnceBeforeItIsShown) {
    const auto lazy = LazyFolder::Make();
    const auto root = SuperCollection::Make();
    root->Append("lazy", lazy->Identity());
    BindCollection(Query<ISuperCollection>(root->Identity()));
    for (int i = 0; i < 2; ++i) {
        m_Tree->MakeNodeVisible(m_Root.Get(), 0);
        EXPECT_EQ(Rows(), "lazy filled");
        EXPECT_EQ(lazy->m_Filled, 1);
    }
}

TEST_F(ExpansionTest, CompactNodesLooksBelowHiddenRootItems) {
    Bind("A\n a1");
    Open("A");
    SetFlags("A", NODE_EXPANDED | 1);
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(Flags("A"), 1);
    EXPECT_EQ(Flags("a1"), 2);
}

TEST_F(ExpansionTest, InsertUsesTheReferencesIndexAsTheRow) {
    Bind("A\n a1\n a2\nB\nC");
    const auto item = SuperCollection::Make();
    const auto rootIndexOf = [&](IUnknown* sought) {
        SmartPtr<IUnknown> found;
        int32_t index = 0;
        while (m_Root->GetItem(index, found.Receive()) >= 0 && !(found == sought)) {
            ++index;
        }
        return index;
    };
    EXPECT_EQ(m_Tree->Insert(Item("B").Get(), item->Identity(), {}, {}, {}), S_OK);
    EXPECT_EQ(rootIndexOf(item->Identity()), 1) << "in place of B";
    const auto other = SuperCollection::Make();
    EXPECT_EQ(m_Tree->Insert(Item("a2").Get(), other->Identity(), {}, {}, {}), S_OK);
    EXPECT_EQ(rootIndexOf(other->Identity()), 1) << "a2 has index 1 where it lives";
    const auto last = SuperCollection::Make();
    EXPECT_EQ(m_Tree->Insert(last->Identity(), last->Identity(), {}, {}, {}), S_OK);
    EXPECT_EQ(rootIndexOf(last->Identity()), 5) << "not in the tree: appended";
}

TEST_F(ExpansionTest, ClearDropsTheSelectionAndKeepsForeignData) {
    Bind("A\nB");
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    SmartPtr<IUnknown> selected;
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, selected.Receive()), E_FAIL);
    EXPECT_EQ(Rows(), "A B");
}
