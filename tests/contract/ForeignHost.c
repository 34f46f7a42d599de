// A host in C that has nothing of this project but the plain header: it loads the module and uses
// the control. Called with the name of one of the cases below.

#include "include/uitree.h"

#include <dlfcn.h>
#include <stddef.h>
#include <stdio.h>

static int failures;

#define CHECK(condition)                                                                           \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition);                         \
            ++failures;                                                                            \
        }                                                                                          \
    } while (0)

// Three leaves under a folder, which is the one item of the root. Every object counts its
// references and is never destroyed.

enum { LEAVES = 3 };

typedef struct Node {
    ISuperCollection collection;
    int32_t references;
    int32_t flags; ///< of this node, kept by the collection that holds it
    struct Node* items;
    int32_t count; ///< a node without items is no collection
} Node;

static int32_t Query(void* self, const IID* iid, void** object) {
    Node* node = self;
    const int known =
        uitree_is(iid, "IUnknown") || (node->count > 0 && uitree_is(iid, "ISuperCollection"));
    *object = known ? self : NULL;
    node->references += known;
    return known ? S_OK : E_NOINTERFACE;
}
static int32_t AddRef(void* self) {
    return ++((Node*)self)->references;
}
static int32_t Release(void* self) {
    return --((Node*)self)->references;
}
static Node* ItemAt(ISuperCollection* self, int32_t index) {
    Node* node = (Node*)self;
    return index >= 0 && index < node->count ? &node->items[index] : NULL;
}
static int32_t GetCount(ISuperCollection* self, int32_t* count) {
    *count = ((Node*)self)->count;
    return S_OK;
}
static int32_t GetItem(ISuperCollection* self, int32_t index, IUnknown** item) {
    Node* found = ItemAt(self, index);
    *item = (IUnknown*)found;
    return found ? (AddRef(found), S_OK) : E_INVALIDARG;
}
static int32_t GetName(ISuperCollection* self, int32_t index, IString** name) {
    (void)self, (void)index;
    *name = NULL;
    return E_FAIL;
}
static int32_t GetData(ISuperCollection* self, int32_t index, IUnknown** data) {
    (void)self, (void)index;
    *data = NULL;
    return E_FAIL;
}
static int32_t GetFlags(ISuperCollection* self, int32_t index, int32_t* flags) {
    Node* found = ItemAt(self, index);
    if (!found) {
        return E_INVALIDARG;
    }
    *flags = found->flags;
    return S_OK;
}
static int32_t SetFlags(ISuperCollection* self, int32_t index, int32_t flags) {
    Node* found = ItemAt(self, index);
    if (!found) {
        return E_INVALIDARG;
    }
    found->flags = flags;
    return S_OK;
}
static int32_t AddEntry(ISuperCollection* self, IString* a, IString* b, IString* c, int32_t d) {
    (void)self, (void)a, (void)b, (void)c, (void)d;
    return E_FAIL;
}
static int32_t Insert(
    ISuperCollection* self, int32_t index, int32_t a, IUnknown* item, int32_t b, int32_t c) {
    (void)self, (void)index, (void)a, (void)item, (void)b, (void)c;
    return E_FAIL;
}
static int32_t RemoveAll(ISuperCollection* self) {
    (void)self;
    return E_FAIL;
}
static const ISuperCollectionOperations collection = {Query, AddRef, Release, GetCount, GetItem,
    GetName, GetData, GetFlags, SetFlags, AddEntry, Insert, RemoveAll};

static Node leaves[LEAVES] = {
    {{&collection}, 1, 0, NULL, 0}, {{&collection}, 1, 0, NULL, 0}, {{&collection}, 1, 0, NULL, 0}};
static Node folder = {{&collection}, 1, 0, leaves, LEAVES};
static Node root = {{&collection}, 1, 0, &folder, 1};

// A listener, which remembers what it was told last.

typedef struct Listener {
    _IUIContainerEvents events;
    int32_t references;
    IUnknown* container; ///< compared only
    IUnknown* node;      ///< compared only
    int32_t index;
    int32_t action;
} Listener;

static int32_t ListenerQuery(void* self, const IID* iid, void** object) {
    const int known = uitree_is(iid, "IUnknown") || uitree_is(iid, "_IUIContainerEvents");
    *object = known ? self : NULL;
    ((Listener*)self)->references += known;
    return known ? S_OK : E_NOINTERFACE;
}
static int32_t ListenerAddRef(void* self) {
    return ++((Listener*)self)->references;
}
static int32_t ListenerRelease(void* self) {
    return --((Listener*)self)->references;
}
static int32_t NodeSelect(_IUIContainerEvents* self, IUnknown* container, int32_t state,
    int32_t index, int32_t action, IUnknown* node) {
    Listener* listener = (Listener*)self;
    CHECK(state == NODESELECT_CLICK);
    listener->container = container;
    listener->node = node;
    listener->index = index;
    listener->action = action;
    return S_OK;
}
static int32_t NodeDrag(_IUIContainerEvents* self, IUnknown* context, int32_t state, int32_t x,
    int32_t y, IUnknown* node) {
    (void)self, (void)context, (void)state, (void)x, (void)y, (void)node;
    return S_OK;
}
static const _IUIContainerEventsOperations listening = {
    ListenerQuery, ListenerAddRef, ListenerRelease, NodeSelect, NodeDrag};

// The cases: each has a control of its own, with the folder bound.

static void FindsEveryInterfaceWhereItStands(IUITree* tree) {
    enum { WORD = sizeof(void*), TABLE = 2 * WORD + 8 }; // a table pointer, an array, two counts
    static const struct {
        const char* name;
        ptrdiff_t place;
    } parts[] = {{"IObjectInfo", 2 * WORD}, {"IDataPersist", 3 * WORD}, {"IParent", 4 * WORD},
        {"IRenderableObject", 5 * WORD}, {"IUITree", 6 * WORD}, {"IUINodeContainer", 6 * WORD},
        {"IUIMouseInput", 7 * WORD}, {"IUIPropertyPageSpecify", 8 * WORD},
        {"IUIPropInterrogate", 9 * WORD}, {"IUIPropInterrogateEx", 9 * WORD},
        {"IUIRefreshableObject", 9 * WORD + TABLE}, {"IUITouchInput", 10 * WORD + TABLE},
        {"IEventSource", 11 * WORD + TABLE}, {"_IUIRefreshEvent", 11 * WORD + 2 * TABLE}};
    char* start = uitree_query(tree, "IUnknown");
    for (size_t i = 0; i < sizeof parts / sizeof parts[0]; ++i) {
        char* part = uitree_query(tree, parts[i].name);
        CHECK(part != NULL);
        if (part) {
            CHECK(part - start == parts[i].place);
            void* whole = uitree_query(part, "IUITree");
            CHECK(whole == tree);
            uitree_release(whole);
        }
        uitree_release(part);
    }
    uitree_release(start);
}

static void OpensAndSelectsByClicks(IUITree* tree) {
    Listener listener = {{&listening}, 1, NULL, NULL, -1, -1};
    IEventSource* source = uitree_query(tree, "IEventSource");
    IUIMouseInput* mouse = uitree_query(tree, "IUIMouseInput");
    CANVASRect rect = {0, 0, 100, 100};
    const IID events = uitree_iid("_IUIContainerEvents");
    CHECK(source->table->AdviseFor(source, (IUnknown*)&listener, 1, &events) == S_OK);
    CHECK(source->table->GetAdviseCount(source) == 1);

    for (int32_t action = POINTERACTION_PRESS; action >= POINTERACTION_RELEASE; --action) {
        CHECK(mouse->table->Pointer(
                  mouse, POINTERSTATE_PRIMARY, action, 0, 50.5, 5.5, &rect, NULL) == S_OK);
    }
    CHECK(folder.flags == (1 | NODE_VISIBLE | NODE_EXPANDED | NODE_SELECTED));
    CHECK(leaves[2].flags == (2 | NODE_VISIBLE));
    CHECK(listener.container == (IUnknown*)&root && listener.node == (IUnknown*)&folder);
    CHECK(listener.index == 0 && listener.action == NODEACTION_OPENED);

    CHECK(mouse->table->Pointer(mouse, POINTERSTATE_PRIMARY, POINTERACTION_PRESS, 0, 50.5, 35.5,
              &rect, NULL) == S_OK);
    CHECK(leaves[1].flags == (2 | NODE_VISIBLE | NODE_SELECTED));
    IUnknown* selected = NULL;
    CHECK(tree->table->GetSelected(tree, -1, SELECTED_NODE, &selected) == S_OK);
    CHECK(selected == (IUnknown*)&leaves[1]);
    uitree_release(selected);

    CHECK(source->table->Advise(source, NULL, ADVISE_DISCONNECT) == S_OK);
    CHECK(listener.references == 1);
    uitree_release(mouse);
    uitree_release(source);
}

static void DrawsScrollsAndCountsRows(IUITree* tree) {
    int32_t rows = 0;
    CHECK(tree->table->MakeNodeVisible(tree, (IUnknown*)&root, 0) == S_OK);
    CHECK(tree->table->GetContainerSize(tree, NULL, &rows, NULL) == S_OK && rows == 1 + LEAVES);

    CANVASRect rect = {0, 0, 100, 100};
    UbuntuCanvas canvas = {NULL};
    IRenderableObject* drawn = uitree_query(tree, "IRenderableObject");
    CHECK(drawn->table->Render(drawn, &canvas, &rect, NULL, 0) == S_OK);
    IUITouchInput* touch = uitree_query(tree, "IUITouchInput");
    CHECK(touch->table->Touch(touch, 0, 0, &rect, 0, 0, 0, 0, 0, 0, 15, 0, 0) == S_OK);
    uitree_release(touch);
    uitree_release(drawn);
}

static void ReadsAndChangesSettings(IUITree* tree) {
    int32_t height = 0;
    IUIPropInterrogate* settings = uitree_query(tree, "IUIPropInterrogate");
    CHECK(settings->table->Inquire(settings, PROP_ELEMENTHEIGHT, &height) == PROPTYPE_LONG);
    CHECK(height == 15);
    CHECK(settings->table->Control(settings, PROP_ELEMENTHEIGHT, 20) == S_OK);
    CHECK(tree->table->GetElementSize(tree, NULL, &height) == S_OK && height == 20);
    uitree_release(settings);
}

static const struct {
    const char* name;
    void (*run)(IUITree* tree);
} cases[] = {{"FindsEveryInterfaceWhereItStands", FindsEveryInterfaceWhereItStands},
    {"OpensAndSelectsByClicks", OpensAndSelectsByClicks},
    {"DrawsScrollsAndCountsRows", DrawsScrollsAndCountsRows},
    {"ReadsAndChangesSettings", ReadsAndChangesSettings}};

static int Run(void (*run)(IUITree* tree)) {
    // ISO C has no way from an object's address to a function's but through memory.
    InitializeFunction initialize = NULL;
    FactoryFunction factory = NULL;
    CreatorFunction creator = NULL;
    void* library = dlopen("./UITree.so", RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        puts(dlerror());
        return 1;
    }
    *(void**)&initialize = dlsym(library, UITREE_INITIALIZE);
    *(void**)&factory = dlsym(library, UITREE_FACTORY);
    CHECK(initialize(NULL, NULL) == S_OK);
    CHECK(factory(uitree_text(L"Another"), &creator) == E_FAIL && !creator);
    CHECK(factory(uitree_text(L"UITree"), &creator) == S_OK);
    IID iid = uitree_iid("IUITree");
    void* object = NULL;
    CHECK(creator(NULL, &iid, &object) == S_OK);
    IUITree* tree = object;
    CHECK(tree->table->put_Collection(tree, (IUnknown*)&root) == S_OK);

    run(tree);

    CHECK(tree->table->Release(tree) == 0);
    CHECK(root.references == 1 && folder.references == 1 && leaves[1].references == 1);
    CHECK(dlclose(library) == 0);
    CHECK(!dlopen("./UITree.so", RTLD_NOW | RTLD_NOLOAD)); // it lets itself be unloaded
    return failures > 0;
}

int main(int count, char** arguments) {
    for (size_t i = 0; count == 2 && i < sizeof cases / sizeof cases[0]; ++i) {
        if (strcmp(arguments[1], cases[i].name) == 0) {
            return Run(cases[i].run);
        }
    }
    printf("no such case\n");
    return 2;
}
