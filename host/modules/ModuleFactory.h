#pragma once

#include "framework/interfaces/Export.h"
#include "framework/runtime/Object.h"

#include <initializer_list>

/// One component of a host module, for its CreateFunction.
struct ModuleComponent {
    const wchar_t* m_Name;
    CreatorFunction m_Creator;
};

/// What a host module's CreateFunction does: the creator of the component called `name`; E_FAIL
/// with `creator` untouched when the module has none of that name.
int32_t FindCreator(
    std::initializer_list<ModuleComponent> components, tagREFString name, void** creator);

/// Sees every object that a host module's own creators make for others, and may put another in its
/// place, or take it away and answer a failure.
using ObjectFilter = int32_t (*)(const IID& iid, void** object);

/// Sets the filter of the host module that exports it; null for none. One at a time.
extern "C" MODULE_EXPORT void SetObjectFilter(ObjectFilter filter);
constexpr const char* kFilterFunction = "SetObjectFilter";

int32_t FilterObject(const IID& iid, void** object);

/// A creator whose objects the filter sees.
template <CreatorFunction Creator>
int32_t Filtered(void* outer, IID* iid, void** object) {
    const int32_t status = Creator(outer, iid, object);
    return status < 0 ? status : FilterObject(*iid, object);
}
