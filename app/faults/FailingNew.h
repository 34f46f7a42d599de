#pragma once

#include <cstddef>
#include <cstdint>

/// While one lives, `allowed` allocations of this thread succeed, the next `failing` ones fail, and
/// those after them succeed again. What the host allocates in a HostTurn does not count. Checks
/// allocate too, so they wait until it is gone.
///
/// The program that links this replaces `operator new` for the modules that it loads too.
class FailingNew {
public:
    explicit FailingNew(size_t allowed = 0, size_t failing = SIZE_MAX);
    ~FailingNew();
    /// Whether one has failed by now.
    bool HasFailed() const;
    /// How many there were by now.
    size_t Count() const;
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};

/// The blocks of memory that this thread has made by `operator new` less those that it has freed.
/// Only differences mean anything.
int64_t LiveBlocks();
