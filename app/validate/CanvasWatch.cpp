#include "app/validate/CanvasWatch.h"

#include <utility>

namespace {

// The width of lines tells how deep the canvas is saved: nobody else sets it to these.
constexpr double kOutside = 3.25;
constexpr double kInside = 7.5;

} // namespace

CanvasWatch::CanvasWatch(cairo_t* context)
    : m_Context(context), m_Width(cairo_get_line_width(context)),
      m_Source(cairo_pattern_reference(cairo_get_source(context))),
      m_Operator(cairo_get_operator(context)), m_HasPath(cairo_has_current_point(context) != 0) {
    cairo_get_matrix(context, &m_Matrix);
    cairo_set_line_width(context, kOutside);
    cairo_save(context);
    cairo_set_line_width(context, kInside);
}

CanvasWatch::~CanvasWatch() {
    Restore();
}

void CanvasWatch::Restore() {
    if (std::exchange(m_IsSaved, false)) {
        cairo_restore(m_Context);
    }
}

const char* CanvasWatch::Change() const {
    cairo_matrix_t matrix;
    cairo_get_matrix(m_Context, &matrix);
    if (cairo_get_line_width(m_Context) == kOutside) {
        return "the canvas is restored more often than it was saved";
    }
    if (matrix.xx != m_Matrix.xx || matrix.yx != m_Matrix.yx || matrix.xy != m_Matrix.xy ||
        matrix.yy != m_Matrix.yy || matrix.x0 != m_Matrix.x0 || matrix.y0 != m_Matrix.y0) {
        return "the matrix is changed";
    }
    if (cairo_get_source(m_Context) != m_Source.get()) {
        return "the source is another one";
    }
    if (cairo_get_operator(m_Context) != m_Operator) {
        return "the operator is changed";
    }
    const bool hasPath = cairo_has_current_point(m_Context) != 0;
    return hasPath == m_HasPath ? nullptr : "a path is left or taken away";
}

const char* CanvasWatch::Fault() {
    if (const cairo_status_t status = cairo_status(m_Context); status != CAIRO_STATUS_SUCCESS) {
        return cairo_status_to_string(status);
    }
    const char* change = Change();
    Restore();
    if (!change && cairo_get_line_width(m_Context) != kOutside) {
        change = "a save of the canvas is left open";
    }
    cairo_set_line_width(m_Context, m_Width);
    return change;
}
