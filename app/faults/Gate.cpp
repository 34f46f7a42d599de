#include "app/faults/Gate.h"

#include "app/faults/GatedObject.h"
#include "framework/support/REFString.h"
#include "host/modules/ModuleFactory.h"
#include "host/text/Text.h"

#include <dlfcn.h>

namespace {

Gate* gGate = nullptr; ///< the one that lives

/// Strings and variants do not come from the registry: modules ask the host's module for what
/// makes them.
void FilterHostModule(ObjectFilter filter) {
    const std::unique_ptr<void, int (*)(void*)> library(
        dlopen("./CollectionsEx.so", RTLD_NOW), [](void* handle) { return dlclose(handle); });
    void* set = library ? dlsym(library.get(), kFilterFunction) : nullptr;
    if (set) {
        reinterpret_cast<decltype(&SetObjectFilter)>(set)(filter);
    }
}

} // namespace

Gate::Gate() {
    gGate = this;
    FilterHostModule(&Gate::Filter);
}

Gate::~Gate() {
    FilterHostModule(nullptr);
    gGate = nullptr;
}

int32_t Gate::Filter(const IID& iid, void** object) {
    if (HostTurn::IsNow()) {
        return S_OK;
    }
    const bool isMissing =
        iid == IID_IComponentString && gGate->IsWithheld(CREFString(L"ComponentString"));
    const bool isAdmitted = gGate->Admit() && !isMissing;
    const HostTurn turn;
    void* made = std::exchange(*object, nullptr);
    if (!isAdmitted) {
        Adopt(static_cast<IUnknown*>(made)).Reset();
        return E_FAIL;
    }
    *object = gGate->WrapAny(iid, made);
    return S_OK;
}

void Gate::Fail(size_t first, size_t failing) {
    m_Calls = 0;
    m_First = first;
    m_Last = failing > SIZE_MAX - first ? SIZE_MAX : first + failing;
}

bool Gate::Admit() {
    if (HostTurn::IsNow()) {
        return true;
    }
    const size_t number = m_Calls++;
    return number < m_First || number >= m_Last;
}

bool Gate::IsWithheld(tagREFString component) const {
    return !m_Withheld.empty() && IsEqual(Refer(m_Withheld), component);
}

void Gate::NoticeComponent(tagREFString component) const {
    if (m_Listener && !HostTurn::IsNow()) {
        const HostTurn turn;
        m_Listener(component);
    }
}

void* Gate::WrapAny(const IID& iid, void* object) {
    const auto held = Adopt(static_cast<IUnknown*>(object));
    return WrapAs(iid, held.Get());
}

void* Gate::WrapAs(const IID& iid, IUnknown* object) {
    if (!object) {
        return nullptr;
    }
    const HostTurn turn;
    void* shown = nullptr;
    ObjectFor(object).Find(iid, &shown);
    return shown;
}

GatedObject& Gate::ObjectFor(IUnknown* object) {
    GatedObject*& place = m_Living[IdentityOf(object)];
    if (!place) {
        m_Objects.push_back(std::make_unique<GatedObject>(*this, object));
        place = m_Objects.back().get();
    }
    return *place;
}

GatedObject::GatedObject(Gate& gate, IUnknown* object)
    : m_Gate(gate), m_Object(object), m_Identity(IdentityOf(object)) {}

GatedObject::~GatedObject() = default;

bool GatedObject::IsAlive(const char* deed) {
    if (m_Count <= 0) {
        const HostTurn turn;
        m_Gate.m_Misuses.push_back(std::string(deed) + " after its last reference was given back");
    }
    return m_Count > 0;
}

bool GatedObject::Admit() {
    return IsAlive("an object is called") && m_Gate.Admit();
}

int32_t GatedObject::QueryInterface(const IID& iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (!Admit()) {
        return E_NOINTERFACE;
    }
    const HostTurn turn;
    return Find(iid, object);
}

GatedInterface* GatedObject::Known(const IID& iid) const {
    for (const auto& known : m_Interfaces) {
        if (known->Identifier() == iid) {
            return known.get();
        }
    }
    return nullptr;
}

int32_t GatedObject::Find(const IID& iid, void** object) {
    GatedInterface* found = Known(iid);
    if (!found) {
        if (auto made = MakeGated(*this, iid, m_Object.Get())) {
            found = made.get();
            m_Interfaces.push_back(std::move(made));
        }
    }
    if (!found) {
        return m_Object->QueryInterface(iid, object);
    }
    *object = found->Shown();
    ++m_Count;
    ++m_Gate.m_References;
    return S_OK;
}

int32_t GatedObject::AddRef() {
    if (IsAlive("an object is held")) {
        ++m_Gate.m_References;
        ++m_Count;
    }
    return m_Count;
}

int32_t GatedObject::Release() {
    if (!IsAlive("an object is released")) {
        return 0;
    }
    --m_Gate.m_References;
    if (--m_Count == 0) {
        const HostTurn turn;
        m_Gate.m_Living.erase(m_Identity);
        for (const auto& known : m_Interfaces) {
            known->Drop();
        }
        m_Object.Reset();
    }
    return m_Count;
}
