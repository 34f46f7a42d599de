#include "tests/support/FailingNew.h"

#include <cstdlib>
#include <new>

namespace {

constexpr size_t kUnlimited = static_cast<size_t>(-1);
thread_local size_t gAllowed = kUnlimited;

} // namespace

FailingNew::FailingNew(size_t allowed) {
    gAllowed = allowed;
}
FailingNew::~FailingNew() {
    gAllowed = kUnlimited;
}

// Every form in use is replaced, so that no two allocators meet.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    if (gAllowed == 0) {
        return nullptr;
    }
    gAllowed -= gAllowed == kUnlimited ? 0 : 1;
    return std::malloc(size == 0 ? 1 : size);
}
void* operator new(size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new[](size_t size) {
    return operator new(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    std::free(memory);
}
