#pragma once

#include "framework/interfaces/Export.h"
#include "framework/interfaces/InterfaceNames.h"
#include "framework/interfaces/Types.h"

struct IUnknown;

/// Derives an interface identifier from the interface's name: letters (case ignored) and the digits
/// 0 to 4 have codes of their own, everything else shares one; characters after the 25th are not
/// looked at. Host and modules derive by the same rule, so nothing needs to be registered.
IID __IIDOfc(const char* name);

/// Derives every `IID_` global from its name. Each module's static initialiser calls this once,
/// before anything else of the module runs; afterwards the globals are read-only by convention.
void InitializeIdentifiers();

/// The identifier of an interface type: `IdentifierOf<IString>()` is `IID_IString`.
template <class Interface>
const IID& IdentifierOf();

extern MODULE_EXPORT const IID IID_NULL;
extern MODULE_EXPORT const IID IID_IUnknown; ///< fixed, not derived from the name

template <>
inline const IID& IdentifierOf<IUnknown>() {
    return IID_IUnknown;
}

#define DECLARE_IDENTIFIER(name)                                                                   \
    struct name;                                                                                   \
    extern MODULE_EXPORT IID IID_##name;                                                           \
    template <>                                                                                    \
    inline const IID& IdentifierOf<name>() {                                                       \
        return IID_##name;                                                                         \
    }
FRAMEWORK_INTERFACE_NAMES(DECLARE_IDENTIFIER)
#undef DECLARE_IDENTIFIER
