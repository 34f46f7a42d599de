#include "framework/Interfaces.h"
#include "uitree/UITreeImpl.h"

#include <cstring>
#include <gtest/gtest.h>

// The order of the operations in every interface table, as hosts built elsewhere count on it. A
// member pointer holds the operation's place in the table.

namespace {

constexpr int kUnknownOperations = 3;

template <class Operation>
int SlotOf(Operation operation) {
    ptrdiff_t offset = 0;
    static_assert(sizeof(operation) >= sizeof(offset));
    std::memcpy(&offset, &operation, sizeof(offset));
    return static_cast<int>(offset / static_cast<ptrdiff_t>(sizeof(void*)));
}

/// The operations stand behind one another, the first one at `first`.
template <class... Operations>
void ExpectTable(int first, Operations... operations) {
    int expected = first;
    for (const int slot : {SlotOf(operations)...}) {
        EXPECT_EQ(slot, expected) << "operation " << expected - first << " of the list";
        ++expected;
    }
}

} // namespace

TEST(Tables, PrimaryTableOfTheControl) {
    using Tree = CUITree;
    constexpr auto advise = static_cast<int32_t (Tree::*)(IUnknown*, int32_t)>(&Tree::Advise);
    constexpr auto refresh = static_cast<int32_t (Tree::*)()>(&Tree::Refresh);
    constexpr auto refreshLong = static_cast<int32_t (Tree::*)(int32_t)>(&Tree::Refresh);
    ExpectTable(0, &Tree::QueryInterface, &Tree::AddRef, &Tree::Release, &Tree::FinalConstruct,
        &Tree::FinalRelease, &Tree::Lock, &Tree::Unlock, &Tree::SelectNode, &Tree::get_Collection,
        &Tree::put_Collection, &Tree::MakeNodeVisible, &Tree::CompactNodes, &Tree::GetSelected,
        &Tree::get_Node, &Tree::put_Node, &Tree::HitTest, &Tree::Clear, &Tree::Insert,
        &Tree::SetElementSize, &Tree::GetContainerSize, &Tree::GetElementSize, refresh,
        &Tree::Control, &Tree::Inquire, &Tree::Render, &Tree::Pointer, &Tree::Touch,
        &Tree::get_Parent, &Tree::put_Parent, &Tree::UIItemChanged, advise, refreshLong,
        &Tree::Save, &Tree::Load, &Tree::GetPages, &Tree::RenderChildNodes, &Tree::CompactSubNodes);
}

TEST(Tables, InterfacesOfTheControl) {
    using Properties = IUIPropInterrogateImpl<CUITree, IUIPropInterrogateEx, 10L>;
    using Container = IUINodeContainer;
    constexpr auto advise =
        static_cast<int32_t (IEventSource::*)(IUnknown*, int32_t)>(&IEventSource::Advise);
    constexpr auto adviseFor =
        static_cast<int32_t (IEventSource::*)(IUnknown*, int32_t, const IID&)>(
            &IEventSource::Advise);
    constexpr int first = kUnknownOperations;
    ExpectTable(0, &IUnknown::QueryInterface, &IUnknown::AddRef, &IUnknown::Release);
    ExpectTable(first, &IDataPersist::Save, &IDataPersist::Load);
    ExpectTable(first, &IParent::get_Parent, &IParent::put_Parent);
    ExpectTable(first, &Container::get_Node, &Container::put_Node, &Container::HitTest,
        &Container::Clear, &Container::Insert, &Container::SetElementSize,
        &Container::GetElementSize, &Container::GetContainerSize, &Container::Control,
        &Container::Inquire, &IUITree::get_Collection, &IUITree::put_Collection,
        &IUITree::CompactNodes, &IUITree::MakeNodeVisible, &IUITree::SelectNode,
        &IUITree::GetSelected);
    ExpectTable(first, &IUIPropInterrogate::Inquire, &IUIPropInterrogate::Control,
        &IUIPropInterrogate::ParameterRange, &IUIPropInterrogate::ParameterEnumeration,
        &IUIPropInterrogateEx::InquireEx, &IUIPropInterrogateEx::ControlEx,
        &Properties::UIPropInterrogate_SaveFolderStream,
        &Properties::UIPropInterrogate_LoadFolderStream, &Properties::UIPropInterrogate_SaveXML,
        &Properties::UIPropInterrogate_LoadXML);
    ExpectTable(
        first, advise, &IEventSource::GetAdviseCount, &IEventSource::GetAdviseItem, adviseFor);
    ExpectTable(first, &_IUIContainerEvents::NodeSelect, &_IUIContainerEvents::NodeDrag);
}

TEST(Tables, InterfacesOfTheHost) {
    constexpr int first = kUnknownOperations;
    using Collection = ISuperCollection;
    ExpectTable(first, &Collection::GetCount, &Collection::GetItem, &Collection::GetItemName,
        &Collection::GetItemData, &Collection::GetItemFlags, &Collection::SetItemFlags,
        &Collection::AddEntry, &Collection::InsertItem, &Collection::RemoveAll);
    ExpectTable(first, &IComponentCollection::GetItem, &IComponentCollection::FindItem,
        &IComponentCollection::CreateComponent);
    ExpectTable(first, &IComponentString::SetObject, &IComponentString::GetPart,
        &IComponentString::CreateInstance, &IComponentString::SetPart);
    ExpectTable(
        first, &IString::GetString, &ICreatableString::SetString, &ICreatableString::AppendString);
    ExpectTable(first, &IVariant::GetDouble, &IVariant::SetLong, &IVariant::SetDouble);
    ExpectTable(first, &INamedCollection::GetItem, &INamedCollection::FindItem);
    ExpectTable(first, &IUINode::get_Object, &IUINode::get_Name);
    ExpectTable(
        first, &IFileArchive::SetFileName, &IFileArchive::Populate, &IFileArchive::GetContentState);
    ExpectTable(first, &IFileNameCollection::Populate, &IFileNameCollection::GetContentState);
    ExpectTable(first, &IUIScrollBar::GetPos, &IUIScrollBar::SetPos, &IUIScrollBar::SetRange,
        &IUIScrollBar::Configure, &IUIScrollBar::Layout);
    using Style = IPMRenderStyle;
    ExpectTable(first, &Style::SetStyleValueA, &Style::SetStyleValueB, &Style::SetStyleSize,
        &Style::SetStyleValuePair, &Style::SetColor, &Style::SetStyleValue, &Style::SetStyleValueC);
    using Folder = IFolderStream;
    ExpectTable(first, &Folder::CreateFolder, &Folder::WriteData, &Folder::WriteString,
        &Folder::WriteObject, &Folder::ReadData, &Folder::ReadString, &Folder::OpenFolder,
        &Folder::ReadObject);
}
