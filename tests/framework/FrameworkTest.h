#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "framework/Support.h"
#include "tests/support/HostedTest.h"

#include <functional>

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

/// Characters in a buffer of exactly their size, so that a read past the end is caught.
struct HeapText : std::vector<wchar_t> {
    explicit HeapText(std::wstring_view text) : vector(text.begin(), text.end()) {}
    CREFString Ref() const { return tagREFString{static_cast<int32_t>(size()), data()}; }
};
