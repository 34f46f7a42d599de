#include "tests/support/TreeTest.h"

#include <dlfcn.h>

// A control in a host that has nothing to offer. The entry points are the validator's.

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
    void SetUp() override {} // the host loses its components first
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

TEST_F(EntryTest, ControlRunsWithoutAnyComponent) {
    Initialize(NoComponents::Make().Get());
    TreeTest::SetUp();
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->get_Collection(node.Receive()), E_INVALIDARG);
    EXPECT_EQ(m_Tree->put_Node(0, 0, 0, m_Blind->Identity()), E_INVALIDARG) << "nowhere to put it";
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
