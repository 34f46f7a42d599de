#pragma once

#include "framework/interfaces/Types.h"

#include <cairo/cairo.h>
#include <memory>

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct ContextDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using ContextPtr = std::unique_ptr<cairo_t, ContextDeleter>;

/// Saves the drawing state of a context and restores it at the end of the scope, the caller's clip
/// with it.
class CairoState {
public:
    explicit CairoState(cairo_t* context) : m_Context(context) { cairo_save(context); }
    ~CairoState() { cairo_restore(m_Context); }
    CairoState(const CairoState&) = delete;
    CairoState& operator=(const CairoState&) = delete;

private:
    cairo_t* m_Context;
};

/// Sets a colour, 0xRRGGBB, as the source; what is beneath shows through an opacity below 1.
void SetSourceColor(cairo_t* context, int32_t rgb, double opacity = 1);
void FillRect(cairo_t* context, const CANVASRect& rect, int32_t rgb, double opacity = 1);

/// Makes a rectangle with round corners the path, from edge to edge.
void TraceRounded(
    cairo_t* context, double left, double top, double right, double bottom, double corner);

/// No coordinate or size in pixels that is drawn reaches this: cairo's coordinates end soon after.
constexpr int32_t kFarthest = 1 << 21;

/// Whether there is a context to draw on and a rectangle with an inside that lies in its reach.
bool CanDraw(const UbuntuCanvas* canvas, const CANVASRect* rect);
