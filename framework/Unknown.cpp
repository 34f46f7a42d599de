#include "framework/SmartPtr.h"

void* QueryObject(IUnknown* object, const IID& iid) {
    void* answer = nullptr;
    if (!object || object->QueryInterface(iid, &answer) < 0) {
        return nullptr;
    }
    return answer;
}

bool IsSameObject(IUnknown* first, IUnknown* second) {
    if (!first || !second) {
        return first == second;
    }
    // Only the addresses matter, so each answer is released at once.
    const void* firstIdentity = Query<IUnknown>(first).Get();
    const void* secondIdentity = Query<IUnknown>(second).Get();
    return firstIdentity == secondIdentity;
}
