#include "host/modules/ModuleFactory.h"

#include "host/components/ObjectCount.h"
#include "host/text/Text.h"

namespace {

ObjectFilter gFilter = nullptr;

} // namespace

int32_t FindCreator(
    std::initializer_list<ModuleComponent> components, tagREFString name, void** creator) {
    if (!creator) {
        return E_POINTER;
    }
    for (const ModuleComponent& component : components) {
        if (IsEqual(CREFString(component.m_Name), name)) {
            *creator = reinterpret_cast<void*>(component.m_Creator);
            return S_OK;
        }
    }
    return E_FAIL;
}

void ReportLiveObjects(ObjectCountVisitor visitor, void* context) {
    VisitObjectCounts(visitor, context);
}

void SetObjectFilter(ObjectFilter filter) {
    gFilter = filter;
}

int32_t FilterObject(const IID& iid, void** object) {
    return gFilter ? gFilter(iid, object) : S_OK;
}
