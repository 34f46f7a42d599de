#include "tests/support/LazyItems.h"
#include "tests/support/TreeTest.h"

// Opening, closing, inserting and selecting nodes by operation.

namespace {

using ExpansionTest = TreeTest;

} // namespace

TEST_F(ExpansionTest, MakeNodeVisibleClearsWhatIsNoStateOfAShownNode) {
    Bind("A\n a1\nB");
    SetFlags("a1", NODE_EXPANDED | NODE_SELECTED | 0x55);
    SetFlags("B", 0x7701);
    SetFlags("A", NODE_LEVEL_MASK);
    EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), 0), S_OK);
    EXPECT_EQ(Flags("a1"), 0x300) << "a child keeps its open state only; below level 255 is 0";
    EXPECT_EQ(Flags("B"), 0x101) << "a sibling keeps nothing but its level";
    EXPECT_EQ(m_Tree->MakeNodeVisible(nullptr, 0), E_FAIL);
    EXPECT_EQ(m_Tree->MakeNodeVisible(Item("B").Get(), 0), E_FAIL) << "a leaf";
    EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), INT32_MAX), S_OK);
}

TEST_F(ExpansionTest, LazyNodeIsFilledOnceBeforeItIsShown) {
    const auto lazy = LazyFolder::Make();
    BindItems({{"lazy", lazy->Identity()}});
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
    const auto stranger = SuperCollection::Make();
    const std::pair<SmartPtr<IUnknown>, int> cases[] = {
        {Item("B"), 1}, {Item("a2"), 1}, {SmartPtr(stranger->Identity()), 5}};
    for (const auto& [reference, index] : cases) {
        const auto item = SuperCollection::Make();
        EXPECT_EQ(m_Tree->Insert(reference.Get(), item->Identity(), {}, {}, {}), S_OK);
        EXPECT_TRUE((Place{m_Root, index}.Item() == item->Identity()));
    }
}

TEST_F(ExpansionTest, GetSelectedAnswersNodeDataAndCollectionUntilTheTreeIsCleared) {
    const auto root = SuperCollection::Make();
    const auto data = SuperCollection::Make();
    root->Append("A", root->Identity());
    root->Append({"B", SmartPtr(root->Identity()), SmartPtr(data->Identity())});
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    SmartPtr<IUnknown> answer;
    EXPECT_EQ(m_Tree->GetSelected(1, SELECTED_DATA, answer.Receive()), S_OK);
    EXPECT_TRUE(answer == data->Identity());
    for (const auto& [kind, status] : {std::pair{SELECTED_NODE, S_OK}, {SELECTED_COLLECTION, 1}}) {
        EXPECT_EQ(m_Tree->GetSelected(0, kind, answer.Receive()), status);
        EXPECT_TRUE(answer == root->Identity());
    }
    EXPECT_EQ(m_Tree->GetSelected(-1, 3, answer.Receive()), E_FAIL);
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, nullptr), E_POINTER);
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, answer.Receive()), E_FAIL);
    root->RemoveAll();
}
