#include "tests/support/TreeTest.h"

#include "framework/Support.h"
#include "host/data/Expansion.h"
#include "host/sources/OutlineSource.h"
#include "host/text/Text.h"

#include <dlfcn.h>
#include <sstream>

namespace {

/// Binds to nothing.
class Moniker final : public HostObject<Moniker, ICollectionMoniker> {
public:
    static constexpr const char* kKind = "Moniker";
    int32_t BindToObject(const IID&, void** object) override {
        *object = nullptr;
        return E_FAIL;
    }
};

} // namespace

void TreeTest::TearDown() {
    EXPECT_TRUE(!m_Tree || References(m_Tree.Get()) == 1) << "somebody still holds the control";
    m_Tree.Reset();
    m_Module.reset();
    m_Host.reset();
    EXPECT_EQ(dlopen("./UITree.so", RTLD_NOW | RTLD_NOLOAD), nullptr) << "still loaded";
}

void TreeTest::Vouch(bool vouched) {
    m_Blind->RemoveAll();
    if (!vouched) {
        m_Blind->Append("wrapper", Moniker::Make()->Identity());
    }
}

void TreeTest::Listen() {
    m_Listener = Listener::Make();
    As<IEventSource>()->Advise(m_Listener->Identity(), 1);
}

SmartPtr<ISuperCollection> TreeTest::Outline(const std::string& outline) {
    std::istringstream input(outline);
    return ReadOutline(input);
}

void TreeTest::BindCollection(const SmartPtr<ISuperCollection>& collection) {
    m_Root = collection;
    ASSERT_EQ(m_Tree->put_Collection(collection.Get()), S_OK);
}

SmartPtr<SuperCollection> TreeTest::BindItems(
    std::initializer_list<std::pair<const char*, IUnknown*>> items) {
    auto root = SuperCollection::Make();
    for (const auto& [name, item] : items) {
        root->Append(name, item);
    }
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    return root;
}

std::string TreeTest::Place::Label() const {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    return ToUtf8(CREFString(name.Get()));
}

SmartPtr<IUnknown> TreeTest::Place::Item() const {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    return item;
}

int TreeTest::Place::Flags() const {
    int32_t flags = -1;
    collection->GetItemFlags(index, &flags);
    return flags;
}

TreeTest::Place TreeTest::Place::Find(const std::string& label) const {
    for (Place place = *this; place.Item(); ++place.index) {
        if (place.Label() == label) {
            return place;
        }
        const Place below{CollectionBelow(collection.Get(), place.index), 0};
        if (const Place found = below.collection ? below.Find(label) : Place(); found.collection) {
            return found;
        }
    }
    return {};
}

void TreeTest::Open(const std::string& label) {
    const Place place = Find(label);
    ASSERT_TRUE(ToggleNode(place.collection.Get(), place.index)) << label << " is a leaf";
}

int32_t TreeTest::Pointer(
    int state, int action, int keys, double x, double y, CANVASRect rect, IUnknown* context) const {
    // Not held: the control may go while it is called.
    IUIMouseInput* input = As<IUIMouseInput>().Get();
    return input->Pointer(state, action, keys, x, y, &rect, context);
}

std::string TreeTest::Rows() const {
    std::string rows;
    VisitRows(m_Root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t) {
        rows += (rows.empty() ? "" : " ") + Place{SmartPtr(collection), index}.Label();
        return true;
    });
    return rows;
}

int TreeTest::RowCount() const {
    int32_t columns = -1, rows = -1, layers = -1;
    EXPECT_EQ(m_Tree->GetContainerSize(&columns, &rows, &layers), S_OK);
    EXPECT_TRUE(columns == 1 && layers == 1);
    return rows;
}

std::string TreeTest::SelectedLabel() const {
    SmartPtr<IUnknown> collection;
    const int32_t index = m_Tree->GetSelected(-1, SELECTED_COLLECTION, collection.Receive());
    auto selected = Query<ISuperCollection>(collection.Get());
    return selected && index >= 0 ? Place{std::move(selected), index}.Label() : "";
}

int TreeTest::Value(int id) const {
    int32_t value = -1;
    m_Tree->Inquire(id, &value);
    return value;
}

int TreeTest::References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}
