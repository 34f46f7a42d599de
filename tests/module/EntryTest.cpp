#include "tests/support/TreeTest.h"

#include <dlfcn.h>

// The module's entry points and the life of its objects.

namespace {

using EntryTest = TreeTest;

int32_t CountOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

/// A host's component collection that knows nothing.
class NoComponents final : public HostObject<NoComponents, IComponentCollection> {
public:
    static constexpr const char* kKind = "NoComponents";

    int32_t GetItem(int32_t, IUnknown** item) override {
        *item = nullptr;
        return E_FAIL;
    }
    int32_t FindItem(IString*, int32_t*) override { return E_FAIL; }
    int32_t CreateComponent(tagREFString, const IID*, void** object) override {
        *object = nullptr;
        return E_FAIL;
    }
};

/// The module's InitializeModule, through a handle of the test's own.
class LoadedModule {
public:
    LoadedModule() : m_Library(dlopen("./UITree.so", RTLD_NOW)) {}
    ~LoadedModule() { dlclose(m_Library); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    int32_t Initialize(IComponentCollection* collection) const {
        using Function = int32_t (*)(void*, IComponentCollection*);
        const auto initialize = reinterpret_cast<Function>(
            dlsym(m_Library, "_Z16InitializeModulePvP20IComponentCollection"));
        return initialize(nullptr, collection);
    }
    void* Symbol(const char* name) const { return dlsym(m_Library, name); }

private:
    void* m_Library;
};

class BareHostTest : public TreeTest {
protected:
    void SetUp() override {
        const auto none = NoComponents::Make();
        LoadedModule().Initialize(none.Get());
        TreeTest::SetUp();
    }
};

} // namespace

TEST_F(EntryTest, FactoryKnowsItsComponentByItsExactName) {
    EXPECT_NE(m_Module->FindCreator(L"UITree"), nullptr);
    for (const wchar_t* name : {L"uitree", L"UITre", L"UITreeX", L"", L"UITrex"}) {
        EXPECT_EQ(m_Module->FindCreator(name), nullptr);
    }
}

TEST_F(EntryTest, CreationForAnUnknownInterfaceLeavesNothing) {
    const CreatorFunction creator = m_Module->FindCreator(L"UITree");
    IID iid = IID_IString;
    void* object = &iid;
    EXPECT_EQ(creator(nullptr, &iid, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(EntryTest, InitializeModuleReplacesTheCollectionItHolds) {
    const LoadedModule module;
    const auto first = NoComponents::Make();
    const auto second = NoComponents::Make();
    EXPECT_EQ(module.Initialize(first.Get()), S_OK);
    EXPECT_EQ(CountOf(first.Get()), 2);
    EXPECT_EQ(module.Initialize(second.Get()), S_OK);
    EXPECT_EQ(CountOf(first.Get()), 1);
    EXPECT_EQ(CountOf(second.Get()), 2);
    EXPECT_EQ(module.Initialize(nullptr), S_OK);
    EXPECT_EQ(CountOf(second.Get()), 1);
}

TEST_F(EntryTest, IdentifiersAreFilledWhenTheModuleIsLoaded) {
    const LoadedModule module;
    const auto* tree = static_cast<const IID*>(module.Symbol("IID_IUITree"));
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(*tree, (IID{{0x4B2A26A9, 1, 0, 0}}));
    const auto* last = static_cast<const IID*>(module.Symbol("IID_IUIRefreshableObject"));
    EXPECT_EQ(*last, __IIDOfc("IUIRefreshableObject"));
}

TEST_F(BareHostTest, ControlRunsWithoutAnyComponent) {
    SmartPtr<IUnknown> collection;
    EXPECT_EQ(m_Tree->get_Collection(collection.Receive()), E_INVALIDARG);
    Bind("A\n a\nB");
    EXPECT_EQ(Rows(), "A B");
    EXPECT_EQ(m_Tree->Control(115, 1), E_FAIL);
    SmartPtr<IUnknown> node;
    CANVASRect rect = {0, 0, 100, 100};
    EXPECT_EQ(m_Tree->HitTest(1, 16, &rect, node.Receive()), S_OK);
    EXPECT_TRUE(node == Item("B").Get());
    EXPECT_EQ(As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0), S_OK);
    EXPECT_EQ(As<IUIMouseInput>()->Pointer(1, 2, 0, 1, 1, &rect, nullptr), S_OK);
    EXPECT_EQ(Rows(), "A a B");
    INamedCollection* pages = nullptr;
    EXPECT_EQ(As<IUIPropertyPageSpecify>()->GetPages(0, &pages, nullptr), E_FAIL);
    EXPECT_EQ(pages, nullptr);
}
