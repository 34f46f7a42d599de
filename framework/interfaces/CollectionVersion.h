#pragma once

#include "framework/interfaces/Unknown.h"

/// Vouches for a collection, so that a viewer may keep what it found out about it. Implemented by
/// the host, asked for by a viewer when the collection is bound; mandatory for none.
struct ICollectionVersion : IUnknown {
    /// Stores a number that has changed whenever anything has that a viewer can see in the
    /// collection or in what is below it, at any depth: items, names and flag words, whoever wrote
    /// them. The same number never comes back. Where one flag word was written it has grown by one,
    /// and by more where anything else happened besides: who wrote the word knows that nothing did,
    /// then. E_FAIL while the collection cannot vouch for all of it.
    virtual int32_t GetVersion(uint64_t* version) = 0;
};

/// No module exports it: the two sides derive it from the name each.
template <>
inline const IID& IdentifierOf<ICollectionVersion>() {
    static const IID identifier = __IIDOfc("ICollectionVersion");
    return identifier;
}
