#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "framework/Support.h"
#include "tests/support/HostedTest.h"

#include <functional>
#include <new>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

/// A component class of a test's own, with everything that CObject leaves to its classes.
template <class Self, class... Bases>
struct Component : CObject<Self>, Bases... {
    int32_t QueryInterface(const IID& iid, void** object) override {
        *object = iid == IID_IUnknown ? SmartPtr<ObjectBase>(this).Detach() : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    int32_t AddRef() override { return this->m_RefCount.Increment(); }
    int32_t Release() override {
        const int32_t count = this->m_RefCount.Decrement();
        if (count == 0) {
            this->FinalRelease();
            delete static_cast<Self*>(this);
        }
        return count;
    }
    void Lock() override { ++m_Locks, ++m_LockDepth; }
    void Unlock() override { --m_LockDepth; }

    int m_Locks = 0, m_LockDepth = 0;
};

template <class Source>
std::wstring Text(Source source) {
    const CREFString text(source);
    return {text.m_String, static_cast<size_t>(text.m_Length)};
}

/// Puts what it allocates at the end of a page, behind which nothing may be read.
template <class T>
struct PageEnd {
    using value_type = T;

    T* allocate(size_t count) {
        void* pages = mmap(nullptr, Bytes(count) + Page(), PROT_READ | PROT_WRITE,
            MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        char* end = static_cast<char*>(pages) + Bytes(count);
        if (pages == MAP_FAILED || mprotect(end, Page(), PROT_NONE) != 0) {
            throw std::bad_alloc();
        }
        return reinterpret_cast<T*>(end) - count;
    }
    void deallocate(T* first, size_t count) {
        munmap(reinterpret_cast<char*>(first + count) - Bytes(count), Bytes(count) + Page());
    }
    bool operator==(const PageEnd&) const = default;

private:
    static size_t Page() { return static_cast<size_t>(getpagesize()); }
    /// Whole pages.
    static size_t Bytes(size_t count) { return (count * sizeof(T) + Page() - 1) / Page() * Page(); }
};

/// Characters of which a read past the end is caught.
struct GuardedText : std::vector<wchar_t, PageEnd<wchar_t>> {
    explicit GuardedText(std::wstring_view text) : vector(text.begin(), text.end()) {}
    CREFString Ref() const { return tagREFString{static_cast<int32_t>(size()), data()}; }
};
