#pragma once

#include "host/drawing/Cairo.h"

/// Watches whether a canvas is left as it was: its status, matrix, source, operator, path and
/// saves. The clip, which a drawing may reset, is excepted. The canvas is saved as long as one
/// lives.
class CanvasWatch {
public:
    /// The context is the caller's and has to outlive this.
    explicit CanvasWatch(cairo_t* context);
    ~CanvasWatch();
    CanvasWatch(const CanvasWatch&) = delete;
    CanvasWatch& operator=(const CanvasWatch&) = delete;

    /// What is not as it was; null when all is. Ends the watch.
    const char* Fault();

private:
    struct PatternDeleter {
        void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    };
    const char* Change() const;
    void Restore();

    cairo_t* m_Context;
    double m_Width; ///< of lines, in units of the user
    cairo_matrix_t m_Matrix = {};
    std::unique_ptr<cairo_pattern_t, PatternDeleter> m_Source; ///< held: another one is elsewhere
    cairo_operator_t m_Operator;
    bool m_HasPath;
    bool m_IsSaved = true;
};
