#pragma once

#include "framework/interfaces/Unknown.h"

// The host's collections: implemented by the host, called by modules. The operations stand in table
// order. Callers go by the out-pointers, which hold one reference for them, and only where a walk
// ends by the status.

/// A tree's data. Every item has an index from 0, an object, an optional name, an optional data
/// object, and one flag word that the collection keeps for viewers without interpreting it.
struct ISuperCollection : IUnknown {
    virtual int32_t GetCount(int32_t* count) = 0;
    /// Fails for an index outside 0 to count - 1.
    virtual int32_t GetItem(int32_t index, IUnknown** item) = 0;
    /// The item's name, if it has one.
    virtual int32_t GetItemName(int32_t index, IString** name) = 0;
    /// The data object stored with the item.
    virtual int32_t GetItemData(int32_t index, IUnknown** data) = 0;
    /// Must fail past the last item: viewers walk until it does.
    virtual int32_t GetItemFlags(int32_t index, int32_t* flags) = 0;
    virtual int32_t SetItemFlags(int32_t index, int32_t flags) = 0;
    /// Appends an entry of three strings; the last argument is 0.
    virtual int32_t AddEntry(IString* name, IString* component, IString* owner, int32_t) = 0;
    /// Inserts before `index`; an index past the end appends. The other arguments are 0.
    virtual int32_t InsertItem(int32_t index, int32_t, IUnknown* item, int32_t, int32_t) = 0;
    virtual int32_t RemoveAll() = 0;
};

/// String tables and page lists.
struct INamedCollection : IUnknown {
    /// The entry at the index; for string tables also the entry whose key is that number.
    virtual int32_t GetItem(int32_t index, IUnknown** item) = 0;
    /// The index of the entry with that name; negative when there is none.
    virtual int32_t FindItem(IString* name, int32_t* index) = 0;
};

/// An item that stands for another object.
struct IUINode : IUnknown {
    /// The object stood for; it may be an ICollectionMoniker.
    virtual int32_t get_Object(IUnknown** object) = 0;
    /// The node's label.
    virtual int32_t get_Name(IString** name) = 0;
};

/// Names an object that is found only when asked for.
struct ICollectionMoniker : IUnknown {
    virtual int32_t BindToObject(const IID& iid, void** object) = 0;
};
