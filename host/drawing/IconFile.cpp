#include "host/drawing/IconFile.h"

#include "framework/support/FileNames.h"
#include "host/components/CreatableString.h"
#include "host/text/Text.h"

namespace {

constexpr const wchar_t* kFileNameEntry = L"FileName";

/// The file name to be stored. Few relative names cannot be told from absolute ones; those files
/// are stored by their absolute names.
std::string ToStored(const std::string& fileName) {
    SmartPtr<IString> install, relative, back;
    FILENAMEGetInstallPath(install.Receive());
    FILENAMECreateRelative(
        install.Get(), CreatableString::Make(ToWide(fileName)).Get(), relative.Receive());
    FILENAMECreateAbsolute(relative.Get(), back.Receive());
    const bool leadsBack = back && ToUtf8(CREFString(back.Get())) == fileName;
    return leadsBack ? ToUtf8(CREFString(relative.Get())) : fileName;
}

/// The file name that was stored. An absolute one is left as it is, backslashes included.
std::string FromStored(IString* stored) {
    std::string name = ToUtf8(CREFString(stored));
    if (name.starts_with('/')) {
        return name;
    }
    SmartPtr<IString> absolute;
    FILENAMECreateAbsolute(stored, absolute.Receive());
    return ToUtf8(CREFString(absolute.Get()));
}

} // namespace

int32_t IconFile::Render(
    UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* /*context*/, int32_t /*param*/) {
    if (!m_Image) {
        return E_FAIL;
    }
    if (!CanDraw(canvas, rect)) {
        return S_OK;
    }
    cairo_t* context = canvas->m_Context;
    const CairoState state(context);
    cairo_translate(context, rect->left, rect->top);
    cairo_scale(context, double(rect->width) / cairo_image_surface_get_width(m_Image.get()),
        double(rect->height) / cairo_image_surface_get_height(m_Image.get()));
    cairo_set_source_surface(context, m_Image.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    cairo_paint(context);
    return S_OK;
}

int32_t IconFile::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_FileName = ToUtf8(CREFString(fileName));
        return S_OK;
    });
}

int32_t IconFile::Populate() {
    SurfacePtr image(cairo_image_surface_create_from_png(m_FileName.c_str()));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS) {
        return E_FAIL;
    }
    m_Image = std::move(image);
    return S_OK;
}

int32_t IconFile::GetContentState(int32_t selector, int32_t* value) {
    if (!value) {
        return E_POINTER;
    }
    *value = selector == CONTENTSTATE_ARCHIVE && m_Image ? 1 : 0;
    return selector == CONTENTSTATE_ARCHIVE ? S_OK : E_INVALIDARG;
}

int32_t IconFile::GetName(int32_t /*kind*/, tagREFString* name) {
    if (!name) {
        return E_POINTER;
    }
    *name = Refer(std::wstring_view(L"CIFFileEx"));
    return S_OK;
}

int32_t IconFile::Save(IDataStream* stream, int32_t /*flags*/) {
    const auto folder = Query<IFolderStream>(stream);
    if (!folder) {
        return S_OK;
    }
    return Guarded([&] {
        const auto entry = CreatableString::Make(kFileNameEntry);
        const auto stored = CreatableString::Make(ToWide(ToStored(m_FileName)));
        return folder->WriteString(entry.Get(), stored.Get());
    });
}

int32_t IconFile::Load(IDataStream* stream, int32_t /*flags*/) {
    const auto folder = Query<IFolderStream>(stream);
    if (!folder) {
        return S_OK;
    }
    return Guarded([&] {
        const auto entry = CreatableString::Make(kFileNameEntry);
        const auto stored = CreatableString::Make();
        const int32_t status = folder->ReadString(entry.Get(), stored.Get());
        if (status < 0) {
            return status;
        }
        m_FileName = FromStored(stored.Get());
        m_Image.reset();
        Populate();
        return S_OK;
    });
}
