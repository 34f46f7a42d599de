#include "uitree/UITreeImpl.h"

#include "framework/Support.h"

// The module's entry points, and what the loader runs before them.

namespace {

[[maybe_unused]] const bool gIdentifiersReady = [] {
    InitializeIdentifiers();
    return true;
}();

} // namespace

template <>
const tagREFString IObjectInfoImpl<CUITree>::m_ObjectName = {6, L"UITree"};

/// Takes the host's component collection; null gives the one held back. The first argument is not
/// used.
MODULE_EXPORT int32_t InitializeModule(void* /*module*/, IComponentCollection* collection) {
    return SetGlobalComponents(collection);
}

/// The module's factory: the creator of the component `name`, which is matched exactly. An unknown
/// name answers E_FAIL and leaves `creator` alone.
extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    const tagREFString& known = IObjectInfoImpl<CUITree>::m_ObjectName;
    if (!IsEqual(name, known)) {
        return E_FAIL;
    }
    if (!creator) {
        return E_POINTER;
    }
    *creator = reinterpret_cast<void*>(&CObject<CUITree>::_CreateInstance);
    return S_OK;
}
