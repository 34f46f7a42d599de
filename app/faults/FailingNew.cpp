#include "app/faults/FailingNew.h"

#include "app/faults/HostTurn.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool gIsFailing = false; // a FailingNew lives
thread_local size_t gAllowed = 0;
thread_local size_t gLast = 0; ///< the first allocation that succeeds again
thread_local size_t gCount = 0;
thread_local int64_t gBlocks = 0; ///< made less freed

bool IsToFail() {
    if (!gIsFailing || HostTurn::IsNow()) {
        return false;
    }
    const size_t number = gCount++;
    return number >= gAllowed && number < gLast;
}

void* Counted(void* memory) {
    gBlocks += memory ? 1 : 0;
    return memory;
}

void Free(void* memory) {
    gBlocks -= memory ? 1 : 0;
    std::free(memory);
}

} // namespace

int64_t LiveBlocks() {
    return gBlocks;
}

FailingNew::FailingNew(size_t allowed, size_t failing) {
    gAllowed = allowed;
    gLast = failing > SIZE_MAX - allowed ? SIZE_MAX : allowed + failing;
    gCount = 0;
    gIsFailing = true;
}

FailingNew::~FailingNew() {
    gIsFailing = false;
}

bool FailingNew::HasFailed() const {
    return gCount > gAllowed;
}

size_t FailingNew::Count() const {
    return gCount;
}

void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return IsToFail() ? nullptr : Counted(std::malloc(size == 0 ? 1 : size));
}
void* operator new(size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    Free(memory);
}

// Memory resources allocate by these.
void* operator new(size_t size, std::align_val_t alignment) {
    const auto unit = static_cast<size_t>(alignment);
    void* memory = IsToFail() ? nullptr : std::aligned_alloc(unit, (size / unit + 1) * unit);
    return memory ? Counted(memory) : throw std::bad_alloc();
}
void operator delete(void* memory, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, size_t, std::align_val_t) noexcept {
    Free(memory);
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
