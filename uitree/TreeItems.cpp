#include "uitree/TreeItems.h"

#include "framework/Support.h"

namespace {

/// The object that an item stands for: what it binds to when it is a moniker, else itself.
SmartPtr<IUnknown> ObjectOf(IUnknown* item) {
    SmartPtr<IUnknown> object(item);
    if (const auto moniker = Query<ICollectionMoniker>(item)) {
        moniker->BindToObject(IID_IUnknown, object.ReceiveAny());
    }
    return object;
}

/// Slides are collections to everyone else, and leaves in a tree.
bool IsSlide(IUnknown* object) {
    const auto info = Query<IObjectInfo>(object);
    if (!info) {
        return false;
    }
    tagREFString name = {};
    info->GetName(0, &name);
    return IsEqualIgnoringCase(name, CREFString(L"PMSlide"));
}

} // namespace

SmartPtr<ISuperCollection> IsCollection(IUnknown* item) {
    auto collection = QueryItem<ISuperCollection>(item);
    if (collection && IsSlide(ObjectOf(item).Get())) {
        collection.Reset();
    }
    return collection;
}

int32_t ShowChildren(ISuperCollection& children, int32_t parentFlags, bool show) {
    const int32_t level = ((parentFlags & NODE_LEVEL_MASK) + 1) & NODE_LEVEL_MASK;
    const int32_t count = CountOf(children);
    for (int32_t i = 0; i < count; ++i) {
        const int32_t kept = FlagsOf(children, i) & NODE_EXPANDED;
        children.SetItemFlags(i, kept | level | (show ? NODE_VISIBLE : 0));
    }
    return count;
}
