#pragma once

#include "framework/interfaces/ComponentInterfaces.h"
#include "framework/interfaces/Export.h"
#include "framework/runtime/Object.h"

/// The host's component collection: handed over by the host, or found by GLOBALComponents. Empty
/// from load on; what it holds at unload is released. One per module, written on one thread.
extern MODULE_EXPORT SmartPtr<IComponentCollection> gGlobalComponentCollection;

/// What a module's exported InitializeModule does: keeps `collection` (null empties the holder)
/// with a reference of its own in place of the previous one.
int32_t SetGlobalComponents(IComponentCollection* collection);

/// The host's component collection with one reference for the caller. Without one handed over it is
/// found in the module "CollectionsEx"; null when that fails too, and tried again on the next call.
[[nodiscard]] IComponentCollection* GLOBALComponents();

/// The creator of a component of another module, `./<module>.so` in the current directory; null
/// when the module cannot be loaded (reported on standard output) or does not know the component.
/// The module stays loaded for the life of the process.
CreatorFunction MODULECreateFunction(tagREFString module, tagREFString component);

/// An object of the named host component asked for `iid`, with one reference; null when the host
/// has none.
[[nodiscard]] void* CreateObject(tagREFString name, const IID* iid);

/// The same from a narrow literal, which travels as a host string; null without host strings.
[[nodiscard]] void* CreateHostObject(const char* name, const IID& iid);

template <class T>
SmartPtr<T> CreateHostObject(const char* name) {
    return Adopt(static_cast<T*>(CreateHostObject(name, IdentifierOf<T>())));
}
