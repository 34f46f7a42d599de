#pragma once

#include <atomic>
#include <cstdint>

/// The reference count of an object, 1 when it is born. Any thread may change it.
class RefCount {
public:
    /// Both return the count after the change.
    int32_t Increment() { return m_Count.fetch_add(1) + 1; }
    int32_t Decrement() { return m_Count.fetch_sub(1) - 1; }
    /// To be called when the count has reached 0, before the object is torn down: what is released
    /// on the way may add and drop a reference to the object without destroying it again.
    void HoldWhileDying() { m_Count.store(kDying); }

private:
    static constexpr int32_t kDying = 0x40000000;

    std::atomic<int32_t> m_Count{1};
};
static_assert(sizeof(RefCount) == sizeof(int32_t));
