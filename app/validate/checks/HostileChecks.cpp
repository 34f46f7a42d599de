#include "app/validate/Candidate.h"
#include "app/validate/Scenario.h"
#include "host/components/CreatableString.h"
#include "host/data/Expansion.h"
#include "host/data/SuperCollection.h"

#include <pthread.h>

// Collections that no well-meaning host has.

namespace {

constexpr int kDepth = 100'000;
/// A walk asks for each item that the host says there is, so it takes as long as the host says:
/// with the greatest count of all minutes, but where the first rows are enough.
constexpr int32_t kFarTooMany = 1'000'000;
constexpr size_t kStack = size_t{256} << 10;
/// Many times the questions that a small tree is asked in a component's life. Who goes round in a
/// ring asks them too, and gets no more answers then: it is found before memory has run out.
constexpr size_t kForEver = 100'000;

using Collection = SmartPtr<ISuperCollection>;

Collection Shared(const SmartPtr<SuperCollection>& collection) {
    return Collection(static_cast<ISuperCollection*>(collection.Get()));
}

/// Something that has nothing below it.
SmartPtr<CreatableString> Leaf() {
    return CreatableString::Make(L"leaf");
}

/// Opens what there is and then goes through the life of a component with it, by a gate if there is
/// to be an end of it.
void Suffer(Trial& trial, const std::string& name, const Stage& stage, const Collection& data,
    Gate* gate = nullptr) {
    trial.At("with " + name);
    const Candidate candidate(stage);
    candidate.Need<IUITree>(trial, "tree");
    const auto well = Scenario().Picture(candidate.Get());
    Scenario scenario(gate, data);
    for (int32_t index = 0; index < 8; ++index) {
        data->SetItemFlags(index, NODE_VISIBLE | NODE_EXPANDED | 1);
    }
    if (gate) {
        gate->Fail(kForEver);
    }
    scenario.Play(candidate.Get());
    if (gate) {
        trial.Expect(!gate->HasFailed(), "with " + name + " it asks for ever");
        gate->FailNothing();
    }
    trial.Expect(scenario.Picture(candidate.Get()) == well,
        "after " + name + " it does not draw as before any more");
}

/// Collections that may hold each other; at the end, also of a check that ends early, they let go.
class Family {
public:
    explicit Family(size_t count) : m_Members(count) {
        for (auto& each : m_Members) {
            each = SuperCollection::Make();
        }
    }
    ~Family() {
        for (const auto& each : m_Members) {
            each->RemoveAll();
        }
    }
    Family(const Family&) = delete;

    SuperCollection& operator[](size_t index) { return *m_Members[index].Get(); }
    Collection At(size_t index) const { return Shared(m_Members[index]); }

private:
    std::vector<SmartPtr<SuperCollection>> m_Members;
};

void Rings(Trial& trial) {
    Stage stage(trial.TheSubject());
    Gate& gate = stage.RaiseGate();
    stage.Load();
    for (size_t length = 1; length <= 3; ++length) {
        for (const bool isBelow : {false, true}) {
            Family ring(length + 1); // the last one is above the ring
            for (size_t i = 0; i < length; ++i) {
                ring[i].Append("next", ring[(i + 1) % length].Identity());
                ring[i].Append("leaf", Leaf()->Identity());
                ring[i].SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
            }
            ring[length].Append("ring", ring[0].Identity());
            Suffer(trial,
                "a ring of " + std::to_string(length) + (isBelow ? " below the root" : ""), stage,
                ring.At(isBelow ? length : 0), &gate);
        }
    }
    Family parents(3);
    const auto child = DataOf("x\ny\n");
    for (const size_t parent : {1, 2}) {
        parents[parent].Append("child", child.Get());
        parents[0].Append("parent", parents[parent].Identity());
    }
    OpenLevels(parents.At(0).Get(), 3);
    Suffer(trial, "a child in two parents", stage, parents.At(0), &gate);
    trial.Measure("6 rings, a child in two parents");
}

/// A collection that is asked, and may do anything before it answers.
class Wayward final : public HostObject<Wayward, SuperCollectionBase> {
public:
    static constexpr const char* kKind = "Wayward";
    enum class Way {
        kCountsChange,
        kCountNegative,
        kCountLeast,
        kCountFarTooGreat,
        kCountGreatest, ///< once it is bound
        kItemsNull,
        kFlagsUnreadable,
        kNothingReadable,
        kGrows,
        kShrinks,
        kEmpties,
        kTurns,
        kLeaves
    };

    explicit Wayward(Way way) : m_Way(way) {
        for (int i = 0; i < 6; ++i) {
            Append("row", DataOf("a\nb\n").Get());
        }
    }

    /// At that question, of which the first is 1, it is unbound, says so, and lets go of its items.
    Wayward(IUITree& tree, uint32_t question, bool& hasLeft)
        : m_Way(Way::kLeaves), m_Tree(&tree), m_Leaving(question), m_HasLeft(&hasLeft) {
        Append("leaf", Leaf()->Identity());
        Append("row", DataOf("a\nb\n").Get());
        Append("leaf", Leaf()->Identity());
    }

    int32_t GetCount(int32_t* count) override {
        Act();
        const int32_t status = SuperCollectionBase::GetCount(count);
        switch (m_Way) {
        case Way::kCountsChange:
            *count = static_cast<int32_t>(m_Reads * 7 % 40);
            return S_OK;
        case Way::kCountNegative:
            *count = -1;
            return S_OK;
        case Way::kCountLeast:
            *count = INT32_MIN;
            return S_OK;
        case Way::kCountFarTooGreat:
            *count = kFarTooMany;
            return S_OK;
        case Way::kCountGreatest:
            *count = m_IsBound ? INT32_MAX : *count;
            return S_OK;
        case Way::kNothingReadable:
            return E_FAIL;
        default:
            return status;
        }
    }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        Act();
        if (m_Way == Way::kItemsNull || m_Way == Way::kNothingReadable) {
            return *item = nullptr, m_Way == Way::kItemsNull ? S_OK : E_FAIL;
        }
        return SuperCollectionBase::GetItem(index, item);
    }
    int32_t GetItemName(int32_t index, IString** name) override {
        Act();
        if (m_Way == Way::kNothingReadable) {
            return *name = nullptr, S_OK;
        }
        return SuperCollectionBase::GetItemName(index, name);
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        Act();
        if (m_Way == Way::kFlagsUnreadable || m_Way == Way::kNothingReadable) {
            *flags = -1;
            return index < 100 && m_Way == Way::kNothingReadable ? S_OK : E_FAIL;
        }
        return SuperCollectionBase::GetItemFlags(index, flags);
    }

    bool m_IsBound = false;

private:
    /// What is read may be gone, or elsewhere, before it is answered.
    void Act() {
        if (++m_Reads == m_Leaving) {
            *m_HasLeft = true;
            m_Tree->put_Collection(DataOf("other\n").Get());
            m_Tree->Clear();
            RemoveAll();
        }
        if (m_Reads % 3 != 0) {
            return;
        }
        if (m_Way == Way::kGrows && m_Reads < 600) {
            InsertItem(0, 0, DataOf("n\n").Get(), 0, 0);
            SetItemFlags(0, NODE_VISIBLE | 1);
        } else if (m_Way == Way::kShrinks || m_Way == Way::kEmpties) {
            Refill(m_Way == Way::kEmpties ? 0 : m_Reads % 7);
        } else if (m_Way == Way::kTurns) {
            Refill(m_Reads % 2 == 0 ? 0 : 6);
        }
    }
    void Refill(uint32_t count) {
        RemoveAll();
        for (uint32_t i = 0; i < count; ++i) {
            Append("row", DataOf("a\n").Get());
            SetItemFlags(static_cast<int32_t>(i), NODE_VISIBLE | NODE_EXPANDED | 1);
        }
    }

    Way m_Way;
    uint32_t m_Reads = 0;
    IUITree* m_Tree = nullptr;
    uint32_t m_Leaving = 0;
    bool* m_HasLeft = nullptr;
};

using Way = Wayward::Way;

void SufferWays(Trial& trial, std::initializer_list<std::pair<Way, const char*>> ways) {
    Stage stage(trial.TheSubject());
    stage.Load();
    for (const auto& [way, name] : ways) {
        const auto data = Wayward::Make(way);
        Suffer(trial, name, stage, Collection(static_cast<ISuperCollection*>(data.Get())));
    }
    stage.Unload();
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure(std::to_string(ways.size()) + " kinds of collections");
}

/// What needs the first rows only, in a collection of the greatest count.
void AskForFirstRows(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    trial.At("with the greatest count");
    const Candidate candidate(stage);
    auto* tree = candidate.Need<IUITree>(trial, "tree");
    const auto well = Scenario().Picture(candidate.Get());
    const auto data = Wayward::Make(Way::kCountGreatest);
    tree->put_Collection(data->Identity());
    data->m_IsBound = true;
    for (int32_t row = 0; row < 6; ++row) {
        SmartPtr<IUnknown> node;
        tree->get_Node(0, row, 0, node.Receive());
        tree->SelectNode(row, SELECT_ABSOLUTE | SELECT_CURRENT);
        tree->GetSelected(-1, SELECTED_NODE, node.Receive());
        trial.Expect(node.Get() != nullptr, "row " + std::to_string(row) + " is not found");
    }
    data->m_IsBound = false;
    trial.Expect(Scenario().Picture(candidate.Get()) == well,
        "after the greatest count it does not draw as before any more");
}

void Counts(Trial& trial) {
    SufferWays(
        trial, {{Way::kCountsChange, "counts that change"},
                   {Way::kCountNegative, "a negative count"}, {Way::kCountLeast, "the least count"},
                   {Way::kCountFarTooGreat, "a count far too great"}});
    AskForFirstRows(trial);
    trial.Measure("4 kinds of collections, and the greatest count where first rows are enough");
}

void Items(Trial& trial) {
    SufferWays(trial, {{Way::kItemsNull, "items that are null"},
                          {Way::kFlagsUnreadable, "flags that cannot be read"},
                          {Way::kNothingReadable, "answers of success and nothing"}});
}

/// Nobody but the operation that asks holds then what it goes on with.
void LeaveAtEachQuestion(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* tree = candidate.Need<IUITree>(trial, "tree");
    const auto well = Scenario().Picture(candidate.Get());
    uint32_t question = 0;
    for (bool hasLeft = true; std::exchange(hasLeft, false);) {
        trial.At("with a tree that is unbound at question " + std::to_string(++question));
        const auto data = Wayward::Make(*tree, question, hasLeft);
        Scenario(nullptr, Collection(static_cast<ISuperCollection*>(data.Get())))
            .Play(candidate.Get());
    }
    trial.Expect(Scenario().Picture(candidate.Get()) == well,
        "after a tree that was unbound it does not draw as before any more");
    trial.Measure("4 kinds of collections, and one unbound at each of " +
                  std::to_string(question - 1) + " questions");
}

void Changes(Trial& trial) {
    SufferWays(trial, {{Way::kGrows, "items added while they are read"},
                          {Way::kShrinks, "items removed while they are read"},
                          {Way::kEmpties, "items that are gone when they are read"},
                          {Way::kTurns, "items that come and go while they are read"}});
    LeaveAtEachQuestion(trial);
}

/// A chain of open levels, at whose end stands its beginning: a ring that is found far down only.
struct Chain {
    Chain() {
        m_Bottom->Append("leaf", Leaf()->Identity());
        for (int level = kDepth; level > 0; --level) {
            auto above = SuperCollection::Make();
            above->Append("next", m_Top->Identity());
            above->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
            m_Top = std::move(above);
        }
        m_Bottom->Append("ring", m_Top->Identity());
        m_Bottom->SetItemFlags(1, NODE_VISIBLE | NODE_EXPANDED | 1);
    }
    ~Chain() { m_Bottom->RemoveAll(); }
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    static constexpr int32_t kRows = kDepth + 1;
    SmartPtr<SuperCollection> m_Bottom = SuperCollection::Make();
    SmartPtr<SuperCollection> m_Top = m_Bottom;
};

/// Runs the body in a thread with little stack.
void RunInSmallThread(const std::function<void()>& body) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStack);
    pthread_t thread{};
    const auto run = [](void* context) -> void* {
        (*static_cast<const std::function<void()>*>(context))();
        return nullptr;
    };
    const int error =
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&body));
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("cannot make a thread");
    }
    pthread_join(thread, nullptr);
}

/// Everything that goes through all of a tree, and a picture of all its rows without a canvas.
/// Answers the number of rows.
int32_t GoThrough(IUITree& tree, IRenderableObject& object) {
    CANVASRect rect{0, 0, 100, Chain::kRows};
    SmartPtr<IUnknown> node;
    int32_t rows = 0;
    tree.SetElementSize(0, 1);
    tree.GetContainerSize(nullptr, &rows, nullptr);
    object.Render(nullptr, &rect, nullptr, 0);
    tree.HitTest(5, rows - 1, &rect, node.Receive());
    tree.get_Node(0, rows - 1, 0, node.Receive());
    tree.SelectNode(rows - 1, SELECT_ABSOLUTE | SELECT_CURRENT);
    // Searched everywhere in vain, and appended; the last row itself would be a ring of its own.
    tree.Insert(DataOf("x\n").Get(), DataOf("y\n").Get(), {}, {}, {});
    tree.CompactNodes();
    tree.Clear();
    return rows;
}

void Deep(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* tree = candidate.Need<IUITree>(trial, "tree");
    auto* object = candidate.Need<IRenderableObject>(trial, "picture");
    const Chain chain;
    int32_t rows = 0;
    RunInSmallThread([&] {
        tree->put_Collection(chain.m_Top->Identity());
        chain.m_Top->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
        rows = GoThrough(*tree, *object);
    });
    trial.Expect(rows == Chain::kRows,
        "of " + std::to_string(Chain::kRows) + " rows it counts " + std::to_string(rows));
    trial.Measure(std::to_string(kDepth) + " levels in 256 KiB of stack");
}

} // namespace

std::span<const Check> HostileChecks() {
    static constexpr Check checks[] = {
        {"hostile.rings", "A collection may contain itself, directly or deeper, or stand in two.",
            "the walk: a collection that is on the way down already is not entered again", &Rings},
        {"hostile.counts",
            "A collection may say any count, and another one each time; what goes through it may "
            "take as "
            "long as it says.",
            "loops that run to GetCount, and what is allocated by it", &Counts},
        {"hostile.items", "Items may be null, and nothing of them readable.",
            "out-pointers that are used although they are null", &Items},
        {"hostile.changes",
            "Items may come and go, and the tree be unbound, in the very calls that read them.",
            "what is kept of an item across a call of the host", &Changes},
        {"hostile.depth", "A tree may be 100,000 levels deep.",
            "recursion in walks, drawings and destructors", &Deep},
    };
    return checks;
}
