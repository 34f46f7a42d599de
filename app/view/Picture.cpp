#include "app/view/Picture.h"

#include "app/UsageError.h"
#include "app/settings/PanelPicture.h"
#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t kLargestSide = 16384; // pixels

bool ReadSide(const char*& place, const char* end, int32_t& side) {
    const auto [after, error] = std::from_chars(place, end, side);
    place = after;
    return error == std::errc() && side >= 1 && side <= kLargestSide;
}

void Check(cairo_status_t status, const std::string& what) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
    }
}

} // namespace

Size ParseSize(const std::string& text) {
    Size size;
    const char* place = text.data();
    const char* end = place + text.size();
    const bool isSize = ReadSide(place, end, size.m_Width) && place != end && *place++ == 'x' &&
                        ReadSide(place, end, size.m_Height) && place == end;
    if (!isSize) {
        throw UsageError("not WIDTHxHEIGHT with sides of 1 to " + std::to_string(kLargestSide) +
                         " pixels: " + text);
    }
    return size;
}

SurfacePtr DrawPicture(IUITree* tree, Size size, Panel* panel) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.m_Width, size.m_Height));
    const ContextPtr context(cairo_create(surface.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());

    UbuntuCanvas canvas{context.get()};
    const int32_t panelWidth = panel ? Panel::WidthIn(size.m_Width) : 0;
    CANVASRect rect{0, 0, size.m_Width - panelWidth, size.m_Height};
    if (const auto renderable = Query<IRenderableObject>(tree)) {
        renderable->Render(&canvas, &rect, nullptr, 0); // fails for a tree without rows only
    }
    if (panel) {
        panel->Resize(size.m_Height);
        DrawPanel(*panel, canvas, {rect.width, 0, panelWidth, size.m_Height});
    }
    Check(cairo_status(context.get()), "cannot draw");
    cairo_surface_flush(surface.get());
    return surface;
}

bool KeptPicture::Update(IUITree* tree, bool isTreeChanged, Size size, Panel* panel) {
    std::optional<std::vector<Panel::Line>> lines;
    if (panel) {
        panel->Resize(size.m_Height);
        lines = panel->Lines();
    }
    if (m_Surface && !isTreeChanged && size == m_Size && lines == m_Panel) {
        return false;
    }
    m_Surface = DrawPicture(tree, size, panel);
    m_Size = size;
    m_Panel = std::move(lines);
    return true;
}

void WritePicture(cairo_surface_t* picture, const std::string& file, const std::string& name) {
    const bool isFile = file != "-";
    errno = 0;
    std::FILE* stream = isFile ? std::fopen(file.c_str(), "wb") : stdout;
    const auto write = [](void* to, const unsigned char* bytes, unsigned int length) {
        return std::fwrite(bytes, 1, length, static_cast<std::FILE*>(to)) == length
                   ? CAIRO_STATUS_SUCCESS
                   : CAIRO_STATUS_WRITE_ERROR;
    };
    cairo_status_t status = CAIRO_STATUS_WRITE_ERROR;
    if (stream) {
        status = cairo_surface_write_to_png_stream(picture, write, stream);
        const bool isKept = (isFile ? std::fclose(stream) : std::fflush(stream)) == 0;
        status = isKept || status != CAIRO_STATUS_SUCCESS ? status : CAIRO_STATUS_WRITE_ERROR;
    }
    if (status == CAIRO_STATUS_WRITE_ERROR) {
        throw std::runtime_error("cannot write " + name + ": " + std::strerror(errno));
    }
    Check(status, "cannot write " + name);
}
