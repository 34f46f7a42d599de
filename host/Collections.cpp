// The module "Collections": the host's strings, variants and collections.

#include "host/CreatableString.h"
#include "host/ModuleFactory.h"
#include "host/SuperCollection.h"
#include "host/Variant.h"

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    return FindCreator(
        {{L"CreatableString", &CreatorOf<CreatableString>}, {L"Variant", &CreatorOf<Variant>},
            {L"SuperCollection", &CreatorOf<SuperCollection>}},
        name, creator);
}
