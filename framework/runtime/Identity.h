#pragma once

#include "framework/interfaces/Unknown.h"

/// What tells objects apart: the address that an interface pointer answers for IID_IUnknown, or the
/// pointer itself when it answers none. Not for calls: no reference comes with it.
const void* IdentityOf(IUnknown* object);

/// Whether two interface pointers denote one object: their IUnknown addresses are equal. Null is
/// the same as null only.
bool IsSameObject(IUnknown* first, IUnknown* second);

/// The interface `iid` of `object` with one reference for the caller; null when `object` is null
/// or lacks it.
[[nodiscard]] inline void* QueryObject(IUnknown* object, const IID& iid) {
    void* answer = nullptr;
    return object && object->QueryInterface(iid, &answer) >= 0 ? answer : nullptr;
}
