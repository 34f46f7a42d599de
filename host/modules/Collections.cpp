// The module "Collections": the host's strings, variants and collections.

#include "host/components/CreatableString.h"
#include "host/components/Variant.h"
#include "host/data/SuperCollection.h"
#include "host/modules/ModuleFactory.h"

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    return FindCreator(
        {{L"CreatableString", &CreatorOf<CreatableString>}, {L"Variant", &CreatorOf<Variant>},
            {L"SuperCollection", &CreatorOf<SuperCollection>}},
        name, creator);
}
