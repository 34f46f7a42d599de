#include "host/IconFile.h"

#include "host/Text.h"

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
        m_FileName = ToUtf8(Refer(fileName));
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
