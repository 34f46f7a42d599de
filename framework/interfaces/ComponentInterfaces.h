#pragma once

#include "framework/interfaces/Unknown.h"

/// The host's component registry. Implemented by the host.
struct IComponentCollection : IUnknown {
    /// The entry at the index; component entries answer IComponentString.
    virtual int32_t GetItem(int32_t index, IUnknown** item) = 0;
    /// The index of the entry with that name; negative when there is none.
    virtual int32_t FindItem(IString* name, int32_t* index) = 0;
    /// Creates (or hands out) an object of the component registered under `name`, asked for `iid`.
    /// Callers preset `object` to null and test it, not the status.
    virtual int32_t CreateComponent(tagREFString name, const IID* iid, void** object) = 0;
};

/// Parts of a component description.
constexpr int32_t COMPONENTPART_NAME = 1;
constexpr int32_t COMPONENTPART_MODULE = 4;

/// A component description, from which objects are made. Implemented by the host.
struct IComponentString : IUnknown {
    /// Describes the component that implements `object` from now on.
    virtual int32_t SetObject(IUnknown* object) = 0;
    virtual int32_t GetPart(int32_t part, IString** text) = 0;
    /// A new object of the described component, asked for `iid`.
    virtual int32_t CreateInstance(const IID& iid, void** object) = 0;
    virtual int32_t SetPart(int32_t part, tagREFString text) = 0;
};
