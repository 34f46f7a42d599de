#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"

#include <algorithm>

// What the control asks of the items and flag words of the host's collections.

/// Slides are collections to everyone else, and leaves in a tree.
bool IsSlide(IUnknown* item);

/// The sub-collection that makes an item expandable, looked for through the item's wrappers; empty
/// when there is none, or when the object presents itself as a leaf by its name.
[[gnu::always_inline]] inline SmartPtr<ISuperCollection> IsCollection(IUnknown* item) {
    void* collection = nullptr;
    QueryItemObject(item, IID_ISuperCollection, &collection);
    if (!collection) {
        return {};
    }
    auto children = Adopt(static_cast<ISuperCollection*>(collection));
    return IsSlide(item) ? SmartPtr<ISuperCollection>() : std::move(children);
}

/// An item's flag word; 0 when it cannot be read.
inline int32_t FlagsOf(ISuperCollection& collection, int32_t index) {
    int32_t flags = 0;
    return collection.GetItemFlags(index, &flags) < 0 ? 0 : flags;
}

inline int32_t CountOf(ISuperCollection& collection) {
    int32_t count = 0;
    collection.GetCount(&count);
    return std::max(count, 0);
}

inline SmartPtr<IUnknown> ItemOf(ISuperCollection& collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection.GetItem(index, item.Receive());
    return item;
}

/// Makes a node's children rows of the level below it, or hides them. Each keeps its own open
/// state, and what lies below them is not touched. Returns their number.
int32_t ShowChildren(ISuperCollection& children, int32_t parentFlags, bool show);

/// Lets content that is filled lazily (an IFileArchive or IFileNameCollection) fill itself once.
template <class Content>
void FillOnce(Content& content, int32_t selector) {
    int32_t state = 0;
    content.GetContentState(selector, &state);
    if (state == 0) {
        content.Populate();
    }
}
