#include "app/view/Picture.h"

#include "app/UsageError.h"
#include "app/settings/Palette.h"
#include "app/settings/PanelPicture.h"
#include "app/view/Hint.h"
#include "app/view/StatusLine.h"
#include "framework/interfaces/DrawingInterfaces.h"
#include "framework/runtime/SmartPtr.h"

#include <cerrno>
#include <charconv>
#include <cmath>
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

BarPaint PaintOf(BarLook look, const Palette& palette) {
    if (!IsStark(palette)) {
        return {look};
    }
    const bool isUsed = look == BarLook::kPointed || look == BarLook::kHeld;
    return {look, isUsed ? palette.m_Band : palette.m_Text};
}

/// What the control draws on a backdrop.
Noted DrawOn(UbuntuCanvas& canvas, IUITree* tree, CANVASRect rect, BarLook bar) {
    Noted noted;
    const CanvasNotes notes(canvas.m_Context, noted, PaintOf(bar, PaletteOf(tree)));
    if (const auto renderable = Query<IRenderableObject>(tree)) {
        renderable->Render(&canvas, &rect, nullptr, 0); // fails for a tree without rows only
    }
    return noted;
}

/// Only the control knows which rows in view are selected and how deep they lie, and tells while it
/// draws them: where something is to lie beneath them, it draws once more, on that.
Noted DrawTree(
    UbuntuCanvas& canvas, IUITree* tree, const CANVASRect& rect, const Highlights& highlights) {
    DrawBackdrop(canvas.m_Context, tree, rect.width, rect.height, {}, highlights);
    Noted noted = DrawOn(canvas, tree, rect, highlights.m_Bar);
    const Underlay underlay = UnderlayOf(tree, noted, highlights.m_HasGuides);
    if (!underlay.IsEmpty()) {
        DrawBackdrop(canvas.m_Context, tree, rect.width, rect.height, underlay, highlights);
        noted = DrawOn(canvas, tree, rect, highlights.m_Bar);
    }
    return noted;
}

/// What is left for the control and the panel, in pixels.
int32_t HeightAboveStatus(const Scene& scene) {
    const int32_t height = scene.m_Size.m_Height;
    return height - (scene.m_Status.empty() ? 0 : StatusHeightIn(height));
}

} // namespace

Size ParseSize(const std::string& text, double scale) {
    Size size{.m_Scale = scale};
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

SurfacePtr DrawPicture(const Scene& scene, Noted* noted) {
    const Size size = scene.m_Size;
    const auto toDisplay = [&size](int32_t side) {
        return static_cast<int32_t>(std::ceil(side * size.m_Scale));
    };
    SurfacePtr surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, toDisplay(size.m_Width), toDisplay(size.m_Height)));
    cairo_surface_set_device_scale(surface.get(), size.m_Scale, size.m_Scale);
    const ContextPtr context(cairo_create(surface.get()));
    UbuntuCanvas canvas{context.get()};
    const Palette palette = PaletteOf(scene.m_Tree);
    const int32_t panelWidth = scene.m_Panel ? Panel::WidthIn(size.m_Width) : 0;
    const int32_t height = HeightAboveStatus(scene);
    const CANVASRect rect{0, 0, size.m_Width - panelWidth, height};
    Noted drawn = DrawTree(canvas, scene.m_Tree, rect, scene.m_Highlights);
    const auto hint = scene.m_Highlights.m_Hint;
    const NotedText* label = hint ? CutLabelAt(drawn, *hint) : nullptr;
    if (label) {
        DrawHint(context.get(), *label, rect, palette);
    }
    if (scene.m_Panel) {
        scene.m_Panel->Resize(height);
        DrawPanel(*scene.m_Panel, canvas, {rect.width, 0, panelWidth, height}, palette);
    }
    if (height < size.m_Height) {
        const CANVASRect line{0, height, size.m_Width, size.m_Height - height};
        DrawStatus(scene.m_Status, canvas, line, palette);
    }
    Check(cairo_status(context.get()), "cannot draw");
    cairo_surface_flush(surface.get());
    if (noted) {
        *noted = std::move(drawn);
    }
    return surface;
}

bool KeptPicture::Update(const Scene& scene, bool isTreeChanged) {
    std::optional<std::vector<Panel::Line>> lines;
    if (scene.m_Panel) {
        scene.m_Panel->Resize(HeightAboveStatus(scene));
        lines = scene.m_Panel->Lines();
    }
    if (m_Surface && !isTreeChanged && scene.m_Size == m_Scene.m_Size && lines == m_Panel &&
        scene.m_Highlights == m_Scene.m_Highlights && scene.m_Status == m_Scene.m_Status) {
        return false;
    }
    m_Surface = DrawPicture(scene, &m_Noted);
    m_Scene = scene;
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
