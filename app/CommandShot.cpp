#include "app/Commands.h"
#include "app/TreeView.h"
#include "framework/DrawingInterfaces.h"
#include "host/Cairo.h"
#include "host/Expansion.h"

#include <charconv>
#include <filesystem>
#include <iostream>

namespace {

constexpr int32_t kLargestSide = 16384; // pixels
constexpr int32_t kParameterScrollPos = 115;

struct Size {
    int32_t m_Width = 0;
    int32_t m_Height = 0;
};

bool ReadSide(const char*& place, const char* end, int32_t& side) {
    const auto [after, error] = std::from_chars(place, end, side);
    place = after;
    return error == std::errc() && side >= 1 && side <= kLargestSide;
}

Size ParseSize(const std::string& text) {
    Size size;
    const char* place = text.data();
    const char* end = place + text.size();
    const bool isSize = ReadSide(place, end, size.m_Width) && place != end && *place++ == 'x' &&
                        ReadSide(place, end, size.m_Height) && place == end;
    if (!isSize) {
        throw UsageError("--size: not WIDTHxHEIGHT with sides of 1 to " +
                         std::to_string(kLargestSide) + " pixels: " + text);
    }
    return size;
}

void OpenRows(const TreeView& view, const std::vector<int32_t>& rows) {
    for (const int32_t row : rows) {
        switch (OpenRow(view.Source(), row)) {
        case OpenResult::kDone:
            break;
        case OpenResult::kNoSuchRow:
            throw UsageError("--open: there is no row " + std::to_string(row));
        case OpenResult::kNothingBelow:
            throw UsageError("--open: nothing can be opened in row " + std::to_string(row));
        }
    }
}

void Check(cairo_status_t status, const std::string& what) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
    }
}

SurfacePtr Draw(IUITree* tree, Size size) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.m_Width, size.m_Height));
    const ContextPtr context(cairo_create(surface.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());

    UbuntuCanvas canvas{context.get()};
    CANVASRect rect{0, 0, size.m_Width, size.m_Height};
    if (const auto renderable = Query<IRenderableObject>(tree)) {
        renderable->Render(&canvas, &rect, nullptr, 0); // fails for a tree without rows only
    }
    Check(cairo_status(context.get()), "cannot draw");
    return surface;
}

} // namespace

void RunShot(const ShotOptions& options) {
    const Size size = ParseSize(options.m_Size);
    if (options.m_Out.empty()) {
        throw UsageError("--out: a file name is missing");
    }
    const std::string file = std::filesystem::absolute(options.m_Out).string();

    const TreeView view(options.m_Path, options.m_Depth);
    OpenRows(view, options.m_Open);
    view.Control()->Control(kParameterScrollPos, options.m_Scroll);

    const SurfacePtr surface = Draw(view.Control(), size);
    Check(cairo_surface_write_to_png(surface.get(), file.c_str()), "cannot write " + options.m_Out);
    std::cout << options.m_Out << '\n';
}
