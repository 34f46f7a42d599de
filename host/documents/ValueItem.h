#pragma once

#include "host/components/HostObject.h"
#include "host/drawing/DrawnItem.h"

/// What has nothing below it in a document, or the fault that ends one.
class ValueItem final : public HostObject<ValueItem, DrawnItem, IHostValueItem> {
public:
    static constexpr const char* kKind = "ValueItem";

    explicit ValueItem(ItemKind kind, uint32_t place = 0) : m_Place(place) { SetLook({kind}); }

    int32_t GetValuePlace(uint32_t* place) override {
        *place = m_Place;
        return S_OK;
    }

private:
    uint32_t m_Place;
};
