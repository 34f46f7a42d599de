#include "tests/support/TreeTest.h"

// Binding a collection, and what opens, inserts and selects nodes by operation.

using NodesTest = TreeTest;

namespace {

/// Notes the numbers that it is given with what is added.
struct Noting final : HostObject<Noting, SuperCollectionBase> {
    static constexpr const char* kKind = "Noting";
    explicit Noting(std::string& log) : m_Log(log) {}

    int32_t AddEntry(IString* name, IString* component, IString* owner, int32_t flags) override {
        m_Log += Line("entry", {flags}) + "; ";
        return SuperCollectionBase::AddEntry(name, component, owner, flags);
    }
    int32_t InsertItem(int32_t index, int32_t a, IUnknown* item, int32_t b, int32_t c) override {
        m_Log += Line("item", {index, a, b, c}) + "; ";
        return SuperCollectionBase::InsertItem(index, a, item, b, c);
    }

    std::string& m_Log;
};

/// Does not answer IUnknown, as some hosts' collections do not.
struct Nameless final : HostObject<Nameless, SuperCollectionBase> {
    static constexpr const char* kKind = "Nameless";
    int32_t QueryInterface(const IID& iid, void** object) override {
        return iid == IID_IUnknown ? (*object = nullptr, E_NOINTERFACE)
                                   : HostObject::QueryInterface(iid, object);
    }
};

} // namespace

TEST_F(NodesTest, CollectionsThatDoNotAnswerIUnknownShowTheirRows) {
    const auto root = Nameless::Make();
    const auto branch = Nameless::Make();
    branch->Append("leaf", Outline("x").Get());
    root->Append("branch", static_cast<ISuperCollection*>(branch.Get()));
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    m_Tree->MakeNodeVisible(static_cast<ISuperCollection*>(root.Get()), 0);
    EXPECT_EQ(RowCount(), 2);
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
    EXPECT_FALSE((Place{ownCollection, 0}.Item()));
    ownCollection->InsertItem(0, 0, own.Get(), 0, 0);
    const auto first = Outline("A");
    BindCollection(first);
    EXPECT_FALSE((Place{ownCollection, 0}.Item()));
    Bind("B");
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_TRUE((Place{first, 0}.Item()));
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(NodesTest, NodesAreAskedForByTheirRow) {
    Bind("A\n a1\nB");
    Open("A");
    for (const auto& [row, label] : {std::pair(0, "A"), {1, "a1"}, {2, "B"}}) {
        SmartPtr<IUnknown> node;
        EXPECT_EQ(m_Tree->get_Node(7, row, 7, node.Receive()), S_OK);
        EXPECT_EQ(node.Get(), Item(label).Get());
    }
    for (const int row : {-1, 3, INT32_MAX}) {
        SmartPtr<IUnknown> node = Item("A");
        EXPECT_EQ(m_Tree->get_Node(0, row, 0, node.Receive()), E_INVALIDARG) << row;
        EXPECT_FALSE(node);
    }
}

TEST_F(NodesTest, NodesAreInsertedAtARowOrAppendedToTheRootItems) {
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
    EXPECT_EQ(m_Tree->put_Node(0, 0, 0, m_Blind->Identity()), S_OK);
    EXPECT_TRUE((Place{m_Root, 0}.Item() == m_Blind->Identity())) << "row 0 is a row";

    Bind("A\n a1\n a2\nB\nC");
    const std::pair<SmartPtr<IUnknown>, int> references[] = {
        {Item("B"), 1}, {Item("a2"), 1}, {SmartPtr(item->Identity()), 5}};
    for (const auto& [reference, index] : references) {
        const auto inserted = SuperCollection::Make();
        EXPECT_EQ(m_Tree->Insert(reference.Get(), inserted->Identity(), {}, {}, {}), S_OK);
        EXPECT_TRUE((Place{m_Root, index}.Item() == inserted->Identity()))
            << "the reference's index is the row";
    }
    const auto faces = Listener::Make();
    BindItems({{"A", m_Blind->Identity()}, {"B", faces->Identity()}});
    const auto face = Query<_IUIRefreshEvent>(faces->Identity());
    EXPECT_EQ(m_Tree->Insert(face.Get(), item->Identity(), {}, {}, {}), S_OK);
    EXPECT_TRUE((Place{m_Root, 1}.Item() == item->Identity())) << "it is known by any interface";
}

TEST_F(NodesTest, CollectionsAreGivenNothingInReservedArguments) {
    std::string log;
    m_Tree.Reset();
    m_Module.reset(); // it keeps what it made its first collection by
    m_Host->Register(L"SuperCollection", [&](const IID& iid, void** object) {
        return Noting::Make(log)->QueryInterface(iid, object);
    });
    m_Module.emplace("./UITree.so", m_Host->Components());
    SetUp();
    SmartPtr<ISuperCollection> pages;
    As<IUIPropertyPageSpecify>()->GetPages(
        0, reinterpret_cast<INamedCollection**>(pages.Receive()), nullptr);
    EXPECT_EQ(m_Tree->put_Node(7, -5, 7, m_Blind->Identity()), S_OK);
    EXPECT_EQ(log, "entry 0; item 0 0 0 0; ");
}

TEST_F(NodesTest, MakeNodeVisibleClearsWhatIsNoStateOfAShownNode) {
    Bind("A\n a1\nB");
    SetFlags("A", NODE_LEVEL_MASK);
    SetFlags("B", 0x7701);
    EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), 0), S_OK);
    EXPECT_EQ(Flags("a1"), 0x100) << "below level 255 is 0";
    EXPECT_EQ(Flags("B"), 0x101) << "a sibling keeps nothing but its level";
    EXPECT_EQ(m_Tree->MakeNodeVisible(nullptr, 0), E_FAIL);
    EXPECT_EQ(m_Tree->MakeNodeVisible(Item("B").Get(), 0), E_FAIL) << "a leaf";
    EXPECT_EQ(m_Tree->MakeNodeVisible(m_Root.Get(), INT32_MAX), S_OK);
}

TEST_F(NodesTest, GetSelectedAnswersNodeDataAndCollectionUntilTheTreeIsCleared) {
    const auto node = SuperCollection::Make();
    const auto data = SuperCollection::Make();
    const auto root = BindItems({{"A", node->Identity()}});
    root->Append({"B", SmartPtr(node->Identity()), SmartPtr(data->Identity()), NODE_VISIBLE});
    m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    const std::tuple<int, int, int, IUnknown*> cases[] = {
        {1, SELECTED_DATA, S_OK, data->Identity()}, {0, SELECTED_NODE, S_OK, node->Identity()},
        {0, SELECTED_COLLECTION, 1, root->Identity()}, {-1, 3, E_FAIL, nullptr}};
    SmartPtr<IUnknown> answer;
    for (const auto& [index, kind, status, object] : cases) {
        EXPECT_EQ(m_Tree->GetSelected(index, kind, answer.Receive()), status);
        EXPECT_TRUE(answer == object) << kind;
    }
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, nullptr), E_POINTER);
    EXPECT_EQ(m_Tree->Clear(), S_OK);
    EXPECT_EQ(m_Tree->GetSelected(-1, SELECTED_NODE, answer.Receive()), E_FAIL);
}

TEST_F(NodesTest, CollectionInItselfIsShownClosedThereAtEveryDepth) {
    for (int depth = 30; depth < 36; ++depth) {
        std::vector<SmartPtr<SuperCollection>> chain{SuperCollection::Make()};
        for (int level = 1; level <= depth; ++level) {
            chain.push_back(level < depth ? SuperCollection::Make() : chain.back());
            chain[size_t(level) - 1]->Append("below", chain.back()->Identity());
        }
        BindCollection(SmartPtr<ISuperCollection>(chain.front().Get()));
        for (int level = 1; level <= depth; ++level) {
            chain[size_t(level) - 1]->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | level);
        }
        EXPECT_EQ(RowCount(), depth);
        chain.back()->RemoveAll();
    }
}
