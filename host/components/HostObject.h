#pragma once

#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/interfaces/TextInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/runtime/Guarded.h"
#include "framework/runtime/Object.h"
#include "host/components/HostInterfaces.h"
#include "host/components/ObjectCount.h"

#include <tuple>

/// The interface that an interface extends, which its objects answer too.
template <class Interface>
struct ExtendedBy {
    using Type = void;
};
template <>
struct ExtendedBy<ICreatableString> {
    using Type = IString;
};
template <>
struct ExtendedBy<IHostVersionSource> {
    using Type = ICollectionVersion;
};
template <>
struct ExtendedBy<IUITree> {
    using Type = IUINodeContainer;
};
template <>
struct ExtendedBy<IUIPropInterrogateEx> {
    using Type = IUIPropInterrogate;
};

/// The interface behind a base of a host object: the one that the base names, else the base itself.
template <class Base>
struct InterfaceBehind {
    using Type = Base;
};
template <class Base>
requires requires {
    typename Base::Interface;
}
struct InterfaceBehind<Base> {
    using Type = typename Base::Interface;
};

/// Gives a host component, or a test's fake, its interfaces, counting and queries:
///
///     class Variant final : public HostObject<Variant, IVariant> {
///     public:
///         static constexpr const char* kKind = "Variant";
///         double GetDouble() override { return m_Value; }
///         ...
///     };
///
///     SmartPtr<Variant> variant = Variant::Make();
///
/// A base is an interface, or a class that implements one and names it by
/// `using Interface = ISuperCollection;`. Interfaces that extend another are answered for both.
/// The living objects are counted by kind: see LiveObjects.
template <class Self, class... Bases>
class HostObject : public Bases... {
public:
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    /// A new object, whose one reference is the result's.
    template <class... Arguments>
    static SmartPtr<Self> Make(Arguments&&... arguments) {
        return Adopt(new Self(std::forward<Arguments>(arguments)...));
    }

    int32_t QueryInterface(const IID& iid, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        *object = Find(iid);
        if (!*object) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    int32_t AddRef() override { return m_RefCount.Increment(); }
    int32_t Release() override {
        static_assert(std::is_final_v<Self>, "objects are destroyed as what they are");
        const int32_t count = m_RefCount.Decrement();
        if (count == 0) {
            m_RefCount.HoldWhileDying();
            delete static_cast<Self*>(this);
        }
        return count;
    }

    /// The object as IUnknown, whose address is its identity.
    IUnknown* Identity() {
        return static_cast<std::tuple_element_t<0, std::tuple<Bases...>>*>(this);
    }

protected:
    HostObject() { Counter().Add(1); }
    ~HostObject() { Counter().Add(-1); }

private:
    static ObjectCount& Counter() {
        static ObjectCount counter(Self::kKind);
        return counter;
    }

    void* Find(const IID& iid) {
        if (iid == IID_IUnknown) {
            return Identity();
        }
        void* found = nullptr;
        ((found = Match<typename InterfaceBehind<Bases>::Type>(static_cast<Bases*>(this), iid)) ||
            ...);
        return found;
    }

    template <class Interface>
    static void* Match(Interface* object, const IID& iid) {
        using Extended = typename ExtendedBy<Interface>::Type;
        if (iid == IdentifierOf<Interface>()) {
            return object;
        }
        if constexpr (!std::is_void_v<Extended>) {
            return Match<Extended>(object, iid);
        }
        return nullptr;
    }

    RefCount m_RefCount;
};

/// Makes an object of a host class and asks it for `iid`.
template <class T>
int32_t CreateInstanceOf(const IID& iid, void** object) {
    *object = nullptr;
    return Guarded([&] { return T::Make()->QueryInterface(iid, object); });
}

/// The creator function of a host class: `*creator = reinterpret_cast<void*>(&CreatorOf<Variant>);`
template <class T>
int32_t CreatorOf(void* /*outer*/, IID* iid, void** object) {
    return iid && object ? CreateInstanceOf<T>(*iid, object) : E_POINTER;
}
