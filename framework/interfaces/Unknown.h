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
