#pragma once

#include "framework/Unknown.h"

/// A component's settings as numbered parameters. Implemented by components (and by "UIDefault").
struct IUIPropInterrogate : IUnknown {
    /// Answers the parameter's flags word on success; with a null `value` that is all it does.
    virtual int32_t Inquire(int32_t id, int32_t* value) = 0;
    virtual int32_t Control(int32_t id, int32_t value) = 0;
    /// Either bound may be null; both are 0 when the parameter has no range.
    virtual int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) = 0;
    virtual int32_t ParameterEnumeration(int32_t id, IUnknown** enumeration) = 0;
};

struct IUIPropInterrogateEx : IUIPropInterrogate {
    /// The parameter as a string, an object or a new variant, with one reference.
    virtual int32_t InquireEx(int32_t id, IUnknown** value) = 0;
    /// The caller keeps its own reference to `value`.
    virtual int32_t ControlEx(int32_t id, IUnknown* value) = 0;
};

/// Names the pages of a component's settings dialog.
struct IUIPropertyPageSpecify : IUnknown {
    /// `pages` receives a new list: the collection's ISuperCollection interface, handed out through
    /// this pointer type. The page number and `reserved` are not used.
    virtual int32_t GetPages(int32_t page, INamedCollection** pages, IUnknown** reserved) = 0;
};
