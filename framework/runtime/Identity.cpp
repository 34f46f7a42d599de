#include "framework/runtime/Identity.h"

#include "framework/runtime/SmartPtr.h"

const void* IdentityOf(IUnknown* object) {
    const void* identity = Query<IUnknown>(object).Get(); // only the address matters
    return identity ? identity : object;
}

bool IsSameObject(IUnknown* first, IUnknown* second) {
    if (!first || !second) {
        return first == second;
    }
    return IdentityOf(first) == IdentityOf(second);
}
