#pragma once

#include "framework/runtime/Identity.h"

#include <utility>

/// Holds one interface pointer, null or with one reference that the holder releases.
///
///     SmartPtr<IString> name;
///     collection->GetItemName(0, name.Receive()); // receives the reference handed out
///     auto text = Query<ICreatableString>(name.Get());
///
/// Every way in says what happens to the reference: construction and assignment share (add one),
/// `Attach` and `Receive` take over one that was handed out, `Detach` hands the own one on.
/// Copying adds a reference, moving does not. Not for objects shared between threads: the count is
/// atomic, the holder is not.
template <class T>
class SmartPtr {
public:
    constexpr SmartPtr() = default;
    explicit SmartPtr(T* pointer) : m_Pointer(pointer) {
        if (m_Pointer) {
            m_Pointer->AddRef();
        }
    }
    SmartPtr(const SmartPtr& other) : SmartPtr(other.m_Pointer) {}
    SmartPtr(SmartPtr&& other) noexcept : m_Pointer(other.Detach()) {}
    ~SmartPtr() { Reset(); }

    /// The new pointer gets its reference before the old one loses it, so assigning what is already
    /// held keeps the object alive. Returns the new pointer.
    T* operator=(T* pointer) {
        if (pointer) {
            pointer->AddRef();
        }
        Attach(pointer);
        return pointer;
    }
    SmartPtr& operator=(const SmartPtr& other) {
        *this = other.m_Pointer;
        return *this;
    }
    SmartPtr& operator=(SmartPtr&& other) noexcept {
        Attach(other.Detach());
        return *this;
    }

    /// Takes over a reference that the caller owns.
    void Attach(T* pointer) {
        Reset();
        m_Pointer = pointer;
    }
    /// Empties the holder and returns its pointer; the reference is the caller's now.
    [[nodiscard]] T* Detach() { return std::exchange(m_Pointer, nullptr); }
    /// Empties the holder, then lets an out-parameter fill it.
    T** Receive() {
        Reset();
        return &m_Pointer;
    }
    /// The same for operations that hand out any interface through a `void**`. Filled when the
    /// expression that it stands in is over.
    class AnyReceiver {
    public:
        explicit AnyReceiver(SmartPtr& holder) : m_Holder(holder) {}
        ~AnyReceiver() { m_Holder.Attach(static_cast<T*>(m_Pointer)); }
        AnyReceiver(const AnyReceiver&) = delete;
        AnyReceiver& operator=(const AnyReceiver&) = delete;
        operator void**() { return &m_Pointer; } // NOLINT(google-explicit-constructor)

    private:
        SmartPtr& m_Holder;
        void* m_Pointer = nullptr;
    };
    AnyReceiver ReceiveAny() {
        Reset();
        return AnyReceiver(*this);
    }
    /// The holder is already empty while the object dies. An object that puts something back into
    /// the holder from its destructor does not leak it.
    void Reset() {
        while (T* held = Detach()) {
            held->Release();
        }
    }

    T* Get() const { return m_Pointer; }
    T* operator->() const { return m_Pointer; }
    explicit operator bool() const { return m_Pointer != nullptr; }
    bool operator==(T* pointer) const { return IsSameObject(m_Pointer, pointer); }

private:
    T* m_Pointer = nullptr;
};

static_assert(sizeof(SmartPtr<IUnknown>) == sizeof(void*));

/// Takes over a reference that a function returned: `auto icon = Adopt(ICONCreate(name));`
template <class T>
SmartPtr<T> Adopt(T* pointer) {
    SmartPtr<T> holder;
    holder.Attach(pointer);
    return holder;
}

/// Asks `object` (may be null) for an interface; empty when it lacks it.
template <class T>
SmartPtr<T> Query(IUnknown* object) {
    return Adopt(static_cast<T*>(QueryObject(object, IdentifierOf<T>())));
}
