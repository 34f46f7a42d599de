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

/// Ends with as many living host objects as it began with.
class LeakTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(LiveObjects(), m_Before); }

    std::map<std::string, int32_t> m_Before = LiveObjects();
};

/// The same with the host running, whose modules stand in the current directory.
class HostTest : public LeakTest {
protected:
    HostTest() {
        // The descriptions behind strings and variants stay until the program ends.
        Adopt(CREFString::CreateString()).Reset();
        Adopt(CREFString::CreateVariant()).Reset();
        m_Before = LiveObjects();
        m_Host.emplace(".");
    }
    void TearDown() override {
        m_Host.reset();
        LeakTest::TearDown();
    }
    void Unregister(const wchar_t* name) {
        m_Host->Register(name, [](const IID&, void**) { return E_FAIL; });
    }

    std::optional<Host> m_Host;
};

/// A component class of a test's own, with everything that CObject leaves to its classes.
template <class Self, class... Bases>
class Component : public CObject<Self>, public Bases... {
public:
    int32_t QueryInterface(const IID& iid, void** object) override {
        if (iid != IID_IUnknown) {
            return ObjectBase::QueryInterface(iid, object);
        }
        *object = static_cast<ObjectBase*>(this);
        AddRef();
        return S_OK;
    }
    int32_t AddRef() override { return this->IncrementCount(); }
    int32_t Release() override {
        const int32_t count = this->DecrementCount();
        if (count == 0) {
            this->HoldCountWhileDying();
            this->FinalRelease();
            delete static_cast<Self*>(this);
        }
        return count;
    }
    void Lock() override {
        ++m_Locks;
        ++m_LockDepth;
    }
    void Unlock() override { --m_LockDepth; }

    int m_Locks = 0;
    int m_LockDepth = 0;
};

/// An object that answers nothing but IUnknown.
class Thing final : public HostObject<Thing, IUnknown> {
public:
    static constexpr const char* kKind = "Thing";
};

inline int32_t CountOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

inline std::wstring Text(tagREFString text) {
    return text.m_Length > 0 ? std::wstring(text.m_String, static_cast<size_t>(text.m_Length))
                             : std::wstring();
}
inline std::wstring Text(IString* text) {
    return Text(CREFString(text));
}

/// Characters in a buffer of exactly their size, so that a read past the end is caught.
class HeapText {
public:
    explicit HeapText(std::wstring_view text) : m_Text(text.begin(), text.end()) {
        m_Text.shrink_to_fit();
    }
    CREFString Ref() const {
        return tagREFString{static_cast<int32_t>(m_Text.size()), m_Text.data()};
    }

private:
    std::vector<wchar_t> m_Text;
};
