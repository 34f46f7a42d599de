#include "uitree/TreeItems.h"

#include "framework/Support.h"

/// What is asked is the object that an item stands for: what it binds to when it is a moniker, else
/// itself.
bool IsSlide(IUnknown* item) {
    SmartPtr<IUnknown> bound;
    const auto moniker = Query<ICollectionMoniker>(item);
    if (moniker) {
        moniker->BindToObject(IID_IUnknown, bound.ReceiveAny());
    }
    const auto info = Query<IObjectInfo>(moniker ? bound.Get() : item);
    if (!info) {
        return false;
    }
    tagREFString name = {};
    info->GetName(0, &name);
    return IsEqualIgnoringCase(name, CREFString(L"PMSlide"));
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
