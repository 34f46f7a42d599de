#include "app/ControlInfo.h"

#include "framework/ParameterTable.h"
#include "framework/PropertyInterfaces.h"
#include "framework/TextInterfaces.h"
#include "host/Text.h"

#include <bit>
#include <cstdio>

namespace {

constexpr int32_t kLastParameter = 255;

uint32_t TypeOf(int32_t flags) {
    return static_cast<uint32_t>(flags) & PROPTYPE_MASK;
}

std::string TypeName(int32_t flags) {
    constexpr const char* kNames[] = {
        "plain", "byte", "short", "long", "float", "double", "string", "object", "action"};
    const uint32_t type = TypeOf(flags);
    return type < std::size(kNames) ? kNames[type] : "type " + std::to_string(type);
}

std::string NumberText(int32_t flags, int32_t value) {
    if ((static_cast<uint32_t>(flags) & PROPFLAG_COLOR) != 0) {
        char text[16];
        std::snprintf(text, sizeof(text), "#%06X", static_cast<uint32_t>(value));
        return text;
    }
    const uint32_t type = TypeOf(flags);
    const bool isReal = type == PROPTYPE_FLOAT || type == PROPTYPE_DOUBLE;
    return isReal ? std::to_string(std::bit_cast<float>(value)) : std::to_string(value);
}

std::string ObjectText(IUIPropInterrogateEx* parameters, int32_t id) {
    SmartPtr<IUnknown> value;
    if (parameters) {
        parameters->InquireEx(id, value.Receive());
    }
    if (const auto text = Query<IString>(value.Get())) {
        return ToPrintable(Refer(text.Get()));
    }
    return value ? "set" : "not set";
}

ParameterInfo Describe(IUIPropInterrogate* parameters, int32_t id, int32_t flags) {
    ParameterInfo info{id, flags, TypeName(flags), 0, 0, {}, false};
    parameters->ParameterRange(id, &info.m_Min, &info.m_Max);
    int32_t value = 0;
    parameters->Inquire(id, &value);
    const uint32_t type = TypeOf(flags);
    const bool isObject = type == PROPTYPE_STRING || type == PROPTYPE_OBJECT;
    info.m_IsNumber = !isObject && (static_cast<uint32_t>(flags) & PROPFLAG_COLOR) == 0;
    info.m_Value = isObject ? ObjectText(Query<IUIPropInterrogateEx>(parameters).Get(), id)
                            : NumberText(flags, value);
    return info;
}

/// A parameter's flags; negative when there is none. An object parameter has no number, but tells
/// its flags when nothing but them is asked for.
int32_t FlagsOf(IUIPropInterrogate* parameters, int32_t id) {
    int32_t value = 0;
    const int32_t flags = parameters->Inquire(id, &value);
    return flags >= 0 ? flags : parameters->Inquire(id, nullptr);
}

} // namespace

std::vector<std::string> InterfacesOf(IUnknown* object) {
    std::vector<std::string> names;
    const auto test = [&](const char* name, const IID& iid) {
        if (Adopt(static_cast<IUnknown*>(QueryObject(object, iid)))) {
            names.emplace_back(name);
        }
    };
#define TEST_INTERFACE(name) test(#name, IID_##name);
    FRAMEWORK_INTERFACE_NAMES(TEST_INTERFACE)
#undef TEST_INTERFACE
    return names;
}

std::vector<ParameterInfo> ParametersOf(IUnknown* object) {
    std::vector<ParameterInfo> parameters;
    const auto interrogate = Query<IUIPropInterrogate>(object);
    for (int32_t id = 0; interrogate && id <= kLastParameter; ++id) {
        const int32_t flags = FlagsOf(interrogate.Get(), id);
        if (flags >= 0) {
            parameters.push_back(Describe(interrogate.Get(), id, flags));
        }
    }
    return parameters;
}
