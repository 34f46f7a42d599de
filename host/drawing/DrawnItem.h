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
        DrawItemPicture(canvas, rect, m_Look, m_IsOpen);
        return S_OK;
    }
    ItemLook Look() const { return m_Look; }

protected:
    ~DrawnItem() = default;
    void SetLook(ItemLook look) { m_Look = look; }

    /// For a folder.
    void DrawOpen(bool isOpen) { m_IsOpen = isOpen; }

private:
    ItemLook m_Look;
    bool m_IsOpen = false;
};
