#pragma once

#include <cstddef>
#include <cstdint>

/// While one lives, `allowed` allocations of this thread succeed, and the next ones fail. Checks
/// allocate too, so they wait until it is gone.
class FailingNew {
public:
    explicit FailingNew(size_t allowed = 0) { s_Allowed = allowed; }
    ~FailingNew() { s_Allowed = SIZE_MAX; }
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;

    static inline thread_local size_t s_Allowed = SIZE_MAX; ///< so many are never used up
};
