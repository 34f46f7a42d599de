#include "tests/support/FailingNew.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

thread_local size_t gAllowed = SIZE_MAX; // so many are never used up
thread_local bool gHasFailed = false;

bool IsAllowed() {
    const bool isAllowed = gAllowed > 0;
    gAllowed -= isAllowed ? 1 : 0;
    gHasFailed |= !isAllowed;
    return isAllowed;
}

} // namespace

FailingNew::FailingNew(size_t allowed) {
    gAllowed = allowed;
    gHasFailed = false;
}

FailingNew::~FailingNew() {
    gAllowed = SIZE_MAX;
}

bool FailingNew::HasFailed() const {
    return gHasFailed;
}

void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return IsAllowed() ? std::malloc(size == 0 ? 1 : size) : nullptr;
}
void* operator new(size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}

// Memory resources allocate by these.
void* operator new(size_t size, std::align_val_t alignment) {
    const auto unit = static_cast<size_t>(alignment);
    void* memory = IsAllowed() ? std::aligned_alloc(unit, (size / unit + 1) * unit) : nullptr;
    return memory ? memory : throw std::bad_alloc();
}
void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t, std::align_val_t) noexcept {
    std::free(memory);
}

// Elsewhere the forms for arrays lead to these by themselves, but not under the sanitizers.
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}
void* operator new[](size_t size) {
    return operator new(size);
}
void operator delete[](void* memory) noexcept {
    operator delete(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    operator delete(memory);
}
