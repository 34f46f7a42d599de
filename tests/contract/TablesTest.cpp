#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "uitree/UITreeImpl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>

// The plain header has the same names for the same things.
namespace plain {
#include "include/uitree.h"
}

// The order and the arguments of the operations in every interface table, as hosts built elsewhere
// count on them: the control's primary table against a list, every interface against the plain
// header.

namespace {

/// A member pointer holds the operation's place in the table.
template <class Operation>
size_t SlotOf(Operation operation) {
    size_t offset = 0;
    static_assert(sizeof(operation) >= sizeof(offset));
    std::memcpy(&offset, &operation, sizeof(offset));
    return offset / sizeof(void*);
}

/// Whether both sides pass the same value: an address is an address, an enumeration its number.
template <class First, class Second>
constexpr bool IsPassedAlike() {
    if constexpr (std::is_pointer_v<Second>) {
        return std::is_pointer_v<First> || std::is_reference_v<First>;
    } else if constexpr (std::is_enum_v<First>) {
        return std::is_same_v<std::underlying_type_t<First>, Second>;
    } else {
        return std::is_same_v<First, Second> ||
               (std::is_same_v<First, tagREFString> && std::is_same_v<Second, plain::tagREFString>);
    }
}

struct Operation {
    const char* name;
    size_t slot;
    size_t plainOffset;
};

/// One operation here and there; what it takes and answers is compared by the compiler.
template <class Interface, class Result, class... Arguments, class Table, class PlainResult,
    class Self, class... PlainArguments>
Operation Compare(const char* name, Result (Interface::*operation)(Arguments...),
    PlainResult (*Table::*place)(Self*, PlainArguments...)) {
    static_assert(sizeof...(Arguments) == sizeof...(PlainArguments));
    static_assert((
        IsPassedAlike<Result, PlainResult>() && ... && IsPassedAlike<Arguments, PlainArguments>()));
    const Table table = {};
    const auto* start = reinterpret_cast<const char*>(&table);
    const auto* field = reinterpret_cast<const char*>(&(table.*place));
    return {name, SlotOf(operation), static_cast<size_t>(field - start)};
}

/// The length of an interface's table is where one more operation would stand.
template <class Interface>
struct Longer : Interface {
    virtual void OneMore() = 0;
};

template <class Interface, class Table>
void ExpectTable(const char* interface, std::initializer_list<Operation> operations) {
    size_t slot = 3; // after those of IUnknown
    for (const Operation& operation : operations) {
        EXPECT_EQ(operation.slot, slot) << interface << "::" << operation.name;
        EXPECT_EQ(operation.plainOffset, slot * sizeof(void*))
            << interface << "::" << operation.name << " in the plain header";
        ++slot;
    }
    EXPECT_EQ(SlotOf(&Longer<Interface>::OneMore), slot) << interface << " ends there";
    EXPECT_EQ(sizeof(Table), slot * sizeof(void*))
        << interface << " ends there in the plain header";
    using Unknown = plain::IUnknownOperations;
    EXPECT_EQ(offsetof(Table, QueryInterface), offsetof(Unknown, QueryInterface)) << interface;
    EXPECT_EQ(offsetof(Table, AddRef), offsetof(Unknown, AddRef)) << interface;
    EXPECT_EQ(offsetof(Table, Release), offsetof(Unknown, Release)) << interface;
}

} // namespace

#define TABLE(interface, ...)                                                                      \
    {                                                                                              \
        using Here [[maybe_unused]] = interface;                                                   \
        using Plain = plain::interface##Operations;                                                \
        ExpectTable<interface, Plain>(#interface, {__VA_ARGS__});                                  \
    }
#define O(name) Compare(#name, &Here::name, &Plain::name)

#define NODECONTAINER                                                                              \
    O(get_Node), O(put_Node), O(HitTest), O(Clear), O(Insert), O(SetElementSize),                  \
        O(GetElementSize), O(GetContainerSize), O(Control), O(Inquire)
#define PROPINTERROGATE O(Inquire), O(Control), O(ParameterRange), O(ParameterEnumeration)

TEST(Tables, PrimaryTableOfTheControlKeepsItsOrder) {
    using Tree = CUITree;
    constexpr auto advise = static_cast<int32_t (Tree::*)(IUnknown*, int32_t)>(&Tree::Advise);
    constexpr auto refresh = static_cast<int32_t (Tree::*)()>(&Tree::Refresh);
    constexpr auto refreshLong = static_cast<int32_t (Tree::*)(int32_t)>(&Tree::Refresh);
    const auto slots = [](auto... operations) { return std::vector{SlotOf(operations)...}; };
    const std::vector<size_t> found = slots(&Tree::QueryInterface, &Tree::AddRef, &Tree::Release,
        &Tree::FinalConstruct, &Tree::FinalRelease, &Tree::Lock, &Tree::Unlock, &Tree::SelectNode,
        &Tree::get_Collection, &Tree::put_Collection, &Tree::MakeNodeVisible, &Tree::CompactNodes,
        &Tree::GetSelected, &Tree::get_Node, &Tree::put_Node, &Tree::HitTest, &Tree::Clear,
        &Tree::Insert, &Tree::SetElementSize, &Tree::GetContainerSize, &Tree::GetElementSize,
        refresh, &Tree::Control, &Tree::Inquire, &Tree::Render, &Tree::Pointer, &Tree::Touch,
        &Tree::get_Parent, &Tree::put_Parent, &Tree::UIItemChanged, advise, refreshLong,
        &Tree::Save, &Tree::Load, &Tree::GetPages, &Tree::RenderChildNodes, &Tree::CompactSubNodes);
    for (size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i], i);
    }
}

TEST(Tables, InterfacesOfTheControlAreThoseOfThePlainHeader) {
    TABLE(IUnknown);
    TABLE(IObjectInfo, O(GetName));
    TABLE(IParent, O(get_Parent), O(put_Parent));
    TABLE(IUINodeContainer, NODECONTAINER);
    TABLE(IUITree, NODECONTAINER, O(get_Collection), O(put_Collection), O(CompactNodes),
        O(MakeNodeVisible), O(SelectNode), O(GetSelected));
    TABLE(IUIRefreshableObject, O(Refresh));
    TABLE(IRenderableObject, O(Render));
    TABLE(IUIMouseInput, O(Pointer));
    TABLE(IUITouchInput, O(Touch));
    TABLE(IUIPropInterrogate, PROPINTERROGATE);
    TABLE(IUIPropInterrogateEx, PROPINTERROGATE, O(InquireEx), O(ControlEx));
    TABLE(IUIPropInterrogatePersist, PROPINTERROGATE, O(InquireEx), O(ControlEx),
        O(UIPropInterrogate_SaveFolderStream), O(UIPropInterrogate_LoadFolderStream),
        O(UIPropInterrogate_SaveXML), O(UIPropInterrogate_LoadXML));
    TABLE(IUIPropertyPageSpecify, O(GetPages));
    TABLE(IDataPersist, O(Save), O(Load));
    constexpr auto advise =
        static_cast<int32_t (IEventSource::*)(IUnknown*, int32_t)>(&IEventSource::Advise);
    constexpr auto adviseFor =
        static_cast<int32_t (IEventSource::*)(IUnknown*, int32_t, const IID&)>(
            &IEventSource::Advise);
    TABLE(IEventSource, Compare("Advise", advise, &Plain::Advise), O(GetAdviseCount),
        O(GetAdviseItem), Compare("AdviseFor", adviseFor, &Plain::AdviseFor));
    TABLE(_IUIContainerEvents, O(NodeSelect), O(NodeDrag));
    TABLE(_IUIRefreshEvent, O(UIItemChanged));
}

TEST(Tables, StoredSettingsStandBehindTheControlsOwnOperations) {
    using Stored = IUIPropInterrogatePersist;
    using Properties = IUIPropInterrogateImpl<CUITree, IUIPropInterrogateEx, 10L>;
    EXPECT_EQ(SlotOf(&Properties::UIPropInterrogate_SaveFolderStream),
        SlotOf(&Stored::UIPropInterrogate_SaveFolderStream));
    EXPECT_EQ(
        SlotOf(&Properties::UIPropInterrogate_LoadXML), SlotOf(&Stored::UIPropInterrogate_LoadXML));
}

TEST(Tables, InterfacesOfTheHostAreThoseOfThePlainHeader) {
    TABLE(IString, O(GetString));
    TABLE(ICreatableString, O(GetString), O(SetString), O(AppendString));
    TABLE(IVariant, O(GetDouble), O(SetLong), O(SetDouble));
    TABLE(INamedCollection, O(GetItem), O(FindItem));
    TABLE(IStringTable, O(GetTable));
    TABLE(IComponentCollection, O(GetItem), O(FindItem), O(CreateComponent));
    TABLE(IComponentString, O(SetObject), O(GetPart), O(CreateInstance), O(SetPart));
    TABLE(ISuperCollection, O(GetCount), O(GetItem), O(GetItemName), O(GetItemData),
        O(GetItemFlags), O(SetItemFlags), O(AddEntry), O(InsertItem), O(RemoveAll));
    TABLE(IUINode, O(get_Object), O(get_Name));
    TABLE(ICollectionMoniker, O(BindToObject));
    TABLE(ICollectionVersion, O(GetVersion));
    TABLE(IFileArchive, O(SetFileName), O(Populate), O(GetContentState));
    TABLE(IFileNameCollection, O(Populate), O(GetContentState));
    TABLE(IPMRenderStyle, O(SetStyleValueA), O(SetStyleValueB), O(SetStyleSize),
        O(SetStyleValuePair), O(SetColor), O(SetStyleValue), O(SetStyleValueC));
    TABLE(IPMRenderer, O(DrawText));
    TABLE(IUIScrollBar, O(GetPos), O(SetPos), O(SetRange), O(Configure), O(Layout));
    TABLE(IDataStream);
    TABLE(IFolderStream, O(CreateFolder), O(WriteData), O(WriteString), O(WriteObject), O(ReadData),
        O(ReadString), O(OpenFolder), O(ReadObject));
    TABLE(IXMLStream, O(WriteElement));
    TABLE(IRegistryEx, O(ReadString));
}

TEST(Tables, RecordsOfThePlainHeaderLieAlikeInMemory) {
    EXPECT_EQ(sizeof(plain::IID), sizeof(IID));
    EXPECT_EQ(alignof(plain::IID), alignof(IID));
    EXPECT_EQ(sizeof(plain::tagREFString), sizeof(tagREFString));
    EXPECT_EQ(offsetof(plain::tagREFString, m_String), offsetof(tagREFString, m_String));
    EXPECT_EQ(sizeof(plain::CANVASRect), sizeof(CANVASRect));
    EXPECT_EQ(offsetof(plain::CANVASRect, top), offsetof(CANVASRect, top));
    EXPECT_EQ(offsetof(plain::CANVASRect, width), offsetof(CANVASRect, width));
    EXPECT_EQ(offsetof(plain::CANVASRect, height), offsetof(CANVASRect, height));
    EXPECT_EQ(sizeof(plain::UbuntuCanvas), sizeof(UbuntuCanvas));
}

TEST(Tables, IdentifiersOfThePlainHeaderAreTheFrameworks) {
    const auto expect = [](const char* name, const IID& expected) {
        const plain::IID derived = plain::uitree_iid(name);
        EXPECT_EQ(std::memcmp(&derived, &expected, sizeof(expected)), 0) << name;
    };
    expect("IUnknown", IID_IUnknown);
#define EXPECT_IDENTIFIER(name) expect(#name, __IIDOfc(#name));
    FRAMEWORK_INTERFACE_NAMES(EXPECT_IDENTIFIER)
    for (const char* name : {"I0123456789", "4444444444444444444444444444", "", "_\xff"}) {
        expect(name, __IIDOfc(name));
    }
}

TEST(Tables, ConstantsOfThePlainHeaderAreTheFrameworks) {
    const struct {
        const char* name;
        int64_t here;
        int64_t plainly;
    } constants[] = {
#define C(name) {#name, name, plain::name}
        C(S_OK), C(S_FALSE), C(E_NOINTERFACE), C(E_POINTER), C(E_FAIL), C(E_INVALIDARG),
        C(COMPONENTPART_NAME), C(COMPONENTPART_MODULE), C(REGISTRY_TEXT_CAPACITY),
        C(NODE_LEVEL_MASK), C(NODE_VISIBLE), C(NODE_EXPANDED), C(NODE_SELECTED),
        C(CONTENTSTATE_ARCHIVE), C(CONTENTSTATE_FILENAMES), C(SCROLLBAR_WIDTH),
        C(POINTERSTATE_PRIMARY), C(POINTERSTATE_SECONDARY), C(POINTERSTATE_FAST),
        C(POINTERSTATE_WHEEL), C(POINTERACTION_MOVE), C(POINTERACTION_RELEASE),
        C(POINTERACTION_PRESS), C(POINTERACTION_IGNORED), C(SELECT_ABSOLUTE), C(SELECT_CURRENT),
        C(SELECT_SCROLL), C(SELECT_UNMARKED), C(SELECTED_NODE), C(SELECTED_DATA),
        C(SELECTED_COLLECTION), C(NODESELECT_CLICK), C(NODESELECT_DOUBLECLICK), C(NODEACTION_NONE),
        C(NODEACTION_OPENED), C(NODEACTION_CLOSED), C(ADVISE_DISCONNECT), C(ADVISE_REPLACE),
        C(PROP_ELEMENTHEIGHT), C(PROP_TEXTCOLOR), C(PROP_COLOR101), C(PROP_COLOR102),
        C(PROP_USEDEFAULTSTYLE), C(PROP_SCROLLPOS), C(PROP_OPTIONS), C(PROP_SELECTONPRESS),
        C(PROP_CLEARALLONSELECT), C(PROP_ROOTTOGGLEONICONONLY), C(PROP_CHILDTOGGLEONICONONLY),
        C(PROP_OPENICON), C(PROP_CLOSEDICON), C(PROP_RESETICONS), C(PROPID_ALL),
        C(OPTION_REPORTDATA), C(OPTION_FILLONPRESS), C(PROPTYPE_MASK), C(PROPTYPE_NONE),
        C(PROPTYPE_BYTE), C(PROPTYPE_SHORT), C(PROPTYPE_LONG), C(PROPTYPE_FLOAT),
        C(PROPTYPE_DOUBLE), C(PROPTYPE_STRING), C(PROPTYPE_OBJECT), C(PROPTYPE_ACTION),
        C(PROPFLAG_COLOR), C(PROPFLAG_FILENAME), C(PROPFLAG_TRANSIENT)};
    for (const auto& constant : constants) {
        EXPECT_EQ(constant.plainly, constant.here) << constant.name;
    }
}
