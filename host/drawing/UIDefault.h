#pragma once

#include "host/components/HostObject.h"

/// The component "UIDefault": the host's default sizes. They cannot be changed.
class UIDefault final : public HostObject<UIDefault, IUIPropInterrogate> {
public:
    static constexpr const char* kKind = "UIDefault";

    int32_t Inquire(int32_t id, int32_t* value) override;
    int32_t Control(int32_t id, int32_t value) override;
    int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) override;
    int32_t ParameterEnumeration(int32_t id, IUnknown** enumeration) override;
};
