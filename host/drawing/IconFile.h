#pragma once

#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/ObjectInfo.h"
#include "framework/interfaces/StreamInterfaces.h"
#include "host/components/HostObject.h"
#include "host/drawing/Cairo.h"
#include "host/drawing/IconImage.h"

#include <string>

/// The component "CIFFileEx": an image read from a PNG file, drawn scaled to its rectangle. It
/// saves its file's name, relative to the installation folder where that leads back to the file.
class IconFile final
    : public HostObject<IconFile, IRenderableObject, IFileArchive, IObjectInfo, IDataPersist> {
public:
    static constexpr const char* kKind = "IconFile";

    /// E_FAIL before an image was loaded.
    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override;

    int32_t SetFileName(IString* fileName) override;
    /// E_FAIL for a file that is missing or damaged, and when memory runs out; the previous image
    /// stays then.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

    int32_t GetName(int32_t, tagREFString* name) override;
    int32_t Save(IDataStream* stream, int32_t flags) override;
    /// An icon whose file is missing or damaged is loaded too: it draws nothing, and keeps the
    /// name.
    int32_t Load(IDataStream* stream, int32_t flags) override;

private:
    bool KeepScaled(int32_t width, int32_t height);

    std::string m_FileName;
    IconImage m_Image;
    SurfacePtr m_Scaled; ///< the image in the size that it was last drawn in, at most its own
};
