#include "framework/runtime/SmartPtr.h"

bool IsSameObject(IUnknown* first, IUnknown* second) {
    if (!first || !second) {
        return first == second;
    }
    // Only the addresses matter, so each answer is released at once.
    const void* firstIdentity = Query<IUnknown>(first).Get();
    const void* secondIdentity = Query<IUnknown>(second).Get();
    return firstIdentity ? firstIdentity == secondIdentity : first == second;
}
