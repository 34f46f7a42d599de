#pragma once

#include "framework/interfaces/PropertyInterfaces.h"
#include "framework/interfaces/TextInterfaces.h"
#include "framework/runtime/Guarded.h"
#include "framework/settings/ParameterTable.h"

// The values of an object's parameters as stored settings have them. All of it goes through the
// object's own operations, which a component may have overridden.

/// What the object answers for a number; 0 when it answers none.
int32_t InquireLong(IUIPropInterrogateEx& object, int32_t id);
/// A real number, of which the object hands out single precision.
double InquireReal(IUIPropInterrogateEx& object, int32_t id);
/// A string; a file name is made relative to the installation folder. Empty when there is none.
SmartPtr<IString> InquireText(IUIPropInterrogateEx& object, const PROPParameter& parameter);

void ControlReal(IUIPropInterrogateEx& object, int32_t id, double value);
/// A file name is made absolute. Nothing happens without a text.
void ControlText(IUIPropInterrogateEx& object, int32_t id, SmartPtr<IString> text, bool isFileName);

/// Runs the body of a saving or loading, which answers S_OK whatever becomes of it. The object
/// outlives it: the host's streams may do anything.
template <class Body>
int32_t Persist(IUnknown* object, Body&& body) {
    const SmartPtr<IUnknown> alive(object);
    Guarded([&] {
        body();
        return S_OK; // as for a failure
    });
    return S_OK;
}
