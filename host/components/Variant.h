#pragma once

#include "host/components/HostObject.h"

/// The component "Variant": a number.
class Variant final : public HostObject<Variant, IVariant> {
public:
    static constexpr const char* kKind = "Variant";

    double GetDouble() override { return m_Value; }
    int32_t SetLong(int32_t value) override { return SetDouble(value); }
    int32_t SetDouble(double value) override {
        m_Value = value;
        return S_OK;
    }

private:
    double m_Value = 0;
};
