#include "framework/support/NamedCollections.h"

#include "framework/runtime/Components.h"
#include "framework/support/HostStrings.h"

namespace {

SmartPtr<IComponentString> FindDescription(const char* component) {
    SmartPtr<IUnknown> entry;
    const auto name = Adopt(ISCreateName(component));
    const auto components = Adopt(GLOBALComponents());
    int32_t index = 0;
    if (name && components && components->FindItem(name.Get(), &index) >= 0) {
        components->GetItem(index, entry.Receive());
    }
    return Query<IComponentString>(entry.Get());
}

} // namespace

ISuperCollection* BASEObject::CreateNamedCollection() {
    static SmartPtr<IComponentString> gSuperCollection;
    if (!gSuperCollection) {
        gSuperCollection = FindDescription("SuperCollection");
    }
    SmartPtr<ISuperCollection> created;
    if (gSuperCollection) {
        gSuperCollection->CreateInstance(IID_ISuperCollection, created.ReceiveAny());
    }
    return created.Detach();
}
