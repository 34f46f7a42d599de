#include "tests/support/TreeTest.h"

// Binding a collection, and the way between rows and nodes.

namespace {

using NodesTest = TreeTest;

/// "UIDefault" with sizes of the test's choice.
class Sizes final : public HostObject<Sizes, IUIPropInterrogate> {
public:
    static constexpr const char* kKind = "Sizes";
    Sizes(int row, int text) : m_Row(row), m_Text(text) {}
    int32_t Inquire(int32_t id, int32_t* value) override {
        *value = id == 3 ? m_Row : id == 10 ? m_Text : -1;
        return S_OK;
    }
    int32_t Control(int32_t, int32_t) override { return E_FAIL; }
    int32_t ParameterRange(int32_t, int32_t*, int32_t*) override { return E_FAIL; }
    int32_t ParameterEnumeration(int32_t, IUnknown**) override { return E_FAIL; }
    int m_Row, m_Text;
};

int CountOf(ISuperCollection& collection) {
    int32_t count = -1;
    collection.GetCount(&count);
    return count;
}

} // namespace

TEST_F(NodesTest, HiddenItemHidesEverythingBelowIt) {
    Bind("A\n a1\n a2\n  x\nB\nC\n c1");
    Open("A");
    Open("a2");
    EXPECT_EQ(Rows(), "A a1 a2 x B C");
    int32_t size[3] = {};
    EXPECT_EQ(m_Tree->GetContainerSize(&size[0], &size[1], &size[2]), S_OK);
    EXPECT_EQ(size[0] * 100 + size[1] * 10 + size[2], 161);
    SetFlags("A", 1);
    EXPECT_EQ(Rows(), "B C");
}

TEST_F(NodesTest, BindingShowsTheRootItemsClosedAndLeavesDeeperFlags) {
    Bind("A\n a1\nB");
    Open("A");
    SetFlags("B", NODE_SELECTED | 0x7000);
    SetFlags("a1", 0x7302);
    m_Tree->Control(115, 2);
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT | SELECT_UNMARKED);
    BindCollection(m_Root);
    EXPECT_EQ(SelectedLabel(), "a1") << "the selection outlives binding";
    EXPECT_EQ(Flags("A"), 0x101);
    EXPECT_EQ(Flags("B"), 0x101);
    EXPECT_EQ(Flags("a1"), 0x7302);
    EXPECT_EQ(Value(115), 0);
    EXPECT_EQ(m_Tree->put_Collection(nullptr), E_INVALIDARG);
    EXPECT_EQ(m_Tree->put_Collection(Item("B").Get()), E_INVALIDARG) << "a leaf";
    SmartPtr<IUnknown> bound;
    EXPECT_EQ(m_Tree->get_Collection(nullptr), E_POINTER);
    EXPECT_EQ(m_Tree->get_Collection(bound.Receive()), S_OK);
    EXPECT_TRUE(bound == m_Root.Get());
}

TEST_F(NodesTest, OwnDefaultCollectionIsEmptiedAndForeignOnesAreNot) {
    SmartPtr<IUnknown> own;
    ASSERT_EQ(m_Tree->get_Collection(own.Receive()), S_OK);
    const auto ownCollection = Query<ISuperCollection>(own.Get());
    ownCollection->InsertItem(0, 0, own.Get(), 0, 0);
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_EQ(CountOf(*ownCollection.Get()), 0);
    ownCollection->InsertItem(0, 0, own.Get(), 0, 0);
    const auto first = BindItems({{"A", own.Get()}});
    EXPECT_EQ(CountOf(*ownCollection.Get()), 0);
    Bind("B");
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_EQ(CountOf(*first.Get()), 1);
    EXPECT_EQ(Rows(), "B");
}

TEST_F(NodesTest, DefaultSizesComeFromTheHostUnlessSwitchedOff) {
    const struct {
        int enabled, row, text, height;
    } cases[] = {{0, 7, 5, 15}, {1, 20, 12, 20}, {1, 20, 30, 30}, {0, 7, 5, 30}};
    for (const auto& one : cases) {
        m_Host->Register(L"UIDefault", [=](const IID& iid, void** object) {
            return Sizes::Make(one.row, one.text)->QueryInterface(iid, object);
        });
        m_Tree->Control(105, one.enabled);
        Bind("A");
        int32_t width = -1;
        int32_t height = -1;
        EXPECT_EQ(m_Tree->GetElementSize(&width, &height), S_OK);
        EXPECT_EQ(width, 0);
        EXPECT_EQ(height, one.height);
    }
}

TEST_F(NodesTest, PutNodeInsertsAtTheRowOrAppendsToTheRootItems) {
    Bind("A\n a1\n a2\nB");
    const auto item = SuperCollection::Make();
    for (const int row : {-1, 1000, 4}) {
        EXPECT_EQ(m_Tree->put_Node(0, row, 0, item->Identity()), S_OK);
    }
    EXPECT_EQ(RowCount(), 5);
    Open("A");
    EXPECT_EQ(m_Tree->put_Node(0, 2, 0, item->Identity()), S_OK);
    Place place = Find("a2");
    EXPECT_EQ(place.index--, 2) << "the new node took the place of a2";
    EXPECT_EQ(place.Flags(), 0x101);
}

TEST_F(NodesTest, CollectionInsideItselfIsNotEnteredAgain) {
    const auto inner = SuperCollection::Make();
    const auto outer = SuperCollection::Make();
    for (const auto& item : {outer, inner}) {
        outer->Append("", item->Identity());
        inner->Append("", item->Identity());
    }
    inner->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED);
    inner->SetItemFlags(1, NODE_VISIBLE | NODE_EXPANDED);
    BindCollection(SmartPtr<ISuperCollection>(outer.Get()));
    EXPECT_EQ(RowCount(), 4);
    EXPECT_EQ(m_Tree->Insert(m_Tree.Get(), nullptr, {}, {}, {}), S_OK) << "searches everything";
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(RowCount(), 2);
    inner->RemoveAll();
    outer->RemoveAll();
}

TEST_F(NodesTest, ChainOfAHundredThousandLevelsIsWalked) {
    constexpr int kDepth = 100'000;
    const auto bottom = SuperCollection::Make();
    auto top = bottom;
    for (int i = 1; i < kDepth; ++i) {
        const auto above = SuperCollection::Make();
        above->Append("x", top->Identity());
        above->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED);
        top = above;
    }
    // Far down a cycle has to be found too, and what is seen twice, one after the other, is none.
    const auto twice = SuperCollection::Make();
    twice->Append("x", bottom->Identity());
    twice->SetItemFlags(0, NODE_VISIBLE);
    for (const int index : {0, 1}) {
        bottom->Append("x", twice->Identity());
        bottom->SetItemFlags(index, NODE_VISIBLE | NODE_EXPANDED);
    }
    BindCollection(SmartPtr<ISuperCollection>(top.Get()));
    EXPECT_EQ(RowCount(), kDepth + 3);
    m_Tree->SetElementSize(0, 1);
    m_Root->SetItemFlags(0, 0x301);
    EXPECT_EQ(Draw({0, 0, 100, kDepth}), S_OK);
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(RowCount(), 1);
    bottom->RemoveAll();
}
