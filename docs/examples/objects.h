#pragma once

// Objects for hosts in C that live as long as the program, so that nobody has to count them: any
// object of one interface, a registry of such objects, and a tree of items for the control to show.

#include "uitree.h"

/// What such an object begins with: its table, and the interface that it answers beside IUnknown.
typedef struct Object {
    IUnknown unknown;
    const char* interface;
} Object;

/// The first three operations of every object's table.
static inline int32_t object_query(void* self, const IID* iid, void** object) {
    const int known = uitree_is(iid, "IUnknown") || uitree_is(iid, ((Object*)self)->interface);
    *object = known ? self : NULL;
    return known ? S_OK : E_NOINTERFACE;
}
static inline int32_t object_count(void* self) { return (void)self, 1; }
#define OBJECT_OPERATIONS object_query, object_count, object_count

/// What a registry hands out under a name. Every component that is not listed is done without.
typedef struct Component {
    const wchar_t* name;
    Object* object;
} Component;
typedef struct Registry {
    IComponentCollection collection;
    const char* interface;
    const Component* components;
    int32_t count;
} Registry;

static inline int32_t registry_item(IComponentCollection* self, int32_t index, IUnknown** item) {
    *item = NULL;
    return (void)self, (void)index, E_FAIL;
}
static inline int32_t registry_find(IComponentCollection* self, IString* name, int32_t* index) {
    *index = -1;
    return (void)self, (void)name, E_FAIL;
}
static inline int32_t registry_create(
    IComponentCollection* self, tagREFString name, const IID* iid, void** object) {
    const Registry* registry = (Registry*)self;
    const size_t length = (size_t)name.m_Length;
    *object = NULL;
    for (const Component* known = registry->components;
         known < registry->components + registry->count; ++known) {
        if (wcslen(known->name) == length && wmemcmp(known->name, name.m_String, length) == 0) {
            return object_query(known->object, iid, object);
        }
    }
    return E_FAIL;
}
static const IComponentCollectionOperations registry_operations = {
    OBJECT_OPERATIONS, registry_item, registry_find, registry_create};

/// A zero-terminated text.
typedef struct Text {
    IString string;
    const char* interface;
    const wchar_t* characters;
} Text;

static inline int32_t text_get(IString* self, wchar_t** text, int32_t* length) {
    *text = (wchar_t*)((Text*)self)->characters;
    *length = (int32_t)wcslen(*text);
    return S_OK;
}
static const IStringOperations text_operations = {OBJECT_OPERATIONS, text_get};

/// A row with its name, and a collection when there are rows below it.
typedef struct Item {
    ISuperCollection collection;
    const char* interface;
    Text name;
    struct Item* items;
    int32_t count;
    int32_t flags; ///< the control's
} Item;

static inline Item* item_at(ISuperCollection* self, int32_t index) {
    Item* item = (Item*)self;
    return index >= 0 && index < item->count ? &item->items[index] : NULL;
}
static inline int32_t item_count(ISuperCollection* self, int32_t* count) {
    *count = ((Item*)self)->count;
    return S_OK;
}
static inline int32_t item_get(ISuperCollection* self, int32_t index, IUnknown** item) {
    *item = (IUnknown*)item_at(self, index);
    return *item ? S_OK : E_INVALIDARG;
}
static inline int32_t item_name(ISuperCollection* self, int32_t index, IString** name) {
    Item* item = item_at(self, index);
    *name = item ? &item->name.string : NULL;
    return item ? S_OK : E_INVALIDARG;
}
static inline int32_t item_data(ISuperCollection* self, int32_t index, IUnknown** data) {
    *data = NULL;
    return (void)self, (void)index, E_FAIL;
}
static inline int32_t item_flags(ISuperCollection* self, int32_t index, int32_t* flags) {
    Item* item = item_at(self, index);
    if (!item) {
        return E_INVALIDARG;
    }
    *flags = item->flags;
    return S_OK;
}
static inline int32_t item_set_flags(ISuperCollection* self, int32_t index, int32_t flags) {
    Item* item = item_at(self, index);
    if (!item) {
        return E_INVALIDARG;
    }
    item->flags = flags;
    return S_OK;
}
// The tree is what it is: nothing can be added or removed.
static inline int32_t item_add(
    ISuperCollection* self, IString* a, IString* b, IString* c, int32_t d) {
    return (void)self, (void)a, (void)b, (void)c, (void)d, E_FAIL;
}
static inline int32_t item_insert(
    ISuperCollection* self, int32_t index, int32_t a, IUnknown* item, int32_t b, int32_t c) {
    return (void)self, (void)index, (void)a, (void)item, (void)b, (void)c, E_FAIL;
}
static inline int32_t item_remove_all(ISuperCollection* self) { return (void)self, E_FAIL; }

static const ISuperCollectionOperations item_operations = {OBJECT_OPERATIONS, item_count, item_get,
    item_name, item_data, item_flags, item_set_flags, item_add, item_insert, item_remove_all};

// What the objects are initialised with; `array` holds the components, or the items below.
// clang-format off
#define REGISTRY(array) \
    {{&registry_operations}, "IComponentCollection", array, sizeof(array) / sizeof((array)[0])}
#define TEXT(label) {{&text_operations}, "IString", label}
#define LEAF(label) {{&item_operations}, "IUnknown", TEXT(label), NULL, 0, 0}
#define FOLDER(label, array) \
    {{&item_operations}, "ISuperCollection", TEXT(label), array, sizeof(array) / sizeof((array)[0]), 0}
// clang-format on
