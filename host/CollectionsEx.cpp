// The module "CollectionsEx": the component registry and its descriptions.

#include "host/ComponentRegistry.h"
#include "host/ComponentString.h"
#include "host/ModuleFactory.h"

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    return FindCreator({{L"GlobalComponentCollection", &ComponentRegistry::Share},
                           {L"ComponentString", &CreatorOf<ComponentString>}},
        name, creator);
}
