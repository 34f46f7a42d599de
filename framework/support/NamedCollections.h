#pragma once

#include "framework/interfaces/CollectionInterfaces.h"

struct BASEObject {
    /// A new, empty collection of the component registered as "SuperCollection", with one
    /// reference; null when there is none. The registration is looked up once.
    [[nodiscard]] static ISuperCollection* CreateNamedCollection();
};
