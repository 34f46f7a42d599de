#pragma once

#include "host/components/HostInterfaces.h"

/// One number for all the collections of this program or module, which any change of any of them
/// moves on: that is more often than needed, and costs a change next to nothing. None of them
/// vouches while one holds an item that it cannot see into: a collection from elsewhere, or a
/// wrapper around anything. Used on one thread.
class CollectionVersion : public IHostVersionSource {
public:
    using Interface = IHostVersionSource;

    int32_t GetVersion(uint64_t* version) override;
    const void* GetSource() override;

    static void Advance();
    /// Whether what is below an item moves this number too.
    static bool Covers(IUnknown* item);
    /// Counts the collections that hold what is not covered.
    static void AddBlind(int32_t change);

protected:
    ~CollectionVersion() = default;
};
