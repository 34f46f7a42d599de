#include "tests/contract/Declarations.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

// A host that was compiled without our headers loads the module and uses the control.

namespace {

using namespace foreign;

/// Three leaves, which are also their own items. Counts its references and is never destroyed.
class Leaves final : public Collection {
public:
    int32_t Query(const Identifier& identifier, void** object) override {
        const Identifier own = Derive("ISuperCollection");
        const Identifier root = {{0, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
        const bool known = std::memcmp(&identifier, &root, 16) == 0 ||
                           (m_IsCollection && std::memcmp(&identifier, &own, 16) == 0);
        *object = known ? this : nullptr;
        m_References += known ? 1 : 0;
        return known ? 0 : static_cast<int32_t>(0x80004002);
    }
    int32_t Retain() override { return ++m_References; }
    int32_t Drop() override { return --m_References; }

    int32_t Count(int32_t* count) override { return *count = 3, 0; }
    int32_t Item(int32_t index, Object** item) override {
        *item = IsItem(index) ? &m_Leaf[index] : nullptr;
        return *item ? ((*item)->Retain(), 0) : kFailed;
    }
    int32_t Name(int32_t, Object** name) override { return *name = nullptr, kFailed; }
    int32_t Data(int32_t, Object** data) override { return *data = nullptr, kFailed; }
    int32_t Flags(int32_t index, int32_t* flags) override {
        return IsItem(index) ? (*flags = m_Flags[index], 0) : kFailed;
    }
    int32_t SetFlags(int32_t index, int32_t flags) override {
        return IsItem(index) ? (m_Flags[index] = flags, 0) : kFailed;
    }
    int32_t Add(Object*, Object*, Object*, int32_t) override { return kFailed; }
    int32_t Insert(int32_t, int32_t, Object*, int32_t, int32_t) override { return kFailed; }
    int32_t Clear() override { return kFailed; }

    explicit Leaves(Leaves* leaves = nullptr) : m_Leaf(leaves), m_IsCollection(leaves != nullptr) {}

    int32_t m_References = 1;
    int32_t m_Flags[3] = {};

private:
    static constexpr int32_t kFailed = static_cast<int32_t>(0x80004005);
    bool IsItem(int32_t index) const { return m_Leaf && index >= 0 && index < 3; }

    Leaves* m_Leaf;
    bool m_IsCollection;
};

template <class T>
T* Ask(Object* object, const char* name) {
    void* answer = nullptr;
    EXPECT_EQ(object->Query(Derive(name), &answer), 0) << name;
    return static_cast<T*>(answer);
}

} // namespace

TEST(ForeignHost, LoadsTheModuleUsesTheControlAndUnloadsIt) {
    void* library = dlopen("./UITree.so", RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto initialize = reinterpret_cast<Initialize>(
        dlsym(library, "_Z16InitializeModulePvP20IComponentCollection"));
    const auto factory = reinterpret_cast<Factory>(dlsym(library, "CreateFunction"));
    ASSERT_TRUE(initialize && factory);
    EXPECT_EQ(initialize(nullptr, nullptr), 0);
    Creator creator = nullptr;
    ASSERT_EQ(factory({6, L"UITree"}, reinterpret_cast<void**>(&creator)), 0);
    Identifier identifier = Derive("IUITree");
    Tree* tree = nullptr;
    ASSERT_EQ(creator(nullptr, &identifier, reinterpret_cast<void**>(&tree)), 0);

    // Every base's part of the object stands where a host that steps through it expects it.
    constexpr size_t kWord = sizeof(void*);
    constexpr size_t kTable = 2 * kWord + 8; ///< a table pointer, an array and its two counts
    const std::pair<const char*, size_t> parts[] = {{"IObjectInfo", 2 * kWord},
        {"IDataPersist", 3 * kWord}, {"IParent", 4 * kWord}, {"IRenderableObject", 5 * kWord},
        {"IUITree", 6 * kWord}, {"IUINodeContainer", 6 * kWord}, {"IUIMouseInput", 7 * kWord},
        {"IUIPropertyPageSpecify", 8 * kWord}, {"IUIPropInterrogate", 9 * kWord},
        {"IUIPropInterrogateEx", 9 * kWord}, {"IUIRefreshableObject", 9 * kWord + kTable},
        {"IUITouchInput", 10 * kWord + kTable}, {"IEventSource", 11 * kWord + kTable},
        {"_IUIRefreshEvent", 11 * kWord + 2 * kTable}};
    const auto* start = reinterpret_cast<const char*>(tree) - 6 * kWord;
    for (const auto& [name, offset] : parts) {
        auto* part = Ask<Object>(tree, name);
        EXPECT_EQ(reinterpret_cast<const char*>(part) - start, static_cast<ptrdiff_t>(offset))
            << name;
        auto* whole = Ask<Object>(part, "IUITree");
        EXPECT_EQ(whole, tree) << name << " leads back";
        whole->Drop();
        part->Drop();
    }

    Leaves leaf[3];
    Leaves leaves(leaf);
    EXPECT_EQ(tree->Bind(&leaves), 0);
    EXPECT_EQ(leaves.m_Flags[2], 0x101);
    int32_t rows = 0;
    EXPECT_EQ(tree->Size(nullptr, &rows, nullptr), 0);
    EXPECT_EQ(rows, 3);

    Rect rect = {0, 0, 100, 100};
    auto* mouse = Ask<Mouse>(tree, "IUIMouseInput");
    EXPECT_EQ(mouse->Pointer(1, 3, 0, 50.5, 20.5, &rect, nullptr), 0);
    EXPECT_EQ(leaves.m_Flags[1], 0x501) << "the press selects the second row";
    Object* selected = nullptr;
    EXPECT_EQ(tree->Selected(-1, 0, &selected), 0);
    EXPECT_EQ(selected, &leaf[1]);
    selected->Drop();

    auto* drawable = Ask<Drawable>(tree, "IRenderableObject");
    Canvas canvas = {nullptr};
    EXPECT_EQ(drawable->Render(&canvas, &rect, nullptr, 0), 0);
    auto* touch = Ask<Touch>(tree, "IUITouchInput");
    EXPECT_EQ(touch->Update(0, 0, &rect, 0, 0, 0, 0, 0, 0, 15, 0, 0), 0);
    auto* properties = Ask<Properties>(tree, "IUIPropInterrogate");
    int32_t height = 0;
    EXPECT_EQ(properties->Inquire(4, &height), 3);
    EXPECT_EQ(height, 15);
    EXPECT_EQ(properties->Control(4, 20), 0);
    EXPECT_EQ(tree->ElementSize(nullptr, &height), 0);
    EXPECT_EQ(height, 20);

    for (Object* held : {static_cast<Object*>(mouse), static_cast<Object*>(drawable),
             static_cast<Object*>(touch), static_cast<Object*>(properties)}) {
        EXPECT_GT(held->Drop(), 0);
    }
    EXPECT_EQ(tree->Drop(), 0);
    EXPECT_EQ(leaves.m_References, 1);
    EXPECT_EQ(leaf[1].m_References, 1);
    EXPECT_EQ(dlclose(library), 0);
    EXPECT_EQ(dlopen("./UITree.so", RTLD_NOW | RTLD_NOLOAD), nullptr);
}
