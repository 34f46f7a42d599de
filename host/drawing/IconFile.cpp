#include "host/drawing/IconFile.h"

#include "framework/support/FileNames.h"
#include "host/components/ContentState.h"
#include "host/components/CreatableString.h"
#include "host/text/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

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

void DrawScaled(cairo_t* context, cairo_surface_t* image, const CANVASRect& rect) {
    cairo_translate(context, rect.left, rect.top);
    cairo_scale(context, double(rect.width) / cairo_image_surface_get_width(image),
        double(rect.height) / cairo_image_surface_get_height(image));
    cairo_set_source_surface(context, image, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    cairo_paint(context);
}

/// What a target has beside the context's matrix; one of twice the resolution has a scale of 2.
struct Device {
    explicit Device(cairo_surface_t* target) {
        cairo_surface_get_device_scale(target, &m_ScaleX, &m_ScaleY);
        cairo_surface_get_device_offset(target, &m_OffsetX, &m_OffsetY);
    }
    double m_ScaleX = 1;
    double m_ScaleY = 1;
    double m_OffsetX = 0; ///< pixels
    double m_OffsetY = 0;
};

/// A rectangle in the pixels of an image that is drawn on, the device's offset left out; nothing
/// where it is turned or does not fit the pixels, or where the target has none.
std::optional<CANVASRect> PixelsOf(cairo_t* context, const CANVASRect& rect) {
    cairo_surface_t* target = cairo_get_group_target(context);
    if (cairo_surface_get_type(target) != CAIRO_SURFACE_TYPE_IMAGE) {
        return {};
    }
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    const Device device(target);
    const double scaleX = matrix.xx * device.m_ScaleX;
    const double scaleY = matrix.yy * device.m_ScaleY;
    const double left = rect.left * scaleX + matrix.x0 * device.m_ScaleX;
    const double top = rect.top * scaleY + matrix.y0 * device.m_ScaleY;
    const double width = rect.width * scaleX;
    const double height = rect.height * scaleY;
    const auto isPixel = [](double value) {
        return std::abs(value) < kFarthest && value == std::floor(value);
    };
    const bool fits =
        matrix.xy == 0 && matrix.yx == 0 && width > 0 && height > 0 &&
        std::ranges::all_of(
            std::array{left, top, width, height, device.m_OffsetX, device.m_OffsetY}, isPixel);
    if (!fits) {
        return {};
    }
    const auto pixel = [](double value) { return static_cast<int32_t>(value); };
    return CANVASRect{pixel(left), pixel(top), pixel(width), pixel(height)};
}

/// Draws an image pixel by pixel, whatever the context's unit is.
void DrawPixels(cairo_t* context, cairo_surface_t* image, int32_t left, int32_t top) {
    const Device device(cairo_get_group_target(context));
    cairo_identity_matrix(context);
    cairo_scale(context, 1 / device.m_ScaleX, 1 / device.m_ScaleY);
    cairo_set_source_surface(context, image, left, top);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    cairo_paint(context);
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
    const CairoState state(canvas->m_Context);
    const auto pixels = PixelsOf(canvas->m_Context, *rect);
    if (pixels && KeepScaled(pixels->width, pixels->height)) {
        DrawPixels(canvas->m_Context, m_Scaled.get(), pixels->left, pixels->top);
    } else {
        DrawScaled(canvas->m_Context, m_Image.get(), *rect);
    }
    return S_OK;
}

/// Scales the image unless it is there in that size; false when it cannot be. An enlarged image is
/// not kept: it reaches beyond its edges, and may be of any size.
bool IconFile::KeepScaled(int32_t width, int32_t height) {
    if (width > cairo_image_surface_get_width(m_Image.get()) ||
        height > cairo_image_surface_get_height(m_Image.get())) {
        return false;
    }
    if (!m_Scaled || cairo_image_surface_get_width(m_Scaled.get()) != width ||
        cairo_image_surface_get_height(m_Scaled.get()) != height) {
        m_Scaled.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
        const ContextPtr context(cairo_create(m_Scaled.get()));
        DrawScaled(context.get(), m_Image.get(), {0, 0, width, height});
    }
    return cairo_surface_status(m_Scaled.get()) == CAIRO_STATUS_SUCCESS;
}

int32_t IconFile::SetFileName(IString* fileName) {
    return Guarded([&] {
        m_FileName = ToUtf8(CREFString(fileName));
        return S_OK;
    });
}

int32_t IconFile::Populate() {
    return Guarded([&] {
        IconImage image = ReadIcon(m_FileName);
        if (!image) {
            return E_FAIL;
        }
        m_Image = std::move(image);
        m_Scaled.reset();
        return S_OK;
    });
}

int32_t IconFile::GetContentState(int32_t selector, int32_t* value) {
    return AnswerContentState(m_Image != nullptr, selector, value);
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
