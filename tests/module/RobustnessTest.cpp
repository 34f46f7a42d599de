#include "app/faults/FailingNew.h"
#include "host/settings/Document.h"
#include "host/settings/XmlFile.h"
#include "tests/support/TreeTest.h"

// Full memory, and a host that does not keep its promises.

namespace {

using RobustnessTest = TreeTest;

/// Vouches for what changes all the same.
class FalseWitness final
    : public HostObject<FalseWitness, SuperCollectionBase, ICollectionVersion> {
public:
    static constexpr const char* kKind = "FalseWitness";
    int32_t GetVersion(uint64_t* version) override {
        *version = 7;
        return S_OK;
    }
};

/// Hides its last item when another one is marked, or loses the flags of an item that it hands out.
class Reacting final : public HostObject<Reacting, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "Reacting";
    int32_t GetItem(int32_t index, IUnknown** item) override {
        m_Unreadable = m_LosesFlags ? index : -1;
        return SuperCollectionBase::GetItem(index, item);
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        return index == m_Unreadable ? E_FAIL : SuperCollectionBase::GetItemFlags(index, flags);
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        if ((flags & NODE_SELECTED) != 0 && !m_LosesFlags) {
            SuperCollectionBase::SetItemFlags(2, 1);
        }
        return SuperCollectionBase::SetItemFlags(index, flags);
    }

    bool m_LosesFlags = false;

private:
    int32_t m_Unreadable = -1;
};

} // namespace

TEST_F(RobustnessTest, RowsThatGoWhileOneIsMarkedAreNotRemembered) {
    const auto root = Reacting::Make();
    for (const char* name : {"a", "b", "c"}) {
        root->Append(name, Outline("leaf").Get());
    }
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    m_Tree->Control(105, 0);
    m_Tree->SetElementSize(0, 10);
    Draw({0, 0, 100, 100});
    EXPECT_EQ(RowCount(), 3);
    m_Tree->SelectNode(0, SELECT_ABSOLUTE);
    EXPECT_EQ(RowCount(), 2);
    Draw({0, 0, 100, 100});
    root->m_LosesFlags = true;
    m_Tree->SelectNode(1, SELECT_ABSOLUTE);
    root->m_LosesFlags = false;
    EXPECT_EQ(RowCount(), 1) << "an item without flags gets the mark and nothing else";
}

TEST_F(RobustnessTest, CollectionOfTheVersionOfTheOneBeforeItIsCountedItself) {
    m_Tree->Control(105, 0);
    m_Tree->SetElementSize(0, 10);
    for (const int rows : {1, 5}) {
        const auto root = FalseWitness::Make();
        for (int i = 0; i < rows; ++i) {
            root->Append("leaf", Outline("x").Get());
        }
        BindCollection(SmartPtr<ISuperCollection>(root.Get()));
        CANVASRect rect = {0, 0, 100, 100};
        SmartPtr<IUnknown> node;
        EXPECT_EQ(m_Tree->HitTest(5, rows * 10 - 5, &rect, node.Receive()), S_OK) << rows;
    }
}

TEST_F(RobustnessTest, RowIsFoundFromTheRootWhenTheWayToItIsGone) {
    const auto root = FalseWitness::Make();
    const auto branch = FalseWitness::Make();
    root->Append("branch", branch->Identity());
    for (int i = 0; i < 200; ++i) {
        branch->Append("leaf", Outline("x").Get());
        branch->SetItemFlags(i, NODE_VISIBLE | 2);
        root->Append("leaf", Outline("x").Get());
    }
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    m_Tree->Control(105, 0);
    m_Tree->SetElementSize(0, 10);
    root->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
    m_Tree->Control(115, 150);
    CANVASRect rect = {0, 0, 100, 100};
    Draw(rect);
    branch->RemoveAll();
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->HitTest(5, 5, &rect, node.Receive()), S_OK);
    EXPECT_TRUE((Place{m_Root, 150}.Item() == node.Get()));
}

TEST_F(RobustnessTest, CollectionWhoseVersionLiesIsShownAsItWasAndHarmsNobody) {
    const auto root = FalseWitness::Make();
    for (int i = 0; i < 300; ++i) {
        root->Append("branch", Outline("leaf\nleaf").Get());
    }
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    const auto branch = Query<ISuperCollection>(Item("branch").Get());
    CANVASRect rect = {0, 0, 100, 100};
    for (const int position : {0, 250, 299}) {
        for (const int left : {300, 200, 0}) {
            m_Tree->Control(115, position);
            Draw(rect);
            root->RemoveAll();
            for (int i = 0; i < left; ++i) {
                root->Append(i % 2 == 0 ? "leaf" : "branch", i % 2 == 0 ? nullptr : branch.Get());
                root->SetItemFlags(i, NODE_VISIBLE | NODE_EXPANDED | 1);
            }
            EXPECT_EQ(Draw(rect), S_OK);
            SmartPtr<IUnknown> node;
            m_Tree->HitTest(5, 55, &rect, node.Receive());
            for (const int action : {3, 2, 0}) {
                Pointer(1, action, 0, 5, 55, rect);
            }
        }
    }
    for (int i = 0; i < 300; ++i) {
        root->Append("leaf", nullptr);
        root->SetItemFlags(i, NODE_VISIBLE | 1);
    }
    Draw(rect);
    m_Tree->Control(115, 250);
    Draw(rect);
    for (int i = 0; i < 250; ++i) {
        root->SetItemFlags(i, 1);
    }
    m_Tree->Control(115, 240);
    EXPECT_EQ(Draw(rect), S_OK) << "what lay before the row that was found last is gone";
    root->RemoveAll();
    int32_t rows = 0;
    m_Tree->GetContainerSize(nullptr, &rows, nullptr);
    EXPECT_EQ(rows, 300) << "as it was when it was counted";
}

TEST_F(RobustnessTest, FullMemoryFailsAnOperationAndLeavesTheControlUsable) {
    std::string outline = "A\n a1\n  x\n a2\nB";
    for (int level = 1; level < 40; ++level) { // more than lie within a walk
        outline += '\n' + std::string(size_t(level), ' ') + 'd';
    }
    Bind(outline);
    Open("A");
    Open("B");
    for (auto above = Query<ISuperCollection>(Item("B").Get()); above;
         above = Query<ISuperCollection>(Place{above, 0}.Item().Get())) {
        above->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 2);
    }
    const auto item = Item("a2");
    const auto listener = Listener::Make();
    CANVASRect rect = {0, 0, 100, 1000};
    SmartPtr<IUnknown> out;
    const auto pages = [&] { return reinterpret_cast<INamedCollection**>(out.Receive()); };
    const auto source = As<IEventSource>();
    const auto xml = XmlFile::Make();
    SmartPtr<IDataStream> folders;
    const std::function<int()> operations[] = {
        [&] { return m_Tree->get_Node(0, 2, 0, out.Receive()); },
        [&] { return m_Tree->GetContainerSize(nullptr, nullptr, nullptr); },
        [&] { return m_Tree->HitTest(5, 5, &rect, out.Receive()); },
        [&] { return m_Tree->CompactNodes(); },
        [&] { return m_Tree->MakeNodeVisible(m_Root.Get(), 0); },
        [&] { return m_Tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT); },
        [&] { return m_Tree->put_Collection(m_Root.Get()); },
        [&] { return m_Tree->Control(172, 0); },
        [&] { return Draw(rect); },
        [&] { return Pointer(1, 3, 0, 5, 5); },
        [&] { return Pointer(1, 2, 1, 5, 5); },
        [&] { return source->Advise(listener->Identity(), 1); },
        [&] { return As<IUIPropertyPageSpecify>()->GetPages(0, pages(), nullptr); },
        [&] { return m_Tree->put_Node(0, 1, 0, item.Get()); },
        [&] { return As<IDataPersist>()->Save(folders.Get(), 0); },
        [&] { return As<IDataPersist>()->Load(folders.Get(), 0); },
        [&] { return Settings()->UIPropInterrogate_SaveXML(nullptr, xml.Get(), 0); },
        [&] { return Settings()->UIPropInterrogate_LoadXML(nullptr, xml.Get(), 0); },
    };
    for (const auto& operation : operations) {
        SCOPED_TRACE(&operation - operations);
        bool hasFailed = true;
        for (size_t allowed = 0; hasFailed; ++allowed) {
            const auto document = Document::InMemory(); // fails for good after the first time
            folders = document.Root();
            As<IDataPersist>()->Save(folders.Get(), 0);
            int status = 0;
            {
                const FailingNew failing(allowed);
                status = operation();
                hasFailed = failing.HasFailed();
            }
            EXPECT_TRUE(status >= 0 || (status == E_FAIL && hasFailed));
            source->Advise(nullptr, 0);
            folders.Reset();
        }
    }
}

TEST_F(RobustnessTest, ControlMadeWhileMemoryIsFullHasAllItsParameters) {
    const CreatorFunction create = m_Module->FindCreator(L"UITree");
    IID iid = IdentifierOf<IUIPropInterrogate>();
    bool hasFailed = true;
    for (size_t allowed = 0; hasFailed; ++allowed) {
        SmartPtr<IUIPropInterrogate> made;
        {
            const FailingNew failing(allowed, 1);
            create(nullptr, &iid, made.ReceiveAny());
            hasFailed = failing.HasFailed();
        }
        int32_t parameters = 10;
        if (made) {
            made->Inquire(PROPID_ALL, &parameters);
        }
        EXPECT_EQ(parameters, 10) << "without allocation " << allowed;
    }
}

TEST_F(RobustnessTest, MemoryDoesNotGrowWithTheRows) {
    const auto allocations = [&](int branches) {
        std::string outline;
        for (int i = 0; i < branches; ++i) {
            outline += "branch\n leaf\n";
        }
        Bind(outline);
        for (size_t allowed = 0;; ++allowed) {
            const FailingNew failing(allowed);
            if (m_Tree->GetContainerSize(nullptr, nullptr, nullptr) >= 0 &&
                m_Tree->SelectNode(branches - 1, SELECT_ABSOLUTE) >= 0) {
                return allowed;
            }
        }
    };
    EXPECT_EQ(allocations(10'000), allocations(10));
}
