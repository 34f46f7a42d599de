#pragma once

#include "framework/interfaces/Export.h"
#include "framework/interfaces/Unknown.h"

/// Answers the name of an object's component. Implemented by components; mandatory for none.
struct IObjectInfo : IUnknown {
    /// `name` receives a reference into constant storage that lives as long as the module. The
    /// first argument is not used.
    virtual int32_t GetName(int32_t, tagREFString* name) = 0;
};

/// Implements IObjectInfo for a component class, which defines `m_ObjectName`: its name for the
/// module's factory too.
template <class T>
class IObjectInfoImpl : public IObjectInfo {
public:
    MODULE_EXPORT static const tagREFString m_ObjectName;

    int32_t GetName(int32_t, tagREFString* name) override {
        if (!name) {
            return E_POINTER;
        }
        *name = m_ObjectName;
        return S_OK;
    }
};
