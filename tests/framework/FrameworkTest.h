#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "framework/Support.h"
#include "host/Host.h"
#include "host/HostObject.h"
#include "host/LiveObjects.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>

/// Runs a host, whose modules stand in the current directory; every object has to be given back.
struct FrameworkTest : testing::Test {
    FrameworkTest() {
        // The descriptions behind strings and variants stay until the program ends.
        Adopt(CREFString::CreateString()).Reset();
        Adopt(CREFString::CreateVariant()).Reset();
        m_Before = LiveObjects();
        m_Host.emplace(".");
    }
    ~FrameworkTest() override {
        m_Host.reset();
        EXPECT_EQ(LiveObjects(), m_Before);
    }

    std::map<std::string, int32_t> m_Before;
    std::optional<Host> m_Host;
};

/// A component class of a test's own, with everything that CObject leaves to its classes.
template <class Self, class... Bases>
struct Component : CObject<Self>, Bases... {
    int32_t QueryInterface(const IID& iid, void** object) override {
        *object = iid == IID_IUnknown ? SmartPtr<ObjectBase>(this).Detach() : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    int32_t AddRef() override { return this->IncrementCount(); }
    int32_t Release() override {
        const int32_t count = this->DecrementCount();
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

/// An object that answers nothing but IUnknown.
struct Thing final : HostObject<Thing, IUnknown> {
    static constexpr const char* kKind = "Thing";
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
