#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

/// A vector whose first kNear elements lie within the object, so that they cost no allocation.
/// Throws std::bad_alloc beyond them.
template <class T, size_t kNear>
class NearVector {
public:
    NearVector() { m_Items.reserve(kNear); }
    NearVector(const NearVector&) = delete;
    NearVector& operator=(const NearVector&) = delete;

    std::pmr::vector<T>* operator->() { return &m_Items; }
    const std::pmr::vector<T>* operator->() const { return &m_Items; }
    std::pmr::vector<T>& operator*() { return m_Items; }
    const std::pmr::vector<T>& operator*() const { return m_Items; }

private:
    struct alignas(T) Place {
        std::byte m_Bytes[sizeof(T)];
    };
    Place m_Near[kNear];
    std::pmr::monotonic_buffer_resource m_Memory{m_Near, sizeof(m_Near)};
    // In parentheses: braces would make the address the first of the elements, where T takes it.
    std::pmr::vector<T> m_Items = std::pmr::vector<T>(&m_Memory);
};

/// Trees of so many levels are walked and drawn without an allocation.
constexpr size_t kNearLevels = 32;
