#pragma once

#include "host/components/HostObject.h"

/// The component "StringTable": the texts of the components, for each in a file of its own,
/// `_strings/<component>.ini` in the registry's common folder. Its section [Parameters] has the
/// display names of the parameters, whose keys are their numbers.
class StringTable final : public HostObject<StringTable, IStringTable> {
public:
    static constexpr const char* kKind = "StringTable";

    /// The file is read anew for every table. E_FAIL and null when it is missing, damaged or
    /// without a single number.
    int32_t GetTable(IString* component, INamedCollection** table) override;
};
