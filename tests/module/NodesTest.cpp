#include "tests/support/TreeTest.h"

#include "framework/Support.h"

// Binding a collection, and the way between rows and nodes.

namespace {

using NodesTest = TreeTest;

/// An item that presents an object of another name, or stands for one.
class NamedItem final : public HostObject<NamedItem, SuperCollectionBase, IObjectInfo> {
public:
    static constexpr const char* kKind = "NamedItem";
    explicit NamedItem(const wchar_t* name) : m_Name(name) {}

    int32_t GetName(int32_t, tagREFString* name) override {
        *name = CREFString(m_Name);
        return S_OK;
    }

private:
    const wchar_t* m_Name;
};

class NodeFor final : public HostObject<NodeFor, IUINode, ICollectionMoniker> {
public:
    static constexpr const char* kKind = "NodeFor";
    explicit NodeFor(IUnknown* object) : m_Object(object) {}

    int32_t get_Object(IUnknown** object) override {
        *object = SmartPtr(m_Object).Detach();
        return S_OK;
    }
    int32_t get_Name(IString** name) override {
        *name = nullptr;
        return E_FAIL;
    }
    int32_t BindToObject(const IID& iid, void** object) override {
        return m_Object->QueryInterface(iid, object);
    }

private:
    SmartPtr<IUnknown> m_Object;
};

/// A collection of the given items, named "a", "b", ...
SmartPtr<ISuperCollection> CollectionOf(const std::vector<IUnknown*>& items) {
    auto collection = SuperCollection::Make();
    char name = 'a';
    for (IUnknown* item : items) {
        collection->Append(std::string(1, name++), item);
    }
    return Query<ISuperCollection>(collection->Identity());
}

/// "UIDefault" with sizes of the test's choice.
class Sizes final : public HostObject<Sizes, IUIPropInterrogate> {
public:
    static constexpr const char* kKind = "Sizes";
    Sizes(int32_t row, int32_t text) : m_Row(row), m_Text(text) {}

    int32_t Inquire(int32_t id, int32_t* value) override {
        *value = id == 3 ? m_Row : id == 10 ? m_Text : -1;
        return S_OK;
    }
    int32_t Control(int32_t, int32_t) override { return E_FAIL; }
    int32_t ParameterRange(int32_t, int32_t*, int32_t*) override { return E_FAIL; }
    int32_t ParameterEnumeration(int32_t, IUnknown**) override { return E_FAIL; }

private:
    int32_t m_Row;
    int32_t m_Text;
};

} // namespace

TEST_F(NodesTest, RowsFollowTheVisibleItemsInDisplayOrder) {
    Bind("A\n a1\n a2\n  x\nB\nC\n c1");
    EXPECT_EQ(Rows(), "A B C");
    Open("A");
    EXPECT_EQ(Rows(), "A a1 a2 B C");
    Open("a2");
    EXPECT_EQ(Rows(), "A a1 a2 x B C");
    int32_t columns = 0;
    int32_t layers = 0;
    EXPECT_EQ(m_Tree->GetContainerSize(&columns, nullptr, &layers), S_OK);
    EXPECT_EQ(columns + layers, 2);
    SetFlags("A", 1);
    EXPECT_EQ(Rows(), "B C") << "a hidden item hides everything below it";
    EXPECT_EQ(RowLabel(2), "");
    EXPECT_EQ(RowLabel(-1), "");
}

TEST_F(NodesTest, BindingShowsTheRootItemsClosedAndLeavesDeeperFlags) {
    Bind("A\n a1\nB");
    Open("A");
    SetFlags("B", NODE_SELECTED | 0x7000);
    SetFlags("a1", 0x7302);
    m_Tree->Control(115, 2);
    BindCollection(m_Root);
    EXPECT_EQ(Flags("A"), 0x101);
    EXPECT_EQ(Flags("B"), 0x101);
    EXPECT_EQ(Flags("a1"), 0x7302);
    int32_t top = -1;
    m_Tree->Inquire(115, &top);
    EXPECT_EQ(top, 0);
}

TEST_F(NodesTest, BindingNothingKeepsWhatIsBound) {
    Bind("A");
    EXPECT_EQ(m_Tree->put_Collection(nullptr), E_INVALIDARG);
    EXPECT_EQ(m_Tree->put_Collection(Item("A").Get()), E_INVALIDARG) << "a leaf";
    EXPECT_EQ(Rows(), "A");
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
    Bind("A");
    int32_t count = -1;
    ownCollection->GetCount(&count);
    EXPECT_EQ(count, 0);
    const auto first = m_Root;
    Bind("B");
    first->GetCount(&count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_EQ(Rows(), "B");
}

TEST_F(NodesTest, DefaultSizesComeFromTheHostUnlessSwitchedOff) {
    int32_t height = 0;
    int32_t width = -1;
    m_Tree->GetElementSize(&width, &height);
    EXPECT_EQ(height, 15);
    EXPECT_EQ(width, 0);
    const auto bindWith = [&](int32_t row, int32_t text) {
        m_Host->Register(L"UIDefault", [=](const IID& iid, void** object) {
            return Sizes::Make(row, text)->QueryInterface(iid, object);
        });
        Bind("A");
        m_Tree->GetElementSize(nullptr, &height);
        return height;
    };
    EXPECT_EQ(bindWith(20, 12), 20);
    EXPECT_EQ(bindWith(20, 30), 30) << "never lower than the text";
    m_Tree->Control(105, 0);
    EXPECT_EQ(bindWith(7, 5), 30);
}

TEST_F(NodesTest, PutNodeInsertsAtTheRowOrAppends) {
    Bind("A\n a1\n a2\nB");
    Open("A");
    const auto item = SuperCollection::Make();
    EXPECT_EQ(m_Tree->put_Node(0, 2, 0, item->Identity()), S_OK);
    const Place a2 = Find("a2");
    EXPECT_EQ(a2.index, 2) << "the new node took the place of a2";
    int32_t flags = 0;
    a2.collection->GetItemFlags(1, &flags);
    EXPECT_EQ(flags, 0x101);
}

TEST_F(NodesTest, PutNodeAppendsToTheRootCollectionWhenThereIsNoSuchRow) {
    Bind("A\n a1\nB");
    const auto item = SuperCollection::Make();
    for (const int32_t row : {-1, 1000, 4}) {
        EXPECT_EQ(m_Tree->put_Node(0, row, 0, item->Identity()), S_OK);
    }
    int32_t count = 0;
    m_Root->GetCount(&count);
    ASSERT_EQ(count, 5);
    for (int32_t i = 2; i < count; ++i) {
        int32_t flags = 0;
        m_Root->GetItemFlags(i, &flags);
        EXPECT_EQ(flags, 0x101);
    }
    EXPECT_EQ(RowCount(), 5);
}

TEST_F(NodesTest, SlidesAreLeavesWhateverTheyHold) {
    const auto below = SuperCollection::Make();
    const auto slide = NamedItem::Make(L"pmslide");
    const auto slides = NamedItem::Make(L"PMSlides");
    slide->Append("x", below->Identity());
    slides->Append("y", below->Identity());
    const auto wrapped = NodeFor::Make(slide->Identity());
    BindCollection(CollectionOf({slide->Identity(), slides->Identity(), wrapped->Identity()}));
    slide->SetItemFlags(0, NODE_VISIBLE);
    slides->SetItemFlags(0, NODE_VISIBLE);
    EXPECT_EQ(RowCount(), 4) << "only what lies below the second item is a row";
}

TEST_F(NodesTest, ItemsAreLookedThroughTheirWrappers) {
    const auto leaf = SuperCollection::Make();
    const auto folder = SuperCollection::Make();
    folder->Append("x", leaf->Identity());
    folder->SetItemFlags(0, NODE_VISIBLE);
    const auto node = NodeFor::Make(folder->Identity());
    BindCollection(CollectionOf({node->Identity()}));
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(NodesTest, CollectionInsideItselfIsNotEnteredAgain) {
    const auto inner = SuperCollection::Make();
    const auto outer = SuperCollection::Make();
    outer->Append("inner", inner->Identity());
    outer->Append("outer", outer->Identity());
    inner->Append("outer", outer->Identity());
    inner->Append("inner", inner->Identity());
    inner->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED);
    inner->SetItemFlags(1, NODE_VISIBLE | NODE_EXPANDED);
    BindCollection(Query<ISuperCollection>(outer->Identity()));
    EXPECT_EQ(RowCount(), 4);
    EXPECT_EQ(m_Tree->Insert(m_Tree.Get(), nullptr, {}, {}, {}), S_OK) << "searches everything";
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(RowCount(), 2);
    inner->RemoveAll();
    outer->RemoveAll();
}

TEST_F(NodesTest, ChainOfAHundredThousandLevelsIsWalked) {
    constexpr int32_t kDepth = 100'000;
    auto top = SuperCollection::Make();
    for (int32_t i = 1; i < kDepth; ++i) {
        const auto above = SuperCollection::Make();
        above->Append("x", top->Identity());
        above->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED);
        top = above;
    }
    BindCollection(Query<ISuperCollection>(top->Identity()));
    EXPECT_EQ(RowCount(), kDepth - 1);
    m_Tree->SetElementSize(0, 1);
    m_Root->SetItemFlags(0, 0x301);
    CANVASRect rect = {0, 0, 100, kDepth};
    EXPECT_EQ(As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0), S_OK);
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(RowCount(), 1);
}
