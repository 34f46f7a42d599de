#include "tests/support/FailingNew.h"
#include "tests/support/TreeTest.h"

#include <functional>

// Full memory, and hosts that do not keep their promises.

namespace {

using RobustnessTest = TreeTest;

/// A node and moniker for nothing, and a collection that claims more than it has.
class Liar final : public HostObject<Liar, SuperCollectionBase, IUINode, ICollectionMoniker> {
public:
    static constexpr const char* kKind = "Liar";

    int32_t GetCount(int32_t* count) override {
        *count = m_Count;
        return E_FAIL;
    }
    int32_t GetItem(int32_t, IUnknown** item) override { return Nothing(item); }
    int32_t GetItemName(int32_t, IString** name) override { return Nothing(name); }
    int32_t GetItemData(int32_t, IUnknown** data) override { return Nothing(data); }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        *flags = -1;
        return index < 100 ? S_OK : E_FAIL;
    }
    int32_t get_Object(IUnknown** object) override { return Nothing(object); }
    int32_t get_Name(IString** name) override { return Nothing(name); }
    int32_t BindToObject(const IID&, void** object) override { return Nothing(object); }

    int32_t m_Count = 100;

private:
    template <class T>
    int32_t Nothing(T** out) {
        *out = nullptr;
        return S_OK;
    }
};

} // namespace

TEST_F(RobustnessTest, FullMemoryFailsAnOperationAndLeavesTheControlUsable) {
    Bind("A\n a1\n  x\n a2\nB");
    Open("A");
    const auto item = Item("a2");
    const auto listener = Listener::Make();
    CANVASRect rect = {0, 0, 100, 200};
    SmartPtr<IUnknown> out;
    const auto pages = [&] { return reinterpret_cast<INamedCollection**>(out.Receive()); };
    const auto pointer = As<IUIMouseInput>();
    const auto renderable = As<IRenderableObject>();
    const auto source = As<IEventSource>();
    const auto specify = As<IUIPropertyPageSpecify>();
    IUITree* tree = m_Tree.Get();
    const std::function<int32_t()> operations[] = {
        [&] { return tree->get_Node(0, 2, 0, out.Receive()); },
        [&] { return tree->GetContainerSize(nullptr, nullptr, nullptr); },
        [&] { return tree->HitTest(5, 5, &rect, out.Receive()); },
        [&] { return tree->CompactNodes(); },
        [&] { return tree->MakeNodeVisible(m_Root.Get(), 0); },
        [&] { return tree->SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT); },
        [&] { return tree->put_Collection(m_Root.Get()); },
        [&] { return tree->Control(172, 0); },
        [&] { return renderable->Render(nullptr, &rect, nullptr, 0); },
        [&] { return pointer->Pointer(1, 3, 0, 5, 5, &rect, nullptr); },
        [&] { return pointer->Pointer(1, 2, 1, 5, 5, &rect, nullptr); },
        [&] { return source->Advise(listener->Identity(), 1); },
        [&] { return specify->GetPages(0, pages(), nullptr); },
        [&] { return tree->put_Node(0, 1, 0, item.Get()); },
    };
    for (const auto& operation : operations) {
        SCOPED_TRACE(&operation - operations);
        for (size_t allowed = 0; allowed < 40; ++allowed) {
            int32_t status = 0;
            {
                const FailingNew failing(allowed);
                status = operation();
            }
            EXPECT_TRUE(status >= 0 || status == E_FAIL);
            source->Advise(nullptr, 0);
        }
        EXPECT_GE(operation(), 0);
        source->Advise(nullptr, 0);
    }
}

TEST_F(RobustnessTest, CreationThatRunsOutOfMemoryLeavesNothing) {
    const CreatorFunction creator = m_Module->FindCreator(L"UITree");
    IID iid = IID_IUITree;
    bool failed = false;
    bool created = false;
    for (size_t allowed = 0; !created && allowed < 500; ++allowed) {
        void* object = &iid;
        int32_t status = 0;
        {
            const FailingNew failing(allowed);
            status = creator(nullptr, &iid, &object);
        }
        EXPECT_EQ(status < 0, object == nullptr);
        created = status >= 0;
        failed = failed || !created;
        Adopt(static_cast<IUITree*>(object)).Reset();
    }
    EXPECT_TRUE(failed && created);
}

TEST_F(RobustnessTest, MemoryDoesNotGrowWithTheRows) {
    const auto allocations = [&](int32_t rows) {
        std::string outline;
        for (int32_t i = 0; i < rows; ++i) {
            outline += i % 2 == 0 ? "branch\n" : " leaf\n";
        }
        Bind(outline);
        for (size_t allowed = 0;; ++allowed) {
            const FailingNew failing(allowed);
            int32_t counted = 0;
            if (m_Tree->GetContainerSize(nullptr, &counted, nullptr) >= 0 &&
                m_Tree->SelectNode(counted - 1, SELECT_ABSOLUTE) >= 0) {
                return allowed;
            }
        }
    };
    EXPECT_EQ(allocations(20'000), allocations(20));
}

TEST_F(RobustnessTest, CollectionThatAnswersNothingHarmsNobody) {
    const auto liar = Liar::Make();
    const auto root = Query<ISuperCollection>(liar->Identity());
    CANVASRect rect = {0, 0, 100, 200};
    for (const int32_t count : {100, -1, INT32_MIN}) {
        liar->m_Count = count;
        EXPECT_EQ(m_Tree->put_Collection(root.Get()), S_OK);
        As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0);
        m_Tree->SelectNode(3, SELECT_ABSOLUTE | SELECT_CURRENT | SELECT_SCROLL);
        for (const int32_t action : {3, 2, 0}) {
            As<IUIMouseInput>()->Pointer(1, action, 0, 5, 5, &rect, nullptr);
        }
        m_Tree->MakeNodeVisible(root.Get(), 5);
        m_Tree->Insert(root.Get(), nullptr, {}, {}, {});
        EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
        EXPECT_EQ(m_Tree->Clear(), S_OK);
    }
}
