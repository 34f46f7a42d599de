#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/interfaces/Unknown.h"
#include "host/drawing/ItemPicture.h"

/// A base of items that draw themselves as what they are.
class DrawnItem : public IRenderableObject {
public:
    using Interface = IRenderableObject;

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) override {
        DrawItemPicture(canvas, rect, m_Look);
        return S_OK;
    }
    ItemLook Look() const { return m_Look; }

protected:
    ~DrawnItem() = default;
    void SetLook(ItemLook look) { m_Look = look; }

private:
    ItemLook m_Look;
};
