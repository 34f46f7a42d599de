#include "tests/support/TreeTest.h"

#include <dlfcn.h>

// The module's entry points, and a control in a host that has nothing to offer.

namespace {

/// A host's component collection that knows nothing.
struct NoComponents final : HostObject<NoComponents, IComponentCollection> {
    static constexpr const char* kKind = "NoComponents";
    int32_t GetItem(int32_t, IUnknown**) override { return E_FAIL; }
    int32_t FindItem(IString*, int32_t*) override { return E_FAIL; }
    int32_t CreateComponent(tagREFString, const IID*, void** object) override {
        return *object = nullptr, E_FAIL;
    }
};

class EntryTest : public TreeTest {
protected:
    void SetUp() override {} // most of it needs no control
    void TearDown() override {
        dlclose(m_Library);
        TreeTest::TearDown();
    }
    int Initialize(IComponentCollection* collection) const {
        const auto initialize = reinterpret_cast<int32_t (*)(void*, IComponentCollection*)>(
            dlsym(m_Library, "_Z16InitializeModulePvP20IComponentCollection"));
        return initialize(nullptr, collection);
    }
    void* m_Library = dlopen("./UITree.so", RTLD_NOW);
};

} // namespace

TEST_F(EntryTest, FactoryKnowsItsComponentByItsExactName) {
    for (const wchar_t* name : {L"uitree", L"UITre", L"UITreeX", L"", L"UITrex"}) {
        EXPECT_EQ(m_Module->FindCreator(name), nullptr);
    }
    const CreatorFunction creator = m_Module->FindCreator(L"UITree");
    IID iid = IID_IString;
    void* object = &iid;
    EXPECT_EQ(creator(nullptr, &iid, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(EntryTest, InitializeModuleReplacesTheCollectionItHolds) {
    const auto first = NoComponents::Make();
    const auto second = NoComponents::Make();
    // The collection given, and the references to the two then.
    const std::tuple<IComponentCollection*, int, int> cases[] = {
        {first.Get(), 2, 1}, {second.Get(), 1, 2}, {nullptr, 1, 1}};
    for (const auto& [collection, firsts, seconds] : cases) {
        EXPECT_EQ(Initialize(collection), S_OK);
        EXPECT_EQ(References(first->Identity()), firsts);
        EXPECT_EQ(References(second->Identity()), seconds);
    }
}

TEST_F(EntryTest, ControlRunsWithoutAnyComponent) {
    Initialize(NoComponents::Make().Get());
    TreeTest::SetUp();
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->get_Collection(node.Receive()), E_INVALIDARG);
    Bind("A\n a\nB");
    EXPECT_EQ(m_Tree->Control(115, 1), E_FAIL);
    CANVASRect rect = {0, 0, 100, 100};
    EXPECT_EQ(m_Tree->HitTest(1, 16, &rect, node.Receive()), S_OK);
    EXPECT_TRUE(node == Item("B").Get());
    EXPECT_EQ(Draw(rect), S_OK);
    EXPECT_EQ(Pointer(1, 2, 0, 1, 1), S_OK);
    EXPECT_EQ(Rows(), "A a B");
    INamedCollection* pages = nullptr;
    EXPECT_EQ(As<IUIPropertyPageSpecify>()->GetPages(0, &pages, nullptr), E_FAIL);
    EXPECT_EQ(pages, nullptr);
}
