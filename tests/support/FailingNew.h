#pragma once

#include <cstddef>

/// While one lives, `allowed` allocations of this thread succeed, and the next ones fail. Checks
/// allocate too, so they wait until it is gone.
class FailingNew {
public:
    explicit FailingNew(size_t allowed = 0);
    ~FailingNew();
    /// Whether one has failed by now.
    bool HasFailed() const;
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};
