#include "app/faults/FailingNew.h"
#include "host/components/CreatableString.h"
#include "tests/support/TreeTest.h"

// What the operations on a tree cost in calls of the host, exactly, and in allocations: none.

namespace {

/// The calls of all items and collections of a tree since they were read last.
struct Calls {
    int m_Reads = 0;   ///< GetItem, GetItemFlags and GetCount
    int m_Queries = 0; ///< of items
    int m_Writes = 0;  ///< SetItemFlags

    bool operator==(const Calls&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Calls& calls) {
        return out << "{" << calls.m_Reads << ", " << calls.m_Queries << ", " << calls.m_Writes
                   << "}";
    }
};
Calls gCalls;

class CountingLeaf final : public HostObject<CountingLeaf, IDataStream> {
public:
    static constexpr const char* kKind = "CountingLeaf";
    int32_t QueryInterface(const IID& iid, void** object) override {
        ++gCalls.m_Queries;
        return HostObject::QueryInterface(iid, object);
    }
};

class CountingBranch final
    : public HostObject<CountingBranch, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "CountingBranch";
    explicit CountingBranch(IString* name) : m_Name(name) {}

    int32_t QueryInterface(const IID& iid, void** object) override {
        ++gCalls.m_Queries;
        return HostObject::QueryInterface(iid, object);
    }
    int32_t GetCount(int32_t* count) override {
        ++gCalls.m_Reads;
        return SuperCollectionBase::GetCount(count);
    }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        ++gCalls.m_Reads;
        return SuperCollectionBase::GetItem(index, item);
    }
    int32_t GetItemName(int32_t, IString** name) override {
        *name = SmartPtr(m_Name).Detach(); // one for all, so that none is made
        return S_OK;
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        ++gCalls.m_Reads;
        return SuperCollectionBase::GetItemFlags(index, flags);
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        ++gCalls.m_Writes;
        return SuperCollectionBase::SetItemFlags(index, flags);
    }

private:
    SmartPtr<IString> m_Name;
};

/// A tree of rows of 10 pixels in a rectangle for four of them.
class CostTest : public TreeTest {
protected:
    static constexpr CANVASRect kRect = {0, 0, 100, 40};

    SmartPtr<CountingBranch> Branch(int leaves, int level) const {
        auto branch = CountingBranch::Make(m_Name.Get());
        for (int i = 0; i < leaves; ++i) {
            branch->Append("leaf", CountingLeaf::Make()->Identity());
            branch->SetItemFlags(i, NODE_VISIBLE | level);
        }
        return branch;
    }
    /// A branch closed, with two leaves, an empty one and a leaf.
    SmartPtr<CountingBranch> Small() const {
        auto root = Branch(0, 1);
        const auto closed = Branch(2, 2);
        closed->SetItemFlags(0, 2);
        closed->SetItemFlags(1, 2);
        root->Append("branch", closed->Identity());
        root->Append("empty", Branch(0, 2)->Identity());
        root->Append("leaf", CountingLeaf::Make()->Identity());
        return root;
    }
    /// A chain of open branches over a leaf, kNearLevels levels in all.
    SmartPtr<CountingBranch> Deep() const {
        auto branch = Branch(1, 32);
        for (int level = 31; level > 0; --level) {
            const auto above = Branch(0, level);
            above->Append("branch", branch->Identity());
            above->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | level);
            branch = above;
        }
        return branch;
    }

    /// Shows a tree in a new control.
    void Show(const SmartPtr<CountingBranch>& root, bool isDeep, bool vouched) {
        Vouch(vouched);
        m_Tree = m_Module->Create<IUITree>(L"UITree");
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, 10);
        BindCollection(SmartPtr<ISuperCollection>(root.Get()));
        if (isDeep) {
            root->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
        }
        Draw(kRect); // with a version, what follows is known
    }
    static Calls CallsOf(const std::function<void()>& operation) {
        gCalls = {};
        operation();
        return gCalls;
    }

    SmartPtr<IString> m_Name{CreatableString::Make(L"row").Get()};
};

} // namespace

TEST_F(CostTest, EveryOperationMakesSoManyCallsOfTheHostAndNoMore) {
    SmartPtr<IUnknown> node;
    CANVASRect rect = kRect;
    constexpr size_t kOperations = 6;
    const std::function<void()> operations[kOperations] = {[&] { Draw(kRect); },
        [&] { m_Tree->HitTest(50, 15, &rect, node.Receive()); },
        [&] { m_Tree->HitTest(50, 35, &rect, node.Receive()); },
        [&] { (Pointer(1, 3, 0, 50, 5, kRect), Pointer(1, 2, 1, 50, 5, kRect)); },
        [&] { m_Tree->MakeNodeVisible(m_Root.Get(), 0); },
        [&] { m_Tree->put_Collection(m_Root.Get()); }};
    const struct {
        const char* m_Tree;
        bool m_IsVouched;
        Calls m_Calls[kOperations]; ///< picture, two hits, click, opening, binding
    } cases[] = {
        {"small", false,
            {{20, 32, 0}, {19, 16, 0}, {12, 11, 0}, {33, 32, 4}, {9, 7, 6}, {1, 2, 3}}},
        {"small", true, {{9, 21, 0}, {8, 5, 0}, {1, 0, 0}, {11, 10, 4}, {9, 7, 6}, {1, 2, 3}}},
        {"deep", false,
            {{106, 160, 0}, {102, 133, 0}, {108, 141, 0}, {202, 266, 3}, {6, 7, 3}, {1, 2, 1}}},
        {"deep", true, {{10, 32, 0}, {6, 5, 0}, {12, 13, 0}, {10, 10, 3}, {6, 7, 3}, {1, 2, 1}}},
        {"wide", false,
            {{20011, 30028, 0}, {20006, 30003, 0}, {20010, 30009, 0}, {40010, 60010, 2},
                {10003, 7, 10001}, {1, 2, 10000}}},
        {"wide", true,
            {{10, 28, 0}, {5, 3, 0}, {9, 9, 0}, {8, 10, 2}, {10003, 7, 10001}, {1, 2, 10000}}},
    };
    for (const auto& [tree, isVouched, calls] : cases) {
        for (size_t i = 0; i < kOperations; ++i) {
            const bool isDeep = tree == std::string("deep");
            Show(isDeep                         ? Deep()
                 : tree == std::string("small") ? Small()
                                                : Branch(10'000, 1),
                isDeep, isVouched);
            EXPECT_EQ(CallsOf(operations[i]), calls[i]) << tree << ' ' << isVouched << ' ' << i;
        }
    }
}

TEST_F(CostTest, RowsFarDownAreReachedFromTheNearestMark) {
    const auto nested = Branch(0, 1);
    for (int i = 0; i < 100; ++i) {
        nested->Append("branch", Branch(100, 2)->Identity());
    }
    using Pictures = std::vector<std::pair<int, Calls>>; ///< by the first row, in this order
    const std::pair<SmartPtr<CountingBranch>, Pictures> cases[] = {
        {Branch(10'000, 1), {{70, {150, 238, 0}}, {5'000, {249, 388, 0}}, {5'004, {17, 40, 0}},
                                {9'990, {533, 814, 0}}, {9'000, {441, 676, 0}}}},
        {nested, {{70, {151, 240, 0}}, {5'000, {252, 394, 0}}, {5'004, {19, 45, 0}},
                     {9'990, {537, 821, 0}}, {9'000, {445, 683, 0}}}}};
    for (const auto& [root, pictures] : cases) {
        Show(root, false, true);
        for (int i = 0; i < 100; ++i) {
            root->SetItemFlags(i, NODE_VISIBLE | NODE_EXPANDED | 1);
        }
        Draw(kRect);
        for (const auto& [position, calls] : pictures) {
            m_Tree->Control(115, position);
            EXPECT_EQ(CallsOf([&] { Draw(kRect); }), calls) << position;
        }
    }
}

TEST_F(CostTest, PicturesAndHitTestsAllocateNothing) {
    for (const bool isVouched : {false, true}) {
        for (const bool isDeep : {false, true}) {
            Show(isDeep ? Deep() : Branch(1'000, 1), isDeep, isVouched);
            m_Tree->Control(115, isDeep ? 28 : 500);
            CANVASRect rect = kRect;
            SmartPtr<IUnknown> node;
            int32_t drawn = 0;
            int32_t hit = 0;
            bool hasFailed = false;
            {
                const FailingNew failing;
                drawn = Draw(kRect);
                hit = m_Tree->HitTest(50, 25, &rect, node.Receive());
                hasFailed = failing.HasFailed();
            }
            EXPECT_TRUE(drawn == S_OK && hit == S_OK && !hasFailed) << isVouched << isDeep;
        }
    }
}

TEST_F(CostTest, RowsOfNoHeightAreNotAskedFor) {
    Show(Small(), false, false);
    m_Tree->SetElementSize(0, 0);
    EXPECT_EQ(CallsOf([&] { Draw(kRect); }), Calls());
}
