// The module "CollectionsEx": the component registry and its descriptions.

#include "host/components/ComponentRegistry.h"
#include "host/components/ComponentString.h"
#include "host/modules/ModuleFactory.h"

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    return FindCreator({{L"GlobalComponentCollection", &Filtered<&ComponentRegistry::Share>},
                           {L"ComponentString", &Filtered<&CreatorOf<ComponentString>>}},
        name, creator);
}
