#include "host/settings/ParameterText.h"

#include "framework/settings/ParameterTable.h"
#include "host/components/CreatableString.h"
#include "host/components/Variant.h"
#include "host/text/Numbers.h"
#include "host/text/Text.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

std::string ColorText(int32_t value) {
    char text[16];
    std::snprintf(text, sizeof(text), "#%06X", static_cast<uint32_t>(value));
    return text;
}

std::string RealText(const ParameterValue& value) {
    const auto variant = Query<IVariant>(value.m_Object.Get());
    return variant ? NumberText(variant->GetDouble())
                   : NumberText(std::bit_cast<float>(value.m_Number));
}

/// '#' begins a colour of at least six digits: a shorter one would be mistaken for '#RGB'.
bool IsWrittenAs(const std::string& text, int32_t flags) {
    constexpr size_t kShortest = 7;
    constexpr size_t kLongest = 9;
    return !text.starts_with('#') ||
           (IsColor(flags) && text.size() >= kShortest && text.size() <= kLongest);
}

bool IsWithin(const HostParameter& parameter, double value) {
    return parameter.m_Min >= parameter.m_Max ||
           (value >= parameter.m_Min && value <= parameter.m_Max);
}

template <class Field>
std::optional<ParameterValue> IntegerFrom(const HostParameter& parameter, const std::string& text) {
    const auto value = IsWrittenAs(text, parameter.m_Flags) ? ReadInteger(text) : std::nullopt;
    const bool isTaken = value && *value >= std::numeric_limits<Field>::min() &&
                         *value <= std::numeric_limits<Field>::max() && IsWithin(parameter, *value);
    return isTaken ? std::optional(ParameterValue{*value}) : std::nullopt;
}

template <class Field>
std::optional<ParameterValue> RealFrom(const HostParameter& parameter, const std::string& text) {
    constexpr double kGreatest = std::numeric_limits<Field>::max();
    constexpr double kGreatestFloat = std::numeric_limits<float>::max();
    const auto value = ReadNumber(text);
    // Neither an infinity nor "not a number" passes.
    if (!value || !(std::abs(*value) <= kGreatest) || !IsWithin(parameter, *value)) {
        return {};
    }
    const auto single = static_cast<float>(std::clamp(*value, -kGreatestFloat, kGreatestFloat));
    const auto variant = Variant::Make();
    variant->SetDouble(*value);
    return ParameterValue{std::bit_cast<int32_t>(single), SmartPtr(variant->Identity())};
}

std::optional<ParameterValue> StringFrom(tagREFString text) {
    const auto string = CreatableString::Make();
    return string->SetString(text) < 0
               ? std::nullopt
               : std::optional(ParameterValue{0, SmartPtr(string->Identity())});
}

} // namespace

uint32_t TypeOf(int32_t flags) {
    return static_cast<uint32_t>(flags) & PROPTYPE_MASK;
}

std::string TypeName(int32_t flags) {
    constexpr const char* kNames[] = {
        "plain", "byte", "short", "long", "float", "double", "string", "object", "action"};
    const uint32_t type = TypeOf(flags);
    return type < std::size(kNames) ? kNames[type] : "type " + std::to_string(type);
}

bool IsColor(int32_t flags) {
    return (static_cast<uint32_t>(flags) & PROPFLAG_COLOR) != 0 && TypeOf(flags) <= PROPTYPE_LONG;
}

bool IsObjectValue(int32_t flags) {
    const uint32_t type = TypeOf(flags);
    return type == PROPTYPE_DOUBLE || type == PROPTYPE_STRING || type == PROPTYPE_OBJECT;
}

std::string ToText(int32_t flags, const ParameterValue& value) {
    switch (TypeOf(flags)) {
    case PROPTYPE_FLOAT:
    case PROPTYPE_DOUBLE:
        return RealText(value);
    case PROPTYPE_STRING:
        return ToUtf8(CREFString(Query<IString>(value.m_Object.Get()).Get()));
    case PROPTYPE_OBJECT:
        return value.m_Object ? "set" : "not set";
    case PROPTYPE_ACTION:
        return "action";
    default:
        return IsColor(flags) ? ColorText(value.m_Number) : std::to_string(value.m_Number);
    }
}

std::string HintOf(const HostParameter& parameter) {
    const uint32_t type = TypeOf(parameter.m_Flags);
    if (IsColor(parameter.m_Flags)) {
        return "a colour, #RRGGBB";
    }
    if (type >= PROPTYPE_STRING) {
        return type == PROPTYPE_STRING ? "any text" : "no text";
    }
    const bool isReal = type == PROPTYPE_FLOAT || type == PROPTYPE_DOUBLE;
    const std::string hint = isReal ? "a number" : "a whole number";
    return parameter.m_Min < parameter.m_Max ? hint + " from " + std::to_string(parameter.m_Min) +
                                                   " to " + std::to_string(parameter.m_Max)
                                             : hint;
}

std::optional<ParameterValue> FromText(const HostParameter& parameter, tagREFString text) {
    switch (TypeOf(parameter.m_Flags)) {
    case PROPTYPE_BYTE:
        return IntegerFrom<uint8_t>(parameter, ToUtf8(text));
    case PROPTYPE_SHORT:
        return IntegerFrom<int16_t>(parameter, ToUtf8(text));
    case PROPTYPE_NONE:
    case PROPTYPE_LONG:
        return IntegerFrom<int32_t>(parameter, ToUtf8(text));
    case PROPTYPE_FLOAT:
        return RealFrom<float>(parameter, ToUtf8(text));
    case PROPTYPE_DOUBLE:
        return RealFrom<double>(parameter, ToUtf8(text));
    case PROPTYPE_STRING:
        return StringFrom(text);
    case PROPTYPE_ACTION:
        return ParameterValue{};
    default:
        return {};
    }
}
