#include "tests/framework/FrameworkTest.h"

namespace {

using QueryItemTest = LeakTest;
using Item = SmartPtr<IUnknown>;

/// What is asked for.
class Target final : public HostObject<Target, IObjectInfo> {
public:
    static constexpr const char* kKind = "Target";
    int32_t GetName(int32_t, tagREFString*) override { return E_FAIL; }
};

/// A node, a moniker or both, by its bases. A moniker of nothing fails and leaves garbage.
template <class... Bases>
class Wrapper final : public HostObject<Wrapper<Bases...>, Bases...> {
public:
    static constexpr const char* kKind = "Wrapper";
    Wrapper(const Item& object, const Item& bound) : m_Object(object), m_Bound(bound) {}

    int32_t get_Object(IUnknown** object) { return (*object = Item(m_Object).Detach(), E_FAIL); }
    int32_t get_Name(IString**) { return E_FAIL; }
    int32_t BindToObject(const IID& iid, void** object) {
        *object = this;
        return m_Bound ? m_Bound->QueryInterface(iid, object) : E_FAIL;
    }

private:
    Item m_Object;
    Item m_Bound;
};

template <class... Bases>
Item Wrap(const Item& object, const Item& bound) {
    return Item(Wrapper<Bases...>::Make(object, bound)->Identity());
}
Item Node(const Item& object) {
    return Wrap<IUINode>(object, {});
}
Item Moniker(const Item& bound) {
    return Wrap<ICollectionMoniker>({}, bound);
}
Item Both(const Item& object, const Item& bound) {
    return Wrap<IUINode, ICollectionMoniker>(object, bound);
}

} // namespace

TEST_F(QueryItemTest, InterfaceIsFoundThroughEveryWrapper) {
    const Item target(Target::Make()->Identity());
    const Item other(Target::Make()->Identity());
    const std::pair<const char*, Item> cases[] = {{"the item itself", target},
        {"a node's object", Node(target)}, {"a moniker", Moniker(target)},
        {"a node's moniker", Node(Moniker(target))}, {"no object, but a moniker", Both({}, target)},
        {"the own moniker first", Both(Moniker(other), target)},
        {"the object before the own moniker", Both(target, other)}};
    for (const auto& [name, item] : cases) {
        SmartPtr<IObjectInfo> found;
        EXPECT_EQ(QueryItem(item.Get(), IID_IObjectInfo, found.Receive()), S_OK) << name;
        EXPECT_TRUE(IsSameObject(found.Get(), target.Get())) << name;
    }
}

TEST_F(QueryItemTest, FailureLeavesNullAndTheFailingStatus) {
    const Item thing(Thing::Make()->Identity());
    const std::tuple<const char*, Item, int32_t> cases[] = {{"null", {}, E_NOINTERFACE},
        {"no wrapper", thing, E_NOINTERFACE}, {"a node of nothing", Node({}), E_NOINTERFACE},
        {"a node of something else", Node(thing), E_NOINTERFACE},
        {"a moniker of something else", Moniker(thing), E_NOINTERFACE},
        {"a moniker that fails", Moniker({}), E_FAIL}};
    for (const auto& [name, item, status] : cases) {
        auto* found = reinterpret_cast<IObjectInfo*>(&m_Before);
        EXPECT_EQ(QueryItem(item.Get(), IID_IObjectInfo, &found), status) << name;
        EXPECT_EQ(found, nullptr) << name;
    }
}
