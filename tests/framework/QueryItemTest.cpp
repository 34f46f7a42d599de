#include "tests/framework/FrameworkTest.h"

namespace {

using QueryItemTest = FrameworkTest;
using Item = SmartPtr<IUnknown>;

/// A node, a moniker or both, by its bases. A moniker of nothing fails and leaves garbage.
template <class... Bases>
struct Wrapper final : HostObject<Wrapper<Bases...>, Bases...> {
    static constexpr const char* kKind = "Wrapper";
    Wrapper(const Item& object, const Item& bound) : m_Object(object), m_Bound(bound) {}
    int32_t get_Object(IUnknown** object) { return (*object = Item(m_Object).Detach(), E_FAIL); }
    int32_t get_Name(IString**) { return E_FAIL; }
    int32_t BindToObject(const IID& iid, void** object) {
        *object = this;
        return m_Bound ? m_Bound->QueryInterface(iid, object) : E_FAIL;
    }

    Item m_Object, m_Bound;
};

template <class... Bases>
Item Wrap(const Item& object, const Item& bound) {
    return Item(Wrapper<Bases...>::Make(object, bound)->Identity());
}
constexpr auto Node = [](const Item& object) { return Wrap<IUINode>(object, {}); };
constexpr auto Moniker = [](const Item& bound) { return Wrap<ICollectionMoniker>({}, bound); };
constexpr auto Both = Wrap<IUINode, ICollectionMoniker>;

} // namespace

TEST_F(QueryItemTest, InterfaceIsFoundThroughEveryWrapperOrTheFailureLeavesNull) {
    const Item target(Adopt(ISCreate(L"target")).Get()), other(Adopt(ISCreate(L"other")).Get());
    const Item thing(Thing::Make()->Identity());
    const std::pair<Item, int32_t> cases[] = {{target, S_OK}, {Node(target), S_OK},
        {Moniker(target), S_OK}, {Node(Moniker(target)), S_OK}, {Both({}, target), S_OK},
        {Both(Moniker(other), target), S_OK}, {Both(target, other), S_OK}, {{}, E_NOINTERFACE},
        {thing, E_NOINTERFACE}, {Node({}), E_NOINTERFACE}, {Node(thing), E_NOINTERFACE},
        {Moniker(thing), E_NOINTERFACE}, {Moniker({}), E_FAIL}};
    for (const auto& [item, status] : cases) {
        auto* found = reinterpret_cast<IString*>(&m_Before);
        EXPECT_EQ(QueryItem(item.Get(), IID_IString, &found), status);
        const SmartPtr<IUnknown> answer = Adopt<IUnknown>(found);
        EXPECT_TRUE(answer == (status == S_OK ? target.Get() : nullptr));
    }
}
