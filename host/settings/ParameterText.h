#pragma once

#include "framework/runtime/SmartPtr.h"
#include "host/components/HostInterfaces.h"

#include <optional>
#include <string>

// The values of parameters as people read and write them.

/// A value as it travels through Inquire and Control, or InquireEx and ControlEx.
struct ParameterValue {
    int32_t m_Number = 0;
    SmartPtr<IUnknown> m_Object = {}; ///< a string, an object, or the variant of a double
};

/// The low bits of a flags word: PROPTYPE_LONG and so on.
uint32_t TypeOf(int32_t flags);
/// "long", "string" and so on.
std::string TypeName(int32_t flags);
bool IsColor(int32_t flags);
/// Whether the value travels as an object.
bool IsObjectValue(int32_t flags);

std::string ToText(int32_t flags, const ParameterValue& value);

/// What texts a parameter takes: "a whole number from 0 to 1".
std::string HintOf(const HostParameter& parameter);

/// Nothing when the parameter does not take the text.
std::optional<ParameterValue> FromText(const HostParameter& parameter, tagREFString text);
