#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/TextInterfaces.h"
#include "framework/runtime/SmartPtr.h"

/// The display names of a component's parameters.
class DisplayNames {
public:
    /// Takes the names from `strings`; when that is null, from the host's string table of the
    /// component that implements `object`.
    DisplayNames(INamedCollection* strings, IUnknown* object);

    /// Whether there is a string table at all.
    bool Exist() const { return static_cast<bool>(m_Strings); }

    /// The name of a parameter; empty when it has none. The two ways to ask a string table are not
    /// the same to every host: by the decimal text of the number, as folder streams do, or by the
    /// number as the index, as XML does.
    SmartPtr<IString> FindByText(int32_t id) const;
    SmartPtr<IString> FindByNumber(int32_t id) const;

private:
    SmartPtr<INamedCollection> m_Strings;
};
