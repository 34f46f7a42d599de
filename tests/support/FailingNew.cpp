#include "tests/support/FailingNew.h"

#include <cstdlib>
#include <new>

// The forms for arrays lead here by themselves.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    if (FailingNew::s_Allowed == 0) {
        return nullptr;
    }
    --FailingNew::s_Allowed;
    return std::malloc(size == 0 ? 1 : size);
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
