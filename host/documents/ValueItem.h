#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/ItemPicture.h"

/// What has nothing below it in a document, or the fault that ends one; draws itself as what it is.
class ValueItem final : public HostObject<ValueItem, IRenderableObject> {
public:
    static constexpr const char* kKind = "ValueItem";

    explicit ValueItem(ItemKind kind) : m_Kind(kind) {}

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) override {
        DrawItemPicture(canvas, rect, {m_Kind});
        return S_OK;
    }

private:
    ItemKind m_Kind;
};
