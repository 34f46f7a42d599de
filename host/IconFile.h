#pragma once

#include "framework/DrawingInterfaces.h"
#include "framework/FileInterfaces.h"
#include "host/Cairo.h"
#include "host/HostObject.h"

#include <string>

/// The component "CIFFileEx": an image read from a PNG file, drawn scaled to its rectangle.
class IconFile final : public HostObject<IconFile, IRenderableObject, IFileArchive> {
public:
    static constexpr const char* kKind = "IconFile";

    /// E_FAIL before an image was loaded.
    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;

    int32_t SetFileName(IString* fileName) override;
    /// E_FAIL for a file that is missing or damaged; the previous image stays then.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

private:
    std::string m_FileName;
    SurfacePtr m_Image;
};
