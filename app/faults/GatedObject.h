#pragma once

#include "app/faults/Gate.h"
#include "app/faults/HostTurn.h"
#include "framework/interfaces/Unknown.h"

#include <concepts>

/// One interface of a wrapped object.
class GatedInterface {
public:
    GatedInterface() = default;
    virtual ~GatedInterface() = default;
    GatedInterface(const GatedInterface&) = delete;
    GatedInterface& operator=(const GatedInterface&) = delete;

    virtual const IID& Identifier() const = 0;
    /// The pointer that the module gets.
    virtual void* Shown() = 0;
    /// Gives the host's object back.
    virtual void Drop() = 0;
};

/// A host object as a module sees it: its identity and its count, which are not the object's own.
/// It holds the object until its last reference is given back, and is kept by the gate after that,
/// so that what is done to it then is noticed and not suffered.
class GatedObject {
public:
    GatedObject(Gate& gate, IUnknown* object);
    ~GatedObject();
    GatedObject(const GatedObject&) = delete;
    GatedObject& operator=(const GatedObject&) = delete;

    /// As the module asks: counted, and may fail.
    int32_t QueryInterface(const IID& iid, void** object);
    /// The object itself for what the gate has no interface for, wrapped for all else.
    int32_t Find(const IID& iid, void** object);
    int32_t AddRef();
    int32_t Release();

    Gate& TheGate() { return m_Gate; }
    /// Whether the host may be asked: it is alive, and the call is not to fail.
    bool Admit();

private:
    bool IsAlive(const char* deed);
    GatedInterface* Known(const IID& iid) const;

    Gate& m_Gate;
    SmartPtr<IUnknown> m_Object;
    const void* m_Identity;
    int32_t m_Count = 0;
    std::vector<std::unique_ptr<GatedInterface>> m_Interfaces;
};

/// The interface of a host's object, behind the gate. Operations are added by Gated<Interface>.
template <class Interface>
class GatedBase : public Interface, public GatedInterface {
public:
    GatedBase(GatedObject& object, SmartPtr<Interface> inner)
        : m_Owner(object), m_Inner(std::move(inner)) {}

    int32_t QueryInterface(const IID& iid, void** object) final {
        return m_Owner.QueryInterface(iid, object);
    }
    int32_t AddRef() final { return m_Owner.AddRef(); }
    int32_t Release() final { return m_Owner.Release(); }
    const IID& Identifier() const final { return IdentifierOf<Interface>(); }
    void* Shown() final { return static_cast<Interface*>(this); }
    void Drop() final { m_Inner.Reset(); }

protected:
    using Base = Interface;

    /// Passes a call on, or lets it fail; interface pointers that come out are wrapped.
    template <class Result, class Declaring, class... Parameters>
    Result Pass(Result (Declaring::*operation)(Parameters...),
        std::type_identity_t<Parameters>... arguments) {
        if (!m_Owner.Admit()) {
            (Clear(arguments), ...);
            return Failure<Result>();
        }
        const HostTurn turn;
        const SmartPtr<Interface> inner = m_Inner; // what is called may give it back
        const Result result = (inner.Get()->*operation)(arguments...);
        (WrapOut(arguments), ...);
        return result;
    }
    /// The same for an operation that hands out the interface `iid`.
    template <class Operation>
    int32_t PassAny(const Operation& operation, const IID* iid, void** object) {
        if (!m_Owner.Admit()) {
            Store(object);
            return E_FAIL;
        }
        const HostTurn turn;
        const SmartPtr<Interface> inner = m_Inner;
        const int32_t status = operation(*inner.Get());
        if (iid && object && *object) {
            *object = m_Owner.TheGate().WrapAny(*iid, *object);
        }
        return status;
    }
    GatedObject& Owner() { return m_Owner; }

private:
    template <class Result>
    static Result Failure() {
        if constexpr (std::same_as<Result, int32_t>) {
            return E_FAIL;
        } else {
            return Result();
        }
    }
    static void Store(void** object) {
        if (object) {
            *object = nullptr;
        }
    }
    template <class Argument>
    static void Clear(Argument) {}
    template <std::derived_from<IUnknown> T>
    static void Clear(T** out) {
        Store(reinterpret_cast<void**>(out));
    }
    template <class Argument>
    void WrapOut(Argument) {}
    template <std::derived_from<IUnknown> T>
    void WrapOut(T** out) {
        if (out && *out) {
            *out = static_cast<T*>(m_Owner.TheGate().WrapAny(IdentifierOf<T>(), *out));
        }
    }

    GatedObject& m_Owner;
    SmartPtr<Interface> m_Inner;
};

/// The wrapper of the interface `iid` that `object` answers to it; null when the gate has none.
std::unique_ptr<GatedInterface> MakeGated(GatedObject& owner, const IID& iid, IUnknown* object);
