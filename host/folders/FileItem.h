#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/ItemPicture.h"

/// A file in a folder; draws itself as what it is.
class FileItem final : public HostObject<FileItem, IRenderableObject, IHostFileItem> {
public:
    static constexpr const char* kKind = "FileItem";

    explicit FileItem(ItemLook look) : m_Look(look) {}

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) override {
        DrawItemPicture(canvas, rect, m_Look);
        return S_OK;
    }
    int32_t GetLook(ItemLook* look) override {
        *look = m_Look;
        return S_OK;
    }

private:
    ItemLook m_Look;
};
