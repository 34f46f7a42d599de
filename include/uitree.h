#ifndef UITREE_H
#define UITREE_H

// The tree control for hosts in C and in every language that can call C. Nothing of this project
// needs to be linked: what crosses the boundary are the two entry points of `UITree.so` and objects
// that are called through tables of functions.
//
//     IUITree* tree = ...;
//     tree->table->SelectNode(tree, 0, SELECT_ABSOLUTE | SELECT_CURRENT);
//
// Whoever implements an interface fills a table with functions of its own, null in none of its
// places, and hands out the address of a record that begins with a pointer to it.
//
// Ownership, wherever nothing else is said:
//   interface pointer in      borrowed for the call; who keeps it calls AddRef
//   interface pointer out     one reference for the receiver, who calls Release; null on failure.
//                             The place that it is stored in belongs to the caller
//   tagREFString, wchar_t*    borrowed for the call; who keeps the characters copies them
//   canvas, rectangle, IID    borrowed for the call
//   numbers through pointers  stored in the caller's place
// `self` is the object's own pointer for the interface whose table the function stands in.
//
// Everything is called on one thread, and calls the other side back on it.

#include <stdint.h>
#include <string.h>
#include <wchar.h>

// Statuses: negative is failure, zero and positive are success.
enum {
    S_OK = 0,
    S_FALSE = 1, ///< success with nothing further
    E_NOINTERFACE = (int32_t)0x80004002,
    E_POINTER = (int32_t)0x80004003, ///< a required pointer is null
    E_FAIL = (int32_t)0x80004005,
    E_INVALIDARG = (int32_t)0x80070057 ///< addresses nothing
};

// Records.

/// Interface identifier.
typedef struct IID {
    uint32_t m_Words[4];
} IID;

/// Reference to wide characters of 32 bits, not necessarily zero-terminated. Passed by value.
typedef struct tagREFString {
    int32_t m_Length;        ///< characters
    const wchar_t* m_String; ///< may be null when the length is 0
} tagREFString;

/// Rectangle in canvas pixels.
typedef struct CANVASRect {
    int32_t left, top, width, height;
} CANVASRect;

typedef struct _cairo cairo_t;

/// The host's drawing surface. What follows the first member is the host's own business.
typedef struct UbuntuCanvas {
    cairo_t* m_Context; ///< the host's; valid while the call that received the canvas runs
} UbuntuCanvas;

// Identifiers are derived from the interfaces' names, IUnknown's alone is fixed.

static const IID IID_IUnknown = {{0x00000000, 0x00000000, 0x000000C0, 0x46000000}};

/// The identifier of the interface called `name`: five bits for each of the first 25 characters,
/// except for IUnknown's.
static inline IID uitree_iid(const char* name) {
    IID iid = {{0, 0, 0, 0}};
    if (strcmp(name, "IUnknown") == 0) {
        return IID_IUnknown;
    }
    for (uint32_t i = 0; i < 25 && name[i] != 0; ++i) {
        const uint32_t c = (unsigned char)name[i];
        const uint32_t code = c >= 'A' && c <= 'Z'   ? c - 'A' + 1
                              : c >= 'a' && c <= 'z' ? c - 'a' + 1
                              : c >= '0' && c <= '4' ? c - '0' + 28 // the 4 takes a sixth bit
                                                     : 27;
        for (uint32_t bit = 0; bit < 6; ++bit) {
            const uint32_t place = 5 * i + bit;
            iid.m_Words[place / 32] |= (code >> bit & 1U) << place % 32;
        }
    }
    return iid;
}

/// Whether `iid` is the identifier of the interface called `name`.
static inline int uitree_is(const IID* iid, const char* name) {
    const IID own = uitree_iid(name);
    return memcmp(iid, &own, sizeof own) == 0;
}

/// Refers to a zero-terminated text, which stays the caller's.
static inline tagREFString uitree_text(const wchar_t* text) {
    const tagREFString reference = {(int32_t)wcslen(text), text};
    return reference;
}

// Every interface is a record with a pointer to its table.
#define UITREE_INTERFACE(Name)                                                                     \
    struct Name;                                                                                   \
    typedef struct Name Name;                                                                      \
    typedef struct Name##Operations Name##Operations;                                              \
    struct Name {                                                                                  \
        const Name##Operations* table;                                                             \
    }

/// The first three operations of every table. QueryInterface hands out the interface `iid` of the
/// same object, or null with E_NOINTERFACE; for IID_IUnknown it is the same address through every
/// interface of the object. AddRef and Release answer the count after the change; the Release that
/// reaches 0 destroys the object.
#define UITREE_UNKNOWN                                                                             \
    int32_t (*QueryInterface)(void* self, const IID* iid, void** object);                          \
    int32_t (*AddRef)(void* self);                                                                 \
    int32_t (*Release)(void* self)

UITREE_INTERFACE(IUnknown);
struct IUnknownOperations {
    UITREE_UNKNOWN;
};

/// Asks an object for the interface called `name`: one reference for the caller, or null.
static inline void* uitree_query(void* object, const char* name) {
    const IID iid = uitree_iid(name);
    IUnknown* const unknown = (IUnknown*)object;
    void* answer = 0;
    return unknown && unknown->table->QueryInterface(unknown, &iid, &answer) >= 0 ? answer : 0;
}

/// Gives one reference back; nothing happens for null.
static inline void uitree_release(void* object) {
    IUnknown* const unknown = (IUnknown*)object;
    if (unknown) {
        unknown->table->Release(unknown);
    }
}

// Texts, numbers and string tables: implemented by the host.

UITREE_INTERFACE(IString);
UITREE_INTERFACE(ICreatableString);
UITREE_INTERFACE(IVariant);
UITREE_INTERFACE(INamedCollection);
UITREE_INTERFACE(IStringTable);

// clang-format off
#define UITREE_STRING(Self)                                                                        \
    UITREE_UNKNOWN;                                                                                \
    int32_t (*GetString)(Self* self, wchar_t** text, int32_t* length)
// clang-format on

/// The characters that GetString hands out stay the string's: valid while it lives and is not
/// changed.
struct IStringOperations {
    UITREE_STRING(IString);
};
/// Both operations copy the characters.
struct ICreatableStringOperations {
    UITREE_STRING(ICreatableString);
    int32_t (*SetString)(ICreatableString* self, tagREFString text);
    int32_t (*AppendString)(ICreatableString* self, tagREFString text);
};
struct IVariantOperations {
    UITREE_UNKNOWN;
    double (*GetDouble)(IVariant* self);
    int32_t (*SetLong)(IVariant* self, int32_t value);
    int32_t (*SetDouble)(IVariant* self, double value);
};
/// String tables and page lists.
struct INamedCollectionOperations {
    UITREE_UNKNOWN;
    /// The entry at the index; for string tables also the entry whose key is that number.
    int32_t (*GetItem)(INamedCollection* self, int32_t index, IUnknown** item);
    /// The index of the entry with that name; negative when there is none.
    int32_t (*FindItem)(INamedCollection* self, IString* name, int32_t* index);
};
struct IStringTableOperations {
    UITREE_UNKNOWN;
    /// The string table of the named component; null when there is none.
    int32_t (*GetTable)(IStringTable* self, IString* component, INamedCollection** table);
};

// Components: implemented by the host.

UITREE_INTERFACE(IComponentCollection);
UITREE_INTERFACE(IComponentString);

/// Parts of a component description.
enum { COMPONENTPART_NAME = 1, COMPONENTPART_MODULE = 4 };

/// The registry that the host hands over.
struct IComponentCollectionOperations {
    UITREE_UNKNOWN;
    /// The entry at the index; component entries answer IComponentString.
    int32_t (*GetItem)(IComponentCollection* self, int32_t index, IUnknown** item);
    /// The index of the entry with that name; negative when there is none.
    int32_t (*FindItem)(IComponentCollection* self, IString* name, int32_t* index);
    /// Creates or hands out an object of the component called `name`, asked for `iid`. Callers
    /// preset `object` to null and test it, not the status.
    int32_t (*CreateComponent)(
        IComponentCollection* self, tagREFString name, const IID* iid, void** object);
};
/// A component description, from which objects are made.
struct IComponentStringOperations {
    UITREE_UNKNOWN;
    /// Describes the component that implements `object` from now on.
    int32_t (*SetObject)(IComponentString* self, IUnknown* object);
    int32_t (*GetPart)(IComponentString* self, int32_t part, IString** text);
    int32_t (*CreateInstance)(IComponentString* self, const IID* iid, void** object);
    int32_t (*SetPart)(IComponentString* self, int32_t part, tagREFString text);
};

// The tree's data: implemented by the host.

UITREE_INTERFACE(ISuperCollection);
UITREE_INTERFACE(ICollectionVersion);
UITREE_INTERFACE(IUINode);
UITREE_INTERFACE(ICollectionMoniker);
UITREE_INTERFACE(IFileArchive);
UITREE_INTERFACE(IFileNameCollection);
UITREE_INTERFACE(IObjectInfo);

/// The flag word that a collection keeps for each item, as the control uses it.
enum {
    NODE_LEVEL_MASK = 0xFF, ///< 1 for items of the bound collection
    NODE_VISIBLE = 0x100,
    NODE_EXPANDED = 0x200,
    NODE_SELECTED = 0x400
};

/// Selectors of GetContentState, whose value 0 means "not yet filled".
enum { CONTENTSTATE_ARCHIVE = 1, CONTENTSTATE_FILENAMES = 100 };

/// Items have an index from 0, an object, an optional name, an optional data object, and one flag
/// word that the collection keeps without interpreting it.
struct ISuperCollectionOperations {
    UITREE_UNKNOWN;
    int32_t (*GetCount)(ISuperCollection* self, int32_t* count);
    /// Fails for an index outside 0 to count - 1.
    int32_t (*GetItem)(ISuperCollection* self, int32_t index, IUnknown** item);
    int32_t (*GetItemName)(ISuperCollection* self, int32_t index, IString** name);
    int32_t (*GetItemData)(ISuperCollection* self, int32_t index, IUnknown** data);
    /// Must fail past the last item: the control walks until it does.
    int32_t (*GetItemFlags)(ISuperCollection* self, int32_t index, int32_t* flags);
    int32_t (*SetItemFlags)(ISuperCollection* self, int32_t index, int32_t flags);
    /// Appends an entry of three strings, which it keeps. The last argument is 0.
    int32_t (*AddEntry)(ISuperCollection* self, IString* name, IString* component, IString* owner,
        int32_t reserved);
    /// Inserts before `index`, or appends when that is past the end, and keeps the item. The other
    /// arguments are 0.
    int32_t (*InsertItem)(ISuperCollection* self, int32_t index, int32_t reserved, IUnknown* item,
        int32_t reserved2, int32_t reserved3);
    int32_t (*RemoveAll)(ISuperCollection* self);
};
/// Optional, and offered by the collection that is bound: with it a picture costs what is on the
/// screen, however many rows there are.
struct ICollectionVersionOperations {
    UITREE_UNKNOWN;
    /// Stores a number that has changed whenever anything has that can be seen in the collection or
    /// below it, at any depth: items, names and flag words, whoever wrote them. The same number
    /// never comes back. Where one flag word was written it has grown by one, and by more where
    /// anything else happened besides. E_FAIL while the collection cannot vouch for all of it.
    int32_t (*GetVersion)(ICollectionVersion* self, uint64_t* version);
};
/// An item that stands for another object.
struct IUINodeOperations {
    UITREE_UNKNOWN;
    /// The object stood for; it may be an ICollectionMoniker.
    int32_t (*get_Object)(IUINode* self, IUnknown** object);
    /// The node's label.
    int32_t (*get_Name)(IUINode* self, IString** name);
};
/// Names an object that is found only when asked for.
struct ICollectionMonikerOperations {
    UITREE_UNKNOWN;
    int32_t (*BindToObject)(ICollectionMoniker* self, const IID* iid, void** object);
};
/// An item or icon that reads its content from a file or folder.
struct IFileArchiveOperations {
    UITREE_UNKNOWN;
    int32_t (*SetFileName)(IFileArchive* self, IString* fileName);
    /// Loads or fills the content; negative when it cannot.
    int32_t (*Populate)(IFileArchive* self);
    int32_t (*GetContentState)(IFileArchive* self, int32_t selector, int32_t* value);
};
struct IFileNameCollectionOperations {
    UITREE_UNKNOWN;
    int32_t (*Populate)(IFileNameCollection* self);
    int32_t (*GetContentState)(IFileNameCollection* self, int32_t selector, int32_t* value);
};
/// Answers the name of an object's component; the control's does too.
struct IObjectInfoOperations {
    UITREE_UNKNOWN;
    /// The characters live as long as the module. The first argument is not used.
    int32_t (*GetName)(IObjectInfo* self, int32_t reserved, tagREFString* name);
};

// Drawing and input. The control implements IRenderableObject, IUIMouseInput and IUITouchInput; the
// scroll bar the first two, icons and items with an image the first.

UITREE_INTERFACE(IRenderableObject);
UITREE_INTERFACE(IUIMouseInput);
UITREE_INTERFACE(IUITouchInput);
UITREE_INTERFACE(IPMRenderStyle);
UITREE_INTERFACE(IPMRenderer);
UITREE_INTERFACE(IUIScrollBar);

/// Bits of a pointer event's state.
enum {
    POINTERSTATE_PRIMARY = 0x01,
    POINTERSTATE_SECONDARY = 0x02,
    POINTERSTATE_FAST = 0x0C, ///< either bit accelerates a wheel event
    POINTERSTATE_WHEEL = 0x20
};
/// Actions of a pointer event.
enum {
    POINTERACTION_MOVE = 0,
    POINTERACTION_RELEASE = 2,
    POINTERACTION_PRESS = 3,
    POINTERACTION_IGNORED = -999 ///< accepted and ignored
};
/// The setting of Configure that takes the bar's width in pixels.
enum { SCROLLBAR_WIDTH = 2 };

struct IRenderableObjectOperations {
    UITREE_UNKNOWN;
    /// The control passes 0 as `param` for an icon, 1 for an item's image.
    int32_t (*Render)(IRenderableObject* self, UbuntuCanvas* canvas, CANVASRect* rect,
        IUnknown* context, int32_t param);
};
struct IUIMouseInputOperations {
    UITREE_UNKNOWN;
    /// `keys` holds modifier bits, or for wheel events the signed distance, 100 per step. The
    /// scroll bar answers negative for "not handled", 0 for "changed", positive for "handled".
    int32_t (*Pointer)(IUIMouseInput* self, int32_t state, int32_t action, int32_t keys, double x,
        double y, CANVASRect* rect, IUnknown* context);
};
struct IUITouchInputOperations {
    UITREE_UNKNOWN;
    /// One update of a pan: `phase` is 0.0 for the first, negative for none; `panY` is the distance
    /// in pixels since the gesture began, positive downwards. The other values are not used.
    int32_t (*Touch)(IUITouchInput* self, double x, double y, CANVASRect* rect, double phase,
        double a, double b, double c, double d, double e, double panY, double f, double g);
};
/// A text style of the host.
struct IPMRenderStyleOperations {
    UITREE_UNKNOWN;
    int32_t (*SetStyleValueA)(IPMRenderStyle* self, int32_t value);
    int32_t (*SetStyleValueB)(IPMRenderStyle* self, int32_t value);
    /// The default text size in pixels.
    int32_t (*SetStyleSize)(IPMRenderStyle* self, int32_t size);
    int32_t (*SetStyleValuePair)(IPMRenderStyle* self, int32_t first, int32_t second);
    /// The colour, 0xRRGGBB, of the texts drawn from now on.
    int32_t (*SetColor)(IPMRenderStyle* self, int32_t rgb);
    int32_t (*SetStyleValue)(IPMRenderStyle* self, int32_t value);
    int32_t (*SetStyleValueC)(IPMRenderStyle* self, int32_t value);
};
struct IPMRendererOperations {
    UITREE_UNKNOWN;
    /// Draws one line of text in `rect`. The last two arguments are 0.
    int32_t (*DrawText)(IPMRenderer* self, IPMRenderStyle* style, tagREFString text,
        UbuntuCanvas* canvas, CANVASRect* rect, int32_t reserved, int32_t reserved2);
};
/// The vertical scroll bar; its position is the number of the first row shown.
struct IUIScrollBarOperations {
    UITREE_UNKNOWN;
    int32_t (*GetPos)(IUIScrollBar* self, int32_t* pos);
    /// The bar applies its own range to the value.
    int32_t (*SetPos)(IUIScrollBar* self, int32_t pos);
    int32_t (*SetRange)(IUIScrollBar* self, int32_t min, int32_t max);
    int32_t (*Configure)(IUIScrollBar* self, int32_t what, int32_t value);
    /// Splits `area` into the bar's rectangle and the rows'. Negative: failure, outputs untouched;
    /// 0: the bar is shown; positive: it is not.
    int32_t (*Layout)(IUIScrollBar* self, CANVASRect* area, CANVASRect* bar, CANVASRect* client);
};

// The control. All its interfaces belong to one object: ask any of them for another.

UITREE_INTERFACE(IUINodeContainer);
UITREE_INTERFACE(IUITree);
UITREE_INTERFACE(IParent);
UITREE_INTERFACE(IUIRefreshableObject);

/// Bits of SelectNode's flags.
enum {
    SELECT_ABSOLUTE = 1, ///< the row is counted from the first, not from the top one
    SELECT_CURRENT = 2,  ///< make the node the selection and fire NodeSelect
    SELECT_SCROLL = 4,   ///< the row becomes the scroll position
    SELECT_UNMARKED = 8  ///< leave the nodes' selected bits alone
};
/// Kinds of GetSelected.
enum { SELECTED_NODE = 0, SELECTED_DATA = 1, SELECTED_COLLECTION = 2 };

/// Rows are numbered from 0 in display order; unnamed numbers are not used. Control and Inquire are
/// those of IUIPropInterrogate.
// clang-format off
#define UITREE_NODECONTAINER(Self)                                                                 \
    UITREE_UNKNOWN;                                                                                \
    int32_t (*get_Node)(Self* self, int32_t reserved, int32_t row, int32_t reserved2,              \
        IUnknown** node);                                                                          \
    /* Inserts at the row; a negative row, or one that does not exist, appends to the bound */     \
    /* collection. The collection keeps the node. */                                               \
    int32_t (*put_Node)(Self* self, int32_t reserved, int32_t row, int32_t reserved2,              \
        IUnknown* node);                                                                           \
    /* The node under a point, in canvas pixels; `rect` is the control's. A failure leaves the */  \
    /* caller's place alone. */                                                                    \
    int32_t (*HitTest)(Self* self, int32_t x, int32_t y, CANVASRect* rect, IUnknown** node);       \
    int32_t (*Clear)(Self* self);                                                                  \
    int32_t (*Insert)(Self* self, IUnknown* reference, IUnknown* node, int32_t at, int32_t trim,   \
        int32_t scroll);                                                                           \
    /* Sizes are in pixels; the width is not used, and answered as 0. */                           \
    int32_t (*SetElementSize)(Self* self, int32_t width, int32_t height);                          \
    int32_t (*GetElementSize)(Self* self, int32_t* width, int32_t* height);                        \
    int32_t (*GetContainerSize)(Self* self, int32_t* columns, int32_t* rows, int32_t* layers);     \
    int32_t (*Control)(Self* self, int32_t id, int32_t value);                                     \
    int32_t (*Inquire)(Self* self, int32_t id, int32_t* value)
// clang-format on

struct IUINodeContainerOperations {
    UITREE_NODECONTAINER(IUINodeContainer);
};
struct IUITreeOperations {
    UITREE_NODECONTAINER(IUITree);
    int32_t (*get_Collection)(IUITree* self, IUnknown** collection);
    /// The control keeps the collection until another one is bound or it goes.
    int32_t (*put_Collection)(IUITree* self, IUnknown* collection);
    /// Closes the whole tree down to the items of the bound collection.
    int32_t (*CompactNodes)(IUITree* self);
    /// Opens the node at the index of `collection`, filling it first when it fills lazily.
    int32_t (*MakeNodeVisible)(IUITree* self, IUnknown* collection, int32_t index);
    int32_t (*SelectNode)(IUITree* self, int32_t row, int32_t flags);
    /// Index -1 is the selected one. For SELECTED_COLLECTION the result is the selected index.
    int32_t (*GetSelected)(IUITree* self, int32_t index, int32_t kind, IUnknown** result);
};
struct IParentOperations {
    UITREE_UNKNOWN;
    int32_t (*get_Parent)(IParent* self, IUnknown** parent);
    /// The parent is kept until it is replaced.
    int32_t (*put_Parent)(IParent* self, IUnknown* parent);
};
struct IUIRefreshableObjectOperations {
    UITREE_UNKNOWN;
    /// Tells the listeners that the object changed. The argument is not used.
    int32_t (*Refresh)(IUIRefreshableObject* self, int32_t reserved);
};

// Events: implemented by listeners. What a listener returns is ignored.

UITREE_INTERFACE(_IUIContainerEvents);
UITREE_INTERFACE(_IUIRefreshEvent);
UITREE_INTERFACE(IEventSource);

/// States and actions of NodeSelect.
enum { NODESELECT_CLICK = 1, NODESELECT_DOUBLECLICK = 2 };
enum { NODEACTION_NONE = 0, NODEACTION_OPENED = 1, NODEACTION_CLOSED = 2 };
/// Flags of Advise: any other value is kept without a meaning.
enum {
    ADVISE_DISCONNECT = 0,
    ADVISE_REPLACE = 2 ///< replaces the sink that was connected with 2 before
};

struct _IUIContainerEventsOperations {
    UITREE_UNKNOWN;
    /// `container` is the row's collection for a click and the control itself otherwise; `index` is
    /// the row's in its collection.
    int32_t (*NodeSelect)(_IUIContainerEvents* self, IUnknown* container, int32_t state,
        int32_t index, int32_t action, IUnknown* node);
    /// The pressed node was moved to x, y in canvas pixels.
    int32_t (*NodeDrag)(_IUIContainerEvents* self, IUnknown* context, int32_t state, int32_t x,
        int32_t y, IUnknown* node);
};
struct _IUIRefreshEventOperations {
    UITREE_UNKNOWN;
    /// `item` changed and wants to be drawn again.
    int32_t (*UIItemChanged)(_IUIRefreshEvent* self, IUnknown* item, int32_t flags);
};
struct IEventSourceOperations {
    UITREE_UNKNOWN;
    /// Connects a sink, which is kept until it is disconnected; a null sink with flags 0
    /// disconnects all.
    int32_t (*Advise)(IEventSource* self, IUnknown* sink, int32_t flags);
    int32_t (*GetAdviseCount)(IEventSource* self);
    /// Either out-pointer may be null. E_FAIL past the end.
    int32_t (*GetAdviseItem)(IEventSource* self, uint32_t index, IUnknown** sink, int32_t* flags);
    /// Advise for a sink that must offer the event interface `iid`. S_FALSE: already connected.
    int32_t (*AdviseFor)(IEventSource* self, IUnknown* sink, int32_t flags, const IID* iid);
};

// Settings. The control implements IUIPropInterrogate and IUIPropInterrogateEx; the host's
// "UIDefault" the former.

UITREE_INTERFACE(IUIPropInterrogate);
UITREE_INTERFACE(IUIPropInterrogateEx);
UITREE_INTERFACE(IUIPropInterrogatePersist);
UITREE_INTERFACE(IUIPropertyPageSpecify);
UITREE_INTERFACE(IDataStream);
UITREE_INTERFACE(IFolderStream);
UITREE_INTERFACE(IXMLStream);
UITREE_INTERFACE(IDataPersist);
UITREE_INTERFACE(IRegistryEx);

/// Numbers of the control's parameters.
enum {
    PROP_ELEMENTHEIGHT = 4, ///< pixels of a row
    PROP_TEXTCOLOR = 100,   ///< 0xRRGGBB, like every colour
    PROP_COLOR101 = 101,
    PROP_COLOR102 = 102,
    PROP_USEDEFAULTSTYLE = 105, ///< binding takes the row height from "UIDefault"
    PROP_SCROLLPOS = 115,       ///< the row at the top
    PROP_OPTIONS = 136,
    PROP_SELECTONPRESS = 145,
    PROP_CLEARALLONSELECT = 146,
    PROP_ROOTTOGGLEONICONONLY = 147,
    PROP_CHILDTOGGLEONICONONLY = 148,
    PROP_OPENICON = 170, ///< an object that answers IRenderableObject, like PROP_CLOSEDICON
    PROP_CLOSEDICON = 171,
    PROP_RESETICONS = 172,
    PROPID_ALL = 0x2000000 ///< addresses the parameters as a whole
};
/// Bits of PROP_OPTIONS.
enum {
    OPTION_REPORTDATA = 1, ///< a click on a collection row reports its data object
    OPTION_FILLONPRESS = 2 ///< a press lets lazily filled items fill themselves
};
/// Value types, the low four bits of a parameter's flags word, and the bits above them.
enum {
    PROPTYPE_MASK = 0xF,
    PROPTYPE_NONE = 0,
    PROPTYPE_BYTE = 1,
    PROPTYPE_SHORT = 2,
    PROPTYPE_LONG = 3,
    PROPTYPE_FLOAT = 4,
    PROPTYPE_DOUBLE = 5,
    PROPTYPE_STRING = 6,
    PROPTYPE_OBJECT = 7,
    PROPTYPE_ACTION = 8,
    PROPFLAG_COLOR = 0x20,
    PROPFLAG_FILENAME = 0x100,
    PROPFLAG_TRANSIENT = 0x4000000
};
/// The capacity, in characters, of the buffer that ReadString fills.
enum { REGISTRY_TEXT_CAPACITY = 256 };

// clang-format off
#define UITREE_PROPINTERROGATE(Self)                                                               \
    UITREE_UNKNOWN;                                                                                \
    /* Answers the parameter's flags word on success; with a null `value` that is all it does. */  \
    int32_t (*Inquire)(Self* self, int32_t id, int32_t* value);                                    \
    int32_t (*Control)(Self* self, int32_t id, int32_t value);                                     \
    /* Either bound may be null; both are 0 when the parameter has no range. */                    \
    int32_t (*ParameterRange)(Self* self, int32_t id, int32_t* minimum, int32_t* maximum);         \
    int32_t (*ParameterEnumeration)(Self* self, int32_t id, IUnknown** enumeration)

#define UITREE_PROPINTERROGATEEX(Self)                                                             \
    UITREE_PROPINTERROGATE(Self);                                                                  \
    /* The parameter as a string, an object or a new variant. */                                   \
    int32_t (*InquireEx)(Self* self, int32_t id, IUnknown** value);                                \
    /* Keeps a string or an object; a number is read from a variant. */                            \
    int32_t (*ControlEx)(Self* self, int32_t id, IUnknown* value)
// clang-format on

struct IUIPropInterrogateOperations {
    UITREE_PROPINTERROGATE(IUIPropInterrogate);
};
struct IUIPropInterrogateExOperations {
    UITREE_PROPINTERROGATEEX(IUIPropInterrogateEx);
};
/// What the control's pointer for IUIPropInterrogateEx is besides; there is no identifier for it.
/// All answer S_OK. `strings` has the names of the parameters, and is the control's own string
/// table when null; `flags` is not used.
struct IUIPropInterrogatePersistOperations {
    UITREE_PROPINTERROGATEEX(IUIPropInterrogatePersist);
    int32_t (*UIPropInterrogate_SaveFolderStream)(IUIPropInterrogatePersist* self,
        INamedCollection* strings, IFolderStream* stream, int32_t flags);
    int32_t (*UIPropInterrogate_LoadFolderStream)(
        IUIPropInterrogatePersist* self, IFolderStream* stream, int32_t flags);
    int32_t (*UIPropInterrogate_SaveXML)(IUIPropInterrogatePersist* self, INamedCollection* strings,
        IDataStream* stream, int32_t flags);
    int32_t (*UIPropInterrogate_LoadXML)(IUIPropInterrogatePersist* self, INamedCollection* strings,
        IDataStream* stream, int32_t flags);
};
struct IUIPropertyPageSpecifyOperations {
    UITREE_UNKNOWN;
    /// `pages` receives a new list: an ISuperCollection, whatever the pointer's type says. The page
    /// number and `reserved` are not used.
    int32_t (*GetPages)(
        IUIPropertyPageSpecify* self, int32_t page, INamedCollection** pages, IUnknown** reserved);
};
/// Used only through QueryInterface, for the streams below and IString.
struct IDataStreamOperations {
    UITREE_UNKNOWN;
};
/// The host's stream of named entries and numbered sub-folders. Modes are 0.
struct IFolderStreamOperations {
    UITREE_UNKNOWN;
    int32_t (*CreateFolder)(
        IFolderStream* self, IString* name, int32_t mode, IFolderStream** folder);
    /// Stores a copy of `size` bytes.
    int32_t (*WriteData)(
        IFolderStream* self, IString* entry, const void* data, int32_t size, int32_t mode);
    int32_t (*WriteString)(IFolderStream* self, IString* entry, IString* value);
    /// `object` may be null.
    int32_t (*WriteObject)(IFolderStream* self, IString* entry, IUnknown* object, int32_t mode);
    /// Negative when the entry is missing. `data` is the caller's.
    int32_t (*ReadData)(
        IFolderStream* self, IString* entry, void* data, int32_t size, int32_t mode);
    /// Fills the given empty creatable string.
    int32_t (*ReadString)(IFolderStream* self, IString* entry, IString* value);
    /// Opens the sub-folder whose position from 0 the variant holds; negative when there is none.
    int32_t (*OpenFolder)(IFolderStream* self, IVariant* key, int32_t mode, IFolderStream** folder);
    int32_t (*ReadObject)(IFolderStream* self, IString* entry, IUnknown** object, int32_t mode);
};
struct IXMLStreamOperations {
    UITREE_UNKNOWN;
    /// Writes one element with the value as its content. The other arguments are 0.
    int32_t (*WriteElement)(
        IXMLStream* self, IString* name, int32_t reserved, IString* value, int32_t reserved2);
};
/// Implemented by the control. Both do nothing and answer S_OK for a stream that is no
/// IFolderStream.
struct IDataPersistOperations {
    UITREE_UNKNOWN;
    int32_t (*Save)(IDataPersist* self, IDataStream* stream, int32_t flags);
    int32_t (*Load)(IDataPersist* self, IDataStream* stream, int32_t flags);
};
struct IRegistryExOperations {
    UITREE_UNKNOWN;
    /// Reads a value, zero-terminated, into the caller's cleared buffer of REGISTRY_TEXT_CAPACITY
    /// characters.
    int32_t (*ReadString)(
        IRegistryEx* self, const wchar_t* section, const wchar_t* key, wchar_t* buffer);
};

// The module's entry points, by the names under which `dlsym` finds them.

#define UITREE_INITIALIZE "_Z16InitializeModulePvP20IComponentCollection"
#define UITREE_FACTORY "CreateFunction"

/// Hands the host's registry over, which is kept until null is handed over, or another one. The
/// first argument is not used.
typedef int32_t (*InitializeFunction)(void* module, IComponentCollection* components);
/// Makes a component, asked for `iid`: one reference in `object`. `outer` is null.
typedef int32_t (*CreatorFunction)(void* outer, IID* iid, void** object);
/// Finds the creator of the component called `name`. E_FAIL, with `creator` untouched, when the
/// module has none of that name.
typedef int32_t (*FactoryFunction)(tagREFString name, CreatorFunction* creator);

#endif
