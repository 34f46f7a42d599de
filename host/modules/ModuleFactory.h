#pragma once

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
