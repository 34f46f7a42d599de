#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "host/components/HostObject.h"

/// A file in a folder; draws itself as a small page.
class FileItem final : public HostObject<FileItem, IRenderableObject> {
public:
    static constexpr const char* kKind = "FileItem";

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;
};
