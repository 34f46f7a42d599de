#pragma once

#include "framework/interfaces/Identifiers.h"

/// The root of every interface. Interfaces are tables of operations: no data, no virtual
/// destructor.
///
/// Counting: an object is born with count 1; a pointer handed out carries one reference for the
/// receiver; a pointer passed in is borrowed, and whoever keeps it adds a reference of its own.
struct IUnknown {
    /// Hands out the interface `iid` of the same object with one reference, or E_NOINTERFACE and
    /// null. Asking for IID_IUnknown yields the same address through every interface of an object.
    virtual int32_t QueryInterface(const IID& iid, void** object) = 0;
    /// Both return the count after the change; the Release that reaches 0 destroys the object.
    virtual int32_t AddRef() = 0;
    virtual int32_t Release() = 0;

protected:
    ~IUnknown() = default;
};

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
