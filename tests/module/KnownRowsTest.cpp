#include "tests/support/TreeTest.h"

#include <thread>

// What the control keeps about the rows of a collection that vouches for them, while its host
// changes, binds and draws something else from within the control's calls.

namespace {

/// Vouches for itself and all below, and does something else when it is asked.
class Meddling final : public HostObject<Meddling, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "Meddling";
    int32_t GetItem(int32_t index, IUnknown** item) override {
        Act(m_OnItem, index);
        return SuperCollectionBase::GetItem(index, item);
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        Act(m_OnFlags, index);
        return SuperCollectionBase::SetItemFlags(index, flags);
    }
    int32_t GetVersion(uint64_t* version) override {
        Act(m_OnVersion, 0);
        return CollectionVersion::GetVersion(version);
    }

    using Action = std::function<void(int32_t index)>; ///< done once
    Action m_OnItem, m_OnFlags, m_OnVersion;

private:
    static void Act(Action& action, int32_t index) {
        if (const Action once = std::exchange(action, nullptr)) {
            once(index);
        }
    }
};

/// Does something else when it is told of the rows or offered an event, which it declines.
class MeddlingBar final : public HostObject<MeddlingBar, IUIScrollBar, IUIMouseInput> {
public:
    static constexpr const char* kKind = "MeddlingBar";
    int32_t GetPos(int32_t* pos) override { return (*pos = 0, S_OK); }
    int32_t SetPos(int32_t) override { return S_OK; }
    int32_t SetRange(int32_t, int32_t) override { return (Act(m_OnRange), S_OK); }
    int32_t Configure(int32_t, int32_t) override { return S_OK; }
    int32_t Layout(CANVASRect* area, CANVASRect*, CANVASRect* client) override {
        *client = *area;
        return S_FALSE;
    }
    int32_t Pointer(int32_t, int32_t, int32_t, double, double, CANVASRect*, IUnknown*) override {
        return (Act(m_OnPointer), E_FAIL);
    }

    std::function<void()> m_OnRange, m_OnPointer; ///< done once

private:
    static void Act(std::function<void()>& action) {
        if (const auto once = std::exchange(action, nullptr)) {
            once();
        }
    }
};

class KnownRowsTest : public TreeTest {
protected:
    static constexpr int kRows = 200;
    static constexpr CANVASRect kRect = {0, 0, 100, 3000};

    void SetUp() override {
        m_Host->Register(L"UIScrollBar",
            [this](const IID& iid, void** object) { return m_Bar->QueryInterface(iid, object); });
        TreeTest::SetUp();
        m_Tree->Control(PROP_USEDEFAULTSTYLE, 0);
        m_Tree->SetElementSize(0, 10);
    }
    void TearDown() override {
        m_Bar.Reset();
        TreeTest::TearDown();
    }

    /// A closed branch of 60, and leaves to the number of rows.
    static SmartPtr<Meddling> MakeRoot(const char* leaf = "leaf") {
        const auto root = Meddling::Make();
        const auto branch = SuperCollection::Make();
        for (int i = 0; i < 60; ++i) {
            branch->Append("below", nullptr);
            branch->SetItemFlags(i, 2);
        }
        root->Append("branch", branch->Identity());
        for (int i = 1; i < kRows; ++i) {
            root->Append(leaf + std::to_string(i), Outline("x").Get());
        }
        return root;
    }
    static void SetOpen(SuperCollectionBase& root, bool isOpen) {
        SmartPtr<IUnknown> item;
        root.GetItem(0, item.Receive());
        const auto branch = Query<ISuperCollection>(item.Get());
        for (int i = 0; i < 60; ++i) {
            branch->SetItemFlags(i, isOpen ? NODE_VISIBLE | 2 : 2);
        }
        root.SetItemFlags(0, NODE_VISIBLE | 1 | (isOpen ? NODE_EXPANDED : 0));
    }
    SmartPtr<Meddling> BindRoot(const char* leaf = "leaf") {
        const auto root = MakeRoot(leaf);
        BindCollection(SmartPtr<ISuperCollection>(root.Get()));
        return root;
    }
    /// The label of the node that is hit in a row, which has to be in the bound collection.
    std::string Hit(int row) {
        CANVASRect rect = kRect;
        SmartPtr<IUnknown> node;
        m_Tree->HitTest(5, row * 10 + 5, &rect, node.Receive());
        return LabelOf(node.Get());
    }
    std::string LabelOf(IUnknown* node) {
        for (int i = 0; i < kRows; ++i) {
            if (Place{m_Root, i}.Item() == node) {
                return Place{m_Root, i}.Label();
            }
        }
        return node ? "another" : "none";
    }

    SmartPtr<MeddlingBar> m_Bar = MeddlingBar::Make();
};

} // namespace

TEST_F(KnownRowsTest, RowFoundWhileTheTreeWasOpenedAndDrawnIsNotTakenForOneOfThatTree) {
    const auto root = BindRoot();
    m_Bar->m_OnRange = [&] {
        root->m_OnItem = [&](int32_t) {
            SetOpen(*root.Get(), true);
            Draw(kRect);
        };
    };
    Hit(71);
    EXPECT_EQ(Hit(71), "leaf11");
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->get_Node(0, 71, 0, node.Receive()), S_OK);
    EXPECT_EQ(LabelOf(node.Get()), "leaf11");
}

TEST_F(KnownRowsTest, EventIsForTheTreeThatWasBoundWhenItCame) {
    BindRoot();
    Draw(kRect);
    Listen();
    const auto other = MakeRoot("other");
    m_Bar->m_OnPointer = [&] {
        m_Tree->put_Collection(other->Identity());
        SetOpen(*other.Get(), true);
        Draw(kRect);
    };
    m_Clock.Advance(10'000'000);
    Pointer(1, 2, 0, 5, 705, kRect);
    ASSERT_FALSE(m_Listener->m_Events.empty());
    EXPECT_EQ(m_Listener->m_Events.back().text, "NodeSelect 1 70 1");
    other->RemoveAll();
}

TEST_F(KnownRowsTest, RowIsHitAsTheTreeIsWhenTheScrollBarHasClosedABranch) {
    const auto root = BindRoot();
    SetOpen(*root.Get(), true);
    Draw(kRect);
    m_Bar->m_OnRange = [&] { SetOpen(*root.Get(), false); };
    EXPECT_EQ(Hit(70), "leaf70");
    m_Bar->m_OnRange = [&] { SetOpen(*root.Get(), true); };
    EXPECT_EQ(Hit(240), "leaf180") << "there were fewer rows when they were counted";
}

TEST_F(KnownRowsTest, CollectionThatIsUnboundWhenItIsAskedLivesUntilItHasAnswered) {
    for (const bool isInserting : {false, true}) {
        const auto other = Outline("other");
        auto root = MakeRoot();
        m_Tree->put_Collection(root->Identity());
        Draw(kRect);
        root->m_OnVersion = [&](int32_t) { m_Tree->put_Collection(other.Get()); };
        root->m_OnItem = [&](int32_t) { m_Tree->put_Collection(other.Get()); };
        root.Reset(); // the control alone holds it
        SmartPtr<IUnknown> node;
        if (isInserting) {
            EXPECT_EQ(m_Tree->Insert(other.Get(), Outline("x").Get(), {}, {}, {}), S_OK);
        } else {
            EXPECT_EQ(m_Tree->get_Node(0, 1, 0, node.Receive()), S_OK);
            EXPECT_TRUE(node);
        }
    }
}

TEST_F(KnownRowsTest, NodesAreFoundWhileAnotherThreadClosesAll) {
    const auto root = BindRoot();
    Draw(kRect);
    SmartPtr<IUnknown> node;
    root->m_OnFlags = [&](int32_t) { // closing waits for the one that asks
        std::thread([&] { m_Tree->get_Node(0, 1, 0, node.Receive()); }).join();
    };
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_TRUE(node);
}

TEST_F(KnownRowsTest, RowsBeforeAreHitInACollectionThatIsShownInManyPlaces) {
    const auto child = Outline("leaf");
    const auto root = SuperCollection::Make();
    for (int i = 0; i < kRows / 2; ++i) {
        root->Append("branch", child.Get());
    }
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    for (int i = 0; i < kRows / 2; ++i) {
        root->SetItemFlags(i, NODE_VISIBLE | NODE_EXPANDED | 1);
    }
    child->SetItemFlags(0, NODE_VISIBLE | 2);
    const auto leaf = Place{child, 0}.Item();
    CANVASRect rect = kRect;
    for (int row = kRows - 1; row > 0; row -= 2) { // past a leaf and its branch
        SmartPtr<IUnknown> node;
        EXPECT_EQ(m_Tree->HitTest(5, row * 10 + 5, &rect, node.Receive()), S_OK);
        EXPECT_TRUE(node == leaf.Get()) << row;
    }
}
