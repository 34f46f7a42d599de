#pragma once

#include "framework/ComponentInterfaces.h"

// Interfaces between the host's own parts, modules and programs; the framework does not know them.

/// Changes the component registry. Answered by "GlobalComponentCollection".
struct IHostComponents : IUnknown {
    /// Makes `description` the entry of that name, in place of the previous one.
    virtual int32_t Register(tagREFString name, IComponentString* description) = 0;
    /// E_INVALIDARG when there is no such entry.
    virtual int32_t Unregister(tagREFString name) = 0;
};

/// The texts of an entry made with ISuperCollection::AddEntry, answered by its item.
struct IHostEntry : IUnknown {
    /// Text 0 is the name, 1 the component, 2 the owner; null when it was given as null.
    virtual int32_t GetText(int32_t number, IString** text) = 0;
};

/// What the text renderer reads from a text style.
struct IHostRenderStyle : IUnknown {
    virtual int32_t GetColor() = 0; ///< 0xRRGGBB
    virtual int32_t GetSize() = 0;  ///< in pixels
};

#define HOST_IDENTIFIER(name)                                                                      \
    template <>                                                                                    \
    inline const IID& IdentifierOf<name>() {                                                       \
        static const IID identifier = __IIDOfc(#name);                                             \
        return identifier;                                                                         \
    }
HOST_IDENTIFIER(IHostComponents)
HOST_IDENTIFIER(IHostEntry)
HOST_IDENTIFIER(IHostRenderStyle)
#undef HOST_IDENTIFIER
