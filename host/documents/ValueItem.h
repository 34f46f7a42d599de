#pragma once

#include "host/components/HostObject.h"
#include "host/documents/DocumentLevel.h"
#include "host/drawing/DrawnItem.h"

/// What has nothing below it in a document, or the fault that ends one.
class ValueItem final : public HostObject<ValueItem, DrawnItem, IHostValueItem> {
public:
    static constexpr const char* kKind = "ValueItem";

    explicit ValueItem(ItemKind kind, uint32_t value = 0) : m_Value(value) { SetLook({kind}); }

    int32_t GetValuePlace(uint32_t* place) override {
        *place = m_Value;
        return S_OK;
    }
    LevelPlace& Place() { return m_Place; }

private:
    uint32_t m_Value; ///< where in the label the value begins
    LevelPlace m_Place;
};
