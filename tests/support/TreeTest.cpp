#include "tests/support/TreeTest.h"

#include "framework/Support.h"
#include "host/Expansion.h"
#include "host/LiveObjects.h"
#include "host/OutlineSource.h"
#include "host/Text.h"

#include <dlfcn.h>
#include <functional>
#include <sstream>

namespace {

/// What this program itself keeps for good: its cached component descriptions.
void FillOwnCaches() {
    Adopt(CREFString::CreateString()).Reset();
    Adopt(CREFString::CreateVariant()).Reset();
}

} // namespace

std::string LabelOf(ISuperCollection& collection, int32_t index) {
    SmartPtr<IString> name;
    collection.GetItemName(index, name.Receive());
    return ToUtf8(CREFString(name.Get()));
}

TreeTest::TreeTest() {
    FillOwnCaches();
    m_LiveBefore = LiveObjects();
    m_Host.emplace(".");
    m_Module.emplace("./UITree.so", m_Host->Components());
}

void TreeTest::SetUp() {
    m_Tree = m_Module->Create<IUITree>(L"UITree");
}

void TreeTest::TearDown() {
    if (m_Tree) {
        m_Tree->AddRef();
        EXPECT_EQ(m_Tree->Release(), 1) << "somebody still holds the control";
    }
    m_Tree.Reset();
    m_Root.Reset();
    m_Listener.Reset();
    m_Module.reset();
    m_Host.reset();
    EXPECT_EQ(dlopen("./UITree.so", RTLD_NOW | RTLD_NOLOAD), nullptr) << "still loaded";
    EXPECT_EQ(LiveObjects(), m_LiveBefore) << "host objects leaked";
}

void TreeTest::Listen() {
    m_Listener = Listener::Make();
    As<IEventSource>()->Advise(m_Listener->Identity(), 1);
}

SmartPtr<ISuperCollection> TreeTest::Outline(const std::string& outline) {
    std::istringstream input(outline);
    return ReadOutline(input);
}

void TreeTest::Bind(const std::string& outline) {
    BindCollection(Outline(outline));
}

void TreeTest::BindCollection(const SmartPtr<ISuperCollection>& collection) {
    m_Root = collection;
    ASSERT_EQ(m_Tree->put_Collection(collection.Get()), S_OK);
}

TreeTest::Place TreeTest::Find(const std::string& label) const {
    const std::function<Place(const SmartPtr<ISuperCollection>&)> search =
        [&](const SmartPtr<ISuperCollection>& collection) -> Place {
        int32_t count = 0;
        collection->GetCount(&count);
        for (int32_t i = 0; i < count; ++i) {
            if (LabelOf(*collection.Get(), i) == label) {
                return {collection, i};
            }
            if (const auto below = CollectionBelow(collection.Get(), i)) {
                if (const Place found = search(below); found.collection) {
                    return found;
                }
            }
        }
        return {};
    };
    return search(m_Root);
}

SmartPtr<IUnknown> TreeTest::Item(const std::string& label) const {
    const Place place = Find(label);
    SmartPtr<IUnknown> item;
    place.collection->GetItem(place.index, item.Receive());
    return item;
}

int32_t TreeTest::Flags(const std::string& label) const {
    const Place place = Find(label);
    int32_t flags = -1;
    place.collection->GetItemFlags(place.index, &flags);
    return flags;
}

void TreeTest::SetFlags(const std::string& label, int32_t flags) {
    const Place place = Find(label);
    place.collection->SetItemFlags(place.index, flags);
}

void TreeTest::Open(const std::string& label) {
    const Place place = Find(label);
    const int32_t flags = Flags(label);
    const auto below = CollectionBelow(place.collection.Get(), place.index);
    ASSERT_TRUE(below) << label << " is a leaf";
    place.collection->SetItemFlags(place.index, flags | NODE_EXPANDED);
    int32_t count = 0;
    below->GetCount(&count);
    for (int32_t i = 0; i < count; ++i) {
        below->SetItemFlags(i, NODE_VISIBLE | ((flags + 1) & NODE_LEVEL_MASK));
    }
}

std::string TreeTest::RowLabel(int32_t row) const {
    SmartPtr<IUnknown> node;
    if (m_Tree->get_Node(0, row, 0, node.Receive()) < 0) {
        return "";
    }
    std::string label;
    VisitRows(m_Root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t) {
        SmartPtr<IUnknown> item;
        collection->GetItem(index, item.Receive());
        if (item.Get() == node.Get()) {
            label = LabelOf(*collection, index);
        }
        return label.empty();
    });
    return label;
}

int32_t TreeTest::RowCount() const {
    int32_t rows = -1;
    m_Tree->GetContainerSize(nullptr, &rows, nullptr);
    return rows;
}

std::string TreeTest::Rows() const {
    std::string rows;
    for (int32_t row = 0; row < RowCount(); ++row) {
        rows += (row > 0 ? " " : "") + RowLabel(row);
    }
    return rows;
}

std::string TreeTest::SelectedLabel() const {
    SmartPtr<IUnknown> collection;
    const int32_t index = m_Tree->GetSelected(-1, SELECTED_COLLECTION, collection.Receive());
    const auto selected = Query<ISuperCollection>(collection.Get());
    return selected && index >= 0 ? LabelOf(*selected.Get(), index) : "";
}
